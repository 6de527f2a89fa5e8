"""Local maxima with plateaus, from scipy.signal.find_peaks.

Run: /usr/bin/python3 tests/oracles/features.py > tests/data/features.csv
"""

import sys

import numpy as np
from scipy import signal


def main():
    rng = np.random.default_rng(4)
    y = np.concatenate([rng.integers(0, 3, 300), np.repeat(rng.integers(0, 6, 60), rng.integers(1, 6, 60)), [2, 2, 2]])
    feature = np.zeros(len(y), int)
    feature[signal.find_peaks(y)[0]] = 1
    print("y,feature")
    for value, is_feature in zip(y, feature):
        print(f"{value},{is_feature}")


sys.exit(main())
