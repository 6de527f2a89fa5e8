#pragma once
// The numbers of the usual chain for one chromatogram: they follow the width of its peaks.

#include <tool/chain/ChainDefaults.h>
#include <span>

namespace TslTool {

// `seconds` and `values` are the points. Where no peak tells its width the library's presets for
// chromatograms stand. Else, with the width w in points:
//
// Smoothing: Savitzky-Golay of order 2 over w / 2, at least 5 points; none below w = 4. It takes less than 1
// % of the height. Noise: linear, segments of 40 w. Baseline: adaptive with segments of 3 w, which follows
// every background that is wider than a peak; or linear like the noise, where the curve is too short for that
// (20 w) or its background is straight, as an adaptive one is the less certain. Least width: 0.4 w.
// Signal-to-noise ratio: 5, also where the presets stand otherwise.
ChainDefaults DefaultsForCurve(std::span<const double> seconds, std::span<const double> values);

}  // namespace TslTool
