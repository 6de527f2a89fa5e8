#include <tslbl/closed/math/overlap/CurvatureScan.h>

#include <tslbl/closed/math/peak/ProminentBumps.h>
#include <tslbl/closed/math/smooth/SymmetricFilter.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kReachOfFilter = 4.0;  // scales
constexpr std::size_t kLeastHalf = 2;

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

}  // namespace

CurvatureScan::CurvatureScan(std::span<const double> y, std::span<const double> variances, double scale)
    : y_(y), scale_(scale), gaussian_(Gaussian(scale)), gaussianSum_(SumOfBothSides(gaussian_)) {
  std::vector<double> hat = Hat(gaussian_, scale);
  strengths_ = Filtered(y, y.front(), y.back(), hat);
  for (double& weight : hat) weight *= weight;
  deviations_ = Filtered(variances, 0.0, 0.0, hat);
  for (double& deviation : deviations_) deviation = std::sqrt(deviation);
}

std::vector<Bend> CurvatureScan::Bends(const BendLimits& limits) const {
  const double least = limits.share * std::max(0.0, std::ranges::max(strengths_));
  std::vector<Bend> bends;
  for (const Bump& bump : AllBumps(strengths_)) {
    const double strength = strengths_[bump.at];
    const double deviation = deviations_[bump.at];
    // Where the curve is bent the other way there is no peak to rise above.
    const double prominence = std::min(bump.prominence, strength);
    if (strength > least && strength > limits.significance * deviation &&
        prominence > limits.prominence * deviation)
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
