#include <tslbl/closed/math/overlap/CurvatureScan.h>

#include <tslbl/closed/math/peak/ProminentBumps.h>
#include <tslbl/closed/math/smooth/SymmetricFilter.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kReachOfFilter = 4.0;  // scales
constexpr std::size_t kLeastHalf = 2;
constexpr double kRiseOfTop = 2.5;   // standard deviations
constexpr double kScaleOfTop = 0.5;  // scales: what rises but a little must not be smoothed away

std::vector<double> Gaussian(double scale) {
  const auto half = std::max(kLeastHalf, static_cast<std::size_t>(std::ceil(kReachOfFilter * scale)));
  std::vector<double> values(half + 1);
  for (std::size_t j = 0; j <= half; ++j) {
    const double u = static_cast<double>(j) / scale;
    values[j] = std::exp(-0.5 * u * u);
  }
  return values;
}

double SumOfBothSides(const std::vector<double>& half) {
  double sum = half[0];
  for (std::size_t j = 1; j < half.size(); ++j) sum += 2.0 * half[j];
  return sum;
}

// The Mexican hat, with a sum of exactly 0: a level curve gives nothing.
std::vector<double> Hat(const std::vector<double>& gaussian, double scale) {
  std::vector<double> hat(gaussian.size());
  for (std::size_t j = 0; j < hat.size(); ++j) {
    const double u = static_cast<double>(j) / scale;
    hat[j] = (1.0 - u * u) * gaussian[j];
  }
  const double excess = SumOfBothSides(hat) / SumOfBothSides(gaussian);
  for (std::size_t j = 0; j < hat.size(); ++j) hat[j] -= excess * gaussian[j];
  return hat;
}

std::vector<double> Filtered(std::span<const double> y, double before, double behind,
                             const std::vector<double>& weights) {
  const std::size_t half = weights.size() - 1;
  std::vector<double> extended(half, before);
  extended.insert(extended.end(), y.begin(), y.end());
  extended.resize(extended.size() + half, behind);
  std::vector<double> filtered(extended.size());
  FilterSymmetric(extended.data(), {extended.size(), half, half + y.size()}, weights, filtered.data());
  return {filtered.begin() + static_cast<std::ptrdiff_t>(half),
          filtered.begin() + static_cast<std::ptrdiff_t>(half + y.size())};
}

// Of what the filter gives.
std::vector<double> DeviationsOf(std::span<const double> variances, std::vector<double> weights) {
  for (double& weight : weights) weight *= weight;
  std::vector<double> deviations = Filtered(variances, 0.0, 0.0, weights);
  for (double& deviation : deviations) deviation = std::sqrt(deviation);
  return deviations;
}

}  // namespace

CurvatureScan::CurvatureScan(std::span<const double> y, std::span<const double> variances, double scale)
    : y_(y),
      variances_(variances),
      scale_(scale),
      gaussian_(Gaussian(scale)),
      gaussianSum_(SumOfBothSides(gaussian_)) {
  std::vector<double> hat = Hat(gaussian_, scale);
  strengths_ = Filtered(y, y.front(), y.back(), hat);
  deviations_ = DeviationsOf(variances, hat);
}

// Which points are near a maximum of the smoothed curve that rises above what parts it from higher ones.
std::vector<char> CurvatureScan::TopsOfCurve(double prominence) const {
  const std::vector<double> gaussian = Gaussian(kScaleOfTop * scale_);
  const std::vector<double> smoothed = Filtered(y_, y_.front(), y_.back(), gaussian);
  const std::vector<double> deviations = DeviationsOf(variances_, gaussian);
  const auto reach = static_cast<std::size_t>(std::ceil(scale_));
  std::vector<char> tops(y_.size());
  for (const Bump& bump : AllBumps(smoothed)) {
    if (!(bump.prominence > prominence * deviations[bump.at])) continue;
    const std::size_t first = bump.at - std::min(bump.at, reach);
    const std::size_t end = std::min(bump.at + reach + 1, tops.size());
    std::fill(tops.begin() + static_cast<std::ptrdiff_t>(first),
              tops.begin() + static_cast<std::ptrdiff_t>(end), true);
  }
  return tops;
}

std::vector<Bend> CurvatureScan::Bends(const BendLimits& limits) const {
  const double strongest = std::max(0.0, std::ranges::max(strengths_));
  std::vector<char> tops;
  const auto isTop = [&](std::size_t at) {
    if (tops.empty()) tops = TopsOfCurve(kRiseOfTop);
    return tops[at] != 0;
  };
  std::vector<Bend> bends;
  for (const Bump& bump : AllBumps(strengths_)) {
    const double strength = strengths_[bump.at];
    const double deviation = deviations_[bump.at];
    // Where the curve is bent the other way there is no peak to rise above.
    const double prominence = std::min(bump.prominence, strength);
    if (strength > limits.significance * deviation && prominence > limits.prominence * deviation &&
        (strength > limits.share * strongest || (strength > limits.shareOfTop * strongest && isTop(bump.at))))
      bends.push_back({bump.at, strength, strength / deviation});
  }
  return bends;
}

double CurvatureScan::SquaredWidth(const Bend& bend, double base) const {
  const auto last = static_cast<std::ptrdiff_t>(y_.size()) - 1;
  const auto half = static_cast<std::ptrdiff_t>(gaussian_.size()) - 1;
  double sum = 0.0;
  for (std::ptrdiff_t j = -half; j <= half; ++j) {
    const std::ptrdiff_t i = std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(bend.at) + j, 0, last);
    sum += gaussian_[static_cast<std::size_t>(std::abs(j))] * (y_[static_cast<std::size_t>(i)] - base);
  }
  return sum / bend.strength * scale_ * scale_;
}

}  // namespace TslMath
