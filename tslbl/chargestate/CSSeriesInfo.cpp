#include <tslbl/chargestate/CSSeriesInfo.h>

#include <tslbl/records/Archive.h>
#include <algorithm>

namespace TslBL {

void CSSeriesInfo::ErasePeaks(const std::vector<std::uint32_t>& ids) {
  for (const std::uint32_t id : ids) {
    const auto peak = std::ranges::find(Peaks, id, &CSSeriesPeakInfo::PeakId);
    if (peak != Peaks.end()) Peaks.erase(peak);
  }
}

void Describe(Archive& ar, CSSeriesInfo& series) {
  ar.Version(1, "Unknown Charge State Series Information version.");
  ar.Nested(series.Series);
  ar(L"AvgMass", series.AvgMass);
  ar(L"StdDev", series.StdDev);
  ar.List(L"Peaks", series.Peaks);
}

}  // namespace TslBL
