#pragma once
// Peaks that noise makes where there is more of it than the noise of the background tells.

#include <tool/io/SpectrumSource.h>
#include <cstddef>

namespace TslTool {

// Takes peaks from an evaluated spectrum that rise above the higher of their two ends by less than `least`
// standard deviations of noise: of that which the points about their top show, behind the filter. The ions of
// a tall neighbour's tail make such peaks on its flank, and single spikes and coarse steps of the amplitude
// anywhere. Returns how many. Where they stood on the foot of a peak that is wider than one and a half
// windows of the filter, below half its height and within two of its widths, and touched it, its limit moves
// to theirs, as far as the curve falls: their area is its own. Nothing is taken from a spectrum that was not
// smoothed, or with another filter than QFilterWeights knows: it does not show that noise.
std::size_t LeaveOutFlankPeaks(LoadedSpectrum& loaded, double least);

}  // namespace TslTool
