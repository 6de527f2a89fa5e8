#!/usr/bin/python3
"""Measures how near the numerics come to SciPy and to the truth. The figures stand in docs/numerics.md.

    /usr/bin/python3 tests/oracles/accuracy.py [library]

Calls the functions of TslMath in build/release/lib/libtslbl.so, or in the library named, by their symbols. Needs numpy
and SciPy. Everything is seeded, so that a second run prints the same.
"""
import ctypes
import fractions
import math
import pathlib
import sys

import numpy as np
from scipy import ndimage, signal

ROOT = pathlib.Path(__file__).resolve().parents[2]
FWHM = 2 * math.sqrt(2 * math.log(2))
DOUBLES = np.ctypeslib.ndpointer(np.float64, flags="C")
library = ctypes.CDLL(sys.argv[1] if len(sys.argv) > 1 else str(ROOT / "build/release/lib/libtslbl.so"))


def symbol(name, *arguments, result=None):
    function = getattr(library, name)
    function.argtypes, function.restype = arguments, result
    return function


def filter_of(name, numbers, start=False):
    """A function of samples and numbers that returns an array of the same length."""
    function = symbol(name, DOUBLES, *[ctypes.c_uint32] * (1 + 2 * start + numbers), DOUBLES)

    def run(y, *parameters):
        out = np.empty_like(y)
        function(y, len(y), *((0, len(y)) if start else ()), *parameters, out)
        return out

    return run


mean = filter_of("_ZN7TslMath10SmoothMeanEPKdjjjjPd", 1, start=True)
median = filter_of("_ZN7TslMath12SmoothMedianEPKdjjjjPd", 1, start=True)
gaussian = filter_of("_ZN7TslMath14SmoothGaussianEPKdjjjjPd", 1, start=True)
savgol = filter_of("_ZN7TslMath19SmoothSavitzkyGolayEPKdjjjjjPd", 2, start=True)
linear_noise = filter_of("_ZN7TslMath16LinearFitSDNoiseEPKdjjjjPd", 3)
linear_baseline = filter_of("_ZN7TslMath19LinearFitSDBaselineEPKdjjjjPd", 3)
valley_noise = filter_of("_ZN7TslMath7VFNoiseEPKdjjPd", 1)
standard_deviation = symbol("_ZN7TslMath17StandardDeviationEPKdj", DOUBLES, ctypes.c_uint32, result=ctypes.c_double)
_apb_noise = symbol("_ZN7TslMath8APBNoiseEPdS0_jjjS0_", ctypes.c_void_p, DOUBLES, *[ctypes.c_uint32] * 3, DOUBLES)


def adaptive_noise(y, segment, segments):
    out = np.empty_like(y)
    _apb_noise(None, y, len(y), segment, segments, out)
    return out


class Spline:
    """A SplinePeak over the samples y of the points 0, 1, 2 ..."""

    _make = symbol("_ZN7TslMath10SplinePeakC1EPKdS2_j", ctypes.c_void_p, DOUBLES, DOUBLES, ctypes.c_uint32)
    _drop = symbol("_ZN7TslMath10SplinePeakD1Ev", ctypes.c_void_p)
    _max = symbol("_ZNK7TslMath10SplinePeak7PeakMaxERdS1_", *[ctypes.c_void_p] * 3)
    _width = symbol("_ZNK7TslMath10SplinePeak19HalfHeightPeakWidthEdRdS1_", ctypes.c_void_p, ctypes.c_double,
                    *[ctypes.c_void_p] * 2)
    _centroid = symbol("_ZNK7TslMath10SplinePeak12PeakCentroidEdRdS1_S1_S1_", ctypes.c_void_p, ctypes.c_double,
                       *[ctypes.c_void_p] * 4)
    _area = symbol("_ZNK7TslMath10SplinePeak8PeakAreaEddPKd", ctypes.c_void_p, ctypes.c_double, ctypes.c_double,
                   ctypes.c_void_p, result=ctypes.c_double)

    def __init__(self, y):
        self._memory = ctypes.create_string_buffer(1 << 14)  # more than an object takes
        self._at = ctypes.c_void_p(ctypes.addressof(self._memory))
        Spline._make(self._at, np.arange(len(y), dtype=float), np.ascontiguousarray(y, float), len(y))

    def __del__(self):
        Spline._drop(self._at)

    def _results(self, function, count, *arguments):
        results = [ctypes.c_double() for _ in range(count)]
        function(self._at, *arguments, *[ctypes.byref(r) for r in results])
        return [r.value for r in results]

    def top(self):
        return self._results(Spline._max, 2)

    def width(self, base):
        left, right = self._results(Spline._width, 2, base)
        return right - left

    def centroid(self, level):
        return self._results(Spline._centroid, 4, level)[0]

    def area(self, level):
        return Spline._area(self._at, level, 0.0, None)


