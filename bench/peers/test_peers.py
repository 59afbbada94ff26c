#!/usr/bin/python3
"""Checks for the peer comparison scripts.

    /usr/bin/python3 -m unittest discover -s bench/peers -p 'test_*.py'
"""
import json
import os
import struct
import subprocess
import sys
import tempfile
import time
import unittest

import numpy as np

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)

import make_peaks  # noqa: E402
import peerlib  # noqa: E402
import report  # noqa: E402


def formula(x, y):
    return (3 * (1 - x) ** 2 * np.exp(-x ** 2 - (y + 1) ** 2)
            - 10 * (x / 5 - x ** 3 - y ** 5) * np.exp(-x ** 2 - y ** 2)
            - np.exp(-(x + 1) ** 2 - y ** 2) / 3)


class PeaksGrid(unittest.TestCase):
    def test_rows_are_y_and_columns_are_x(self):
        # On a 7-point axis the samples fall on the integers -3..3; the
        # surface is not symmetric in x and y, so a transposed grid fails.
        z = make_peaks.peaks(7)
        for ix, iy in [(3, 4), (4, 3), (0, 6), (6, 0), (2, 5)]:
            with self.subTest(ix=ix, iy=iy):
                self.assertAlmostEqual(z[iy, ix], formula(ix - 3.0, iy - 3.0), places=12)

    def test_known_value_at_origin(self):
        z = make_peaks.peaks(7)
        self.assertAlmostEqual(z[3, 3], (3 - 1 / 3) * np.exp(-1), places=12)

    def test_rejects_grids_without_cells(self):
        for n in (0, 1):
            with self.subTest(n=n), self.assertRaises(ValueError):
                make_peaks.peaks(n)

    def test_file_is_float64_c_order(self):
        with tempfile.TemporaryDirectory() as tmp:
            path = os.path.join(tmp, "g.npy")
            self.assertEqual(make_peaks.main(["make_peaks.py", "5", path]), 0)
            z = np.load(path)
            self.assertEqual((z.shape, z.dtype.str), ((5, 5), "<f8"))
            self.assertTrue(z.flags.c_contiguous)
            self.assertEqual(make_peaks.main(["make_peaks.py", "x", path]), 2)


class GnuplotLayout(unittest.TestCase):
    """gnuplot reads the .npy bytes after the header; a wrong offset or a
    swapped shape would draw garbage without any error."""

    def layout(self, path):
        return subprocess.run([os.path.join(HERE, "gnuplot_peer.sh"), "--layout", path],
                              capture_output=True, text=True)

    def test_offset_and_shape_of_valid_files(self):
        cases = [((4, 6), (1, 0)), ((6, 4), (1, 0)), ((3, 3), (2, 0))]
        with tempfile.TemporaryDirectory() as tmp:
            for shape, version in cases:
                with self.subTest(shape=shape, version=version):
                    path = os.path.join(tmp, "a.npy")
                    with open(path, "wb") as f:
                        np.lib.format.write_array(f, np.zeros(shape), version=version)
                    result = self.layout(path)
                    self.assertEqual(result.returncode, 0, result.stderr)
                    skip, ny, nx = map(int, result.stdout.split())
                    self.assertEqual(skip, os.path.getsize(path) - shape[0] * shape[1] * 8)
                    self.assertEqual((ny, nx), shape)

    def test_rejects_what_it_cannot_read_raw(self):
        cases = {"float32": np.zeros((3, 3), dtype=np.float32),
                 "fortran": np.asfortranarray(np.zeros((3, 4))),
                 "1-D": np.zeros(9),
                 "3-D": np.zeros((2, 2, 2))}
        with tempfile.TemporaryDirectory() as tmp:
            for name, array in cases.items():
                with self.subTest(name):
                    path = os.path.join(tmp, "b.npy")
                    np.save(path, array)
                    self.assertNotEqual(self.layout(path).returncode, 0)
            text = os.path.join(tmp, "c.npy")
            with open(text, "w") as f:
                f.write("not numpy at all\n")
            self.assertNotEqual(self.layout(text).returncode, 0)


class PeerLib(unittest.TestCase):
    def test_second_output(self):
        for path, rot in [("a.png", "a.rot.png"), ("/t/x.y.png", "/t/x.y.rot.png"), ("plain", "plain.rot")]:
            self.assertEqual(peerlib.second_output(path), rot)

    def test_launch_time_from_proc_is_this_process(self):
        os.environ.pop("VEXPLOT_PEER_T0", None)
        started = peerlib.launch_time()
        self.assertLessEqual(started, time.time() + 0.02)
        self.assertGreater(started, time.time() - 3600)


