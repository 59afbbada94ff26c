"""Members by name and dispid, argument conversion and automation errors,
on a control without an engine (nothing here draws)."""

import os
import tempfile
import unittest

import numpy as np

import vexplot
from support import control_without_engine

DISP_E_TYPEMISMATCH = 0x80020005
DISP_E_BADPARAMCOUNT = 0x8002000E


class MemberAccessTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_without_engine(self)

    def test_properties_read_back_what_was_written(self):
        cases = [
            ("ShowXMajorGrid", False, False),
            ("ShowXMajorGrid", True, True),
            ("BackgroundColor", 0x00336699, 0x00336699),
            ("XLabel", "Depth (m)", "Depth (m)"),
            ("Quality3D", 1, 1),
        ]
        for name, written, expected in cases:
            with self.subTest(name=name, value=written):
                setattr(self.ctl, name, written)
                self.assertEqual(getattr(self.ctl, name), expected)
                self.assertIs(type(getattr(self.ctl, name)), type(expected))

    def test_out_arguments_come_back_after_the_result(self):
        self.assertIsNone(self.ctl.SetGraphMode(2))  # no result, no out arguments
        # No data, so no range; invoke() creates the out arguments as attribute calls do.
        for result in (self.ctl.GetXRange(), self.ctl.invoke(self.ctl.dispid("GetXRange"))):
            self.assertEqual(result, (False, 0.0, 0.0))
            self.assertEqual([type(v) for v in result], [bool, float, float])

    def test_names_resolve_case_insensitively_to_dispids(self):
        dispid = self.ctl.dispid("GetGraphMode")
        self.assertEqual(self.ctl.dispid("getgraphmode"), dispid)
        self.assertEqual(self.ctl.invoke(dispid), self.ctl.GetGraphMode())
        self.assertEqual(self.ctl.typelib_name(dispid), "GetGraphMode")
        self.assertIn("GetXRange", self.ctl.members())
        self.assertIn("GetXRange", dir(self.ctl))
        # Where the type library spells a member otherwise, typelib_name() says so.
        self.assertEqual(self.ctl.typelib_name(4), "GraphEngine")
        self.assertEqual(self.ctl.dispid("Engine"), 4)

    def test_unknown_names_and_dispids(self):
        with self.assertRaises(AttributeError):
            self.ctl.NoSuchMember
        with self.assertRaises(AttributeError):
            self.ctl.NoSuchMember = 1
        with self.assertRaises(AttributeError):
            self.ctl.dispid("NoSuchMember")
        with self.assertRaises(KeyError):
            self.ctl.typelib_name(987654)
        with self.assertRaises(vexplot.AutomationError):
            self.ctl.invoke(987654)
        with self.assertRaises(AttributeError):
            self.ctl.GetGraphMode = 1  # a method is not a property to set

    def test_closed_control_refuses_calls(self):
        with vexplot.Control() as ctl:
            ctl.SetGraphMode(0)
        with self.assertRaises(RuntimeError):
            ctl.GetGraphMode()


class ArgumentTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_without_engine(self)

    def test_wrong_argument_count_raises_with_the_hresult(self):
        for args in [(), (1, 2)]:
            with self.subTest(args=args):
                with self.assertRaises(vexplot.AutomationError) as caught:
                    self.ctl.SetGraphMode(*args)
                self.assertEqual(caught.exception.hresult, DISP_E_BADPARAMCOUNT)
                self.assertIn("SetGraphMode", str(caught.exception))

    def test_an_argument_that_does_not_convert_names_its_position(self):
        with self.assertRaises(vexplot.AutomationError) as caught:
            self.ctl.SetGraphMode("surface")
        self.assertEqual(caught.exception.hresult, DISP_E_TYPEMISMATCH)
        self.assertEqual(caught.exception.argument, 0)

    def test_numpy_scalars_pass_as_numbers(self):
        for value in [np.int64(1), np.int32(1), np.float64(1.0), np.array(1.0)]:
            with self.subTest(value=repr(value)):
                self.ctl.SetGraphMode(value)  # raises when it does not convert

    def test_values_python_cannot_pass(self):
        with self.assertRaises(OverflowError):
            self.ctl.SetGraphMode(2**40)
        with self.assertRaises(TypeError):
            self.ctl.SetGraphMode(object())
        with self.assertRaises(TypeError):
            self.ctl.SetGraphMode(["a", "b"])
        with self.assertRaises(ValueError):
            self.ctl.SetGraphMode(np.zeros((2, 2, 2)))


class EnumerationTest(unittest.TestCase):
    def test_enumerations_are_int_enums_and_constants(self):
        self.assertEqual(vexplot.enumWindows.wndInfo, 1)
        self.assertEqual(vexplot.enumWindows.wndAll, 31)
        self.assertEqual(vexplot.wndStatus, 16)
        self.assertEqual(vexplot.enumGraphStyle.Surface, 1)
        self.assertEqual(vexplot.enumAxisStyles.Box9, 20)
        self.assertIn("enumPointStyle", vexplot.__all__)


class SettingsStoreTest(unittest.TestCase):
    def test_a_property_written_is_the_default_of_its_own_store_alone(self):
        # One batch job's writes must not become the next one's defaults:
        # a file store keeps them for its next control, a memory store for
        # nobody, and neither touches the user's store.
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "project.db")
            with vexplot.Control(settings="memory") as pristine:
                default = pristine.BackgroundColor
            with vexplot.Control(settings="user") as user:
                users_own = user.BackgroundColor
            with vexplot.Control(settings=path) as first:
                first.BackgroundColor = 0x00123456
            with vexplot.Control(settings="memory") as batch:
                batch.BackgroundColor = 0x00654321
            with vexplot.Control(settings=path) as second:
                self.assertEqual(second.BackgroundColor, 0x00123456)
            with vexplot.Control(settings="memory") as fresh:
                self.assertEqual(fresh.BackgroundColor, default)
            with vexplot.Control() as user:
                self.assertEqual(user.BackgroundColor, users_own)

    def test_a_store_that_cannot_be_used_is_refused(self):
        for settings in ["", "/proc/version"]:
            with self.subTest(settings=settings):
                with self.assertRaises(ValueError):
                    vexplot.Control(settings=settings)
