"""How well a table of peaks (spectrum, mz) tells what the spectra hold.

A line is detectable if its height is at least 6 times the noise of the counts at its top, sqrt(height + background), and no
line of more than 5 % of its height is nearer than 0.9 m/z: isotopes count, chance overlaps do not.

    recall      detectable lines that have a peak within 0.2 m/z, as a part of all
    false       peaks a spectrum without a line of at least sqrt(background) within 0.45 m/z
    centre      rms deviation of the peak's m/z from the truth, over the rms of the Cramer-Rao bound; of found lines at
                least 20 times the noise that are the tallest within 2.2 m/z
"""
import numpy as np

import model


def load(path):
    """The columns spectrum, mz and, of the truth, height."""
    return np.genfromtxt(path, delimiter="\t", names=True)


def bound(mz, height):
    """Variance that no unbiased estimate of the centre of a lone line can beat: Poisson counts, background known."""
    x = model.STEP * np.arange(-20, 21)
    line = height[:, None] * np.exp(-0.5 * (x / model.SIGMA) ** 2)
    slope = line * x / model.SIGMA**2
    return 1.0 / np.sum(slope**2 / (line + model.background(mz)[:, None]), axis=1)


def nearest(values, to):
    """For each of `to` the nearest of the ascending values."""
    place = np.clip(np.searchsorted(values, to), 1, len(values) - 1)
    left, right = values[place - 1], values[place]
    return np.where(to - left <= right - to, left, right)


def around(mz, height, reach):
    """The largest height of any other line within reach of each line."""
    tallest = np.zeros(len(mz))
    for shift in range(1, len(mz)):
        near = mz[shift:] - mz[:-shift] <= reach
        if not near.any():
            break
        tallest[:-shift] = np.where(near, np.maximum(tallest[:-shift], height[shift:]), tallest[:-shift])
        tallest[shift:] = np.where(near, np.maximum(tallest[shift:], height[:-shift]), tallest[shift:])
    return tallest


def score(truth, peaks, spectra):
    detectable = found = false = 0
    squares, bounds = [], []
    for number in range(spectra):
        lines = np.sort(truth[truth["spectrum"] == number], order="mz")
        mz, height = lines["mz"], lines["height"]
        picked = np.sort(peaks["mz"][peaks["spectrum"] == number])
        noise = np.sqrt(height + model.background(mz))
        lone = around(mz, height, 0.9) <= 0.05 * height
        wanted = lone & (height >= 6.0 * noise)
        deviation = nearest(picked, mz) - mz
        hit = wanted & (np.abs(deviation) < 0.2)
        judged = hit & (height >= 20.0 * noise) & (around(mz, height, 2.2) <= height)
        visible = mz[height >= np.sqrt(model.background(mz))]
        detectable += wanted.sum()
        found += hit.sum()
        false += (np.abs(nearest(visible, picked) - picked) > 0.45).sum()
        squares.append(deviation[judged] ** 2)
        bounds.append(bound(mz[judged], height[judged]))
    rms = np.sqrt(np.mean(np.concatenate(squares)) / np.mean(np.concatenate(bounds)))
    return {"detectable": detectable / spectra, "recall": found / detectable, "false": false / spectra, "centre": rms}
