#include <tslbl/closed/math/SmallestStep.h>

#include <tslbl/closed/math/Lanes.h>

#include <algorithm>
#include <limits>

namespace TslMath {
namespace {

constexpr double kNoStep = std::numeric_limits<double>::infinity();

// Groups compared side by side, since each comparison waits for the one before it.
constexpr std::size_t kStepLanes = 4;
constexpr std::size_t kStepTile = kStepLanes * kLaneCount;

TSLBL_WIDE void SmallestOfTiles(const double* y, std::size_t tiles, Lanes& result) {
  Lanes least[kStepLanes];
  for (Lanes& lanes : least) lanes = kNoStep - Lanes{};
  for (std::size_t i = 0; i < tiles * kStepTile; i += kStepTile) {
#pragma GCC unroll 4
    for (std::size_t k = 0; k < kStepLanes; ++k) {
      Lanes here, next, step;
      Load(y + i + k * kLaneCount, here);
      Load(y + i + k * kLaneCount + 1, next);
      Magnitude(next - here, step);
      // No step becomes a NaN, which is never the smaller one.
      step = (Lanes)((LaneMask)step | (step == 0.0));
      least[k] = step < least[k] ? step : least[k];
    }
  }
  for (std::size_t k = 1; k < kStepLanes; ++k) least[0] = least[k] < least[0] ? least[k] : least[0];
  result = least[0];
}

}  // namespace

double SmallestStep(const double* y, std::size_t n) {
  if (n < 2) return 0;
  const std::size_t tiles = (n - 1) / kStepTile;
  Lanes lanes;
  SmallestOfTiles(y, tiles, lanes);
  double least = kNoStep;
  for (std::size_t j = 0; j < kLaneCount; ++j) least = std::min(least, lanes[j]);
  for (std::size_t i = tiles * kStepTile; i + 1 < n; ++i) {
    const double step = y[i + 1] > y[i] ? y[i + 1] - y[i] : y[i] - y[i + 1];
    if (step > 0 && step < least) least = step;
  }
  return least < kNoStep ? least : 0;
}

}  // namespace TslMath
