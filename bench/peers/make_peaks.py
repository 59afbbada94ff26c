#!/usr/bin/python3
"""Writes the peaks grid that every renderer in the comparison draws.

    make_peaks.py N OUT.npy

OUT.npy holds float64 values of shape (N, N): row iy is y = y[iy] and column
ix is x = x[ix], with x and y both running evenly over [-3, 3]. That is the
layout `vexplot` reads from .npy files, and as raw bytes after the header it
is also what gnuplot's `binary array=(N,N)` expects (x varies fastest), so
one file serves every tool.
"""
import sys

import numpy as np

LOW, HIGH = -3.0, 3.0


def axis(n):
    """The n sample positions along x (and along y)."""
    return np.linspace(LOW, HIGH, n)


def peaks(n):
    """The peaks surface on an n x n grid, indexed [iy, ix]."""
    if n < 2:
        raise ValueError("the grid needs at least 2 x 2 points")
    x = axis(n)[np.newaxis, :]
    y = axis(n)[:, np.newaxis]
    return (3.0 * (1.0 - x) ** 2 * np.exp(-x ** 2 - (y + 1.0) ** 2)
            - 10.0 * (x / 5.0 - x ** 3 - y ** 5) * np.exp(-x ** 2 - y ** 2)
            - np.exp(-(x + 1.0) ** 2 - y ** 2) / 3.0)


def main(argv):
    if len(argv) != 3:
        sys.stderr.write("usage: make_peaks.py N OUT.npy\n")
        return 2
    try:
        n = int(argv[1])
        z = peaks(n)
    except ValueError as err:
        sys.stderr.write("make_peaks.py: %s\n" % err)
        return 2
    np.save(argv[2], np.ascontiguousarray(z, dtype="<f8"))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
