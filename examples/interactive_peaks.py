#!/usr/bin/env python3
"""The control in a window: the script turns the camera for a few seconds
while the user can already drag the surface, reports data selections, then
leaves the window to the user until it is closed.

    PYTHONPATH=build/python python3 examples/interactive_peaks.py

In an interactive session (python3 -i, or at the >>> prompt) the window
stays alive between commands without calling process_events() or exec().
"""
import numpy as np

import vexplot


def peaks(n):
    y, x = np.mgrid[-3:3:n * 1j, -3:3:n * 1j]
    return (3 * (1 - x) ** 2 * np.exp(-x**2 - (y + 1) ** 2)
            - 10 * (x / 5 - x**3 - y**5) * np.exp(-x**2 - y**2)
            - np.exp(-(x + 1) ** 2 - y**2) / 3)


def main():
    # The user's own settings: what the user changes in the window is kept
    # for the next plot, as in the viewer.
    ctl = vexplot.Control(width=900, height=650, show=True, settings="user")
    ctl.on("DataSelect", lambda *box: print("selected x %.2f..%.2f  y %.2f..%.2f  z %.2f..%.2f" % box))
    ctl.on("Error", lambda number, text, *rest: print("error:", text))
    ctl.CopyArrayData(peaks(200))
    ctl.ShowWindows(vexplot.wndInfo | vexplot.wndLegend, 1)

    # Scripted motion; the window keeps answering the mouse in between.
    for step in range(90):
        ctl.SetCamAzim(30.0 + 4.0 * step)
        vexplot.process_events(30)

    vexplot.exec()  # until the window is closed


if __name__ == "__main__":
    main()
