#include <tool/commands/peaks/StillBackground.h>

#include <tool/chain/SmoothFilter.h>
#include <tslbl/closed/math/Median.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace TslTool {
namespace {

// Enough points for a median.
std::vector<double> SampleOf(const std::vector<double>& values) {
  std::vector<double> sample;
  const std::size_t stride = values.size() / 4096 + 1;
  for (std::size_t i = 0; i < values.size(); i += stride) sample.push_back(values[i]);
  return sample;
}

// From the level up to the next amplitude, where they are neighbours.
double SmallestRise(const std::vector<double>& y, double level) {
  double smallest = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1; i < y.size(); ++i) {
    const double low = std::min(y[i - 1], y[i]);
    const double high = std::max(y[i - 1], y[i]);
    if (low == level && high > level) smallest = std::min(smallest, high - level);
  }
  return smallest;
}

}  // namespace

bool IsBackgroundStill(const LoadedSpectrum& loaded) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  const std::vector<double>& y = loaded.measured;
  if (spectrum.peaks.empty() || spectrum.noise.size() != y.size()) return false;
  const double level = TslMath::Median(SampleOf(y));
  if (2 * std::ranges::count(y, level) <= std::ssize(y)) return false;
  const auto filter = FilterOf(spectrum);
  const double top = filter ? filter->weights[filter->weights.size() / 2] : 1.0;
  return top * SmallestRise(y, level) >
         spectrum.peakDetectParams.SN * TslMath::Median(SampleOf(spectrum.noise));
}

}  // namespace TslTool
