#include <tool/commands/decon/CountErrors.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/engines/resolved/ResolvedSeries.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>

namespace TslTool {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::CSSeriesPeakInfo;
using TslBL::DeconSpectrum;

constexpr double kIsotopeSpacing = 1.00235;  // Da, as in an average protein

TslMath::ResolvedPrefs PrefsOf(const TslBL::ChargeStateParams& params) {
  const TslBL::ResolvedParams& resolved = params.Resolved;
  TslMath::ResolvedPrefs prefs;
  prefs.leastSignalToNoise = resolved.MinSN;
  prefs.lowestResolution = resolved.MinResolution;
  prefs.highestResolution = resolved.MaxResolution;
  prefs.accuracy = resolved.MzAccuracy;
  prefs.carrierMass = params.GetAdductIonInfo().MonoMass;
  prefs.thresholds = {resolved.AtomProbThresh, resolved.MoleProbThresh};
  prefs.averageMolecule = TslMath::ParseFormula(TslCommon::ToUtf8(resolved.GetAvgMoleculeInfo().Formula));
  return prefs;
}

std::vector<TslMath::IonPeak> IonPeaksOf(const DeconSpectrum& spectrum,
                                         const std::vector<ReportedPeak>& peaks) {
  const bool isArea = spectrum.CSParams.PkIntensity == TslBL::ChargeStateParams::Area;
  std::vector<TslMath::IonPeak> list;
  list.reserve(peaks.size());
  for (const ReportedPeak& peak : peaks)
    list.push_back({peak.row.Mass, isArea ? peak.row.Area : peak.row.Ampl, peak.row.Area,
                    peak.row.Signal2Noise, peak.row.Resolution});
  return list;
}

TslMath::Species SpeciesOf(const CSSeriesInfo& series, double carrier,
                           const std::vector<TslMath::IonPeak>& peaks) {
  std::map<std::uint32_t, TslMath::IsotopeState> states;
  TslMath::Species species;
  for (const CSSeriesPeakInfo& peak : series.Peaks) {
    const double off = peak.Charge * (peak.MZ - carrier) - series.AvgMass;
    TslMath::IsotopeState& state = states[peak.Charge];
    state.charge = static_cast<std::int32_t>(peak.Charge);
    state.monoMass = series.AvgMass;
    state.isotopes.push_back({static_cast<std::int32_t>(std::lround(off / kIsotopeSpacing)), peak.PeakId});
    species.intensity += peaks.at(peak.PeakId).intensity;
  }
  species.monoMass = series.AvgMass;
  for (auto& [charge, state] : states) species.states.push_back(std::move(state));
  return species;
}

}  // namespace

std::vector<double> CountErrors(const DeconSpectrum& spectrum, const std::vector<ReportedPeak>& peaks) {
  const TslMath::ResolvedPrefs prefs = PrefsOf(spectrum.CSParams);
  const std::vector<TslMath::IonPeak> list = IonPeaksOf(spectrum, peaks);
  std::vector<std::pair<std::size_t, TslMath::Species>> found;
  for (std::size_t i = 0; i < spectrum.Series.size(); ++i)
    if (spectrum.Series[i].Series.Type == TslBL::CSSeries::Resolved)
      found.emplace_back(i, SpeciesOf(spectrum.Series[i], prefs.carrierMass, list));
  std::vector<double> errors(spectrum.Series.size(), 0.0);
  if (found.empty()) return errors;
  std::ranges::stable_sort(found, std::greater{}, [](const auto& one) { return one.second.intensity; });
  std::vector<TslMath::Species> species;
  species.reserve(found.size());
  for (auto& [index, one] : found) species.push_back(std::move(one));
  const std::vector<double> told = TslMath::CountErrors(list, prefs, species);
  for (std::size_t k = 0; k < found.size(); ++k) errors[found[k].first] = told[k];
  return errors;
}

}  // namespace TslTool
