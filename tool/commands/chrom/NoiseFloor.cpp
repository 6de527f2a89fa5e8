#include <tool/commands/chrom/NoiseFloor.h>

#include <tool/chain/SmoothFilter.h>
#include <tslbl/closed/math/SmallestStep.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

constexpr double kSpan = 1e-6;
// Of points that are 0, from which on they are not chance.
constexpr double kFewZeros = 0.05;

double LowestAboveZero(const std::vector<double>& values) {
  double lowest = std::numeric_limits<double>::infinity();
  for (const double value : values)
    if (value > 0.0) lowest = std::min(lowest, value);
  return lowest;
}

}  // namespace

double LeastNoise(const std::vector<double>& values) {
  const auto [low, high] = std::ranges::minmax(values);
  double least = kSpan * (high - low);
  least = std::max(least, TslMath::SmallestStep(values.data(), values.size()) / std::sqrt(12.0));
  const auto zeros = static_cast<double>(std::ranges::count(values, 0.0));
  const bool isCut = low == 0.0 && zeros >= kFewZeros * static_cast<double>(values.size());
  if (isCut && high > 0.0) least = std::max(least, LowestAboveZero(values));
  return least;
}

void RaiseNoise(const Chromatogram& measured, TslBL::Curve& curve) {
  const auto filter = FilterOf(curve);
  double squares = 1.0;
  if (filter) {
    squares = 0.0;
    for (const double weight : filter->weights) squares += weight * weight;
  }
  const double least = LeastNoise(measured.values) * std::sqrt(squares);
  for (double& noise : curve.noise) noise = std::max(noise, least);
}

}  // namespace TslTool
