#include <tool/commands/ramp/RampResponse.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/ramp/RampError.h>
#include <tslbl/closed/math/Normalize.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

using TslBL::MZPeak;
using TslBL::RampAlgorithmParams;
using TslBL::SpectrumBasePeak;

// The sums of one step at one m/z.
struct Sums {
  std::uint32_t spectra = 0;
  std::uint32_t seen = 0;
  double ampl = 0.0;
  double mass = 0.0;
  double res = 0.0;

  void Add(const MZPeak& peak) {
    ++spectra;
    if (!(peak.Ampl > 0.0)) return;
    ++seen;
    ampl += peak.Ampl;
    mass += peak.Mass;
    res += TslBL::QMZPeakField(peak, TslBL::MZPeakField::Res);
  }

  SpectrumBasePeak Mean() const {
    SpectrumBasePeak mean;
    if (seen == 0) return mean;
    TslBL::WMZPeakField(mean.Peak, TslBL::MZPeakField::Mass, mass / seen);
    TslBL::WMZPeakField(mean.Peak, TslBL::MZPeakField::Ampl, ampl / spectra);
    TslBL::WMZPeakField(mean.Peak, TslBL::MZPeakField::Res, res / seen);
    return mean;
  }
};

std::vector<SpectrumBasePeak> MeansAt(std::size_t range, const RampSteps& steps, const RampSpectra& spectra) {
  std::vector<Sums> sums(steps.values.size());
  for (const auto& [number, spectrum] : spectra) sums[spectrum.step].Add(spectrum.peaks[range]);
  std::vector<SpectrumBasePeak> means;
  means.reserve(sums.size());
  for (const Sums& sum : sums) means.push_back(sum.Mean());
  return means;
}

std::vector<std::uint32_t> SpectraOf(const RampSteps& steps, const RampSpectra& spectra) {
  std::vector<std::uint32_t> counts(steps.values.size());
  for (const auto& [number, spectrum] : spectra) ++counts[spectrum.step];
  const auto empty = std::ranges::find(counts, 0U);
  if (empty != counts.end())
    throw RampError(
        fmt::format("no spectrum was measured at {}, a step of the ramp",
                    fmt::join(steps.values[static_cast<std::size_t>(empty - counts.begin())], " and ")));
  return counts;
}

void RemarkEnd(const RampResponse& response, const TslBL::Tune& tune, std::size_t step,
               const std::string& where, std::vector<std::string>& remarks) {
  for (std::size_t lens = 0; lens < response.steps.lenses.size(); ++lens)
    if (response.steps.IsAtEnd(step, lens))
      remarks.push_back(
          fmt::format("{}: the best {}, {}, stands at an end of the ramp; a better one may lie beyond", where,
                      LensName(tune, response.steps.lenses[lens]), response.steps.values[step][lens]));
}

// How near the best step comes to the best of this field at each m/z.
double NearestToAll(const std::vector<std::vector<SpectrumBasePeak>>& peaks,
                    TslBL::MZPeakField::Types field) {
  std::vector<double> worst(peaks.front().size(), 1.0);
  for (const auto& range : peaks) {
    std::vector<double> values;
    values.reserve(range.size());
    for (const SpectrumBasePeak& step : range) values.push_back(TslBL::QMZPeakField(step.Peak, field));
    const std::vector<double> shares = TslMath::Normalize(values);
    for (std::size_t i = 0; i < worst.size(); ++i) worst[i] = std::min(worst[i], shares[i]);
  }
  return std::ranges::max(worst);
}

// Of A at B, where no step has a B as near to the best at all m/z as was asked for, the rule looks at A
// alone, which may be noise where B is poor. So as near is asked for as a step comes.
RampAlgorithmParams Reachable(const std::vector<std::vector<SpectrumBasePeak>>& peaks,
                              RampAlgorithmParams params) {
  double nearest = 1.0;
  if (params.Type == RampAlgorithmParams::AmplitudeAtResolution)
    nearest = NearestToAll(peaks, TslBL::MZPeakField::Res);
  if (params.Type == RampAlgorithmParams::ResolutionAtAmplitude)
    nearest = NearestToAll(peaks, TslBL::MZPeakField::Ampl);
  const double below = std::ceil(100.0 * (1.0 - nearest));
  if (below > params.Percent) params.Percent = static_cast<std::uint32_t>(std::min(below, 100.0));
  return params;
}

}  // namespace

RampResponse MakeRampResponse(const RampSteps& steps, const std::vector<double>& mz,
                              const RampSpectra& spectra, const TslBL::RampAlgorithmParams& params) {
  RampResponse response;
  response.steps = steps;
  response.spectra = SpectraOf(steps, spectra);
  for (std::size_t range = 0; range < mz.size(); ++range) {
    auto means = MeansAt(range, steps, spectra);
    const bool isSeen = std::ranges::any_of(means, [](const auto& mean) { return mean.Peak.Ampl > 0.0; });
    (isSeen ? response.mz : response.unseen).push_back(mz[range]);
    if (isSeen) response.peaks.push_back(std::move(means));
  }
  if (response.mz.empty())
    throw RampError(fmt::format("no step of the ramp shows a peak at m/z {}", fmt::join(mz, ", ")));
  response.best = TslBL::RampCalcMZRangeBestIndexes(response.peaks, params);
  const RampAlgorithmParams reachable = Reachable(response.peaks, params);
  response.overall = TslBL::RampCalcOverallBestIndex(response.peaks, reachable);
  response.percentAsked = params.Percent;
  response.percent = reachable.Percent;
  return response;
}

std::vector<std::string> RampRemarks(const RampResponse& response, const TslBL::Tune& tune) {
  std::vector<std::string> remarks;
  if (!response.steps.beside.empty())
    remarks.push_back(fmt::format("the tunes differ in {}, too, which is averaged",
                                  fmt::join(response.steps.beside, ", ")));
  for (const double mz : response.unseen)
    remarks.push_back(fmt::format("m/z {}: no step of the ramp shows a peak there; it is left out", mz));
  for (std::size_t i = 0; i < response.mz.size(); ++i) {
    const auto missing =
        std::ranges::count_if(response.peaks[i], [](const auto& mean) { return !(mean.Peak.Ampl > 0.0); });
    if (missing > 0)
      remarks.push_back(
          fmt::format("m/z {}: {} of {} steps show no peak there, which counts as amplitude and resolution 0",
                      response.mz[i], missing, response.peaks[i].size()));
    RemarkEnd(response, tune, response.best[i], fmt::format("m/z {}", response.mz[i]), remarks);
  }
  if (response.percent > response.percentAsked)
    remarks.push_back(
        fmt::format("overall: no step is within {} % of the best at all m/z; the one taken is within {} %",
                    response.percentAsked, response.percent));
  RemarkEnd(response, tune, response.overall, "overall", remarks);
  return remarks;
}

}  // namespace TslTool
