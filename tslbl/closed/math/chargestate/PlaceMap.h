#pragma once
// Where along m/z a peak may lie within a window: a coarse map that answers without a search.
#include <tslbl/closed/math/chargestate/RankedPeaks.h>

#include <cstdint>
#include <vector>

namespace TslMath {

class PlaceMap {
 public:
  static constexpr std::int32_t kNone = -1;

  // `window` is the half width, relative to m/z, below 1.
  PlaceMap(const RankedPeaks& peaks, double window);

  // No peak before this one lies within the window around `mz`; kNone if none does at all.
  std::int32_t FirstNear(double mz) const {
    const double cell = (mz - start_) * cellsPerMz_;
    const bool isInside = cell >= 0.0 && cell < static_cast<double>(firsts_.size());
    return isInside ? firsts_[static_cast<std::size_t>(cell)] : kNone;
  }

 private:
  double start_ = 0;
  double cellsPerMz_ = 0;
  std::vector<std::int32_t> firsts_;
};

}  // namespace TslMath
