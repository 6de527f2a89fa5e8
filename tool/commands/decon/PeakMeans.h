#pragma once
// The mean m/z of peaks in which the isotopes of a molecule run into one.

#include <tool/io/SpectrumSource.h>
#include <vector>

namespace TslTool {

// Isotopes make such a peak skew: its position, the centroid over its top, lies below its mean, which belongs
// to the average mass. For a protein of 17 kDa and lines 0.6 m/z wide that is 0.2 Da. The mean itself is not
// measured well, as adducts and neighbours stand in its tails. But of a Gaussian with a little skew the
// centroids over more or less of its height lie off the mean in a fixed proportion, so that those over the
// upper 30 and 80 percent tell it (H. Cramer, Mathematical methods of statistics, 1946: the expansion of
// Edgeworth to its first term).
//
// For each row of the spectrum's peaks; NaN where a peak does not reach down to a fifth of its height between
// its limits. Empty where the chain does not take positions from the upper half of peaks, and of a list.
std::vector<double> PeakMeans(const LoadedSpectrum& loaded);

}  // namespace TslTool
