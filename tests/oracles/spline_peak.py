"""Apex, crossings, centroid and area of not-a-knot splines, from scipy.interpolate.

Run: /usr/bin/python3 tests/oracles/spline_peak.py tests/data

Writes spline_samples.csv (peak, y) and spline_results.csv (one row for each peak). Positions are counted from the
first sample. area_axis is the area over the axis 100 + 0.05 i + 1e-5 i^2 of the sample index i.
"""

import sys

import numpy as np
from scipy.interpolate import CubicSpline

PEAK_LENGTHS = (2, 3, 4, 5, 6, 9, 14, 21, 40, 64, 65, 100)
NOISE_LENGTHS = (4, 5, 6, 7, 8, 9, 10, 11, 12) * 4


def noise(rng, n):
    return np.round(rng.uniform(0, 1000, n), 3)


def noisy_peak(rng, n):
    i = np.arange(n)
    clean = 1000 * np.exp(-0.5 * ((i - rng.uniform(0.35, 0.65) * (n - 1)) / (0.18 * n)) ** 2) + 30
    return np.round(rng.normal(clean, np.sqrt(clean)), 3)


def apex(spline, n):
    roots = spline.derivative().roots(extrapolate=False) if n > 2 else np.array([])
    places = np.concatenate([np.arange(n), roots[np.isfinite(roots)]])
    best = places[np.argmax(spline(places))]
    return best, float(spline(best))


def crossing(spline, level, start, end):
    """The first place from start towards end where the curve goes below the level."""
    roots = spline.solve(level, extrapolate=False)
    step = 1e-6 if end > start else -1e-6
    outward = sorted((r for r in roots if (r - start) * step > 0), key=lambda r: abs(r - start))
    for root in outward:
        if (end - root) / step > 1 and spline(root + step) < level:
            return root
    return end


def intervals(start, end):
    inner = [k for k in range(int(np.ceil(start)), int(np.floor(end)) + 1) if start < k < end]
    edges = [start, *inner, end]
    return list(zip(edges[:-1], edges[1:]))


def integral(function, start, end):
    """Exact up to degree 9, so exact on every interval of the spline."""
    nodes, weights = np.polynomial.legendre.leggauss(5)
    total = 0.0
    for a, b in intervals(start, end):
        total += 0.5 * (b - a) * np.sum(weights * function(0.5 * (b - a) * nodes + 0.5 * (a + b)))
    return total


def axis_slope(u):
    i = np.floor(u)
    axis = lambda k: 100 + 0.05 * k + 1e-5 * k * k
    return axis(i + 1) - axis(i)


def describe(y):
    n = len(y)
    spline = CubicSpline(np.arange(n), y, bc_type="not-a-knot")
    top, height = apex(spline, n)
    base, level, baseline = 25.0, 0.4 * height, 12.5
    half = base + (height - base) / 2
    left, right = (crossing(spline, half, top, end) for end in (0, n - 1))
    start, stop = (crossing(spline, level, top, end) for end in (0, n - 1))
    weight = integral(spline, start, stop)
    centroid = integral(lambda u: u * spline(u), start, stop) / weight
    return {
        "n": n, "max_x": top, "max_y": height, "base": base, "left": left, "right": right, "level": level,
        "centroid_x": centroid, "centroid_y": float(spline(centroid)), "start": start, "end": stop,
        "baseline": baseline, "area": integral(lambda u: spline(u) - baseline, start, stop),
        "area_axis": integral(lambda u: (spline(u) - baseline) * axis_slope(u), start, stop),
    }


def main(folder):
    rng = np.random.default_rng(9)
    with open(f"{folder}/spline_samples.csv", "w") as curves, open(f"{folder}/spline_results.csv", "w") as results:
        curves.write("peak,y\n")
        curves_of_samples = [noisy_peak(rng, n) for n in PEAK_LENGTHS] + [noise(rng, n) for n in NOISE_LENGTHS]
        for peak, y in enumerate(curves_of_samples):
            curves.writelines(f"{peak},{value}\n" for value in y)
            result = describe(y)
            if peak == 0:
                results.write("peak," + ",".join(result) + "\n")
            results.write(f"{peak}," + ",".join(repr(float(v)) for v in result.values()) + "\n")


sys.exit(main(sys.argv[1]))
