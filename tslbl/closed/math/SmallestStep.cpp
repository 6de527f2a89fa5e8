#include <tslbl/closed/math/SmallestStep.h>

#include <tslbl/closed/math/Lanes.h>

#include <algorithm>
#include <limits>

namespace TslMath {
namespace {

constexpr double NoStep = std::numeric_limits<double>::infinity();

// Groups compared side by side, since each comparison waits for the one before it.
constexpr std::size_t StepLanes = 4;
constexpr std::size_t StepTile = StepLanes * LaneCount;

TSLBL_WIDE void SmallestOfTiles(const double* y, std::size_t tiles, Lanes& result) {
  Lanes least[StepLanes];
  for (Lanes& lanes : least) lanes = NoStep - Lanes{};
  for (std::size_t i = 0; i < tiles * StepTile; i += StepTile) {
#pragma GCC unroll 4
    for (std::size_t k = 0; k < StepLanes; ++k) {
      Lanes here, next, step;
      Load(y + i + k * LaneCount, here);
      Load(y + i + k * LaneCount + 1, next);
      Magnitude(next - here, step);
      // No step becomes a NaN, which is never the smaller one.
      step = (Lanes)((LaneMask)step | (step == 0.0));
      least[k] = step < least[k] ? step : least[k];
    }
  }
  for (std::size_t k = 1; k < StepLanes; ++k) least[0] = least[k] < least[0] ? least[k] : least[0];
  result = least[0];
}

}  // namespace

double SmallestStep(const double* y, std::size_t n) {
  if (n < 2) return 0;
  const std::size_t tiles = (n - 1) / StepTile;
  Lanes lanes;
  SmallestOfTiles(y, tiles, lanes);
  double least = NoStep;
  for (std::size_t j = 0; j < LaneCount; ++j) least = std::min(least, lanes[j]);
  for (std::size_t i = tiles * StepTile; i + 1 < n; ++i) {
    const double step = y[i + 1] > y[i] ? y[i + 1] - y[i] : y[i] - y[i + 1];
    if (step > 0 && step < least) least = step;
  }
  return least < NoStep ? least : 0;
}

}  // namespace TslMath
