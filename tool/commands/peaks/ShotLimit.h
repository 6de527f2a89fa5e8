#pragma once
// What counts alone allow a background to be.

#include <tool/io/SpectrumSource.h>
#include <cstddef>
#include <span>

namespace TslTool {

// Where lines stand at nearly every mass no background is left between them, and what is found for it is
// theirs: a baseline far above the valleys, and a noise many times that of the counts in them. Lowers both to
// what the valleys allow: the noise to `limit` times that of their counts, the baseline to two such noises
// above them. `filter` are the weights of the smoothing. Nothing changes where amplitudes are no counts,
// where the noise is that of a range without peaks, behind a subtracted baseline, or with a limit of 0. The
// number of points whose noise was lowered. O(n log of the filter's length).
std::size_t LimitToShots(LoadedSpectrum& loaded, std::span<const double> filter, double limit);

}  // namespace TslTool