def result(n, tool, status, **payload):
    return "RESULT %d %s %s %s" % (n, tool, status, json.dumps(payload))


def outcomes(lines):
    return {tool: report.combine(runs) for tool, runs in report.parse(lines)[lines and int(lines[0].split()[1])].items()}


class ReportCombine(unittest.TestCase):
    def test_best_time_and_highest_memory_over_runs(self):
        lines = [result(64, "vtk", "ok", whole=2.0, rerender=0.3, peak_rss_mib=100),
                 result(64, "vtk", "ok", whole=1.5, rerender=0.4, peak_rss_mib=120),
                 "noise that is not a result"]
        vtk = outcomes(lines)["vtk"]
        self.assertEqual((vtk.whole, vtk.rerender, vtk.peak_mib), (1.5, 0.3, 120))

    def test_failure_keeps_reason_and_limit(self):
        got = outcomes([result(64, "matplotlib", "timeout", limit=300, error="")])["matplotlib"]
        self.assertEqual((got.status, got.limit), ("timeout", 300))
        self.assertEqual(report.cell(got, "whole", "%.3f"), "> 300s")
        self.assertEqual(report.cell(got, "rerender", "%.3f"), "-")

    def test_stopped_during_rerender_keeps_whole_time(self):
        lines = [result(2048, "matplotlib", "partial", whole=200.0, peak_rss_mib=None, limit=300,
                        stopped="timeout")]
        got = outcomes(lines)["matplotlib"]
        self.assertEqual((got.status, got.whole, got.rerender), ("ok", 200.0, None))
        self.assertEqual(report.cell(got, "whole", "%.3f"), "200.000")
        self.assertEqual(report.cell(got, "rerender", "%.3f"), "> 100s")
        self.assertEqual(report.cell(got, "peak_mib", "%.0f"), "-")

    def test_complete_run_wins_over_partial(self):
        lines = [result(64, "vtk", "ok", whole=9.0, rerender=4.0, peak_rss_mib=10),
                 result(64, "vtk", "partial", whole=8.0, peak_rss_mib=11, limit=12, stopped="oom")]
        got = outcomes(lines)["vtk"]
        self.assertEqual((got.whole, got.rerender, got.peak_mib), (8.0, 4.0, 11))
        self.assertEqual(report.cell(got, "rerender", "%.1f"), "4.0")

    def test_rerender_out_of_memory(self):
        lines = [result(64, "vtk", "partial", whole=8.0, peak_rss_mib=11, limit=12, stopped="oom")]
        self.assertEqual(report.cell(outcomes(lines)["vtk"], "rerender", "%.1f"), "oom")

    def test_fastest_peer(self):
        ok = report.Outcome(status="ok", whole=3.0, rerender=1.0)
        quick = report.Outcome(status="ok", whole=2.0, rerender=2.0)
        slow = report.Outcome(status="timeout", limit=300)
        broken = report.Outcome(status="failed")
        cases = [
            ({"a": ok, "b": quick, "c": slow}, "whole", (2.0, "b", False)),
            ({"a": ok, "b": quick}, "rerender", (1.0, "a", False)),
            ({"c": slow, "d": broken}, "whole", (300, "time limit", True)),
            ({"c": slow}, "rerender", (None, "", False)),
            ({"d": broken}, "whole", (None, "", False)),
        ]
        for peers, key, want in cases:
            with self.subTest(key=key, peers=sorted(peers)):
                got = report.fastest(peers, key)
                self.assertEqual((got.value, got.name, got.at_least), want)


