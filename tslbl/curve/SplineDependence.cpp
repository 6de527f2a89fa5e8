#include <tslbl/curve/SplineDependence.h>

#include <algorithm>
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
  if (leftM == 0.0 && rightM == 0.0) return on;  // on a point
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

}  // namespace

SplineDependence ValueDependence(double at) {
  const double point = std::floor(at);
  const double t = at - point;
  const double u = 1.0 - t;
  return DependenceAt(static_cast<std::ptrdiff_t>(point), u, t, (u * u * u - u) / 6.0, (t * t * t - t) / 6.0);
}

SplineDependence SlopeDependence(double at) {
  const double point = std::floor(at);
  const double t = at - point;
  const double u = 1.0 - t;
  return DependenceAt(static_cast<std::ptrdiff_t>(point), -1.0, 1.0, (1.0 - 3.0 * u * u) / 6.0,
                      (3.0 * t * t - 1.0) / 6.0);
}

double Applied(const SplineDependence& on, const std::vector<double>& y) {
  const auto last = static_cast<std::ptrdiff_t>(y.size()) - 1;
  double sum = 0.0;
  for (std::size_t k = 0; k < on.weights.size(); ++k)
    sum += on.weights[k] * y[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(
                               on.first + static_cast<std::ptrdiff_t>(k), 0, last))];
  return sum;
}

}  // namespace TslBL
