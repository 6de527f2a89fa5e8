#include <tslbl/closed/math/peak/BumpNoise.h>

#include <tslbl/closed/math/Median.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace TslMath {
namespace {

constexpr double kSmallSteps = 0.1;
constexpr double kLeastIon = 1e-6;             // of the largest step
constexpr double kMeanOfSmallerHalf = 0.3246;  // of |z| of Gaussian noise
// Of a second difference of independent points, and of points a filter's width apart.
constexpr double kVarianceOfRaw = 6.0;
constexpr double kVarianceOfFiltered = 4.0;
constexpr double kMostIons = 4.0;  // that a difference counts for
// Points, and lags, on each side of a place. And how many differences tell the noise.
constexpr std::size_t kSurroundings = 1024;
constexpr std::size_t kSurroundingLags = 32;
constexpr std::size_t kMostAround = 512;
constexpr std::size_t kMostEverywhere = 4096;
constexpr double kChance = 6.9;       // ln 1000
constexpr double kOwnVariance = 0.7;  // of a Gaussian filter: the sum of its squared weights over the largest

// Of counts, whose differences are whole numbers, no single one of them tells the noise.
double MeanOfSmallerHalf(std::vector<double>& values) {
  const auto half = values.begin() + (std::ssize(values) + 1) / 2;
  std::nth_element(values.begin(), half - 1, values.end());
  return std::reduce(values.begin(), half) / static_cast<double>(half - values.begin());
}

// The u of which (1 + u) ln(1 + u) - u is q.
double InverseOfBennett(double q) {
  double u = q / 3.0 + std::sqrt(q * q / 9.0 + 2.0 * q);
  for (int i = 0; i < 6; ++i) u -= ((1.0 + u) * std::log1p(u) - u - q) / std::log1p(u);
  return u;
}

}  // namespace

double LikelyIon(const std::vector<double>& y) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < y.size(); ++i)
    if (y[i] != y[i - 1]) steps.push_back(std::abs(y[i] - y[i - 1]));
  if (steps.empty()) return 0.0;
  const double least = kLeastIon * std::ranges::max(steps);
  return std::max(Quantile(std::move(steps), kSmallSteps), least);
}

NoiseVariance::NoiseVariance(const std::vector<double>& y, std::size_t lag, double ion)
    : y_(y), lag_(lag), ion_(ion), everywhere_(Within(0, y.size(), kMostEverywhere)) {}

double NoiseVariance::At(std::size_t point) const {
  const std::size_t reach = std::max(kSurroundings, kSurroundingLags * lag_);
  const std::size_t from = point > reach ? point - reach : 0;
  return std::max(everywhere_, Within(from, std::min(point + reach, y_.size()), kMostAround));
}

double NoiseVariance::Within(std::size_t from, std::size_t to, std::size_t most) const {
  if (to < from + 2 * lag_ + 1) return std::numeric_limits<double>::infinity();
  const double unit = lag_ > 1 ? kVarianceOfFiltered : kVarianceOfRaw;
  const double cap = kMostIons * kMostIons * ion_ * ion_ * unit / 2.0;
  const std::size_t stride = std::max<std::size_t>(1, (to - from) / most);
  std::vector<double> differences;
  double ofIons = 0.0;
  for (std::size_t i = from + lag_; i + lag_ < to; i += stride) {
    const double difference = std::abs(y_[i - lag_] - 2.0 * y_[i] + y_[i + lag_]);
    differences.push_back(difference);
    ofIons += std::min(difference * difference, cap);
  }
  ofIons /= static_cast<double>(differences.size());
  const double quiet = MeanOfSmallerHalf(differences) / kMeanOfSmallerHalf;
  return std::max(ofIons, quiet * quiet) / unit;
}

double BumpNoise::Depth() const { return std::sqrt(2.0 * variance * std::log(places)); }

double BumpNoise::Height() const {
  const double ions = variance / (ion * ion);
  return ions * ion * InverseOfBennett((std::log(places) + kChance) / ions);
}

BumpNoise BumpNoise::With(double height) const {
  return {variance + kOwnVariance * ion * height, ion, places};
}

}  // namespace TslMath