def tell(what, value):
    print(f"{what:<74} {value:.4g}")


def bell(centre, fwhm, n):
    return 1000 * np.exp(-0.5 * ((np.arange(n) - centre) / (fwhm / FWHM)) ** 2)


def worst(got, expected, inside):
    return np.max(np.abs(got - expected)[inside]) / np.max(np.abs(expected))


def smoothing():
    y = np.random.default_rng(1).normal(0, 1000, 5000)
    whole = slice(600, -600)
    tell("mean, widths 3 5 7 31 101 1001: worst difference from SciPy, relative", max(
        worst(mean(y, w), ndimage.uniform_filter1d(y, w), whole) for w in (3, 5, 7, 31, 101, 1001)))
    tell("median, widths 3 5 9 11 31 151 153 1001: worst difference from SciPy", max(
        worst(median(y, w), ndimage.median_filter(y, w), whole) for w in (3, 5, 9, 11, 31, 151, 153, 1001)))
    tell("gaussian, widths 3 5 7 15 60: worst difference from SciPy, relative", max(
        worst(gaussian(y, w), ndimage.gaussian_filter1d(y, w / FWHM, radius=math.ceil(4.5 * w / FWHM)), whole)
        for w in (3, 5, 7, 15, 60)))
    tell("savgol, (5,2) (7,3) (15,2) (25,4) (101,2): worst difference, ends included", max(
        worst(savgol(y, w, o), signal.savgol_filter(y, w, o), slice(None))
        for w, o in ((5, 2), (7, 3), (15, 2), (25, 4), (101, 2))))
    t = np.linspace(-1, 1, 700)
    tell("savgol, widths 5 to 501, orders 0 to 12: worst change of a polynomial", max(
        worst(savgol(p, w, o), p, slice(None)) for w in (5, 25, 101, 501) for o in range(0, 13, 2)
        for p in (np.polynomial.chebyshev.chebval(t, [0] * min(o, w - 1) + [1]),)))
    widths = (3, 5, 7, 9, 12, 15, 20, 30, 60)
    tell("gaussian, widths 3 to 60: worst departure from sqrt(12^2 + width^2), relative", max(
        abs(Spline(gaussian(bell(300.3, 12, 601), w)).width(0) / math.hypot(12, w) - 1) for w in widths))
    filters = (("mean", mean), ("median", median), ("gaussian", gaussian), ("savgol 2", lambda v, w: savgol(v, w, 2)))
    white = np.random.default_rng(2).normal(0, 1, 400000)
    for name, run in filters:
        for width in (5, 15):
            tell(f"{name}, width {width}: white noise falls to", np.std(run(white, width)))
        tell(f"{name}, width 15: height that is left of a peak of FWHM 12", np.max(run(bell(300, 12, 601), 15)) / 1000)


def counts(seed, peaks_per_point, level):
    """Poisson counts with peaks of 12 points FWHM and 20 to 20 000 counts, and the noise of their background."""
    random = np.random.default_rng(seed)
    expected, n = np.full(20000, float(level)), 20000
    for _ in range(round(n * peaks_per_point)):
        centre, height = random.uniform(0, n), math.exp(random.uniform(math.log(20), math.log(20000)))
        around = slice(max(0, int(centre) - 60), min(n, int(centre) + 60))
        expected[around] += height * np.exp(-0.5 * ((np.arange(n)[around] - centre) / (12 / FWHM)) ** 2)
    return random.poisson(expected).astype(float), math.sqrt(level)


