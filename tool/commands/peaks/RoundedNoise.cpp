#include <tool/commands/peaks/RoundedNoise.h>

#include <tslbl/closed/math/SmallestStep.h>
#include <algorithm>
#include <cstddef>
#include <numeric>

namespace TslTool {
namespace {

constexpr double kShare = 0.6;
constexpr std::size_t kSample = 2048;  // pairs of neighbours, enough to tell a share

}  // namespace

double CoarseStepOf(const std::vector<double>& measured) {
  if (measured.size() < 2) return 0.0;
  const std::size_t stride = measured.size() / kSample + 1;
  double lowest = measured.front();
  for (std::size_t i = 0; i < measured.size(); i += stride) lowest = std::min(lowest, measured[i]);
  std::size_t pairs = 0;
  std::size_t equal = 0;
  for (std::size_t i = 1; i < measured.size(); i += stride, ++pairs)
    if (measured[i] == measured[i - 1] && measured[i] > lowest) ++equal;
  if (static_cast<double>(equal) < kShare * static_cast<double>(pairs)) return 0.0;
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
