#include <tslbl/closed/math/peak/CubicSegment.h>

#include <utility>

namespace TslMath {
namespace {

constexpr double kRootTolerance = 1e-14;

// Bisection alone would be done after this many steps.
constexpr int kMaxRootSteps = 60;

}  // namespace

// Both roots of 3 d t^2 + 2 c t + b without cancellation; a vanishing d sends one of them to infinity.
CubicSegment::Extrema CubicSegment::FindExtrema() const {
  Extrema extrema{{0, 0}, 0};
  const double discriminant = c_ * c_ - 3 * b_ * d_;
  if (!(discriminant > 0)) return extrema;
  const double q = -(c_ + std::copysign(std::sqrt(discriminant), c_));
  for (const double t : {q / (3 * d_), b_ / q}) {
    if (t > 0 && t < 1) extrema.t[extrema.count++] = t;
  }
  if (extrema.count == 2 && extrema.t[0] > extrema.t[1]) std::swap(extrema.t[0], extrema.t[1]);
  return extrema;
}

double CubicSegment::FindBelow(double level, double from) const {
  if (Value(from) < level) return from;
  const Extrema extrema = FallsThroughout() ? Extrema{{0, 0}, 0} : FindExtrema();
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
  for (int step = 0; step < kMaxRootSteps; ++step) {
    if (!(t > above && t < below)) t = 0.5 * (above + below);
    const double height = Value(t) - level;
    (height < 0 ? below : above) = t;
    const double next = t - height / (b_ + t * (2 * c_ + 3 * t * d_));
    if (std::abs(next - t) < kRootTolerance || below - above < kRootTolerance) break;
    t = next;
  }
  return t >= above && t <= below ? t : 0.5 * (above + below);
}

}  // namespace TslMath
