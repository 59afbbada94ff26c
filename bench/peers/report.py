#!/usr/bin/python3
"""Turns the RESULT lines compare.sh collects into one table per grid size,
Vexplot's ratios against the fastest peer, and a verdict against the targets.

    report.py [--size N] RESULTS.txt

A RESULT line is `RESULT N TOOL STATUS JSON`. TOOL is a peer name,
`vexplot` (the whole `vexplot render` command, timed from outside) or
`render_bench` (its TIMES line). STATUS is ok, timeout, oom, failed or
missing, or partial (a peer stopped during its re-render, after its first
picture; `stopped` says why). A tool may have several runs: the best time and the
highest peak memory count.
"""
import json
import sys
from dataclasses import dataclass, field

PEERS = ("gnuplot", "matplotlib", "vtk")
MIB = 1024.0 * 1024.0

# Targets for Vexplot.
WHOLE_RATIO_LARGE = 0.5   # whole command vs the fastest peer, from LARGE_N up
LARGE_N = 2048
RERENDER_RATIO = 0.5      # full re-render vs the fastest peer's
MOTION_LIMIT_S = 0.040    # one frame while the view moves
MEMORY_SLACK_MIB = 150.0  # peak memory allowed beyond two copies of the grid


@dataclass
class Outcome:
    """One tool at one grid size, over all its runs."""
    status: str = "missing"
    whole: float = None
    rerender: float = None
    peak_mib: float = None
    limit: float = None
    mem_limit_mib: float = None
    rerender_stopped: str = ""  # why the re-render did not finish: timeout, oom, ...
    error: str = ""
    times: dict = field(default_factory=dict)  # render_bench's TIMES line


def parse(lines):
    """{N: {tool: [(status, payload dict)]}} in the order the runs came."""
    runs = {}
    for line in lines:
        parts = line.split(None, 4)
        if len(parts) < 4 or parts[0] != "RESULT":
            continue
        payload = json.loads(parts[4]) if len(parts) == 5 else {}
        runs.setdefault(int(parts[1]), {}).setdefault(parts[2], []).append((parts[3], payload))
    return runs


def combine(tool_runs):
    """Best of the successful runs; without one, the first run's failure."""
    good = [p for status, p in tool_runs if status in ("ok", "partial")]
    if not good:
        status, payload = tool_runs[0]
        return Outcome(status=status, limit=payload.get("limit"), error=payload.get("error", ""),
                       mem_limit_mib=payload.get("mem_limit_mib"))
    complete = [p for status, p in tool_runs if status == "ok"]
    partial = [p for status, p in tool_runs if status == "partial"]

    def best(key, pick):
        values = [p[key] for p in good if p.get(key) is not None]
        return pick(values) if values else None

    return Outcome(status="ok", whole=best("whole", min), rerender=best("rerender", min),
                   peak_mib=best("peak_rss_mib", max), times=good[-1],
                   limit=partial[0].get("limit") if partial else None,
                   rerender_stopped="" if complete else partial[0].get("stopped", "failed"))


@dataclass
class Fastest:
    """The fastest peer's time. When no peer finished but some ran out of
    time, `at_least` is the time limit: the fastest is slower than that."""
    value: float = None
    name: str = ""
    at_least: bool = False


def fastest(peers, key):
    finished = [(getattr(o, key), name) for name, o in peers.items()
                if o.status == "ok" and getattr(o, key) is not None]
    if finished:
        value, name = min(finished)
        return Fastest(value, name)
    limits = [o.limit for o in peers.values() if o.status == "timeout" and o.limit]
    if limits and key == "whole":
        return Fastest(min(limits), "time limit", at_least=True)
    return Fastest()


def ratio(mine, best):
    """Vexplot / fastest peer as text; '<' when the peer's time is a bound."""
    if mine is None or best.value is None:
        return "n/a"
    return "%s%.3f" % ("<" if best.at_least else "", mine / best.value)


def grid_limit_mib(n):
    return 2.0 * n * n * 8 / MIB + MEMORY_SLACK_MIB


def vexplot_summary(render, bench):
    """Vexplot's row: whole command from `vexplot render`, re-render and
    motion from render_bench, peak memory the higher of the two."""
    peaks = [p for p in (render.peak_mib, bench.times.get("peak_rss_mib")) if p is not None]
    return Outcome(status=render.status, whole=render.whole,
                   rerender=bench.times.get("rerender_avg"),
                   peak_mib=max(peaks) if peaks else None,
                   times=bench.times)


