"""Expected values for the smoothing filters, from SciPy and from exact fractions.

Run: /usr/bin/python3 tests/oracles/smoothing.py > tests/data/smoothing.csv

Columns: y, then one filter each. Savitzky-Golay holds for all points, the others where the window is whole; elsewhere
they are empty. SciPy fits powers of the index, which loses digits for wide windows of high order (1e-6 at 101 points,
order 6); there the fit is solved in fractions instead.
"""

import math
import sys
from fractions import Fraction

import numpy as np
from scipy import ndimage, signal

POINTS = 240
SIGMA_PER_FWHM = 1 / (2 * math.sqrt(2 * math.log(2)))


def spectrum():
    i = np.arange(POINTS)
    shape = 20 + 900 * np.exp(-0.5 * ((i - 60.3) / 5) ** 2) + 300 * np.exp(-0.5 * ((i - 150.8) / 7) ** 2)
    return np.random.default_rng(20).poisson(shape).astype(float)


def whole_windows(values, half):
    values = values.astype(float).copy()
    values[:half] = np.nan
    values[POINTS - half :] = np.nan
    return values


def gaussian(y, width):
    sigma = width * SIGMA_PER_FWHM
    half = math.ceil(4.5 * sigma)
    return whole_windows(ndimage.gaussian_filter1d(y, sigma, radius=half), half)


def mean(y, width):
    half = width // 2
    window = np.ones(2 * half + 1)
    if width % 2 == 0:
        window[[0, -1]] = 0.5
    return whole_windows(ndimage.correlate1d(y, window / width), half)


def solve(matrix, right):
    """Gauss-Jordan elimination in fractions."""
    n = len(right)
    rows = [list(row) + [b] for row, b in zip(matrix, right)]
    for k in range(n):
        pivot = rows[k][k]
        rows[k] = [v / pivot for v in rows[k]]
        for other in range(n):
            if other != k:
                factor = rows[other][k]
                rows[other] = [a - factor * b for a, b in zip(rows[other], rows[k])]
    return [row[n] for row in rows]


def exact_fit(points, order):
    """The polynomial fitted to counts at -h .. h, in fractions."""
    h = len(points) // 2
    powers = [sum(Fraction(i) ** k for i in range(-h, h + 1)) for k in range(2 * order + 1)]
    matrix = [[powers[a + b] for b in range(order + 1)] for a in range(order + 1)]
    right = [sum(Fraction(i) ** k * int(v) for i, v in zip(range(-h, h + 1), points)) for k in range(order + 1)]
    coefficients = solve(matrix, right)
    return lambda i: float(sum(c * Fraction(i) ** k for k, c in enumerate(coefficients)))


def exact_savgol(y, width, order):
    h = width // 2
    first, last = exact_fit(y[:width], order), exact_fit(y[-width:], order)
    inside = [exact_fit(y[i - h : i + h + 1], order)(0) for i in range(h, POINTS - h)]
    return np.array([first(i - h) for i in range(h)] + inside + [last(i + 1) for i in range(h)])


def main():
    y = spectrum()
    columns = {"y": y}
    for width in (3, 5, 7, 12, 30):
        columns[f"gaussian {width}"] = gaussian(y, width)
    for width in (2, 5, 12, 17, 18, 19, 20, 101):
        columns[f"mean {width}"] = mean(y, width)
    for width in (3, 5, 7, 9, 11, 31, 153):
        columns[f"median {width}"] = whole_windows(signal.medfilt(y, width), width // 2)
    for width, order in ((5, 2), (7, 3), (25, 4), (239, 2), (11, 0), (9, 7)):
        columns[f"savgol {width} {order}"] = signal.savgol_filter(y, width, order, mode="interp")
    for width, order in ((101, 6), (51, 12), (31, 20)):
        columns[f"exact savgol {width} {order}"] = exact_savgol(y, width, order)
    print(",".join(columns))
    for row in zip(*columns.values()):
        print(",".join("" if math.isnan(v) else repr(float(v)) for v in row))


sys.exit(main())
