"""Pictures of the view through the engine: image() and save_image()."""

import os
import re
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

import numpy as np

import vexplot
from support import control_with_engine

SVG = "{http://www.w3.org/2000/svg}"


def gaussian(ny, nx):
    y, x = np.mgrid[-1:1:ny * 1j, -1:1:nx * 1j]
    return np.exp(-4.0 * (x * x + y * y))


class ImageTest(unittest.TestCase):
    def setUp(self):
        self.ctl = control_with_engine(self, width=320, height=200)
        self.ctl.CopyArrayData(gaussian(40, 60))

    def test_image_is_the_view_at_the_control_size(self):
        image = self.ctl.image()
        self.assertEqual(image.shape, (200, 320, 4))
        self.assertEqual(image.dtype, np.uint8)
        self.assertTrue((image[:, :, 3] == 255).all())
        # A surface, not a plain background: many colours, and the
        # centre (the peak) differs from the corner.
        colours = np.unique(image[:, :, :3].reshape(-1, 3), axis=0)
        self.assertGreater(len(colours), 20)
        self.assertFalse((image[100, 160, :3] == image[2, 2, :3]).all())

    def test_the_picture_follows_the_background_colour(self):
        self.ctl.BackgroundColor = 0x000000FF  # red, as 0x00BBGGRR
        corner = self.ctl.image()[1, 1]
        self.assertEqual(tuple(corner), (255, 0, 0, 255))

    def test_save_image_writes_every_format_by_extension(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, magic in [("view.png", b"\x89PNG"), ("view.BMP", b"BM"), ("view.svg", b"<?xml"),
                                ("view.pdf", b"%PDF-"), ("view.emf", b"\x01\x00\x00\x00")]:
                with self.subTest(name):
                    path = os.path.join(folder, name)
                    self.ctl.save_image(path)
                    with open(path, "rb") as f:
                        self.assertEqual(f.read(len(magic)), magic)
            with self.assertRaises(OSError):
                self.ctl.save_image(os.path.join(folder, "missing", "view.png"))
            with self.assertRaises(OSError):
                self.ctl.save_image(os.path.join(folder, "view.gif"))

    def test_vector_files_are_well_formed_drawings_with_texts(self):
        with tempfile.TemporaryDirectory() as folder:
            svg_path, pdf_path = os.path.join(folder, "view.svg"), os.path.join(folder, "view.pdf")
            self.ctl.save_image(svg_path, 800, 600)
            self.ctl.save_image(pdf_path, 800, 600)
            root = ElementTree.parse(svg_path).getroot()
            self.assertEqual((root.get("width"), root.get("height")), ("800", "600"))
            self.assertGreater(len(root.findall(SVG + "polygon")), 100)  # the surface's cells
            texts = [t.text for t in root.findall(SVG + "text")]
            self.assertIn("0", texts)  # tick texts stay text
            with open(pdf_path, "rb") as f:
                pdf = f.read()
            # Every object the cross-reference table lists starts where it says.
            xref = int(re.search(rb"startxref\s+(\d+)", pdf).group(1))
            self.assertTrue(pdf[xref:].startswith(b"xref"))
            entries = re.findall(rb"(\d{10}) 00000 n ", pdf[xref:])
            self.assertGreater(len(entries), 5)
            for number, offset in enumerate(entries, start=1):
                self.assertTrue(pdf[int(offset):].startswith(b"%d 0 obj" % number), number)
            self.assertIn(b"/BaseFont /Helvetica", pdf)

    def test_drawings_carry_annotations_where_the_data_puts_them_at_any_size(self):
        self.ctl.Labels.Add("peak", 30.0, 20.0, 1.0)
        for view_type in (2, 0):  # the flat view XY, then the 3-D view
            self.ctl.SetCamViewType(view_type)
            for width, height in [(320, 200), (960, 600)]:
                with self.subTest(view=view_type, size=(width, height)), tempfile.TemporaryDirectory() as folder:
                    path = os.path.join(folder, "view.svg")
                    self.ctl.save_image(path, width, height)
                    texts = {t.text: t for t in ElementTree.parse(path).getroot().iter(SVG + "text")}
                    label = next(t for text, t in texts.items() if text.startswith("peak"))
                    if view_type != 2:
                        continue
                    # In the flat view the label starts beside X = 30, whose
                    # tick text is centred on it: the one nearest the bottom.
                    tick = max((t for t in ElementTree.parse(path).getroot().iter(SVG + "text") if t.text == "30"),
                               key=lambda t: float(t.get("y")))
                    self.assertLess(abs(float(label.get("x")) - float(tick.get("x"))), 16)

    def test_a_sections_curve_is_lines_of_the_drawing(self):
        polylines = []
        self.ctl.Enable1DView(1, 2)  # along X
        for plot_style in (0, 2):  # no curve, then the curve as lines
            self.ctl.SetPlotStyle1DView(plot_style)
            with tempfile.TemporaryDirectory() as folder:
                path = os.path.join(folder, "section.svg")
                self.ctl.save_image(path, 640, 400)
                polylines.append(len(list(ElementTree.parse(path).getroot().iter(SVG + "polyline"))))
        self.assertGreaterEqual(polylines[1] - polylines[0], 40)  # 60 samples along X

    def test_save_image_renders_at_the_asked_size_and_refuses_bad_sizes(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "big.png")
            self.ctl.save_image(path, 900, 500)
            with open(path, "rb") as f:
                header = f.read(24)
            self.assertEqual(int.from_bytes(header[16:20], "big"), 900)
            self.assertEqual(int.from_bytes(header[20:24], "big"), 500)
            for width, height in [(0, 100), (-5, 100), (100, 16385)]:
                with self.subTest(size=(width, height)), self.assertRaises(OSError):
                    self.ctl.save_image(path, width, height)
            # A refused export leaves the earlier file as it was.
            with open(path, "rb") as f:
                self.assertEqual(f.read(24), header)


class WindowTest(unittest.TestCase):
    """The control in a window (Qt's offscreen platform under ctest)."""

    def test_a_windowed_control_is_scripted_like_a_headless_one(self):
        ctl = control_with_engine(self, width=400, height=300, show=True)
        self.assertTrue(ctl.windowed)
        errors = []
        ctl.on("Error", lambda number, text, *rest: errors.append(text))
        ctl.CopyArrayData(gaussian(20, 30))
        ctl.SetGraphMode(9)
        vexplot.process_events(50)
        self.assertEqual(errors, ["Sorry, property value isn't valid."])
        # The view lies between the window's title and status bars.
        height, width, _ = ctl.image().shape
        self.assertEqual(width, 400)
        self.assertLess(height, 300)
        ctl.close()
        vexplot.exec()  # returns at once: no window is left to wait for

    def test_a_headless_control_has_no_window_to_show(self):
        ctl = control_with_engine(self)
        with self.assertRaises(RuntimeError):
            ctl.show()

