#!/usr/bin/python3
"""SciPy's way to a peak table: chain_scipy.py DATA SPECTRA ROUNDS PEAKS.tsv. Prints copy and chain in microseconds.

Savitzky-Golay (11, 2), less a grey opening over 250 points, maxima of 6 times the median absolute deviation with their
widths, centres by the parabola through three points.
"""
import pathlib
import statistics
import sys
import time

import numpy as np
from scipy import ndimage, signal


def chain(axis, counts):
    smooth = signal.savgol_filter(counts, 11, 2)
    above = smooth - ndimage.grey_opening(smooth, size=250)
    noise = 1.4826 * np.median(np.abs(above - np.median(above)))
    peaks, _ = signal.find_peaks(above, height=6.0 * noise, prominence=6.0 * noise, distance=6)
    signal.peak_widths(above, peaks, rel_height=0.5)
    peaks = peaks[(peaks > 0) & (peaks < len(axis) - 1)]
    left, top, right = above[peaks - 1], above[peaks], above[peaks + 1]
    bend = left - 2.0 * top + right
    shift = np.where(bend < 0, 0.5 * (left - right) / np.where(bend == 0, 1.0, bend), 0.0)
    return axis[peaks] + shift * (axis[1] - axis[0])


def microseconds(work):
    begin = time.thread_time_ns()
    result = work()
    return (time.thread_time_ns() - begin) / 1e3, result


def main():
    data, spectra, rounds, output = pathlib.Path(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3]), sys.argv[4]
    axis = np.fromfile(data / "axis.f64")
    counts = np.fromfile(data / "counts.f64", count=spectra * len(axis)).reshape(spectra, -1)
    copies, chains, tables = [], [], []
    place = np.empty(len(axis))
    for _ in range(rounds):
        tables.clear()
        for one in counts:
            np.copyto(place, one)
            copies.append(microseconds(lambda: np.copyto(place, one))[0])
            took, centres = microseconds(lambda: chain(axis, one))
            chains.append(took)
            tables.append(centres)
    with open(output, "w") as file:
        file.write("spectrum\tmz\n")
        for number, centres in enumerate(tables):
            file.writelines(f"{number}\t{mz:.6f}\n" for mz in centres)
    print(statistics.median(copies), statistics.median(chains))


main()
