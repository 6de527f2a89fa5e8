#include <tslbl/closed/math/overlap/GroupNoise.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace TslMath {
namespace {

constexpr std::array<double, 7> kSixthDifference = {1, -6, 15, -20, 15, -6, 1};
constexpr std::size_t kLeastPoints = 9;
constexpr std::size_t kHalfWindow = 2;

}  // namespace

std::vector<double> LocalMeans(std::span<const double> y) {
  std::vector<double> means(y.size());
  for (std::size_t i = 0; i < y.size(); ++i) {
    const std::size_t half = std::min({kHalfWindow, i, y.size() - 1 - i});
    double sum = 0.0;
    for (std::size_t k = i - half; k <= i + half; ++k) sum += y[k];
    means[i] = sum / static_cast<double>(2 * half + 1);
  }
  return means;
}

double VariancePerMean(std::span<const double> y, std::size_t stride) {
  if (y.size() < kLeastPoints * stride) return 1.0;
  double squares = 0.0;
  double expected = 0.0;  // of counts
  for (std::size_t i = 0; i + (kSixthDifference.size() - 1) * stride < y.size(); ++i) {
    double difference = 0.0;
    for (std::size_t k = 0; k < kSixthDifference.size(); ++k) {
      difference += kSixthDifference[k] * y[i + k * stride];
      expected += kSixthDifference[k] * kSixthDifference[k] * std::max(y[i + k * stride], 0.0);
    }
    squares += difference * difference;
  }
  const double ratio = squares / expected;
  return std::isnormal(ratio) ? ratio : 1.0;
}

}  // namespace TslMath
