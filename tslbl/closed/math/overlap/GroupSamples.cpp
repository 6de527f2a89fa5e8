#include <tslbl/closed/math/overlap/GroupSamples.h>

#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

constexpr double kLeastMean = 0.001;  // of the largest amplitude

double LargestMagnitude(std::span<const double> y) {
  double largest = 0.0;
  for (const double value : y) largest = std::max(largest, std::abs(value));
  return largest;
}

std::size_t WholeSteps(std::size_t n) { return (n + kGroupStep - 1) / kGroupStep * kGroupStep; }

}  // namespace

bool GroupSamples::IsUsable(std::span<const double> x, std::span<const double> y) {
  const auto isFinite = [](double value) { return std::isfinite(value); };
  return !y.empty() && x.size() == y.size() && std::ranges::all_of(x, isFinite) &&
         std::ranges::all_of(y, isFinite) && std::isnormal(LargestMagnitude(y));
}

GroupSamples::GroupSamples(std::span<const double> x, std::span<const double> y)
    : size_(y.size()),
      scale_(std::ldexp(1.0, std::ilogb(LargestMagnitude(y)))),
      leastMean_(kLeastMean * LargestMagnitude(y) / scale_),
      x_(x.begin(), x.end()),
      y_(WholeSteps(size_)),
      rootWeights_(WholeSteps(size_)) {
  x_.resize(y_.size(), x.back());
  std::ranges::transform(y, y_.begin(), [this](double value) { return value / scale_; });
  for (std::size_t i = 0; i < x_.size(); i += kGroupBlock) {
    const auto [least, largest] = std::ranges::minmax(std::span(x_).subspan(i, CountOf(i / kGroupBlock)));
    extents_.push_back({least, largest});
  }
}

void GroupSamples::WeighBy(std::span<const double> means, const Tolerance& tolerance) {
  for (std::size_t i = 0; i < size_; ++i) {
    const double mean = std::max(means[i], leastMean_);
    const double shape = tolerance.share * mean;
    rootWeights_[i] = 1.0 / std::sqrt(mean + shape * shape + tolerance.value * tolerance.value);
  }
}

}  // namespace TslMath
