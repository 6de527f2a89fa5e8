#!/usr/bin/python3
"""The width that the lines of tests/closed/math/peak/PairCorrelationTest.cpp show together, fitted by SciPy to the
correlation of the curve with itself: tests/oracles/pair_correlation.py. Needs numpy and scipy."""
import numpy as np
from scipy.optimize import curve_fit

i = np.arange(8000)
y = (i * 7919 % 97 == 0).astype(float)
for line in range(12):
    centre, height = 300.0 + 620.0 * line + 3.7 * line * line % 11.0, 1.0 + line % 4
    y += np.floor(height * np.exp(-4.0 * np.log(2.0) * ((i - centre) / 14.0) ** 2) + 0.5)
mean = np.array([y[max(k - 1024, 0):k + 1025].mean() for k in i])
above = y - mean
lags = np.arange(1, 257)
sums = np.array([above[:-lag] @ above[lag:] for lag in lags])
fit, _ = curve_fit(lambda lag, a, sigma, c: a * np.exp(-((lag / (2.0 * sigma)) ** 2)) + c, lags, sums,
                   [sums.max(), 5.0, 0.0])
print(f"{2.0 * np.sqrt(2.0 * np.log(2.0)) * fit[1]:.4f} points")