def noise():
    for name, run in (("linear fit", lambda y: linear_noise(y, 250, 5, 3)), ("V-F", lambda y: valley_noise(y, 250)),
                      ("dispersion", lambda y: adaptive_noise(y, 250, 0)),
                      ("median", lambda y: adaptive_noise(y, 250, 5))):
        for peaks in (0.0, 0.005, 0.01):
            found = np.concatenate([run(y) / true for y, true in (counts(s, peaks, 5) for s in range(10, 16))])
            low, middle, high = np.quantile(found, (0.05, 0.5, 0.95))
            print(f"noise / truth, {name}, {peaks * 100:g} peaks in 100 points: median and 5 to 95 %".ljust(74),
                  f"{middle:.3f}  {low:.3f} to {high:.3f}")
    for offset, n in ((0.0, 1000), (1e9, 1000), (1e9, 100001)):
        y = np.full(n, offset)
        y[::2] += 1
        values = [fractions.Fraction(v) for v in y]
        centre = sum(values) / n
        exact = math.sqrt(sum((v - centre) ** 2 for v in values) / (n - 1))
        tell(f"standard deviation of {offset:g} + {{0, 1}}, n = {n}: relative error",
             abs(standard_deviation(y, n) / exact - 1))


def smoothed_background():
    """What smoothing leaves of the noise, as the linear fit sees it: 5 to 95 % of the points."""
    for name, run in (("none", lambda v: v), ("mean 5", lambda v: mean(v, 5)), ("median 5", lambda v: median(v, 5)),
                      ("savgol 7 2", lambda v: savgol(v, 7, 2)), ("savgol 15 2", lambda v: savgol(v, 15, 2)),
                      ("savgol 25 2", lambda v: savgol(v, 25, 2)), ("mean 15", lambda v: mean(v, 15)),
                      ("gaussian 3", lambda v: gaussian(v, 3)), ("gaussian 5", lambda v: gaussian(v, 5)),
                      ("gaussian 7", lambda v: gaussian(v, 7)), ("gaussian 9", lambda v: gaussian(v, 9))):
        ratios, biases = [], []
        for seed in range(20, 26):
            y = run(np.random.default_rng(seed).poisson(20, 20000).astype(float))
            own = np.std(y[500:-500])
            ratios.append(linear_noise(y, 250, 5, 3) / own)
            biases.append((linear_baseline(y, 250, 5, 3) - 20) / own)
        low, middle, high = np.quantile(np.concatenate(ratios), (0.05, 0.5, 0.95))
        bias = np.concatenate(biases)
        print(f"after {name}: noise / true, median and 5 to 95 %; baseline rms / noise".ljust(74),
              f"{middle:.3f}  {low:.3f} to {high:.3f}  {np.sqrt(np.mean(bias ** 2)):.3f}")


def splines():
    for fwhm in (6, 8, 10, 12):
        errors = []
        for cut in (1.0, 1.5, 2.0):
            half = int(cut * fwhm + 0.5)
            for shift in np.arange(-0.5, 0.501, 0.02):
                n, sigma = 2 * half + 1, fwhm / FWHM
                spline = Spline(bell(half + shift, fwhm, n))
                area = 500 * sigma * math.sqrt(2 * math.pi) * (
                    math.erf((n - 1 - half - shift) / sigma / math.sqrt(2)) + math.erf((half + shift) / sigma / math.sqrt(2)))
                errors.append([spline.top()[0] - half - shift, spline.width(0) / fwhm - 1, spline.area(-1) / area - 1,
                               spline.centroid(600) - half - shift])
        for name, value in zip(("apex, points", "width, relative", "area, relative", "centroid, points"),
                               np.max(np.abs(errors), axis=0)):
            tell(f"spline, noise-free peak of FWHM {fwhm}: worst {name}", value)
    random = np.random.default_rng(3)
    for height in (50, 200, 1000, 10000):
        errors = []
        for _ in range(4000):
            centre = 38 + random.uniform(-0.5, 0.5)
            y = random.poisson(bell(centre, 12, 77) * height / 1000).astype(float)
            spline = Spline(gaussian(y, 5)[20:57])
            errors.append(spline.centroid(0.5 * spline.top()[1]) + 20 - centre)
        sigma = 12 / FWHM
        bound = sigma / math.sqrt(height * sigma * math.sqrt(2 * math.pi))
        tell(f"spline, {height} counts at the apex, FWHM 12: centroid rms over the Cramer-Rao bound",
             np.sqrt(np.mean(np.square(errors))) / bound)


smoothing()
noise()
smoothed_background()
splines()
