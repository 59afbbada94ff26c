"""What the Python peers share: when the command started, their peak memory,
the view they draw from, and the one-line report compare.sh reads."""
import json
import os
import resource
import sys
import time

import numpy as np

# Every peer draws from the same direction: 30 degrees above the x-y plane,
# azimuth -60 degrees (matplotlib's default), then turns 3 degrees for the
# re-render.
ELEVATION = 30.0
AZIMUTH = -60.0
AZIMUTH_STEP = 3.0
WIDTH, HEIGHT = 1024, 768


def launch_time():
    """Wall-clock time (epoch seconds) at which the whole command started.

    compare.sh stamps VEXPLOT_PEER_T0 just before it starts the command, so
    interpreter start-up and imports count, as they would for any program
    that draws a file. Run by hand, the process start time from /proc
    stands in (10 ms resolution)."""
    stamped = os.environ.get("VEXPLOT_PEER_T0")
    if stamped:
        return float(stamped)
    with open("/proc/self/stat") as f:
        # The command name may hold spaces; fields after it are fixed.
        fields = f.read().rsplit(")", 1)[1].split()
    start_ticks = int(fields[19])
    with open("/proc/stat") as f:
        boot = next(int(line.split()[1]) for line in f if line.startswith("btime"))
    return boot + start_ticks / os.sysconf("SC_CLK_TCK")


def peak_rss_mib():
    """This process's peak resident set so far, in MiB (ru_maxrss is KiB)."""
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024.0


def load_grid(path):
    """The grid as float64 [iy, ix]; anything but a 2-D grid of at least
    2 x 2 points is refused, since no surface can be drawn from it."""
    z = np.load(path)
    if z.ndim != 2 or z.shape[0] < 2 or z.shape[1] < 2:
        raise ValueError("%s: expected a 2-D grid, got shape %s" % (path, z.shape))
    return np.asarray(z, dtype=np.float64)


def _emit(tag, line):
    sys.stdout.write(tag + " " + json.dumps(line) + "\n")
    sys.stdout.flush()


def first(name, whole):
    """Prints the FIRST line as soon as the first picture is written, so a
    peer stopped during its re-render still has its whole-command time."""
    _emit("FIRST", {"name": name, "whole": round(whole, 4),
                    "peak_rss_mib": round(peak_rss_mib(), 1)})


def report(name, whole, rerender):
    """Prints the PEER line compare.sh parses (times in seconds)."""
    _emit("PEER", {"name": name, "whole": round(whole, 4), "rerender": round(rerender, 4),
                   "peak_rss_mib": round(peak_rss_mib(), 1)})


def second_output(path):
    """Where the re-rendered picture goes: OUT.png -> OUT.rot.png."""
    stem, dot, ext = path.rpartition(".")
    return "%s.rot.%s" % (stem, ext) if dot else path + ".rot"
