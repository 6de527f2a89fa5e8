#include <tslbl/closed/math/baseline/CurveFloor.h>

#include <tslbl/closed/math/Lanes.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace TslMath {
namespace {

constexpr std::size_t kLeastOnFloor = 10;
constexpr double kAgreement = 0.6;
constexpr std::size_t kJudged = 256;
constexpr std::size_t kBlock = 64;  // points
// Differences below this part of the largest amplitude are rounding of a filter.
constexpr double kRounding = 1e-9;

struct Extent {
  double lowest = std::numeric_limits<double>::infinity();
  double largest = 0.0;  // in size
};

// Samples that are not finite are passed over.
TSLBL_WIDE void FindExtent(const double* y, std::size_t n, Extent& extent) {
  constexpr double kMost = std::numeric_limits<double>::max();
  Lanes low = extent.lowest - Lanes{};
  Lanes large{};
  std::size_t i = 0;
  for (; i + kLaneCount <= n; i += kLaneCount) {
    Lanes here, size;
    Load(y + i, here);
    Magnitude(here, size);
    low = ((here < low) & (size <= kMost)) ? here : low;
    large = ((size > large) & (size <= kMost)) ? size : large;
  }
  for (std::size_t j = 0; j < kLaneCount; ++j) {
    extent.lowest = std::min(extent.lowest, low[j]);
    extent.largest = std::max(extent.largest, large[j]);
  }
  for (; i < n; ++i) {
    if (!std::isfinite(y[i])) continue;
    extent.lowest = std::min(extent.lowest, y[i]);
    extent.largest = std::max(extent.largest, std::abs(y[i]));
  }
}

TSLBL_WIDE void CountBetween(const double* y, std::size_t n, double low, double high, std::size_t& count) {
  LaneMask between{};
  std::size_t i = 0;
  for (; i + kLaneCount <= n; i += kLaneCount) {
    Lanes here;
    Load(y + i, here);
    between -= (here >= low) & (here <= high);
  }
  count = static_cast<std::size_t>(between[0] + between[1] + between[2] + between[3]);
  for (; i < n; ++i) count += y[i] >= low && y[i] <= high ? 1 : 0;
}

TSLBL_WIDE void CountEqualNeighbours(const double* y, std::size_t n, double rounding, std::size_t& count) {
  LaneMask equal{};
  std::size_t i = 0;
  for (; i + kLaneCount < n; i += kLaneCount) {
    Lanes here, next, step;
    Load(y + i, here);
    Load(y + i + 1, next);
    Magnitude(next - here, step);
    equal -= step <= rounding;
  }
  count = static_cast<std::size_t>(equal[0] + equal[1] + equal[2] + equal[3]);
  for (; i + 1 < n; ++i) count += std::abs(y[i + 1] - y[i]) <= rounding ? 1 : 0;
}

// The points that have the value of their right neighbour, counted in blocks: so those that are far apart are
// found without a look at each point between them.
class Repeats {
 public:
  Repeats(const double* y, std::size_t n, double rounding) : y_(y), rounding_(rounding) {
    for (std::size_t begin = 0; begin + 1 < n; begin += kBlock) {
      std::size_t count = 0;
      CountEqualNeighbours(y + begin, std::min(kBlock + 1, n - begin), rounding, count);
      counts_.push_back(static_cast<std::uint8_t>(count));
      total_ += count;
    }
  }

  std::size_t Total() const { return total_; }

  // The value of each `stride`-th of them, from the first on.
  std::vector<double> Every(std::size_t stride) const {
    std::vector<double> values;
    std::size_t found = 0;
    std::size_t wanted = 0;
    for (std::size_t block = 0; block < counts_.size(); ++block) {
      const std::size_t here = found + counts_[block];
      for (std::size_t i = block * kBlock; wanted < here; ++i) {
        if (!(std::abs(y_[i + 1] - y_[i]) <= rounding_) || found++ != wanted) continue;
        values.push_back(y_[i]);
        wanted += stride;
      }
      found = here;
    }
    return values;
  }

 private:
  const double* y_;
  double rounding_;
  std::vector<std::uint8_t> counts_;
  std::size_t total_ = 0;
};

// The value of most of them, judged by some hundred.
double RestingValue(const Repeats& repeats, double rounding) {
  std::vector<double> values = repeats.Every(repeats.Total() / kJudged + 1);
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  const double value = *middle;
  const auto near = [&](double v) { return std::abs(v - value) <= rounding; };
  const auto agreeing = static_cast<double>(std::ranges::count_if(values, near));
  return agreeing >= kAgreement * static_cast<double>(values.size()) ? value : std::nan("");
}

}  // namespace

double CurveFloor::ShareOf(const double* y, std::size_t n) const {
  std::size_t count = 0;
  CountBetween(y, n, value - rounding, value + rounding, count);
  return static_cast<double>(count) / static_cast<double>(n);
}

std::optional<CurveFloor> FindCurveFloor(const double* y, std::size_t n) {
  Extent extent;
  FindExtent(y, n, extent);
  const double rounding = kRounding * extent.largest;
  std::size_t lowest = 0;
  CountBetween(y, n, extent.lowest, extent.lowest + rounding, lowest);
  const Repeats repeats(y, n, rounding);
  // Ions swing below the floor to one depth, so that the lowest value may be shared, too.
  if (repeats.Total() >= kLeastOnFloor && repeats.Total() > lowest) {
    const double value = RestingValue(repeats, rounding);
    if (!std::isnan(value)) return CurveFloor{value, rounding};
  }
  if (lowest < kLeastOnFloor) return std::nullopt;
  return CurveFloor{extent.lowest, rounding};
}

}  // namespace TslMath
