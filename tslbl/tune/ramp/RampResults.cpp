#include <tslbl/tune/ramp/RampResults.h>

#include <tslbl/closed/math/Normalize.h>
#include <tslbl/records/MZPeakField.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace TslBL {
namespace {

using Values = std::vector<double>;
using Peaks = std::vector<SpectrumBasePeak>;

double OrLeast(double value) { return std::isnan(value) ? -std::numeric_limits<double>::infinity() : value; }

Values ValuesOf(const Peaks& peaks, MZPeakField::Types field) {
  Values values;
  values.reserve(peaks.size());
  for (const SpectrumBasePeak& step : peaks) values.push_back(OrLeast(QMZPeakField(step.Peak, field)));
  return values;
}

Values Amplitudes(const Peaks& peaks) { return ValuesOf(peaks, MZPeakField::Ampl); }
Values Resolutions(const Peaks& peaks) { return ValuesOf(peaks, MZPeakField::Res); }

std::size_t RequireSteps(const std::vector<Peaks>& peaks) {
  const std::size_t steps = peaks.front().size();
  if (steps == 0) throw std::invalid_argument("A ramp without steps has no best one.");
  for (const Peaks& range : peaks)
    if (range.size() != steps)
      throw std::invalid_argument("The m/z ranges of a ramp do not have the same number of steps.");
  return steps;
}

// Counted without a sign, as percentages above 100 have always been: no step reaches such a threshold.
double ShareWithin(const RampAlgorithmParams& params) { return static_cast<double>(100u - params.Percent); }

// The step of the largest x, and of these of the largest y, that has a y of `threshold` or more; without one
// the first of all.
std::uint32_t Select(const Values& x, const Values& y, double threshold) {
  const auto isBetter = [&](std::size_t a, std::size_t b) {
    return x[a] != x[b] ? x[a] > x[b] : y[a] > y[b];
  };
  std::size_t best = 0;
  for (std::size_t i = 1; i < x.size(); ++i) {
    const bool reaches = !(y[i] < threshold);
    const bool bestReaches = !(y[best] < threshold);
    if (reaches != bestReaches ? reaches : isBetter(i, best)) best = i;
  }
  return static_cast<std::uint32_t>(best);
}

std::uint32_t IndexOfLargest(const Values& values) {
  return static_cast<std::uint32_t>(std::ranges::max_element(values) - values.begin());
}

// The threshold is a share of the largest y, and never below 0.
std::uint32_t SelectWithin(const Values& x, const Values& y, const RampAlgorithmParams& params) {
  const double largest = std::max(0.0, std::ranges::max(y));
  return Select(x, y, largest * ShareWithin(params) / 100.0);
}

std::uint32_t BestOf(const Peaks& range, const RampAlgorithmParams& params) {
  switch (params.Type) {
    case RampAlgorithmParams::Amplitude:
      return IndexOfLargest(Amplitudes(range));
    case RampAlgorithmParams::Resolution:
      return IndexOfLargest(Resolutions(range));
    case RampAlgorithmParams::AmplitudeAtResolution:
      return SelectWithin(Amplitudes(range), Resolutions(range), params);
    default:
      return SelectWithin(Resolutions(range), Amplitudes(range), params);
  }
}

// What is summed over the ranges, and what no range may fall far behind in.
struct Choice {
  Values (*summed)(const Peaks& peaks);
  Values (*floor)(const Peaks& peaks);
};

Choice ChoiceOf(std::uint32_t type) {
  switch (type) {
    case RampAlgorithmParams::Resolution:
      return {&Resolutions, &Resolutions};
    case RampAlgorithmParams::AmplitudeAtResolution:
      return {&Amplitudes, &Resolutions};
    case RampAlgorithmParams::ResolutionAtAmplitude:
      return {&Resolutions, &Amplitudes};
    default:
      return {&Amplitudes, &Amplitudes};
  }
}

}  // namespace

std::vector<std::uint32_t> RampCalcMZRangeBestIndexes(const std::vector<Peaks>& peaks,
                                                      const RampAlgorithmParams& params) {
  std::vector<std::uint32_t> best;
  if (peaks.empty()) return best;
  RequireSteps(peaks);
  best.reserve(peaks.size());
  for (const Peaks& range : peaks) best.push_back(BestOf(range, params));
  return best;
}

std::uint32_t RampCalcOverallBestIndex(const std::vector<Peaks>& peaks, const RampAlgorithmParams& params) {
  if (peaks.empty()) throw std::invalid_argument("A ramp without m/z ranges has no best step.");
  const std::size_t steps = RequireSteps(peaks);
  const Choice choice = ChoiceOf(params.Type);
  Values sum = choice.summed(peaks.front());
  Values floor = TslMath::Normalize(choice.floor(peaks.front()));
  for (std::size_t r = 1; r < peaks.size(); ++r) {
    const Values summed = choice.summed(peaks[r]);
    const Values normalized = TslMath::Normalize(choice.floor(peaks[r]));
    for (std::size_t i = 0; i < steps; ++i) {
      sum[i] = OrLeast(sum[i] + summed[i]);
      floor[i] = std::min(floor[i], normalized[i]);
    }
  }
  return Select(sum, floor, ShareWithin(params) / 100.0);
}

}  // namespace TslBL
