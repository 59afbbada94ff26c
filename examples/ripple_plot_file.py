#!/usr/bin/env python3
"""A damped ripple saved as a plot file (.vxg) with SaveSerialize, read back
into a second control with open_plot, and drawn from there.

    PYTHONPATH=build/python python3 examples/ripple_plot_file.py [OUT.vxg]
"""
import sys

import numpy as np

import vexplot


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else "ripple.vxg"
    y, x = np.mgrid[-8:8:160j, -8:8:160j]
    r = np.hypot(x, y)
    z = np.cos(r) * np.exp(-r / 5.0)

    # Stores of their own: the background and bars set here go into the
    # plot file, not into the user's defaults.
    with vexplot.Control(settings="memory") as ctl:
        if not ctl.ready:
            sys.exit("no graph engine: run `vexplot register PLUGIN` first")
        errors = []
        ctl.on("Error", lambda number, text, *rest: errors.append(text))
        ctl.CopyArrayData(z)
        ctl.BackgroundColor = 0x00402020  # 0x00BBGGRR: dark blue
        ctl.SetGraphMode(1)               # bars
        if not ctl.SaveSerialize(out):
            sys.exit(f"{out} could not be written: {errors}")

    with vexplot.Control(settings="memory") as copy:
        copy.open_plot(out)  # LoadSerialize reads only into a control that saved to a file itself
        ok, zmin, zmax = copy.GetZRange()
        if not ok:
            sys.exit(f"{out}: read back without a data set")
        print(f"{out}: values {zmin:.3f} to {zmax:.3f}")
        picture = out.rsplit(".", 1)[0] + ".png"
        copy.save_image(picture)
        print(f"{picture}: the plot as read back")


if __name__ == "__main__":
    main()
