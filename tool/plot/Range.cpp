#include <tool/plot/Range.h>

#include <algorithm>
#include <cmath>

namespace TslTool {

void Range::Include(double value) {
  if (!std::isfinite(value)) return;
  low = std::min(low, value);
  high = std::max(high, value);
}

void Range::Include(std::span<const double> values) {
  for (const double value : values) Include(value);
}

Range Range::Padded(double share) const {
  constexpr double kLargest = 1e300;  // sums and differences of two stay finite
  constexpr double kLevel = 1e-9;
  if (IsEmpty()) return {0.0, 1.0};
  const Range cut{std::clamp(low, -kLargest, kLargest), std::clamp(high, -kLargest, kLargest)};
  const double size = std::max(std::abs(cut.low), std::abs(cut.high));
  const bool isLevel = !(cut.high - cut.low > kLevel * size);
  const double room = isLevel ? std::max(1.0, size * 0.1) : (cut.high - cut.low) * share;
  return {cut.low - room, cut.high + room};
}

}  // namespace TslTool
