#!/usr/bin/python3
"""Holds the counts of a simulated run against what they should be, where no compound has a line (m/z 220 to 280).

    build/release/bin/tslbl simulate --output demo.run --scans 400
    /usr/bin/python3 tests/oracles/simulated_counts.py demo.run

Prints the mean of count / expected background and of (count - expected)^2 / expected, both 1 for Poisson counts, with
their standard errors. The figures stand in docs/numerics.md.
"""
import array
import bisect
import math
import sqlite3
import sys
import xml.etree.ElementTree as ElementTree
import zlib


def calibration(run):
    document = ElementTree.fromstring(run.execute("SELECT document FROM tune").fetchone()[0])
    points = sorted((float(p.get("MZ")), float(p.get("MassDAC"))) for p in document.iter("MZCal"))
    return float(document.find("Control/MZLow").text), points


def follow(points, x):
    """The ordinate at x of straight lines through points."""
    i = min(max(bisect.bisect_left([p[0] for p in points], x), 1), len(points) - 1)
    (x0, y0), (x1, y1) = points[i - 1], points[i]
    return y0 + (x - x0) * (y1 - y0) / (x1 - x0)


def main():
    run = sqlite3.connect(f"file:{sys.argv[1]}?mode=ro", uri=True)
    low, points = calibration(run)
    start, inverse = follow(points, low), [(dac, mz) for mz, dac in points]
    count = run.execute("SELECT points FROM scan").fetchone()[0]
    axis = [follow(inverse, start + i) for i in range(count)]  # a step of 0.05 m/z is one unit of the mass DAC
    inside = [i for i, mz in enumerate(axis) if 220 < mz < 280]
    expected = [40 * math.exp(-axis[i] / 300) + 8 for i in inside]
    ratios, squares = [], []
    for (packed,) in run.execute("SELECT counts FROM scan"):
        counts = array.array("I", zlib.decompress(packed))
        ratios += [counts[i] / e for i, e in zip(inside, expected)]
        squares += [(counts[i] - e) ** 2 / e for i, e in zip(inside, expected)]
    for name, values in (("count / expected", ratios), ("(count - expected)^2 / expected", squares)):
        mean = sum(values) / len(values)
        error = math.sqrt(sum((v - mean) ** 2 for v in values)) / len(values)
        print(f"{name}: {mean:.5f} +- {error:.5f} over {len(values)} counts")


main()
