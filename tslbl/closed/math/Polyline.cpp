#include <tslbl/closed/math/Polyline.h>

#include <algorithm>

namespace TslMath {

void DrawPolyline(const std::vector<Knot>& knots, std::size_t n, double* out) {
  std::size_t i = 0;
  Knot left{0, knots.front().level};
  for (const Knot& right : knots) {
    const double distance = right.position - left.position;
    const double slope = distance > 0 ? (right.level - left.level) / distance : 0;
    for (; static_cast<double>(i) < right.position; ++i) {
      out[i] = left.level + slope * (static_cast<double>(i) - left.position);
    }
    left = right;
  }
  std::fill(out + i, out + n, left.level);
}

}  // namespace TslMath
