#include <tool/commands/peaks/CutNoise.h>

#include <tool/chain/Lift.h>
#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/SmallestStep.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

namespace TslTool {
namespace {

constexpr std::size_t kLongest = 2;  // points; peaks are wider
constexpr std::size_t kTelling = 200;
// Of the median of such products to their mean: 0.45 if half of the points are left, 0.69 of the last few.
constexpr double kMedian = 0.6;
// Least steps, up to which nothing was cut between 0 and the lowest point.
constexpr double kWhole = 1.5;

std::vector<double> PointsAlone(const std::vector<double>& y) {
  std::vector<double> points;
  std::size_t begin = 0;  // behind the last zero
  for (std::size_t i = 0; i < y.size(); ++i) {
    if (y[i] > 0.0) continue;
    if (begin > 0 && i - begin <= kLongest)
      points.insert(points.end(), y.begin() + static_cast<std::ptrdiff_t>(begin),
                    y.begin() + static_cast<std::ptrdiff_t>(i));
    begin = i + 1;
  }
  return points;
}

}  // namespace

double CutNoiseOf(const std::vector<double>& measured) {
  // Noise that reaches below 0 was not cut.
  if (LiftOf(measured) > 0.0) return 0.0;
  std::vector<double> products = PointsAlone(measured);
  if (products.size() < kTelling) return 0.0;
  std::ranges::sort(products);
  const double threshold = products.front();
  if (threshold < kWhole * TslMath::SmallestStep(products.data(), products.size())) return 0.0;
  for (double& y : products) y *= y - threshold;
  return std::sqrt(TslMath::Median(std::move(products)) / kMedian);
}

void RaiseToCutNoise(LoadedSpectrum& loaded, std::span<const double> filter) {
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  if (!spectrum.noiseParams.Auto || spectrum.noise.size() != loaded.measured.size()) return;
  const double gain = std::sqrt(std::inner_product(filter.begin(), filter.end(), filter.begin(), 0.0));
  const double least = gain * CutNoiseOf(loaded.measured);
  for (double& noise : spectrum.noise) noise = std::max(noise, least);
}

}  // namespace TslTool
