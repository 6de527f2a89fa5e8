#pragma once
// What smoothing takes from peaks that are narrower than its window, and adds to those with a flat top.

#include <tool/io/SpectrumSource.h>
#include <algorithm>
#include <optional>

namespace TslTool {

struct LostHeight {
  double mz = 0.0;      // of the peak
  double before = 0.0;  // its height above the baseline, the mean of the three points about the top
  double behind = 0.0;  // the same behind the smoothing

  // Of the higher of both; negative if it was added. -1 and less where no peak was measured.
  double Part() const { return (before - behind) / std::max(before, behind); }
};

// The peak that changes most, of those that lose at least a fifth of their height or gain a twentieth, over
// the three points about the top, and this with certainty: eight times what noise and the counting of ions
// could make of it. A window that fits takes a twentieth. Nothing if the spectrum was not smoothed.
std::optional<LostHeight> MostLostHeight(const LoadedSpectrum& loaded);

}  // namespace TslTool
