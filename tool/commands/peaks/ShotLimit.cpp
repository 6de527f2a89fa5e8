#include <tool/commands/peaks/ShotLimit.h>

#include <tool/commands/peaks/CountVariance.h>
#include <tslbl/closed/math/baseline/MovingExtrema.h>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

namespace TslTool {
namespace {

constexpr double kBaselineAbove = 2.0;  // of the noise, above the valleys
// From a point to either side: less than a line, which keeps the valleys beside it apart.
constexpr double kReachInFilters = 1.5;
constexpr std::size_t kLeastReach = 8;

// A baseline and a noise of each point's own, on the amplitudes as they are.
bool HasFoundBoth(const TslBL::Spectrum& spectrum) {
  const std::size_t n = spectrum.yAxis.size();
  const auto& steps = spectrum.evals;
  const auto isSubtraction = [](const TslBL::CurveEval& step) {
    return step.Type() == TslBL::EvalType::BaselineSubtract;
  };
  return spectrum.noise.size() == n && spectrum.baseline.size() == n && spectrum.noiseParams.Auto &&
         std::ranges::none_of(steps, isSubtraction);
}

// The curve without what is narrower than twice the reach.
std::vector<double> Valleys(const std::vector<double>& y, std::size_t reach) {
  std::vector<double> valleys(y.size());
  TslMath::ExtremaScratch scratch;
  TslMath::MovingOpening(y.data(), y.size(), 2 * reach + 1, valleys.data(), scratch);
  return valleys;
}

// Of the lowest of some points: their mean lies above it.
double NoiseOfCounts(double lowest, double ion) {
  const double low = std::max(lowest, 0.0);
  const double mean = low + 2.0 * std::sqrt(ion * (low + ion));
  return std::sqrt(ion * (mean + ion));
}

}  // namespace

std::size_t LimitToShots(LoadedSpectrum& loaded, std::span<const double> filter, double limit) {
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  const std::size_t n = spectrum.yAxis.size();
  if (!(limit > 0.0) || n == 0 || !HasFoundBoth(spectrum) || loaded.measured.size() != n) return 0;
  const double count = CountAmplOf(loaded, filter);
  if (!(count > 0.0)) return 0;
  const double ion = count * std::inner_product(filter.begin(), filter.end(), filter.begin(), 0.0);
  // No valley is lower than the lowest point: most spectra need no look at theirs.
  const double least = limit * NoiseOfCounts(*std::ranges::min_element(spectrum.yAxis), ion);
  if (*std::ranges::max_element(spectrum.noise) <= least) return 0;
  const auto reach = static_cast<std::size_t>(kReachInFilters * static_cast<double>(filter.size()));
  const std::vector<double> valleys = Valleys(spectrum.yAxis, std::max(reach, kLeastReach));
  std::size_t lowered = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const double most = limit * NoiseOfCounts(valleys[i], ion);
    if (!(spectrum.noise[i] > most)) continue;
    spectrum.noise[i] = most;
    spectrum.baseline[i] = std::min(spectrum.baseline[i], valleys[i] + kBaselineAbove * most);
    ++lowered;
  }
  return lowered;
}

}  // namespace TslTool
