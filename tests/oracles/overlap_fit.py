"""Sums of Gaussians of one width over a level, fitted to counts by scipy.optimize.least_squares.

Run: /usr/bin/python3 tests/oracles/overlap_fit.py tests/data

Writes overlap_samples.csv (group, x, y) and overlap_fits.csv (a row for each peak). Each point weighs 1 / (the fitted
curve there), which is at least a thousandth of the largest amplitude: the fit is repeated until the weights are those of
its own curve. Standard errors are those of the covariance matrix, for a variance of 1 over the weight.
"""

import sys

import numpy as np
from scipy.optimize import least_squares

GROUPS = ((2, 1.5), (2, 1.1), (3, 1.25), (4, 1.3), (5, 1.4))
SIGMA = 5.1


def curve(p, x, peaks):
    h, c, w, b = p[:peaks], p[peaks : 2 * peaks], p[2 * peaks], p[-1]
    return b + (h * np.exp(-0.5 * ((x[:, None] - c) / w) ** 2)).sum(axis=1)


def fit(x, y, start, peaks):
    p = start
    weights = np.maximum(y, 1)
    for _ in range(30):
        variance = np.maximum(weights, 0.001 * y.max())
        residual = lambda q: (y - curve(q, x, peaks)) / np.sqrt(variance)
        result = least_squares(residual, p, method="lm", xtol=1e-14, ftol=1e-14, gtol=1e-14)
        p, weights = result.x, curve(result.x, x, peaks)
    return p, np.linalg.inv(result.jac.T @ result.jac)


def area_error(p, cov, k, peaks):
    slope = np.zeros(len(p))
    slope[k], slope[2 * peaks] = p[2 * peaks], p[k]
    return np.sqrt(2 * np.pi * slope @ cov @ slope)


def main(folder):
    rng = np.random.default_rng(20240501)
    samples, fits = ["group,x,y"], ["group,centre,area,width,centre_se,area_se"]
    for group, (peaks, spacing) in enumerate(GROUPS):
        centres = 20.3 + spacing * SIGMA * 2.3548 * np.arange(peaks)
        heights = rng.uniform(1500, 5000, peaks)
        x = np.arange(int(centres[-1] + 20))
        truth = np.concatenate([heights, centres, [SIGMA, 40]])
        y = rng.poisson(curve(truth, x, peaks)).astype(float)
        p, cov = fit(x, y, truth, peaks)
        samples += [f"{group},{a},{int(b)}" for a, b in zip(x, y)]
        for k in range(peaks):
            area = np.sqrt(2 * np.pi) * p[k] * p[2 * peaks]
            se = np.sqrt(cov[peaks + k, peaks + k])
            values = (p[peaks + k], area, p[2 * peaks], se, area_error(p, cov, k, peaks))
            fits.append(f"{group}," + ",".join(f"{v:.9g}" for v in values))
    for name, lines in (("overlap_samples", samples), ("overlap_fits", fits)):
        with open(f"{folder}/{name}.csv", "w") as file:
            file.write("\n".join(lines) + "\n")


main(sys.argv[1])
