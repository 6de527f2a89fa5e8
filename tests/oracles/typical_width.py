"""The typical width of the peaks of Poisson counts by scipy.signal's prominences and widths.

    /usr/bin/python3 tests/oracles/typical_width.py

writes tests/data/typical_width_samples.csv   a curve a column
       tests/data/typical_width_results.csv   its number, and width and strength by the rule of TypicalWidth.h
"""
import os

import numpy as np
from scipy.ndimage import gaussian_filter1d
from scipy.optimize import brentq
from scipy.signal import find_peaks, peak_prominences, peak_widths

DATA = os.path.join(os.path.dirname(__file__), "..", "data")
FWHM = 2 * np.sqrt(2 * np.log(2))
POINTS = 1500
# Width and height of the lines, background.
CURVES = ((4, 60, 0.2), (12, 60, 0.2), (12, 8, 0.1), (25, 20, 5), (40, 12, 1), (30, 60, 20), (12, 900, 50), (60, 0.1, 4))


def counts(seed, width, height, background):
    mean = np.full(POINTS, float(background))
    for centre in np.arange(250, POINTS - 249, max(40, 6 * width)):
        mean += height * np.exp(-0.5 * ((np.arange(POINTS) - centre) * FWHM / width) ** 2)
    # Empty ends, since filters differ in what they make of an end.
    mean[:130] = mean[-130:] = 0
    return np.random.default_rng(seed).poisson(mean).astype(float)


def gaussian(y, width):
    return gaussian_filter1d(y, width / FWHM, truncate=4.5, mode="nearest")


def filtered(y):
    """The curve through each filter, the filter's width and the spacing of its points."""
    yield y, 0.0, 1
    yield gaussian(y, 2), 2.0, 1
    y, width, spacing = gaussian(y, 4), 4.0, 1
    yield y, width, spacing
    for k in range(5):
        if k > 0: y, spacing = y[::2], 2 * spacing
        y, width = gaussian(y, 7), np.hypot(width, 7 * spacing)
        yield y, width, spacing


def lower_quantile(values, share):
    return np.sort(values)[int(share * (len(values) - 1))]


def variance(y, lag, ion, most):
    unit = 4 if lag > 1 else 6
    d = np.abs(y[:-2 * lag] - 2 * y[lag:-lag] + y[2 * lag:])[::max(1, len(y) // most)]
    if len(d) == 0: return np.inf
    return max(np.mean(np.minimum(d**2, 8 * ion**2 * unit)), (np.mean(np.sort(d)[:(len(d) + 1) // 2]) / 0.3246) ** 2) / unit


def bennett(variance, ion, chances):
    q = (np.log(chances) + 6.9) * ion**2 / variance
    return variance / ion * brentq(lambda u: (1 + u) * np.log1p(u) - u - q, 0, 10 + 10 * q, xtol=1e-12)


def about(y, at, lag, ion):
    reach = max(1024, 32 * lag)
    return max(variance(y, lag, ion, 4096), variance(y[max(0, at - reach):at + reach], lag, ion, 512))


def view(samples, y, filter, spacing, raw):
    """Width and strength of what stands out, and whether each peak is clear."""
    ends = int(np.ceil(filter / spacing))
    y = y[ends:len(y) - ends]
    lag = max(1, int(filter / spacing))
    ion = 0.94 * raw / filter if filter else raw
    places = len(y) * spacing / max(filter, 1)
    peaks, _ = find_peaks(y)
    if len(peaks) == 0: return 0.0, 0.0, False
    prominence = peak_prominences(y, peaks)[0]
    order = np.argsort(-prominence, kind="stable")
    largest = prominence[order[0]]
    alone = (prominence >= 0.7 * (y[peaks] - np.sort(y)[len(y) // 2])) & (prominence >= 0.0025 * largest)
    order = order[((prominence >= 0.05 * largest) | alone)[order]][:32]
    seen = []
    for k in order:
        most = 100 * about(samples, spacing * (peaks[k] + ends), 1, raw)
        noise = max(min(about(y, peaks[k], lag, ion), most), ion**2 / places)
        height = prominence[k] - np.sqrt(2 * noise * np.log(places))
        if height <= bennett(noise, ion, places): continue
        # peak_widths takes a share of the prominence it is given.
        width = spacing * peak_widths(y, peaks[k:k + 1], 0.5 * height / prominence[k])[0][0]
        if width > 512: continue
        strength = min(height / bennett(noise + 0.7 * ion * height, ion, places), 100)
        if prominence[k] < 0.05 * largest and strength < 4: continue
        seen.append((width, np.sqrt(prominence[k]), strength))
    if not seen: return 0.0, 0.0, False
    width, weight, strength = np.array(sorted(seen)).T
    middle = width[np.argmax(np.cumsum(weight) >= 0.5 * weight.sum())]
    return np.sqrt(max(middle**2 - filter**2, 0)), np.sqrt(sum(strength**2)), np.mean(strength**2) >= 400


def typical_width(y):
    steps = np.abs(np.diff(y))
    ion = max(lower_quantile(steps[steps > 0], 0.1), 1e-6 * max(steps))
    curves = list(filtered(y))
    views = [view(y, *curve, ion) for curve in curves]
    width = [v[0] for v in views]
    for k in range(len(views) - 2):
        if not (width[k] > 0 and abs(width[k + 1] - width[k]) <= 0.15 * width[k]
                and abs(width[k + 2] - width[k]) <= 0.35 * width[k]): continue
        best = k
        while (not views[best][2] and best + 1 < len(views) and curves[best + 1][1] <= 0.6 * width[k]
               and abs(width[best + 1] - width[k]) <= 0.35 * width[k]): best += 1
        if views[best][1] >= 2.5: return views[best][:2]
    return 0.0, 0.0


curves = [counts(seed, *curve) for seed, curve in enumerate(CURVES)]
with open(os.path.join(DATA, "typical_width_samples.csv"), "w") as out:
    out.write(",".join(map(str, range(len(curves)))) + "\n")
    out.writelines(",".join(f"{value:.0f}" for value in row) + "\n" for row in zip(*curves))
with open(os.path.join(DATA, "typical_width_results.csv"), "w") as out:
    out.write("curve,width,strength\n")
    for number, y in enumerate(curves):
        width, strength = typical_width(y)
        out.write(f"{number},{float(width)!r},{float(strength)!r}\n")
