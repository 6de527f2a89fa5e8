#pragma once
// Whether a curve without its background was smoothed.

#include <vector>

namespace TslTool {

// Whether most bumps between zeros are as smooth as a Gaussian is, single ions among them: as in Fourier
// spectra whose low part was left out, and in counts that a program smoothed. Counts as they are rise and
// fall in each bump, or stand alone. Asked are the bumps higher than half of all but for the highest tenth;
// beside the low ones filters make bumps of their own. False of less than 40 bumps, where less than a tenth
// of the points is 0, and where the lowest are one step of the amplitude, as single counts are. O(n log n).
bool AreBumpsSmooth(const std::vector<double>& y);

}  // namespace TslTool
