"""Menu commands from a script: the file commands with scripted file
dialogs, and external resampling with its event."""

import os
import tempfile
import unittest

import numpy as np

import vexplot
from support import control_with_engine


class FileCommandTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_with_engine(self, width=200, height=150)
        self.dir = tempfile.TemporaryDirectory()
        self.addCleanup(self.dir.cleanup)

    def test_file_commands_take_the_name_the_script_answers(self):
        path = os.path.join(self.dir.name, "plot.vxg")
        self.ctl.CopyArrayData(np.arange(24.0).reshape(4, 6))
        self.ctl.answer_file_dialogs(path)
        self.assertTrue(self.ctl.command(vexplot.Command.SaveVexplot))
        other = control_with_engine(self, width=200, height=150)
        other.answer_file_dialogs(path)
        self.assertTrue(other.command(vexplot.Command.LoadVexplot))
        self.assertEqual(other.GetXRange(), (True, 0.0, 5.0))

    def test_external_resampling_hands_over_the_visible_range(self):
        got = []
        self.ctl.on("Resample", lambda *r: got.append(r))
        self.ctl.CopyArrayData(np.zeros((4, 5)))
        self.ctl.command(vexplot.Command.ExternalResampling)  # whole range: the default answer is yes
        self.assertEqual(got, [(0.0, 4.0, 0.0, 3.0)])

