#pragma once
// A charge-state series: the peaks of one molecule at several charges.

#include <tslbl/Export.h>
#include <tslbl/chargestate/CSSeriesPeakInfo.h>
#include <tslbl/records/CSSeries.h>
#include <tslbl/records/Record.h>
#include <cstdint>
#include <vector>

namespace TslBL {

struct TSLBL_API CSSeriesInfo : SerialRecord<CSSeriesInfo> {
  CSSeries Series;
  double AvgMass = 0.0;
  double StdDev = 0.0;  // of the average mass
  std::vector<CSSeriesPeakInfo> Peaks;

  // Whether it is the series of this key.
  bool operator==(const CSSeries& series) const { return Series == series; }

  // For each id takes out the first peak that has it.
  void ErasePeaks(const std::vector<std::uint32_t>& ids);
};

TSLBL_API void Describe(Archive& ar, CSSeriesInfo& series);

}  // namespace TslBL
