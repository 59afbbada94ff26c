"""The interaction tools driven by scripted input, as a host's test would."""

import math
import re
import unittest

import numpy as np

import vexplot
from support import control_with_engine

MARKER, DIFF_TRACER, ZOOM, TRACER, SELECT, VIEW_2D = 32902, 32904, 32900, 32903, 32908, 32801
KEYPAD_PLUS, KEYPAD_0, TAB, DELETE, ESCAPE = 0x6B, 0x60, 0x09, 0x2E, 0x1B


def numbers(line):
    return [float(v) for v in re.findall(r"\((-?[0-9.]+)\)", line)]


def section(lines, header):
    at = lines.index(header)
    return lines[at + 1:]


class ScriptedToolsTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_with_engine(self, width=640, height=480)
        y, x = np.mgrid[0:60, 0:80]
        self.ctl.CopyArrayData(np.sin(x / 9.0) * np.cos(y / 7.0) + 0.01 * x)
        self.ctl.ShowWindows(vexplot.wndInfo, 1)

    def place_two_markers_and_trace(self):
        ctl = self.ctl
        self.assertTrue(ctl.command(MARKER))
        for x, y in ((260, 240), (380, 250)):
            ctl.mouse_down(x, y)
            ctl.mouse_up(x, y)
        # The marker letters run on across the process: the last two made.
        lines = ctl.info_lines()
        a, b = [numbers(lines[i + 1]) for i, line in enumerate(lines) if line.startswith("Marker ")][-2:]
        ctl.command(DIFF_TRACER)
        ctl.mouse_move(260, 240)
        ctl.mouse_down(260, 240)
        ctl.mouse_up(260, 240)
        ctl.mouse_move(380, 250)
        return a, b, section(ctl.info_lines(), "DeltaTracer:")[:4]

    def test_difference_tracer_reads_the_two_markers_in_both_views(self):
        for view in ("3-D", "2-D"):
            with self.subTest(view=view):
                if view == "2-D":
                    self.ctl.command(VIEW_2D)
                    self.ctl.command(SELECT)
                    for _ in range(2):  # the 3-D markers go
                        self.ctl.key(TAB)
                        self.ctl.key(DELETE)
                a, b, (fixed, current, delta, distance) = self.place_two_markers_and_trace()
                self.assertEqual(numbers(fixed), a)
                self.assertEqual(numbers(current), b)
                self.assertEqual(numbers(delta), [round(q - p, 6) for p, q in zip(a, b)])
                expected = math.hypot(b[0] - a[0], b[1] - a[1])
                self.assertAlmostEqual(float(distance.split(":")[1]), expected, places=5)
                self.assertEqual(self.ctl.status_text(), "<LClick> Set Fixed position")

    def test_keypad_zoom_and_the_rubber_band_move_the_scale_entries(self):
        ctl = self.ctl
        ctl.command(ZOOM)
        ctl.key(KEYPAD_PLUS)
        self.assertIn("X scale: 87.50%", ctl.info_lines())  # 79 wide less one step of 79 * 10 / 80
        ctl.mouse_down(250, 200)
        ctl.mouse_move(300, 260)
        ctl.mouse_up(330, 280)
        x_scale = float(ctl.info_lines()[0].split()[2].rstrip("%"))
        self.assertLess(x_scale, 60.0)
        ctl.key(KEYPAD_0)
        self.assertEqual(ctl.info_lines()[:2], ["X scale: 100.00%", "Y scale: 100.00%"])

    def test_escape_drops_a_marker_being_placed_and_the_tracer_goes_with_its_tool(self):
        ctl = self.ctl
        ctl.command(MARKER)
        ctl.mouse_down(300, 240)
        ctl.mouse_move(320, 250)
        ctl.key(ESCAPE)
        ctl.mouse_up(320, 250)
        self.assertFalse(any(line.startswith("Marker") for line in ctl.info_lines()))
        ctl.command(TRACER)
        ctl.mouse_move(300, 240)
        pos = [line for line in ctl.info_lines() if line.startswith("Pos:")][0]
        self.assertEqual(numbers(section(ctl.info_lines(), "Tracer:")[0]), numbers(pos))
        ctl.command(SELECT)
        self.assertNotIn("Tracer:", ctl.info_lines())

    def test_position_reads_out_in_the_info_window_or_else_the_status_bar(self):
        ctl = self.ctl
        ctl.mouse_move(320, 240)
        pos = [line for line in ctl.info_lines() if line.startswith("Pos:")][0]
        self.assertRegex(pos, r"^Pos: X\(-?[0-9.]+\) Y\(-?[0-9.]+\) Z\(-?[0-9.]+\)$")
        ctl.mouse_leave()
        self.assertIn("Pos: X(-) Y(-) Z(-)", ctl.info_lines())
        ctl.ShowWindows(vexplot.wndInfo, 0)
        ctl.mouse_move(320, 240)
        self.assertEqual(ctl.status_text(), pos.replace("Pos:", "Position:"))

    def test_data_cell_mouse_over_hands_the_host_the_cell(self):
        cells = []
        self.ctl.on("DataCellMouseOver", lambda x, y, z, select, text: cells.append((x, y, z)) or "cell")
        self.ctl.mouse_move(320, 240)
        self.assertEqual(cells, [])  # only when the host asked for cell tool tips
        self.ctl.EnableCustomDataCellToolTip(1)
        self.ctl.mouse_move(320, 240)
        self.assertEqual(len(cells), 1)
        pos = numbers([line for line in self.ctl.info_lines() if line.startswith("Pos:")][0])
        self.assertEqual([round(v, 6) for v in cells[0]], pos)


class ToolsWithoutDataTest(unittest.TestCase):
    def test_every_tool_and_key_is_harmless_before_any_data(self):
        ctl = control_with_engine(self)
        before = ctl.info_lines()
        for command in range(32900, 32909):
            ctl.command(command)
            ctl.mouse_move(10, 10)
            ctl.mouse_down(100, 100)
            ctl.mouse_move(150, 150)
            ctl.mouse_up(150, 150)
            ctl.double_click(150, 150)
            for key in (TAB, 0x0D, ESCAPE, DELETE, KEYPAD_0, KEYPAD_PLUS, 0x6D):
                ctl.key(key)
        self.assertEqual(ctl.info_lines(), before)

