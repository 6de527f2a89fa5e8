"""The typical width of the peaks of Poisson counts by scipy.signal's prominences and widths.

    /usr/bin/python3 tests/oracles/typical_width.py

writes tests/data/typical_width_samples.csv   a curve a column
       tests/data/typical_width_results.csv   its number, and its width by the rule of TypicalWidth.h
"""
import os

import numpy as np
from scipy.ndimage import gaussian_filter1d
from scipy.signal import find_peaks, peak_prominences, peak_widths

DATA = os.path.join(os.path.dirname(__file__), "..", "data")
FILTERS = (2, 4, 8, 16, 32, 64, 128)
FWHM = 2 * np.sqrt(2 * np.log(2))
POINTS = 1500
# Width and height of the lines, background.
CURVES = ((4, 60, 0.2), (12, 60, 0.2), (12, 8, 2), (25, 20, 5), (40, 12, 1), (30, 60, 20))


def counts(seed, width, height, background):
    mean = np.full(POINTS, float(background))
    for centre in np.arange(250, POINTS - 250, max(40, 3 * width)):
        mean += height * np.exp(-0.5 * ((np.arange(POINTS) - centre) * FWHM / width) ** 2)
    # Empty ends, since filters differ in what they make of an end.
    mean[:130] = mean[-130:] = 0
    return np.random.default_rng(seed).poisson(mean).astype(float)


def width_of_bumps(y):
    peaks, _ = find_peaks(y)
    if len(peaks) == 0: return 0.0
    prominence = peak_prominences(y, peaks)[0]
    order = np.argsort(-prominence, kind="stable")[:32]
    order = order[prominence[order] >= 0.05 * prominence[order[0]]]
    widths = peak_widths(y, peaks[order], rel_height=0.5)[0]
    by_width = np.argsort(widths, kind="stable")
    weight = np.cumsum(np.sqrt(prominence[order])[by_width])
    return widths[by_width][np.argmax(weight >= 0.5 * weight[-1])]


def typical_width(y):
    through = [width_of_bumps(y)]
    for width in FILTERS:
        seen = width_of_bumps(gaussian_filter1d(y, width / FWHM, truncate=4.5, mode="nearest"))
        through.append(np.sqrt(max(seen**2 - width**2, 0)))
    for first, second, third in zip(through, through[1:], through[2:]):
        if first > 0 and abs(second - first) <= 0.15 * first and abs(third - first) <= 0.35 * first: return first
    return 0.0


curves = [counts(seed, *curve) for seed, curve in enumerate(CURVES)]
with open(os.path.join(DATA, "typical_width_samples.csv"), "w") as out:
    out.write(",".join(map(str, range(len(curves)))) + "\n")
    out.writelines(",".join(f"{value:.0f}" for value in row) + "\n" for row in zip(*curves))
with open(os.path.join(DATA, "typical_width_results.csv"), "w") as out:
    out.write("curve,width\n")
    out.writelines(f"{number},{float(typical_width(y))!r}\n" for number, y in enumerate(curves))
