#include <tslbl/closed/math/peak/TypicalOfKinds.h>

#include <algorithm>

namespace TslMath {
namespace {

constexpr double kOtherKind = 0.6;

// Of widths that ascend.
double Quantile(const std::vector<WeightedWidth>& widths, double share) {
  double rest = 0.0;
  for (const WeightedWidth& each : widths) rest += share * each.weight;
  for (const WeightedWidth& each : widths)
    if ((rest -= each.weight) <= 0.0) return each.width;
  return widths.back().width;
}

}  // namespace

double TypicalOfKinds(std::vector<WeightedWidth> widths, double share) {
  std::ranges::sort(widths, {}, &WeightedWidth::width);
  const double median = Quantile(widths, 0.5);
  const double narrow = Quantile(widths, share);
  return narrow < kOtherKind * median ? narrow : median;
}

}  // namespace TslMath
