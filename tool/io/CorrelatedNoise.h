#pragma once
// Noise that runs over neighbouring points.

#include <cstddef>
#include <vector>

namespace TslTool {

// Whether neighbouring points of the background, which is where curves are most quiet, scatter about each
// other by less than half of what points do that stand as far apart as peaks of `pointsAcross` are wide: as
// in Fourier spectra, whose noise is as wide as their lines, and in curves that were smoothed. Such noise
// makes bumps that look like peaks. False where that cannot be told, where a tenth of the points is 0, as
// there is no noise between them, and where they scatter as counts do. O(n).
bool IsNoiseCorrelated(const std::vector<double>& y, double pointsAcross);

}  // namespace TslTool
