#include <tslbl/closed/math/chargestate/PlaceMap.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kCellsInWindow = 8.0;
constexpr double kMostCells = 65536.0;
constexpr double kLeastCell = 1e-9;  // m/z

}  // namespace

PlaceMap::PlaceMap(const RankedPeaks& peaks, double window) {
  if (peaks.Count() == 0) return;
  const double margin = 2.0 * window * peaks.HighestMz();
  start_ = peaks.LowestMz() - margin;
  const double range = peaks.HighestMz() + margin - start_;
  const double finest = window * peaks.LowestMz() / kCellsInWindow;
  const double cell = std::max({finest, range / kMostCells, kLeastCell});
  cellsPerMz_ = 1.0 / cell;
  firsts_.assign(static_cast<std::size_t>(range / cell) + 2, kNone);
  for (std::size_t i = peaks.Count(); i-- > 0;) {
    const double mz = peaks[i].mz;
    // One cell more on either side makes good for rounding.
    const double first = std::floor((mz / (1.0 + window) - start_) * cellsPerMz_) - 1.0;
    const double pastLast = std::floor((mz / (1.0 - window) - start_) * cellsPerMz_) + 2.0;
    const double size = static_cast<double>(firsts_.size());
    std::fill(firsts_.begin() + static_cast<std::ptrdiff_t>(std::max(first, 0.0)),
              firsts_.begin() + static_cast<std::ptrdiff_t>(std::min(pastLast, size)),
              static_cast<std::int32_t>(i));
  }
}

}  // namespace TslMath
