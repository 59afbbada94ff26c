"""The annotation collections from Python: objects with members by name,
out arguments as tuples, len/indexing/iteration, detached wrappers, the
DataSelect event of a region, and what a closed control leaves behind."""

import math
import unittest

import numpy as np

from support import control_with_engine


class AnnotationTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_with_engine(self, width=320, height=240)
        self.ctl.CopyArrayData(np.arange(20.0).reshape(4, 5))  # z 0 .. 19

    def test_collections_index_iterate_and_detach_removed_items(self):
        markers = self.ctl.Markers
        first = markers.Add(1.0, 2.0, 3.0)
        second = markers.Add(2.0, 3.0, 4.0)
        self.assertEqual(len(markers), 2)
        self.assertEqual(first.Position(), (True, 1.0, 2.0, 3.0))
        self.assertEqual([m.Position()[1] for m in markers], [1.0, 2.0])
        self.assertEqual(markers[-1], second)
        with self.assertRaises(IndexError):
            markers[2]
        self.assertIsNone(markers.Item(7))
        first.Caption = "peak"
        self.assertEqual(markers[0].Caption, "peak")
        self.assertFalse(second.Move(math.nan, 0.0, 0.0))
        markers.Remove(first)
        self.assertEqual(len(markers), 1)
        self.assertEqual(first.Position()[0], False)

    def test_a_region_raises_data_select_when_drawn_and_moved(self):
        seen = []
        self.ctl.on("DataSelect", lambda *box: seen.append(box))
        region = self.ctl.Regions.Add(3.0, 2.0, 0.0, 1.0, 0.0, 0.0)
        self.assertEqual(seen, [(1.0, 3.0, 0.0, 2.0, 0.0, 19.0)])
        region.Move(0.0, 0.0, 0.0, 1.0, 1.0, 0.0)
        self.assertEqual(len(seen), 2)

    def test_wrappers_outlive_their_control_harmlessly(self):
        label = self.ctl.Labels.Add("Top", 1.0, 1.0, 19.0)
        self.assertEqual(label.Caption, "Top")
        labels = self.ctl.Labels
        self.ctl.close()
        self.assertEqual(label.Caption, "")
        self.assertEqual(label.Position()[0], False)
        self.assertEqual(len(labels), 0)


class AnnotationPictureTest(unittest.TestCase):
    """Where the markers' colours land: a ridge across the grid hides the
    marker behind it in 3-D, never the one in front; the flat view shows
    both."""

    MAGENTA = (255, 0, 255)
    CYAN = (0, 255, 255)

    def pixels_of(self, rgb):
        image = self.ctl.image()[:, :, :3]
        return int((image == np.array(rgb, dtype=np.uint8)).all(axis=2).sum())

    def setUp(self):
        self.ctl = control_with_engine(self, width=400, height=300)
        z = np.zeros((21, 21))
        z[:, 10] = 50.0  # a wall along Y at x = 10 (z[y, x])
        self.ctl.CopyArrayData(z)
        self.ctl.SetCamElev(4.0)
        self.ctl.SetCamAzim(90.0)  # looking along X, across the wall
        self.front = self.ctl.Markers.Add(3.0, 10.0, 0.0)
        self.back = self.ctl.Markers.Add(17.0, 10.0, 0.0)
        self.front.Color = 0xFF00FF
        self.back.Color = 0xFFFF00  # 0x00BBGGRR: cyan

    def test_the_wall_hides_exactly_one_marker_in_3d(self):
        seen = [self.pixels_of(self.MAGENTA) > 20, self.pixels_of(self.CYAN) > 20]
        self.assertEqual(seen.count(True), 1, seen)

    def test_the_flat_view_shows_both(self):
        self.ctl.SetCamViewType(2)
        self.assertGreater(self.pixels_of(self.MAGENTA), 20)
        self.assertGreater(self.pixels_of(self.CYAN), 20)
