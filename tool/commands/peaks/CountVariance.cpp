#include <tool/commands/peaks/CountVariance.h>

#include <tool/chain/Lift.h>
#include <tool/commands/peaks/ClippedNoise.h>
#include <tool/commands/peaks/CutNoise.h>
#include <tool/commands/peaks/SignalNoise.h>
#include <tool/io/CountStep.h>
#include <tslbl/closed/math/Median.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

// The noise of counts may be found this many times as large or as small.
constexpr double kAgreement = 1.5;
constexpr double kManyCounts = 300.0;  // in three points
constexpr double kLeastCounts = 0.5;   // in three points, for the scatter between them to tell
constexpr std::size_t kTellingPoints = 30;
constexpr double kCloseAgreement = 1.33;
// In peaks there are few points, and each tells little of how its neighbours scatter.
constexpr double kFarAgreement = 3.0;
constexpr std::size_t kTellingPointsOfPeaks = 120;
constexpr double kRangeOfPeaks = 30.0;
constexpr std::size_t kMostAveraged = 9;
// Points beside a peak on which its spline depends.
constexpr std::size_t kAroundPeak = 12;
constexpr double kLeastOfFound = 0.25;

double SumOfSquares(std::span<const double> filter) {
  double sum = 0.0;
  for (const double weight : filter) sum += weight * weight;
  return sum;
}

// An ion behind the filter is h = step * sum(w^2) high, and the noise of a mean m is sqrt(h (m + h)).
bool HasNoiseOfCounts(const TslBL::Spectrum& spectrum, double step, std::span<const double> filter) {
  const double height = step * SumOfSquares(filter);
  double found = 0.0;
  double expected = 0.0;
  for (std::size_t i = 0; i < spectrum.noise.size() && i < spectrum.baseline.size(); ++i) {
    found += spectrum.noise[i];
    expected += std::sqrt(height * (std::max(spectrum.baseline[i], 0.0) + height));
  }
  return found > 0.0 && found <= kAgreement * expected && expected <= kAgreement * found;
}

// The same told by neighbouring points: the square of a difference of counts is in the mean as large as the
// counts in it, weighted with the squares of its factors. The shape of peaks adds to it, the more so the more
// ions there are and the narrower peaks are: only points are asked at which the difference of the shape is
// lost in what ions scatter, if peaks are Gaussians of the width for which `most` is meant.
struct Differences {
  std::vector<double> factors;
  double most;  // counts in three points
};

const std::vector<Differences>& TellingDifferences() {
  static const std::vector<double> second = {1.0, -2.0, 1.0};
  static const std::vector<double> sixth = {1.0, -6.0, 15.0, -20.0, 15.0, -6.0, 1.0};
  static const std::vector<Differences> all = {{second, 300.0},  {second, 60.0},  {second, 20.0},
                                               {sixth, 30000.0}, {sixth, 3000.0}, {sixth, 300.0}};
  return all;
}

// Of the squares of differences.
struct Scatter {
  double found = 0.0;
  double expected = 0.0;  // of counts
  std::size_t points = 0;
};

// Of the points with `least` counts or more.
Scatter ScatterOf(const std::vector<double>& y, double step, const Differences& differences,
                  double least = kLeastCounts) {
  const std::vector<double>& factors = differences.factors;
  const std::size_t half = factors.size() / 2;
  Scatter scatter;
  for (std::size_t i = half; i + half < y.size(); ++i) {
    const double counts = (y[i - 1] + y[i] + y[i + 1]) / step;
    if (counts < least || counts > differences.most) continue;
    double difference = 0.0;
    for (std::size_t k = 0; k < factors.size(); ++k) {
      const double here = y[i + k - half] / step;
      difference += factors[k] * here;
      scatter.expected += factors[k] * factors[k] * here;
    }
    scatter.found += difference * difference;
    ++scatter.points;
  }
  return scatter;
}

// For spectra whose noise is unsure, as in windows of a few points, or between lines that are close.
bool HasScatterOfCounts(const std::vector<double>& y, double step) {
  return std::ranges::any_of(TellingDifferences(), [&](const Differences& differences) {
    const Scatter scatter = ScatterOf(y, step, differences);
    return scatter.points >= kTellingPoints && scatter.found <= kCloseAgreement * scatter.expected &&
           scatter.expected <= kCloseAgreement * scatter.found;
  });
}

// Points that were interpolated or smoothed scatter less than counts do, wherever they are looked at; peaks
// only add to the scatter.
bool IsSmootherThanCounts(const std::vector<double>& y, double step) {
  const double everyOther = 3.0 * TslMath::Median(y) / step;
  const Scatter scatter = ScatterOf(y, step, {{1.0, -2.0, 1.0}, std::max(everyOther, kManyCounts)});
  return scatter.points >= kTellingPoints && scatter.expected > kAgreement * scatter.found;
}

