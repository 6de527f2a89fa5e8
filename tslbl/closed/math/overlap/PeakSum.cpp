#include <tslbl/closed/math/overlap/PeakSum.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace TslMath {

double PeakSum::At(double x) const {
  double sum = baseline;
  for (std::size_t k = 0; k < Count(); ++k) {
    const double distance = x - tops[k];
    const double u = distance / (widths[k] * (distance < 0.0 ? 1.0 - skew : 1.0 + skew));
    sum += heights[k] * std::exp(-0.5 * u * u);
  }
  return sum;
}

double PeakSum::Area(std::size_t peak) const {
  return heights[peak] * widths[peak] * std::sqrt(2.0 * std::numbers::pi);
}

std::vector<std::size_t> OrderOfTops(const PeakSum& sum) {
  std::vector<std::size_t> order(sum.Count());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::sort(order, {}, [&](std::size_t k) { return sum.tops[k]; });
  return order;
}

}  // namespace TslMath
