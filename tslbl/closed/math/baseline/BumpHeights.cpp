#include <tslbl/closed/math/baseline/BumpHeights.h>

#include <algorithm>
#include <cstddef>

namespace TslMath {
namespace {

constexpr double kEqual = 1e-6;

bool AreEqual(double low, double high) { return high - low <= kEqual * high; }

}  // namespace

std::vector<double> HeightsOf(std::span<const Knot> bumps) {
  std::vector<double> heights(bumps.size());
  std::ranges::transform(bumps, heights.begin(), &Knot::level);
  return heights;
}

double ShareOfEqual(std::vector<double> heights) {
  if (heights.empty()) return 0.0;
  std::ranges::sort(heights);
  std::size_t equal = 0;
  for (std::size_t i = 0; i < heights.size(); ++i)
    equal += (i > 0 && AreEqual(heights[i - 1], heights[i])) ||
             (i + 1 < heights.size() && AreEqual(heights[i], heights[i + 1]));
  return static_cast<double>(equal) / static_cast<double>(heights.size());
}

}  // namespace TslMath
