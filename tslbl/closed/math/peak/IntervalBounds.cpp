#include <tslbl/closed/math/peak/IntervalBounds.h>

#include <tslbl/closed/math/Lanes.h>

#include <initializer_list>

namespace TslMath {
namespace {

constexpr double kThird = 1.0 / 3;
constexpr double kSixth = 1.0 / 6;

inline void Lower(Lanes& least, const Lanes& value) { least = value < least ? value : least; }
inline void Raise(Lanes& greatest, const Lanes& value) { greatest = greatest < value ? value : greatest; }

// Bezier points and value at the far end, of four intervals.
struct Hull {
  Lanes bezier1, bezier2, end;
};

inline void FindHull(const Lanes& y0, const Lanes& y1, const Lanes& curvature0, const Lanes& curvature1,
                     Hull& hull) {
  const Lanes b = y1 - y0 - (2 * curvature0 + curvature1) * kSixth;
  const Lanes c = curvature0 * 0.5;
  const Lanes d = (curvature1 - curvature0) * kSixth;
  hull.bezier1 = y0 + b * kThird;
  hull.bezier2 = hull.bezier1 + (b + c) * kThird;
  hull.end = y0 + (b + (c + d));
}

}  // namespace

TSLBL_WIDE void BoundIntervals(const double* y, const double* curvature, std::size_t count, double* lower,
                               double* upper) {
  for (std::size_t i = 0; i < count; i += kLaneCount) {
    Lanes y0, y1, curvature0, curvature1;
    Load(y + i, y0);
    Load(y + i + 1, y1);
    Load(curvature + i, curvature0);
    Load(curvature + i + 1, curvature1);
    Hull hull, mirrored;
    FindHull(y0, y1, curvature0, curvature1, hull);
    FindHull(y1, y0, curvature1, curvature0, mirrored);
    Lanes greatest = y0;
    Raise(greatest, hull.bezier1);
    Raise(greatest, hull.bezier2);
    Raise(greatest, hull.end);
    Store(greatest, upper + i);
    Lanes least = y0;
    for (const Lanes& value :
         {hull.bezier1, hull.bezier2, hull.end, y1, mirrored.bezier1, mirrored.bezier2, mirrored.end}) {
      Lower(least, value);
    }
    Store(least, lower + i);
  }
}

}  // namespace TslMath
