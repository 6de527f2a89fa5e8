#include <tslbl/closed/math/baseline/Polyline.h>

#include <tslbl/closed/math/Lanes.h>
#include <algorithm>
#include <cmath>

namespace TslMath {
namespace {

// The points begin .. end-1 of the line through a knot.
TSLBL_WIDE void DrawLine(const Knot& knot, double slope, std::size_t begin, std::size_t end, double* out) {
  const Lanes lane = {0, 1, 2, 3};
  Lanes index = static_cast<double>(begin) + lane;
  std::size_t i = begin;
  for (; i + kLaneCount <= end; i += kLaneCount, index += static_cast<double>(kLaneCount)) {
    Store(knot.level + slope * (index - knot.position), out + i);
  }
  for (; i < end; ++i) out[i] = knot.level + slope * (static_cast<double>(i) - knot.position);
}

}  // namespace

void DrawPolyline(const std::vector<Knot>& knots, std::size_t n, double* out) {
  std::size_t begin = 0;
  Knot left{0, knots.front().level};
  for (const Knot& right : knots) {
    const double distance = right.position - left.position;
    const double slope = distance > 0 ? (right.level - left.level) / distance : 0;
    const auto end = std::max(begin, static_cast<std::size_t>(std::ceil(right.position)));
    DrawLine(left, slope, begin, end, out);
    begin = end;
    left = right;
  }
  std::fill(out + begin, out + n, left.level);
}

}  // namespace TslMath
