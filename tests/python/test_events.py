"""Event handlers: the control's Error event through its connection point,
the handlers' answers into by-reference arguments, and their exceptions."""

import unittest

import vexplot
from support import control_without_engine

INVALID_VALUE = 0x800A017C


class ErrorEventTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_without_engine(self)
        self.calls = []

    def record(self, *args):
        self.calls.append(args)

    def test_an_invalid_graph_mode_fires_error_with_its_arguments(self):
        self.ctl.on("Error", self.record)
        self.ctl.SetGraphMode(9)
        self.assertEqual(len(self.calls), 1)  # once, though both event interfaces fire it
        number, description, scode, source, help_file, help_context, cancel = self.calls[0]
        self.assertEqual(number, INVALID_VALUE & 0xFFFF)
        self.assertEqual(scode & 0xFFFFFFFF, INVALID_VALUE)
        self.assertEqual(description, "Sorry, property value isn't valid.")
        self.assertIsInstance(source, str)
        self.assertEqual((help_file, help_context, cancel), ("", 0, False))

    def test_a_handler_answer_fills_the_by_reference_arguments(self):
        # Handlers run in order, each seeing what the earlier ones answered.
        cases = [
            ("Replaced text", ("Replaced text", False)),
            (True, ("Sorry, property value isn't valid.", True)),
            (("Both", True), ("Both", True)),
            ((None, True), ("Sorry, property value isn't valid.", True)),
            (None, ("Sorry, property value isn't valid.", False)),
        ]
        for answer, expected in cases:
            with self.subTest(answer=answer):
                self.ctl.off("Error")
                self.calls.clear()
                self.ctl.on("Error", lambda *args, a=answer: a)
                self.ctl.on("Error", self.record)
                self.ctl.SetGraphMode(9)
                self.assertEqual((self.calls[0][1], self.calls[0][6]), expected)

    def test_an_answer_of_the_wrong_type_raises_from_the_call(self):
        self.ctl.on("Error", lambda *args: 2.5j)
        with self.assertRaises(TypeError):
            self.ctl.SetGraphMode(9)

    def test_a_handler_exception_is_raised_by_the_call_that_fired_it(self):
        def failing(*args):
            raise ValueError("from the handler")

        self.ctl.on("Error", failing)
        self.ctl.on("Error", self.record)
        with self.assertRaisesRegex(ValueError, "from the handler"):
            self.ctl.SetGraphMode(9)
        # The other handlers still ran, and the control goes on working.
        self.assertEqual(len(self.calls), 1)
        self.ctl.off("Error", failing)
        self.ctl.SetGraphMode(9)
        self.assertEqual(len(self.calls), 2)

    def test_a_handler_may_call_the_control(self):
        modes = []
        self.ctl.on("Error", lambda *args: modes.append(self.ctl.GetGraphMode()))
        self.ctl.SetGraphMode(9)
        self.assertEqual(modes, [0])

    def test_unknown_event_names_are_refused(self):
        with self.assertRaises(ValueError):
            self.ctl.on("error", self.record)

