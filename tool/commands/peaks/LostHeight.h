#pragma once
// What smoothing takes from peaks that are narrower than its window, and adds to those with a flat top.

#include <tool/io/SpectrumSource.h>
#include <optional>

namespace TslTool {

struct LostHeight {
  double mz = 0.0;    // of the peak
  double part = 0.0;  // of its height above the baseline; negative if it was added
};

// The peak that changes most, of those that lose at least a fifth of their height or gain a twentieth, over
// the three points about the top, and this with certainty: eight times what noise and the counting of ions
// could make of it. A window that fits takes a twentieth. Nothing if the spectrum was not smoothed.
std::optional<LostHeight> MostLostHeight(const LoadedSpectrum& loaded);

}  // namespace TslTool
