#pragma once
// One peak of an overlap group: a Gaussian that was fitted under a data peak of a spectrum.
// Positions and widths are in points of the curve, fractions included.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API OverlapPeakInfo : SerialRecord<OverlapPeakInfo> {
  std::uint32_t GroupId = 0;     // counted from 1
  std::uint32_t DataPeakId = 0;  // index of its data peak in the peak table
  double Position = 0.0;         // centre, a fractional point index
  double Fit5 = 0.0;             // sixth value of the engine's result, passed on
  double Baseline = 0.0;         // fitted offset
  double Height = 0.0;           // above that offset
  double Fit4 = 0.0;             // fifth value of the engine's result, passed on
  double FWHM = 0.0;             // full width at half maximum, in points
  double Fit6 = 0.0;             // seventh value of the engine's result, passed on

  bool GroupMatch(std::uint32_t id) const { return GroupId == id; }
  // By position.
  friend bool operator<(const OverlapPeakInfo& a, const OverlapPeakInfo& b) {
    return a.Position < b.Position;
  }
};

TSLBL_API void Describe(Archive& ar, OverlapPeakInfo& peak);

}  // namespace TslBL
