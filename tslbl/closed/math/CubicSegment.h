#pragma once
// One interval of a cubic spline with unit spacing: a + b t + c t^2 + d t^3, t from 0 to 1.

namespace TslMath {

// Places where the slope is zero, ascending, strictly inside the interval.
struct CubicExtrema {
  double t[2];
  int count;
};

class CubicSegment {
 public:
  // From the values and the second derivatives at both ends. With the ends exchanged, the mirrored segment.
  CubicSegment(double y0, double y1, double curvature0, double curvature1);

  double Value(double t) const { return a_ + t * (b_ + t * (c_ + t * d_)); }
  CubicExtrema Extrema() const;

  // Quick bounds: the value lies between them on the whole interval.
  double LowerBound() const;
  double UpperBound() const;

  // The first place from `from` on where the value falls below the level (to 1e-14), -1 if there is none.
  double FirstBelow(double level, double from) const;

  // Integral of (value - baseline) over t0 .. t1, and of t * value.
  double Integral(double baseline, double t0, double t1) const;
  double Moment(double t0, double t1) const;

 private:
  double Crossing(double level, double above, double below) const;

  double a_, b_, c_, d_;
};

}  // namespace TslMath
