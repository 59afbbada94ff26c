"""Shared set-up of the Python tests."""

import os
import unittest

import vexplot


def control_with_engine(testcase, **kwargs):
    """A control running the build tree's OpenGL engine, registered in the
    tests' in-memory settings store; skips the test where no OpenGL context
    can be made. Closed when the test ends."""
    vexplot.register_engine(os.environ["VEXPLOT_OPENGL_PLUGIN_PATH"])
    ctl = vexplot.Control(**kwargs)
    testcase.addCleanup(ctl.close)
    if not ctl.ready:
        raise unittest.SkipTest("no OpenGL context on this machine")
    return ctl


def control_without_engine(testcase):
    """A control the test does not draw with: its settings, properties and
    events are what is tested. (Its first run may register the build tree's
    engine, as any first control of a user does.)"""
    ctl = vexplot.Control()
    testcase.addCleanup(ctl.close)
    return ctl
