#pragma once
// One interval of a cubic spline with unit spacing: a + b t + c t^2 + d t^3, t from 0 to 1.
//
// Small enough to be worked on in registers: most of it is inline.
#include <algorithm>
#include <cmath>

namespace TslMath {

class CubicSegment {
 public:
  // From the values and the second derivatives at both ends. With the ends exchanged, the mirrored segment.
  CubicSegment(double y0, double y1, double curvature0, double curvature1)
      : a_(y0),
        b_(y1 - y0 - (2 * curvature0 + curvature1) * kSixth),
        c_(curvature0 / 2),
        d_((curvature1 - curvature0) * kSixth) {}

  double Value(double t) const { return a_ + t * (b_ + t * (c_ + t * d_)); }

  // Places where the slope changes its sign, ascending, strictly inside the interval.
  struct Extrema {
    double t[2];
    int count;
  };
  Extrema FindExtrema() const;

  // The value is not below this on the whole interval. (A cubic lies within the hull of its Bezier points.)
  double LowerBound() const {
    const double bezier1 = a_ + b_ * kThird;
    const double bezier2 = bezier1 + (b_ + c_) * kThird;
    return std::min(std::min(a_, bezier1), std::min(bezier2, Value(1)));
  }

  // The first place from `from` on where the value falls below the level (to 1e-14), -1 if there is none.
  double FirstBelow(double level, double from) const {
    return LowerBound() < level ? FindBelow(level, from) : -1;
  }

  // Integral of (value - baseline) over t0 .. t1, and of t * value.
  double Integral(double baseline, double t0, double t1) const {
    return IntegralTo(baseline, t1) - (t0 > 0 ? IntegralTo(baseline, t0) : 0);
  }
  double Moment(double t0, double t1) const { return MomentTo(t1) - (t0 > 0 ? MomentTo(t0) : 0); }

 private:
  // Multiplied by, since a division takes as long as several multiplications.
  static constexpr double kThird = 1.0 / 3;
  static constexpr double kFifth = 1.0 / 5;
  static constexpr double kSixth = 1.0 / 6;

  double IntegralTo(double baseline, double t) const {
    return t * (a_ - baseline + t * (b_ * 0.5 + t * (c_ * kThird + t * (d_ * 0.25))));
  }
  double MomentTo(double t) const {
    return t * t * (a_ * 0.5 + t * (b_ * kThird + t * (c_ * 0.25 + t * (d_ * kFifth))));
  }

  // The Bezier points of the slope are below zero.
  bool FallsThroughout() const { return b_ < 0 && b_ + c_ < 0 && b_ + (2 * c_ + 3 * d_) < 0; }

  double FindBelow(double level, double from) const;
  double Crossing(double level, double above, double below) const;

  double a_, b_, c_, d_;
};

}  // namespace TslMath