// Numbers of a converter scatter in peaks as beside them, also where that is as counts of the background
// would.
bool ArePeaksSmootherThanCounts(const std::vector<double>& y, double step) {
  return std::ranges::any_of(TellingDifferences(), [&](const Differences& differences) {
    const Scatter scatter = ScatterOf(y, step, differences, differences.most / kRangeOfPeaks);
    return scatter.points >= kTellingPointsOfPeaks && scatter.expected > kFarAgreement * scatter.found;
  });
}

// Calls use(point) for every point that a peak's errors depend on, in ascending order.
template <class Use>
void ForEachPointOfPeaks(const TslBL::Spectrum& spectrum, std::size_t filter, Use use) {
  const std::size_t margin = filter / 2 + kAroundPeak;
  std::size_t next = 0;
  for (const TslBL::PeakInfo& peak : spectrum.peaks) {
    next = std::max<std::size_t>(next, peak.startIdx - std::min<std::size_t>(peak.startIdx, margin));
    for (; next < std::min(peak.endIdx + margin + 1, spectrum.yAxis.size()); ++next) use(next);
  }
}

double MeanAround(const std::vector<double>& y, std::size_t i, std::size_t half) {
  const std::size_t begin = i - std::min(i, half);
  const std::size_t end = std::min(i + half + 1, y.size());
  double sum = 0.0;
  for (std::size_t k = begin; k < end; ++k) sum += y[k];
  return sum / static_cast<double>(end - begin);
}

std::size_t HalfAveraged(std::size_t filter) { return std::min(filter / 3 | 1U, kMostAveraged) / 2; }

std::vector<double> OfCounts(const LoadedSpectrum& loaded, double count, std::size_t filter) {
  const std::vector<double>& baseline = loaded.spectrum->baseline;
  const std::size_t half = HalfAveraged(filter);
  std::vector<double> variance(loaded.measured.size());
  ForEachPointOfPeaks(*loaded.spectrum, filter, [&](std::size_t i) {
    // No count where one may come is no certainty.
    const double least = 0.5 * std::max(i < baseline.size() ? baseline[i] : 0.0, 0.0) + 0.05 * count;
    variance[i] = count * std::max(MeanAround(loaded.measured, i, half), least);
  });
  return variance;
}

// The noise that peaks must exceed beside a threshold is that of its bumps; that of a point is less.
double VarianceOfPoint(double found, double ofCut) {
  if (ofCut == 0.0) return found;
  return std::clamp(ofCut * ofCut, kLeastOfFound * found, found);
}

std::vector<double> OfNoise(const LoadedSpectrum& loaded, std::span<const double> filter) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  std::vector<double> variance(spectrum.noise.size());
  const double squares = SumOfSquares(filter);
  const double ofSignal = SignalNoiseOf(loaded, squares);
  const double ofCut = CutNoiseOf(loaded.measured);
  const std::size_t half = HalfAveraged(filter.size());
  ForEachPointOfPeaks(spectrum, filter.size(), [&](std::size_t i) {
    variance[i] = VarianceOfPoint(spectrum.noise[i] * spectrum.noise[i] / squares, ofCut);
    if (ofSignal > 0.0)
      variance[i] += ofSignal * std::max(MeanAround(loaded.measured, i, half) - spectrum.baseline[i], 0.0);
  });
  return variance;
}

}  // namespace

double CountAmplOf(const LoadedSpectrum& loaded, std::span<const double> filter) {
  if (loaded.countAmpl > 0.0) return loaded.countAmpl;
  // Counts are never below 0, and above another level they do not tell their number.
  if (LiftOf(loaded.measured) > 0.0) return 0.0;
  const double step = CountStepOf(loaded.measured);
  if (!(step > 0.0) || HasClippedNoise(loaded.measured) || IsSmootherThanCounts(loaded.measured, step) ||
      ArePeaksSmootherThanCounts(loaded.measured, step))
    return 0.0;
  const bool areCounts =
      HasNoiseOfCounts(*loaded.spectrum, step, filter) || HasScatterOfCounts(loaded.measured, step);
  return areCounts ? step : 0.0;
}

PointVariance VarianceOf(const LoadedSpectrum& loaded, std::span<const double> filter) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  if (loaded.measured.size() != spectrum.yAxis.size()) return {};
  const double count = CountAmplOf(loaded, filter);
  if (count > 0.0) return {OfCounts(loaded, count, filter.size()), true};
  if (spectrum.noise.size() != spectrum.yAxis.size()) return {};
  return {OfNoise(loaded, filter), false};
}

}  // namespace TslTool
