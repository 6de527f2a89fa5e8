#include <tslbl/chargestate/SeriesReply.h>

#include <tslbl/chargestate/DeconXMLParser.h>
#include <tslbl/curve/RunForUser.h>
#include <tslbl/spectrum/PeakTable.h>

namespace TslBL {
namespace {

double MZOf(const DeconSpectrum& spectrum, std::uint32_t peakId) {
  if (spectrum.IsMzPkId(peakId)) return TranslateMZPeak(spectrum, peakId).Mass;
  // An id that no peak has is taken for that of the first overlap peak.
  std::uint32_t overlapPeak = 0;
  spectrum.SpecPkIdToOpdPkId(peakId, overlapPeak);
  return TranslateMZOverlapPeak(spectrum, overlapPeak).Mass;
}

std::vector<CSSeriesPeakInfo> PeaksOf(const FoundSeries& series, const DeconSpectrum& spectrum) {
  std::vector<CSSeriesPeakInfo> peaks;
  for (const FoundSeries::ChargeState& state : series.chargeStates) {
    for (const std::uint32_t id : state.peakIds) {
      CSSeriesPeakInfo& peak = peaks.emplace_back();
      peak.PeakId = id;
      peak.MZ = MZOf(spectrum, id);
      peak.Charge = static_cast<std::uint32_t>(state.charge);
      peak.IsMonoPeak = id == state.monoPk;
      if (!peak.IsMonoPeak) continue;
      peak.MonoMass = state.monoMass;
      peak.MassDev = state.dev;
    }
  }
  return peaks;
}

// Calls store(avgMass, stdDev, peaks) for each series.
template <class Store>
void ForEachSeries(const std::wstring& reply, const DeconSpectrum& spectrum, Store store) {
  const std::vector<FoundSeries> found = DeconXMLParser(reply).QSeries();
  if (found.empty()) ThrowMessage(kNoSeriesFound);
  for (const FoundSeries& series : found) store(series.avgMass, series.stdDev, PeaksOf(series, spectrum));
}

}  // namespace

void AddSeriesOf(const std::wstring& reply, CSSeries::Types type, DeconSpectrum& spectrum) {
  ForEachSeries(reply, spectrum, [&](double avgMass, double stdDev, const auto& peaks) {
    spectrum.CSAddSeries(type, avgMass, stdDev, peaks);
  });
}

void ReplaceSeriesBy(const std::wstring& reply, const CSSeries& series, DeconSpectrum& spectrum) {
  ForEachSeries(reply, spectrum, [&](double avgMass, double stdDev, const auto& peaks) {
    spectrum.CSReplaceSeries(series, avgMass, stdDev, peaks);
  });
}

}  // namespace TslBL
