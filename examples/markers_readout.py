#!/usr/bin/env python3
"""Two markers and the difference tracer between them, by scripted input.

    PYTHONPATH=build/python python3 examples/markers_readout.py

The script works the control as a user does, headless: it chooses the
Marker tool, clicks twice on the surface, chooses the difference tracer,
clicks on the first marker to fix it and moves the mouse onto the second,
then prints what the info window reads.
"""
import os

import numpy as np

import vexplot

def main():
    here = os.path.dirname(os.path.abspath(__file__))
    ctl = vexplot.Control(width=640, height=480)
    ctl.CopyArrayData(np.load(os.path.join(here, "peaks.npy")))
    ctl.ShowWindows(vexplot.wndInfo, 1)

    ctl.command(vexplot.Command.Marker)
    for x, y in ((270, 250), (380, 240)):      # view-window pixels
        ctl.mouse_down(x, y)
        ctl.mouse_up(x, y)

    ctl.command(vexplot.Command.DiffTracer)
    ctl.mouse_move(270, 250)
    ctl.mouse_down(270, 250)                   # the fixed point
    ctl.mouse_up(270, 250)
    ctl.mouse_move(380, 240)                   # the current point

    print("\n".join(ctl.info_lines()))
    print("status bar:", ctl.status_text())
    ctl.save_image("markers_readout.png")


if __name__ == "__main__":
    main()
