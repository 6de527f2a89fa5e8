#pragma once
// The noise of a background of which only the highest points are left.

#include <tool/io/SpectrumSource.h>
#include <span>
#include <vector>

namespace TslTool {

// The standard deviation of noise about 0 of which a program left out, or set to 0, all that is below some
// threshold, by what stands out of it in stretches of one or two points: of a normal distribution the mean of
// y (y - threshold) is its variance, wherever it is cut. 0 if there are less than 200 such points, if most of
// them are equal, or if the lowest is one step high, as of counts, of which none are left out. O(n log n).
double CutNoiseOf(const std::vector<double>& measured);

// Raises the noise of each point to what that leaves behind the weights of the smoothing, where it was found
// lower, as between zeros. Nothing changes where the noise is that of a range without peaks.
void RaiseToCutNoise(LoadedSpectrum& loaded, std::span<const double> filter);

}  // namespace TslTool
