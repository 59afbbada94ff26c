"""NumPy arrays into the control: a[row, column] is a[y, x], scales by axis."""

import unittest

import numpy as np

from support import control_with_engine


class CopyArrayDataTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_with_engine(self, width=320, height=240)

    def test_rows_are_y_and_columns_are_x(self):
        ny, nx = 3, 5
        y, x = np.mgrid[0:ny, 0:nx]
        self.ctl.CopyArrayData(10.0 * y + x)
        self.assertEqual(self.ctl.GetXRange(), (True, 0.0, nx - 1.0))
        self.assertEqual(self.ctl.GetYRange(), (True, 0.0, ny - 1.0))
        self.assertEqual(self.ctl.GetZRange()[1:], (0.0, 24.0))
        self.assertEqual((self.ctl.GetNumColumns(), self.ctl.GetNumRows()), (nx, ny))

    def test_other_array_forms_convert_to_doubles(self):
        cases = [
            ("ints", np.arange(6, dtype=np.int32).reshape(2, 3), (0.0, 2.0), (0.0, 5.0)),
            ("nested lists", [[1, 2], [3, 4], [5, 6]], (0.0, 1.0), (1.0, 6.0)),
            ("transposed view", np.arange(8.0).reshape(4, 2).T, (0.0, 3.0), (0.0, 7.0)),
            ("strided slice", np.arange(20.0).reshape(4, 5)[::2, ::2], (0.0, 2.0), (0.0, 14.0)),
        ]
        for label, array, xrange_, zrange in cases:
            with self.subTest(label):
                self.ctl.CopyArrayData(array)
                self.assertEqual(self.ctl.GetXRange()[1:], xrange_)
                self.assertEqual(self.ctl.GetZRange()[1:], zrange)

    def test_axis_scales_replace_the_index_scales(self):
        self.ctl.CopyArrayData(np.zeros((3, 4)))
        self.ctl.CopyAxisScaleData(0, np.linspace(-2.0, 2.0, 4))
        self.ctl.CopyAxisScaleData(1, [10.0, 20.0, 30.0])
        self.assertEqual(self.ctl.GetXRange(), (True, -2.0, 2.0))
        self.assertEqual(self.ctl.GetYRange(), (True, 10.0, 30.0))

