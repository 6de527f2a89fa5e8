"""What filters leave of the height of a Gaussian peak, and how wide it is behind them, by SciPy's filters.

Run: /usr/bin/python3 tests/oracles/filter_gain.py > tests/data/filter_gain.csv

The filters run over peaks that are drawn at places 1/16 of a point apart. Columns: the filter (alg as in SmoothParams.h,
window, order, passes), the peak's full width at half height in points before it and behind it, its height behind it over
that before it. The narrowest peak of each filter is where the width behind it begins to follow that before it, by a
tenth; none is narrower than two points.
"""

import sys

import numpy as np
from scipy import interpolate, ndimage, optimize, signal

FWHM = 2 * np.sqrt(2 * np.log(2))
MEAN, SAVITZKY_GOLAY, GAUSSIAN = 0, 2, 3
FILTERS = [(SAVITZKY_GOLAY, 5, 2, 1), (SAVITZKY_GOLAY, 13, 2, 1), (SAVITZKY_GOLAY, 33, 2, 1), (SAVITZKY_GOLAY, 13, 4, 1),
           (SAVITZKY_GOLAY, 13, 2, 3), (MEAN, 5, 2, 1), (MEAN, 11, 2, 1), (MEAN, 5, 2, 20), (GAUSSIAN, 3, 2, 1),
           (GAUSSIAN, 15, 2, 1)]
FACTORS = (1.01, 1.06, 1.13, 1.21, 1.33, 1.5, 1.83, 2.5, 4, 9, 30, 100)
PLACES = 16  # a point


def filtered(y, alg, window, order, passes):
    for _ in range(passes):
        if alg == MEAN: y = ndimage.uniform_filter1d(y, window, axis=0, mode="constant")
        if alg == SAVITZKY_GOLAY: y = signal.savgol_filter(y, window, order, axis=0, mode="constant")
        if alg == GAUSSIAN: y = ndimage.gaussian_filter1d(y, window / FWHM, axis=0, mode="constant", truncate=4.5)
    return y


def behind(width, setting):
    """Width and height."""
    reach = int(3 * width + 2 * setting[1] * np.sqrt(setting[3])) + 8
    points = np.arange(-reach, reach + 1)[:, None]
    shift = np.arange(PLACES) / PLACES
    seen = filtered(np.exp(-0.5 * ((points + shift) * FWHM / width) ** 2), *setting).ravel()
    place = (points + shift).ravel()
    curve = interpolate.CubicSpline(place, seen)
    height = float(curve(0.0))
    outside = place[(place > 0) & (seen < 0.5 * height)][0]
    half = optimize.brentq(lambda x: curve(x) - 0.5 * height, outside - 1 / PLACES, outside, xtol=1e-12)
    return 2 * half, height


def follows(width, setting):
    """By how much the width behind the filter grows with that before it, both as shares."""
    wider = 1.01 * width
    return np.log(behind(wider, setting)[0] / behind(width, setting)[0]) / np.log(wider / width)


def narrowest(setting):
    width = 4.0 * setting[1]
    while width > 2.0 and follows(width / 1.02, setting) > 0.1: width /= 1.02
    return max(width, 2.0)


print("alg,window,order,passes,width,seen,height")
for setting in FILTERS:
    least = narrowest(setting)
    print(*setting, f"narrowest {least:.2f}", file=sys.stderr)
    for factor in FACTORS:
        width = round(least * factor, 3)
        print(*setting, width, *(f"{value:.9f}" for value in behind(width, setting)), sep=",")
