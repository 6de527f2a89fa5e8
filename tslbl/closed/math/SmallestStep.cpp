#include <tslbl/closed/math/SmallestStep.h>

#include <tslbl/closed/math/Lanes.h>

#include <algorithm>
#include <limits>

namespace TslMath {
namespace {

constexpr double NoStep = std::numeric_limits<double>::infinity();

TSLBL_WIDE void SmallestOfGroups(const double* y, std::size_t groups, Lanes& result) {
  Lanes least = NoStep - Lanes{};
  for (std::size_t g = 0; g < groups; ++g) {
    Lanes here, next, step;
    Load(y + g * LaneCount, here);
    Load(y + g * LaneCount + 1, next);
    Magnitude(next - here, step);
    const LaneMask smaller = (step > 0.0) & (step < least);
    least = smaller ? step : least;
  }
  result = least;
}

}  // namespace

double SmallestStep(const double* y, std::size_t n) {
  if (n < 2) return 0;
  const std::size_t groups = (n - 1) / LaneCount;
  Lanes lanes;
  SmallestOfGroups(y, groups, lanes);
  double least = NoStep;
  for (std::size_t j = 0; j < LaneCount; ++j) least = std::min(least, lanes[j]);
  for (std::size_t i = groups * LaneCount; i + 1 < n; ++i) {
    const double step = y[i + 1] > y[i] ? y[i + 1] - y[i] : y[i] - y[i + 1];
    if (step > 0 && step < least) least = step;
  }
  return least < NoStep ? least : 0;
}

}  // namespace TslMath
