#include <tool/commands/peaks/RoundedNoise.h>

#include <tslbl/closed/math/SmallestStep.h>
#include <algorithm>
#include <cstddef>
#include <numeric>

namespace TslTool {
namespace {

constexpr double kShare = 0.6;

}  // namespace

double CoarseStepOf(const std::vector<double>& measured) {
  if (measured.size() < 2) return 0.0;
  const double lowest = *std::ranges::min_element(measured);
  std::size_t equal = 0;
  for (std::size_t i = 1; i < measured.size(); ++i)
    if (measured[i] == measured[i - 1] && measured[i] > lowest) ++equal;
  if (static_cast<double>(equal) < kShare * static_cast<double>(measured.size())) return 0.0;
  return TslMath::SmallestStep(measured.data(), measured.size());
}

void RaiseToRounding(LoadedSpectrum& loaded, std::span<const double> filter) {
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  if (filter.size() == 1 || !spectrum.noiseParams.Auto || spectrum.noise.size() != loaded.measured.size())
    return;
  const double step = CoarseStepOf(loaded.measured);
  if (step == 0.0) return;
  const double least = step * std::inner_product(filter.begin(), filter.end(), filter.begin(), 0.0);
  for (double& noise : spectrum.noise) noise = std::max(noise, least);
}

}  // namespace TslTool
