#include <tslbl/detect/InsertPeak.h>

#include <tslbl/curve/Curve.h>
#include <algorithm>

namespace TslBL {
namespace {

// An index of the curve's largest peaks after `row` was inserted at `place`.
void UpdateLargest(std::int32_t& largest, const std::vector<PeakInfo>& peaks, std::int32_t place,
                   double PeakInfo::*value) {
  if (peaks.size() == 1) return void(largest = 0);
  if (largest >= place) ++largest;
  const auto at = [&](std::int32_t i) { return peaks[static_cast<std::size_t>(i)].*value; };
  const bool named = largest >= 0 && static_cast<std::size_t>(largest) < peaks.size();
  if (!named || at(place) > at(largest)) {
    largest = place;
  } else if (at(place) == at(largest)) {
    largest = std::min(largest, place);
  }
}

}  // namespace

std::int32_t InsertPeak(Curve& curve, const PeakInfo& row) {
  const auto at = curve.peaks.insert(std::lower_bound(curve.peaks.begin(), curve.peaks.end(), row), row);
  const auto place = static_cast<std::int32_t>(at - curve.peaks.begin());
  UpdateLargest(curve.largestAreaIdx, curve.peaks, place, &PeakInfo::area);
  UpdateLargest(curve.largestMaxIdx, curve.peaks, place, &PeakInfo::maxAmpl);
  UpdateLargest(curve.largestCentroidIdx, curve.peaks, place, &PeakInfo::centroidAmpl);
  return place;
}

}  // namespace TslBL
