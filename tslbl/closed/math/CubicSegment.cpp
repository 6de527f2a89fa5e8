#include <tslbl/closed/math/CubicSegment.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TslMath {
namespace {

// Multiplied by, since a division takes as long as several multiplications.
constexpr double Third = 1.0 / 3;
constexpr double Fifth = 1.0 / 5;
constexpr double Sixth = 1.0 / 6;

constexpr double RootTolerance = 1e-14;

// Bisection alone would be done after this many steps.
constexpr int MaxRootSteps = 60;

}  // namespace

CubicSegment::CubicSegment(double y0, double y1, double curvature0, double curvature1)
    : a_(y0),
      b_(y1 - y0 - (2 * curvature0 + curvature1) * Sixth),
      c_(curvature0 / 2),
      d_((curvature1 - curvature0) * Sixth) {}

// Both roots of 3 d t^2 + 2 c t + b without cancellation; a vanishing d sends one of them to infinity.
CubicExtrema CubicSegment::Extrema() const {
  CubicExtrema extrema{{0, 0}, 0};
  const double discriminant = c_ * c_ - 3 * b_ * d_;
  if (!(discriminant > 0)) return extrema;
  const double q = -(c_ + std::copysign(std::sqrt(discriminant), c_));
  for (const double t : {q / (3 * d_), b_ / q}) {
    if (t > 0 && t < 1) extrema.t[extrema.count++] = t;
  }
  if (extrema.count == 2 && extrema.t[0] > extrema.t[1]) std::swap(extrema.t[0], extrema.t[1]);
  return extrema;
}

// A cubic stays within the hull of its Bezier points.
double CubicSegment::LowerBound() const {
  const double bezier1 = a_ + b_ * Third;
  const double bezier2 = bezier1 + (b_ + c_) * Third;
  return std::min(std::min(a_, bezier1), std::min(bezier2, Value(1)));
}

double CubicSegment::UpperBound() const {
  const double bezier1 = a_ + b_ * Third;
  const double bezier2 = bezier1 + (b_ + c_) * Third;
  return std::max(std::max(a_, bezier1), std::max(bezier2, Value(1)));
}

double CubicSegment::FirstBelow(double level, double from) const {
  if (!(LowerBound() < level)) return -1;
  if (Value(from) < level) return from;
  const CubicExtrema extrema = Extrema();
  double above = from;
  for (int k = 0; k <= extrema.count; ++k) {
    const double t = k < extrema.count ? extrema.t[k] : 1.0;
    if (t <= above) continue;
    if (Value(t) < level) return Crossing(level, above, t);
    above = t;
  }
  return -1;
}

// Newton's method inside a bracket on which the segment falls throughout, bisecting when a step leaves it.
double CubicSegment::Crossing(double level, double above, double below) const {
  const double overshoot = Value(above) - level;
  double t = above + (below - above) * overshoot / (overshoot - (Value(below) - level));
  for (int step = 0; step < MaxRootSteps; ++step) {
    if (!(t > above && t < below)) t = 0.5 * (above + below);
    const double height = Value(t) - level;
    (height < 0 ? below : above) = t;
    const double next = t - height / (b_ + t * (2 * c_ + 3 * t * d_));
    if (std::abs(next - t) < RootTolerance || below - above < RootTolerance) break;
    t = next;
  }
  return t >= above && t <= below ? t : 0.5 * (above + below);
}

double CubicSegment::Integral(double baseline, double t0, double t1) const {
  const auto integral = [&](double t) {
    return t * (a_ - baseline + t * (b_ / 2 + t * (c_ * Third + t * (d_ / 4))));
  };
  return integral(t1) - integral(t0);
}

double CubicSegment::Moment(double t0, double t1) const {
  const auto moment = [&](double t) {
    return t * t * (a_ / 2 + t * (b_ * Third + t * (c_ / 4 + t * (d_ * Fifth))));
  };
  return moment(t1) - moment(t0);
}

}  // namespace TslMath
