#!/usr/bin/python3
"""VTK as a peer: the grid warped by height and coloured by height, drawn in
an off-screen render window and written with vtkPNGWriter.

    vtk_peer.py DATA.npy OUT.png

Debian's VTK draws through GLX, so it needs an X server even off screen;
without DISPLAY the script runs itself again under xvfb-run (compare.sh
starts one X server for the whole run instead, so that start-up is not
timed). After OUT.png it turns the camera 3 degrees in azimuth and draws and
writes OUT.rot.png, timing only that.
"""
import math
import os
import shutil
import sys
import time

import peerlib

T0 = peerlib.launch_time()


def rerun_under_xvfb():
    xvfb = shutil.which("xvfb-run")
    if xvfb is None:
        sys.stderr.write("vtk_peer.py: no DISPLAY and no xvfb-run\n")
        sys.exit(2)
    os.environ.setdefault("VEXPLOT_PEER_T0", repr(T0))
    args = [xvfb, "-a", "-s", "-screen 0 1280x1024x24", sys.executable] + sys.argv
    os.execv(xvfb, args)


if not os.environ.get("DISPLAY"):
    rerun_under_xvfb()

import vtk  # noqa: E402  (imports count towards the whole command)
from vtk.util.numpy_support import numpy_to_vtk  # noqa: E402


def surface(z):
    """Pipeline from the grid to a mapper coloured by height. The returned
    tuple keeps the NumPy buffer alive while VTK borrows it."""
    ny, nx = z.shape
    image = vtk.vtkImageData()
    image.SetDimensions(nx, ny, 1)
    image.SetOrigin(-3.0, -3.0, 0.0)
    image.SetSpacing(6.0 / (nx - 1), 6.0 / (ny - 1), 1.0)
    flat = z.ravel()  # x varies fastest, as VTK's point order expects
    heights = numpy_to_vtk(flat, deep=False)
    heights.SetName("z")
    image.GetPointData().SetScalars(heights)

    geometry = vtk.vtkImageDataGeometryFilter()
    geometry.SetInputData(image)
    warp = vtk.vtkWarpScalar()
    warp.SetInputConnection(geometry.GetOutputPort())
    warp.SetScaleFactor(0.5)  # heights span ~15 over a 6-wide square
    mapper = vtk.vtkPolyDataMapper()
    mapper.SetInputConnection(warp.GetOutputPort())
    mapper.SetScalarRange(float(z.min()), float(z.max()))
    return mapper, flat


def place_camera(renderer):
    """Looks at the surface from ELEVATION / AZIMUTH with z up."""
    renderer.ResetCamera()
    camera = renderer.GetActiveCamera()
    fx, fy, fz = camera.GetFocalPoint()
    distance = camera.GetDistance()
    el = math.radians(peerlib.ELEVATION)
    az = math.radians(peerlib.AZIMUTH)
    camera.SetPosition(fx + distance * math.cos(el) * math.cos(az),
                       fy + distance * math.cos(el) * math.sin(az),
                       fz + distance * math.sin(el))
    camera.SetViewUp(0.0, 0.0, 1.0)
    renderer.ResetCamera()
    return camera


def write_png(window, path):
    """Reads the drawn back buffer and writes it; the window has been
    rendered already, so the filter must not render again."""
    grab = vtk.vtkWindowToImageFilter()
    grab.SetInput(window)
    grab.ShouldRerenderOff()
    grab.ReadFrontBufferOff()
    writer = vtk.vtkPNGWriter()
    writer.SetFileName(path)
    writer.SetInputConnection(grab.GetOutputPort())
    writer.Write()


def main(argv):
    if len(argv) != 3:
        sys.stderr.write("usage: vtk_peer.py DATA.npy OUT.png\n")
        return 2
    z = peerlib.load_grid(argv[1])
    mapper, _keep = surface(z)
    actor = vtk.vtkActor()
    actor.SetMapper(mapper)
    renderer = vtk.vtkRenderer()
    renderer.AddActor(actor)
    renderer.SetBackground(1.0, 1.0, 1.0)
    window = vtk.vtkRenderWindow()
    window.SetOffScreenRendering(1)
    window.SetSize(peerlib.WIDTH, peerlib.HEIGHT)
    window.AddRenderer(renderer)
    camera = place_camera(renderer)

    window.Render()
    write_png(window, argv[2])
    whole = time.time() - T0
    peerlib.first("vtk", whole)

    start = time.perf_counter()
    camera.Azimuth(peerlib.AZIMUTH_STEP)
    window.Render()
    write_png(window, peerlib.second_output(argv[2]))
    rerender = time.perf_counter() - start

    peerlib.report("vtk", whole, rerender)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv))
    except MemoryError:
        sys.stderr.write("vtk_peer.py: out of memory\n")
        sys.exit(3)
