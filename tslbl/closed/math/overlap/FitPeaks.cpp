#include <tslbl/closed/math/overlap/FitPeaks.h>

#include <tslbl/closed/math/overlap/GroupFit.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr std::size_t kMostPeaks = 200;

// One more than a sum of peaks of a common width has free numbers.
std::size_t LeastPoints(std::size_t peaks) { return 2 * peaks + 3; }

bool IsFittable(const OverlapGroup& group) {
  const std::size_t peaks = group.apexes.size();
  const auto isPoint = [&](std::int32_t apex) {
    return apex >= 0 && static_cast<std::size_t>(apex) < group.y.size();
  };
  return peaks > 0 && peaks <= kMostPeaks && group.y.size() >= LeastPoints(peaks) &&
         std::ranges::all_of(group.apexes, isPoint) && std::isfinite(group.a3) && group.a3 > 0.0 &&
         std::isfinite(group.baseline) && GroupSamples::IsUsable(group.x, group.y);
}

FittedGaussian StartOf(std::int32_t apex, std::span<const double> x, std::span<const double> y,
                       double baseline, double a3) {
  const auto at = static_cast<std::size_t>(apex);
  if (apex < 0 || at >= std::min(x.size(), y.size())) return {0.0, 0.0, a3, baseline, 0.0, 0.0, 0.0};
  return {y[at] - baseline, x[at], a3, baseline, 0.0, 0.0, 0.0};
}

FittedGaussian GaussianOf(const OverlapFit& fit, std::size_t k) {
  const PeakSum& sum = fit.sum;
  return {sum.heights[k],     sum.Centroid(k),        sum.widths[k],     sum.baseline,
          fit.reducedSquares, fit.errors[k].centroid, fit.errors[k].area};
}

}  // namespace

std::optional<OverlapFit> FitOverlap(FitMethod method, const OverlapGroup& group) {
  return IsFittable(group) ? GroupFit(method, group).Run() : std::nullopt;
}

bool FitPeaks(bool hookeJeeves, std::span<const double> x, std::span<const double> y,
              std::span<const std::int32_t> apexes, double baseline, double a3,
              std::span<FittedGaussian> results) {
  const FitMethod method = hookeJeeves ? FitMethod::HookeJeeves : FitMethod::LevenbergMarquardt;
  const std::optional<OverlapFit> fit = FitOverlap(method, {x, y, apexes, baseline, a3});
  for (std::size_t k = 0; k < results.size(); ++k)
    results[k] = fit ? GaussianOf(*fit, k) : StartOf(apexes[k], x, y, baseline, a3);
  return fit.has_value();
}

}  // namespace TslMath
