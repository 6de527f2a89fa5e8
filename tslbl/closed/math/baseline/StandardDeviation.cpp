#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/baseline/Noise.h>

#include <cmath>

namespace TslMath {
namespace {

struct Deviations {
  double sum = 0;
  double squares = 0;
};

TSLBL_WIDE void SumLanes(const double* y, std::size_t groups, double centre, Lanes& sum, Lanes& squares) {
  Lanes s{}, q{};
  for (std::size_t g = 0; g < groups; ++g) {
    Lanes d;
    Load(y + g * kLaneCount, d);
    d -= centre;
    s += d;
    q += d * d;
  }
  sum = s;
  squares = q;
}

Deviations DeviationsFrom(double centre, const double* y, std::size_t n) {
  const std::size_t groups = n / kLaneCount;
  Lanes sum, squares;
  SumLanes(y, groups, centre, sum, squares);
  Deviations total;
  for (std::size_t j = 0; j < kLaneCount; ++j) {
    total.sum += sum[j];
    total.squares += squares[j];
  }
  for (std::size_t i = groups * kLaneCount; i < n; ++i) {
    total.sum += y[i] - centre;
    total.squares += (y[i] - centre) * (y[i] - centre);
  }
  return total;
}

}  // namespace

double StandardDeviation(const double* y, std::uint32_t n) {
  if (n < 2) return 0;
  const double count = n;
  const double mean = y[0] + DeviationsFrom(y[0], y, n).sum / count;
  const Deviations d = DeviationsFrom(mean, y, n);
  const double squares = d.squares - d.sum * d.sum / count;
  return std::sqrt(squares < 0 ? 0 : squares / (count - 1));
}

}  // namespace TslMath
