#!/usr/bin/env python3
"""A Gaussian hill on a 120 x 80 grid, drawn headless and saved as a picture.

    PYTHONPATH=build/python python3 examples/gaussian_surface.py [OUT.png]

Needs the OpenGL engine registered (`build/apps/vexplot/vexplot register`).
"""
import sys

import numpy as np

import vexplot


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else "gaussian.png"
    nx, ny = 120, 80
    x = np.linspace(-3.0, 3.0, nx)
    y = np.linspace(-2.0, 2.0, ny)
    # z[row, column] = z[y, x]: rows run along Y, columns along X.
    z = np.exp(-(x[np.newaxis, :] ** 2 + y[:, np.newaxis] ** 2))

    # A store of its own: the labels and camera set here stay with this job
    # instead of becoming the user's defaults.
    ctl = vexplot.Control(width=800, height=600, settings="memory")
    if not ctl.ready:
        sys.exit("no graph engine: run `vexplot register PLUGIN` first")
    ctl.CopyArrayData(z)
    ctl.CopyAxisScaleData(0, x)  # X scale: the columns' coordinates
    ctl.CopyAxisScaleData(1, y)  # Y scale: the rows' coordinates
    ctl.XLabel, ctl.YLabel, ctl.ZLabel = "x", "y", "exp(-x\u00b2-y\u00b2)"
    ctl.SetCamAzim(35.0)
    ctl.SetCamElev(30.0)
    ctl.save_image(out)
    print(f"{out}: {ctl.image().shape[1]} x {ctl.image().shape[0]}")


if __name__ == "__main__":
    main()