class ReportVerdict(unittest.TestCase):
    PEERS = {"gnuplot": report.Outcome(status="ok", whole=10.0, rerender=2.0),
             "vtk": report.Outcome(status="ok", whole=4.0, rerender=1.0)}

    def vex(self, whole=1.0, rerender=0.2, motion=0.01, peak=100.0):
        times = {} if motion is None else {"motion_avg": motion}
        return report.Outcome(status="ok", whole=whole, rerender=rerender, peak_mib=peak, times=times)

    def test_targets(self):
        big = report.grid_limit_mib(2048)  # 64 MiB grid -> 2 x 32 + 150
        cases = [
            ("all met", 1024, self.vex(), "PASS"),
            ("slower than a peer", 1024, self.vex(whole=4.5), "FAIL"),
            ("faster but not half at 2048", 2048, self.vex(whole=2.5, peak=50), "FAIL"),
            ("half at 2048", 2048, self.vex(whole=2.0, peak=50), "PASS"),
            ("same ratio is fine below 2048", 1024, self.vex(whole=2.5), "PASS"),
            ("re-render over half", 1024, self.vex(rerender=0.6), "FAIL"),
            ("motion at 40 ms", 1024, self.vex(motion=0.040), "FAIL"),
            ("memory over the cap", 2048, self.vex(whole=1.0, peak=big + 1), "FAIL"),
            ("memory under the cap", 2048, self.vex(whole=1.0, peak=big - 1), "PASS"),
            ("no bench figures", 1024, self.vex(rerender=None, motion=None), "INCOMPLETE"),
            ("no render", 1024, self.vex(whole=None), "INCOMPLETE"),
        ]
        for name, n, vex, want in cases:
            with self.subTest(name):
                self.assertEqual(report.verdict(n, vex, self.PEERS)[0], want)

    def test_memory_cap_at_4096(self):
        self.assertAlmostEqual(report.grid_limit_mib(4096), 2 * 128 + 150)

    def test_vexplot_row_from_render_and_bench(self):
        lines = [result(256, "vexplot", "ok", whole=0.5, peak_rss_mib=90),
                 result(256, "vexplot", "ok", whole=0.4, peak_rss_mib=95),
                 result(256, "render_bench", "ok", load=0.1, first_frame=0.2, rerender_avg=0.05,
                        motion_avg=0.01, peak_rss_mib=120)]
        got = outcomes(lines)
        vex = report.vexplot_summary(got["vexplot"], got["render_bench"])
        self.assertEqual((vex.whole, vex.rerender, vex.peak_mib), (0.4, 0.05, 120))

    def test_bench_without_render(self):
        text = report.table(512, report.parse([
            result(512, "vtk", "ok", whole=2.0, rerender=0.5, peak_rss_mib=300),
            result(512, "vexplot", "failed", error="vexplot: unknown command 'render'"),
            result(512, "render_bench", "ok", rerender_avg=0.1, motion_avg=0.01, peak_rss_mib=80)])[512])
        self.assertIn("vexplot            failed       0.1000         80", text)
        self.assertIn("(vexplot: unknown command 'render')", text)
        self.assertIn("re-render 0.200 (vs vtk)", text)

    def test_missing_vexplot_still_prints_peers(self):
        text = report.table(256, report.parse([
            result(256, "gnuplot", "ok", whole=0.7, rerender=0.5, peak_rss_mib=42),
            result(256, "vexplot", "missing", error="no build/apps/vexplot/vexplot"),
            result(256, "render_bench", "missing", error="no render_bench")])[256])
        self.assertIn("gnuplot             0.700", text)
        self.assertIn("vexplot           missing", text)
        self.assertIn("verdict N=256: INCOMPLETE", text)


class PeersEndToEnd(unittest.TestCase):
    """Each peer draws a tiny grid, writes two 1024 x 768 PNGs and reports."""

    def run_peer(self, cmd, tmp):
        grid, out = os.path.join(tmp, "g.npy"), os.path.join(tmp, "o.png")
        np.save(grid, make_peaks.peaks(8))
        done = subprocess.run(cmd + [grid, out], capture_output=True, text=True, timeout=120)
        self.assertEqual(done.returncode, 0, done.stderr)
        line = [s for s in done.stdout.splitlines() if s.startswith("PEER ")][-1]
        for path in (out, peerlib.second_output(out)):
            with open(path, "rb") as f:
                head = f.read(24)
            self.assertEqual(head[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual(struct.unpack(">II", head[16:24]), (1024, 768))
        return json.loads(line[5:])

    def test_each_peer(self):
        python = "/usr/bin/python3"
        peers = [("gnuplot", [os.path.join(HERE, "gnuplot_peer.sh")]),
                 ("matplotlib", [python, os.path.join(HERE, "matplotlib_peer.py")]),
                 ("vtk", [python, os.path.join(HERE, "vtk_peer.py")])]
        for name, cmd in peers:
            with self.subTest(name), tempfile.TemporaryDirectory() as tmp:
                got = self.run_peer(cmd, tmp)
                self.assertEqual(got["name"], name)
                self.assertGreater(got["whole"], 0)
                self.assertGreater(got["rerender"], 0)
                self.assertGreater(got["peak_rss_mib"], 1)


if __name__ == "__main__":
    unittest.main()