def verdict(n, vex, peers):
    """('PASS' | 'FAIL' | 'INCOMPLETE', [reason, ...])."""
    failed, unknown, passed = [], [], []

    def judge(label, ok, detail):
        if ok is None:
            unknown.append(label + " unknown")
        else:
            (passed if ok else failed).append("%s %s" % (label, detail))

    best = fastest(peers, "whole")
    if vex.whole is None or best.value is None:
        judge("whole", None, "")
    else:
        # Below LARGE_N strictly faster, from LARGE_N on at most half. When
        # every peer ran out of time the limit stands in for the fastest;
        # a pass stays sound, as the peers' real times are longer.
        bound = WHOLE_RATIO_LARGE if n >= LARGE_N else 1.0
        r = vex.whole / best.value
        ok = r <= bound if n >= LARGE_N else r < bound
        judge("whole", ok, "%s%.2fx (target %s %.1fx)" % (
            "<" if best.at_least else "", r, "<=" if n >= LARGE_N else "<", bound))

    best_rr = fastest(peers, "rerender")
    if vex.rerender is None or best_rr.value is None:
        judge("re-render", None, "")
    else:
        r = vex.rerender / best_rr.value
        judge("re-render", r <= RERENDER_RATIO, "%.2fx (target <= %.1fx)" % (r, RERENDER_RATIO))

    motion = vex.times.get("motion_avg")
    judge("motion", None if motion is None else motion < MOTION_LIMIT_S,
          "%.1f ms (target < %.0f ms)" % ((motion or 0) * 1000, MOTION_LIMIT_S * 1000))

    cap = grid_limit_mib(n)
    judge("memory", None if vex.peak_mib is None else vex.peak_mib < cap,
          "%.0f MiB (target < %.0f MiB)" % (vex.peak_mib or 0, cap))

    if failed:
        return "FAIL", failed + unknown
    if unknown:
        return "INCOMPLETE", unknown + passed
    return "PASS", passed


def cell(outcome, key, fmt):
    value = getattr(outcome, key)
    if outcome.status == "ok":
        if value is None and key == "rerender" and outcome.rerender_stopped:
            if outcome.rerender_stopped == "timeout" and outcome.limit:
                return "> %gs" % (outcome.limit - outcome.whole)
            return outcome.rerender_stopped
        return fmt % value if value is not None else "-"
    if outcome.status == "timeout":
        return "> %gs" % outcome.limit if key == "whole" and outcome.limit else "-"
    if outcome.status == "oom" and key == "peak_mib":
        return "> %g" % outcome.mem_limit_mib if outcome.mem_limit_mib else "> cap"
    return outcome.status if key == "whole" else "-"


def why(outcome):
    """The reason line under a row that did not finish."""
    if outcome.status in ("ok", "missing", "timeout") or not outcome.error:
        return []
    return ["%-12s   (%s)" % ("", outcome.error)]


def table(n, tools):
    peers = {name: combine(tools[name]) for name in PEERS if name in tools}
    missing = Outcome(status="missing")
    render = combine(tools["vexplot"]) if "vexplot" in tools else missing
    bench = combine(tools["render_bench"]) if "render_bench" in tools else missing
    vex = vexplot_summary(render, bench)

    out = ["", "N = %d (%d x %d grid, %.1f MiB of float64)" % (n, n, n, n * n * 8 / MIB),
           "%-12s %12s %12s %10s" % ("tool", "whole s", "re-render s", "peak MiB")]
    row = "%-12s %12s %12s %10s"
    for name, o in peers.items():
        out.append(row % (name, cell(o, "whole", "%.3f"), cell(o, "rerender", "%.4f"),
                          cell(o, "peak_mib", "%.0f")))
        out.extend(why(o))
    # Vexplot's row mixes two programs: either may be missing on its own.
    out.append(row % ("vexplot", cell(render, "whole", "%.3f"),
                      "%.4f" % vex.rerender if vex.rerender is not None else bench.status,
                      "%.0f" % vex.peak_mib if vex.peak_mib is not None else "-"))
    out.extend(why(render))
    if bench.status == "ok":
        t = bench.times
        out.append("render_bench: load %s s, first frame %s s, re-render %s s, motion %s s, peak %s MiB" % tuple(
            t.get(k, "-") for k in ("load", "first_frame", "rerender_avg", "motion_avg", "peak_rss_mib")))
    else:
        out.append("render_bench: %s%s" % (bench.status, " (%s)" % bench.error if bench.error else ""))
    best, best_rr = fastest(peers, "whole"), fastest(peers, "rerender")
    out.append("vexplot / fastest peer: whole %s (vs %s), re-render %s (vs %s)" % (
        ratio(vex.whole, best), best.name or "-", ratio(vex.rerender, best_rr), best_rr.name or "-"))
    result, reasons = verdict(n, vex, peers)
    out.append("verdict N=%d: %s: %s" % (n, result, "; ".join(reasons)))
    return "\n".join(out)


def main(argv):
    args = argv[1:]
    size = None
    if len(args) == 3 and args[0] == "--size":
        size, args = int(args[1]), args[2:]
    if len(args) != 1:
        sys.stderr.write("usage: report.py [--size N] RESULTS.txt\n")
        return 2
    with open(args[0]) as f:
        runs = parse(f)
    for n in sorted(runs):
        if size is None or n == size:
            print(table(n, runs[n]))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
