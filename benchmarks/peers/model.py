"""What generator and scorer both know of the simulated spectra."""
import numpy as np

FIRST, STEP, POINTS = 5.0, 0.05, 59901
FWHM = 0.6
SIGMA = FWHM / np.sqrt(8.0 * np.log(2.0))
ISOTOPE_STEP = 1.00235   # mean distance of an average peptide's isotopes, m/z


def axis():
    return FIRST + STEP * np.arange(POINTS)


def background(mz):
    """Counts a point without any line: chemical noise that falls towards high m/z."""
    return 120.0 * np.exp(-mz / 700.0) + 12.0 * (1.0 - mz / 4000.0)
