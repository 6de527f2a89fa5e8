#pragma once
// How the area of peaks that overlap is divided among them.

#include <cstddef>
#include <span>
#include <vector>

namespace TslTool {

struct FittedShare {
  double share = 0.0;  // of the area of all, from 0 to 1
  double error = 0.0;  // standard error of the peak's area, in its unit; NaN where it is not known
};

// A group of peaks that touch, on a level background.
struct TouchingPeaks {
  std::span<const double> seconds;
  std::span<const double> values;     // as many
  std::span<const std::size_t> tops;  // a point for each peak, ascending
  double level = 0.0;                 // of the background: its counts have noise, too
  double widthSeconds = 0.0;          // at half height
  double noise = 0.0;                 // standard deviation of a point; 0: not known
};

// The shares of a sum of Gaussians with one skew that is fitted to the group. A line through the valley gives
// the smaller of two peaks too little: 1.4 % at 3.5 standard deviations. Empty where the sum does not follow
// the points: within 3 % of its lowest peak's height, or twice the noise, on the root mean square; and for
// more points and peaks than are fitted at once.
std::vector<FittedShare> FittedShares(const TouchingPeaks& group);

}  // namespace TslTool
