#!/usr/bin/python3
"""matplotlib as a peer: plot_surface at full resolution on the Agg back end.

    matplotlib_peer.py DATA.npy OUT.png

Draws every grid cell (rstride = cstride = 1, default antialiasing) at
1024 x 768, writes OUT.png, then turns the view 3 degrees in azimuth and
draws and writes OUT.rot.png again, timing only that second drawing.
"""
import sys
import time

import peerlib

T0 = peerlib.launch_time()

import matplotlib  # noqa: E402  (imports count towards the whole command)
matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import numpy as np  # noqa: E402

DPI = 100


def main(argv):
    if len(argv) != 3:
        sys.stderr.write("usage: matplotlib_peer.py DATA.npy OUT.png\n")
        return 2
    z = peerlib.load_grid(argv[1])
    ny, nx = z.shape
    x, y = np.meshgrid(np.linspace(-3.0, 3.0, nx), np.linspace(-3.0, 3.0, ny))

    fig = plt.figure(figsize=(peerlib.WIDTH / DPI, peerlib.HEIGHT / DPI), dpi=DPI)
    ax = fig.add_subplot(projection="3d")
    ax.plot_surface(x, y, z, rstride=1, cstride=1, cmap="viridis")
    ax.view_init(peerlib.ELEVATION, peerlib.AZIMUTH)
    fig.savefig(argv[2], dpi=DPI)
    whole = time.time() - T0
    peerlib.first("matplotlib", whole)

    ax.view_init(peerlib.ELEVATION, peerlib.AZIMUTH + peerlib.AZIMUTH_STEP)
    start = time.perf_counter()
    fig.savefig(peerlib.second_output(argv[2]), dpi=DPI)
    rerender = time.perf_counter() - start

    peerlib.report("matplotlib", whole, rerender)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv))
    except MemoryError:
        sys.stderr.write("matplotlib_peer.py: out of memory\n")
        sys.exit(3)
