#!/usr/bin/python3
"""Simulated spectra with their truth, the same in every run.

    generate.py FOLDER [SPECTRA]

Writes FOLDER/axis.f64 (m/z of 59 901 points, 5 to 3000 in steps of 0.05), FOLDER/counts.f64 (one spectrum after the other,
Poisson counts) and FOLDER/truth.tsv (spectrum, mz, height of each isotope line), all floats little-endian of 64 bits.

A spectrum has 150 compounds of charge 1, evenly scattered over the axis, 60 to 60 000 counts high on a logarithmic scale,
each with its isotope lines; a line is a Gaussian of 0.6 m/z full width at half maximum. See model.py for the background.
"""
import pathlib
import sys

import numpy as np

import model

COMPOUNDS = 150
LEAST_SHARE = 1e-3       # of the tallest isotope, below which isotopes are left out
HEIGHTS = (60.0, 60000.0)
RANGE = (20.0, 2980.0)   # of the lightest isotopes
MARGIN = 3.0             # m/z that a compound keeps from the edges of its stretch


def isotope_shares(mass):
    """Shares of the isotopes of an average peptide of this mass: Poisson with one heavy atom in 1850 Da."""
    order = np.arange(64)
    mean = mass / 1850.0
    logarithm = order * np.log(mean) - np.cumsum(np.log(np.maximum(order, 1)))
    shares = np.exp(logarithm - logarithm.max())
    kept = np.flatnonzero(shares > LEAST_SHARE)
    return kept, shares[kept]


def lines_of(random):
    """m/z and height of all lines of one spectrum."""
    edges = np.linspace(*RANGE, COMPOUNDS + 1)
    room = edges[1] - edges[0] - 2 * MARGIN
    lightest = edges[:-1] + MARGIN + room * random.random(COMPOUNDS)
    tallest = np.exp(random.uniform(*np.log(HEIGHTS), COMPOUNDS))
    mz, height = [], []
    for mass, top in zip(lightest, tallest):
        order, shares = isotope_shares(mass)
        mz.append(mass + order * model.ISOTOPE_STEP)
        height.append(top * shares)
    return np.concatenate(mz), np.concatenate(height)


def expected_counts(mz, height):
    reach = int(6 * model.SIGMA / model.STEP) + 1
    nearest = np.rint((mz - model.FIRST) / model.STEP).astype(int)
    points = nearest[:, None] + np.arange(-reach, reach + 1)
    distance = model.FIRST + model.STEP * points - mz[:, None]
    share = height[:, None] * np.exp(-0.5 * (distance / model.SIGMA) ** 2)
    inside = (points >= 0) & (points < model.POINTS)
    signal = np.bincount(points[inside], weights=share[inside], minlength=model.POINTS)
    return signal + model.background(model.axis())


def main():
    folder = pathlib.Path(sys.argv[1])
    spectra = int(sys.argv[2]) if len(sys.argv) > 2 else 200
    folder.mkdir(parents=True, exist_ok=True)
    model.axis().astype("<f8").tofile(folder / "axis.f64")
    with open(folder / "counts.f64", "wb") as counts, open(folder / "truth.tsv", "w") as truth:
        truth.write("spectrum\tmz\theight\n")
        for number in range(spectra):
            random = np.random.Generator(np.random.PCG64([59901, number]))
            mz, height = lines_of(random)
            counts.write(random.poisson(expected_counts(mz, height)).astype("<f8").tobytes())
            truth.writelines(f"{number}\t{m:.6f}\t{h:.3f}\n" for m, h in zip(mz, height))


if __name__ == "__main__":
    main()
