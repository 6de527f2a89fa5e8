#pragma once
// The median of a sample, and other quantiles.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace TslMath {

// The one that this share of all, below 1, is lower than; 0 of none. O(n).
inline double Quantile(std::vector<double> sample, double share) {
  if (sample.empty()) return 0.0;
  const auto at = sample.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(sample.size()));
  std::nth_element(sample.begin(), at, sample.end());
  return *at;
}

// Of an even number the upper one of the two in the middle; 0 of none. O(n).
inline double Median(std::vector<double> sample) { return Quantile(std::move(sample), 0.5); }

// The standard deviation of the single points of a curve, from the median size of its second differences: no
// background bends as fast as noise, and peaks count if they are most of the curve only. `stride` takes every
// so many of them. 0 for less than three points, or if most bends are 0. O(n).
inline double PointScatter(std::span<const double> y, std::size_t stride = 1) {
  // The median size of a normal second difference, in standard deviations of a point: 0.6745 sqrt(6).
  constexpr double kOfSecondDifference = 0.67448975 * 2.4494897427831781;
  std::vector<double> bends;
  for (std::size_t i = 2; i < y.size(); i += stride)
    bends.push_back(std::abs(y[i] - 2.0 * y[i - 1] + y[i - 2]));
  return Median(std::move(bends)) / kOfSecondDifference;
}

}  // namespace TslMath
