// The series of a deconvolved spectrum.

#include <tslbl/chargestate/DeconSpectrum.h>

#include <algorithm>
#include <unordered_map>

namespace TslBL {
namespace {

CSSeriesInfo MakeInfo(const CSSeries& key, double avgMass, double stdDev,
                      const std::vector<CSSeriesPeakInfo>& peaks) {
  CSSeriesInfo info;
  info.Series = key;
  info.AvgMass = avgMass;
  info.StdDev = stdDev;
  info.Peaks = peaks;
  return info;
}

}  // namespace

void DeconSpectrum::CSSeriesClear() {
  Series.clear();
  MassX.clear();
  MassY.clear();
}

bool DeconSpectrum::IsSeriesValid(const CSSeriesInfo& series) {
  if (series.Series.Type == CSSeries::Unresolved) return series.Peaks.size() >= 2;
  if (series.Series.Type != CSSeries::Resolved) return false;
  return std::ranges::any_of(series.Peaks, &CSSeriesPeakInfo::IsMonoPeak);
}

bool DeconSpectrum::IsSeriesValid(const CSSeries& series) const {
  const CSSeriesInfo* info = Find(series);
  return info != nullptr && IsSeriesValid(*info);
}

bool DeconSpectrum::IsSeriesValid(std::uint32_t index) const {
  return index < Series.size() && IsSeriesValid(Series[index]);
}

void DeconSpectrum::CSAddSeries(CSSeries::Types type, double avgMass, double stdDev,
                                const std::vector<CSSeriesPeakInfo>& found) {
  const CSSeriesInfo info = MakeInfo({type, CSGenerateSeriesId(type)}, avgMass, stdDev, found);
  if (IsSeriesValid(info)) Series.push_back(info);
}

void DeconSpectrum::CSReplaceSeries(const CSSeries& series, double avgMass, double stdDev,
                                    const std::vector<CSSeriesPeakInfo>& found) {
  const auto place = std::ranges::find(Series, series, &CSSeriesInfo::Series);
  if (place == Series.end()) return;
  const CSSeriesInfo info = MakeInfo(series, avgMass, stdDev, found);
  if (IsSeriesValid(info)) *place = info;
}

void DeconSpectrum::CSDeleteSeries(const std::vector<CSSeries>& series) {
  for (const CSSeries& key : series) {
    const auto found = std::ranges::find(Series, key, &CSSeriesInfo::Series);
    if (found != Series.end()) Series.erase(found);
  }
}

std::vector<CSSeries> DeconSpectrum::QCSSeriesArray() const {
  std::vector<CSSeries> keys;
  for (const CSSeriesInfo& info : Series) keys.push_back(info.Series);
  return keys;
}

bool DeconSpectrum::QCSSeriesInfo(const CSSeries& series, CSSeriesInfo& info) const {
  const CSSeriesInfo* found = Find(series);
  if (found != nullptr) info = *found;
  return found != nullptr;
}

bool DeconSpectrum::QCSSeriesInfo(std::uint32_t index, CSSeriesInfo& info) const {
  if (index >= Series.size()) return false;
  info = Series[index];
  return true;
}

std::vector<CSSeriesPeakInfo> DeconSpectrum::QCSSeriesPeakInfoArray(const CSSeries& series) const {
  const CSSeriesInfo* info = Find(series);
  return info != nullptr ? info->Peaks : std::vector<CSSeriesPeakInfo>();
}

std::vector<std::uint32_t> DeconSpectrum::QCSSeriesChargePeakIds(const CSSeries& series,
                                                                 std::uint32_t charge) const {
  std::vector<std::uint32_t> ids;
  for (const CSSeriesPeakInfo& peak : QCSSeriesPeakInfoArray(series))
    if (peak.Charge == charge) ids.push_back(peak.PeakId);
  return ids;
}

bool DeconSpectrum::QCSSeriesIndex(const CSSeries& series, std::uint32_t& index) const {
  if (series.Type != CSSeries::Resolved && series.Type != CSSeries::Unresolved) return false;
  const CSSeriesInfo* info = Find(series);
  if (info != nullptr) index = static_cast<std::uint32_t>(info - Series.data());
  return info != nullptr;
}

void DeconSpectrum::CSAddSeriesInfoToPeakTable(std::vector<MZPeak>& table) const {
  if (!CheckAllStatus(STATUS_CSDECON)) return;
  std::unordered_map<std::uint32_t, std::pair<const CSSeriesInfo*, const CSSeriesPeakInfo*>> firsts;
  for (const CSSeriesInfo& series : Series)
    for (const CSSeriesPeakInfo& peak : series.Peaks) firsts.try_emplace(peak.PeakId, &series, &peak);
  for (std::uint32_t row = 0; row < table.size(); ++row) {
    const auto first = firsts.find(row);
    if (first == firsts.end()) continue;
    const auto& [series, peak] = first->second;
    table[row].CSSeriesRef = series->Series;
    table[row].CSValue1 = peak->MonoMass;
    table[row].CSValue2 = series->AvgMass;
    table[row].CSValue3 = peak->MassDev;
    table[row].CSCharge = static_cast<std::int32_t>(peak->Charge);
  }
}

std::uint32_t DeconSpectrum::CSGenerateSeriesId(CSSeries::Types type) const {
  std::uint32_t highest = 0;
  for (const CSSeriesInfo& info : Series)
    if (info.Series.Type == type) highest = std::max(highest, info.Series.Id);
  return highest + 1;
}

const CSSeriesInfo* DeconSpectrum::Find(const CSSeries& series) const {
  const auto found = std::ranges::find(Series, series, &CSSeriesInfo::Series);
  return found != Series.end() ? &*found : nullptr;
}

}  // namespace TslBL
