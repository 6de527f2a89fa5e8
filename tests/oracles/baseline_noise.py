"""Straight lines and standard deviations from numpy.

    /usr/bin/python3 tests/oracles/baseline_noise.py

writes tests/data/line_fit.csv     samples, their least-squares line and the SD about it
       tests/data/standard_deviation.csv   one row a sample: how it is made, and its SD in exact arithmetic
"""
import math
import os
from fractions import Fraction

import numpy as np

DATA = os.path.join(os.path.dirname(__file__), "..", "data")


def write(name, header, rows):
    with open(os.path.join(DATA, name), "w") as out:
        out.write(header + "\n")
        out.writelines(",".join(repr(float(v)) for v in row) + "\n" for row in rows)


def line_fit():
    y = np.round(np.random.default_rng(11).normal(20, 4, 60), 3) + 0.25 * np.arange(60)
    t = np.arange(60)
    line = np.polyval(np.polyfit(t, y, 1), t)
    sd = np.sqrt(np.mean((y - line) ** 2))
    write("line_fit.csv", "y,line,sd", ((a, b, sd) for a, b in zip(y, line)))


def exact_sd(values):
    n = len(values)
    mean = sum(values, Fraction(0)) / n
    variance = sum((v - mean) ** 2 for v in values) / (n - 1)
    # 40 digits of the root by integers.
    scale = 10**40
    return math.isqrt(variance.numerator * scale**2 // variance.denominator) / scale


def standard_deviation():
    rows = []
    for offset in (0, 1e3, 1e9, 1e12):
        for n in (2, 3, 5, 1000, 60000):
            for period in (2, 3, 7):
                values = [Fraction(int(offset) + (i % period == 0)) for i in range(n)]
                rows.append((offset, n, period, exact_sd(values)))
    write("standard_deviation.csv", "offset,n,period,sd", rows)


line_fit()
standard_deviation()
