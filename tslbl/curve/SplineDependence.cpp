#include <tslbl/curve/SplineDependence.h>

#include <cmath>

namespace TslBL {
namespace {

// Each point farther the curvature of a cubic spline has this part of the one before.
constexpr double kDecay = -0.26794919243112270;  // sqrt(3) - 2
constexpr double kOwn = 1.7320508075688772;      // sqrt(3)

// `left` and `right` are the weights of the two points around the place, those with M those of their
// curvatures.
SplineDependence DependenceAt(std::ptrdiff_t point, double left, double right, double leftM, double rightM) {
  SplineDependence on{point - kSplineReach - 1, {}};
  const auto own = static_cast<std::size_t>(kSplineReach) + 1;
  on.weights[own] += left;
  on.weights[own + 1] += right;
  double decayed = kOwn;
  for (std::size_t k = 0; k <= static_cast<std::size_t>(kSplineReach); ++k, decayed *= kDecay) {
    const auto add = [&](std::size_t middle, double curvature) {
      on.weights[middle - 1] += curvature;
      on.weights[middle] -= 2.0 * curvature;
      on.weights[middle + 1] += curvature;
    };
    add(own - k, decayed * leftM + decayed * kDecay * rightM);
    if (k > 0) add(own + k, decayed * leftM + decayed / kDecay * rightM);
  }
  return on;
}

// `t` of the way from this point to the next.
SplineDependence ValueBehind(std::ptrdiff_t point, double t) {
  const double u = 1.0 - t;
  return DependenceAt(point, u, t, (u * u * u - u) / 6.0, (t * t * t - t) / 6.0);
}

}  // namespace

SplineDependence ValueDependence(double at) {
  // Integrals take most values on points and in the middle between them.
  static const SplineDependence kOnPoint = DependenceAt(0, 1.0, 0.0, 0.0, 0.0);
  static const SplineDependence kInTheMiddle = ValueBehind(0, 0.5);
  const double below = std::floor(at);
  const auto point = static_cast<std::ptrdiff_t>(below);
  const double t = at - below;
  if (t != 0.0 && t != 0.5) return ValueBehind(point, t);
  SplineDependence on = t == 0.0 ? kOnPoint : kInTheMiddle;
  on.first += point;
  return on;
}

SplineDependence SlopeDependence(double at) {
  const double point = std::floor(at);
  const double t = at - point;
  const double u = 1.0 - t;
  return DependenceAt(static_cast<std::ptrdiff_t>(point), -1.0, 1.0, (1.0 - 3.0 * u * u) / 6.0,
                      (3.0 * t * t - 1.0) / 6.0);
}

double Applied(const SplineDependence& on, const std::vector<double>& y) {
  double sum = 0.0;
  on.ForEach(y.size(), [&](std::size_t point, double weight) { sum += weight * y[point]; });
  return sum;
}

}  // namespace TslBL
