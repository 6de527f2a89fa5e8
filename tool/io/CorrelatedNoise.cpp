#include <tool/io/CorrelatedNoise.h>

#include <tool/io/CountStep.h>
#include <tslbl/closed/math/Median.h>
#include <algorithm>
#include <cmath>
#include <utility>

namespace TslTool {
namespace {

constexpr double kBackground = 0.75;  // of the points; peaks stand above
constexpr double kFarApart = 2.0;     // widths
constexpr std::size_t kTelling = 500;
constexpr std::size_t kSample = 20000;  // points, enough for a median
constexpr double kShare = 0.5;
constexpr std::ptrdiff_t kZerosOf = 10;
constexpr double kMedianSize = 0.6745;     // standard deviations, of a normal number
constexpr double kSecondDifference = 6.0;  // variances of a point
constexpr double kAgreement = 1.7;

// The median of |y[i - step] - 2 y[i] + y[i + step]|, which a slope does not change; 0 where too few points
// are not above `highest`.
double ScatterOver(const std::vector<double>& y, std::size_t step, double highest) {
  const std::size_t stride = y.size() / kSample + 1;
  std::vector<double> sizes;
  for (std::size_t i = step; i + step < y.size(); i += stride)
    if (std::max({y[i - step], y[i], y[i + step]}) <= highest)
      sizes.push_back(std::abs(y[i - step] - 2.0 * y[i] + y[i + step]));
  return sizes.size() < kTelling ? 0.0 : TslMath::Median(std::move(sizes));
}

// Of counts neighbours differ by what these make, however close lines stand.
bool IsScatterOfCounts(double scatter, const std::vector<double>& y) {
  const double ofCounts = kMedianSize * std::sqrt(kSecondDifference * CountStepOf(y) * TslMath::Median(y));
  return scatter > ofCounts / kAgreement && scatter < ofCounts * kAgreement;
}

}  // namespace

bool IsNoiseCorrelated(const std::vector<double>& y, double pointsAcross) {
  if (kZerosOf * std::ranges::count(y, 0.0) >= std::ssize(y)) return false;
  const double highest = TslMath::Quantile(y, kBackground);
  const double near = ScatterOver(y, 1, highest);
  if (IsScatterOfCounts(near, y)) return false;
  const auto far = static_cast<std::size_t>(std::ceil(kFarApart * pointsAcross));
  return near > 0.0 && near < kShare * ScatterOver(y, far, highest);
}

}  // namespace TslTool
