#include <tslbl/closed/math/Normalize.h>

#include <cmath>

namespace TslMath {
namespace {

double LargestPositive(const std::vector<double>& values) {
  double largest = 0;
  for (double value : values) largest = value > largest ? value : largest;
  return largest;
}

}  // namespace

std::vector<double> Normalize(const std::vector<double>& values) {
  std::vector<double> scaled = values;
  const double largest = LargestPositive(values);
  if (largest == 0 || std::isinf(largest)) return scaled;
  for (double& value : scaled) value /= largest;
  return scaled;
}

}  // namespace TslMath
