#pragma once
// How a cubic spline through the points of a curve depends on each of them.
//
// The spline is the one with continuous curvature, far from its ends. Curvatures there are M[i] = sqrt(3) *
// sum of z^|i-k| times the second difference at k, z = sqrt(3) - 2, so that a point's part fades within a few
// points. (C. de Boor, A Practical Guide to Splines, 1978.)

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <vector>

namespace TslBL {

// Points on either side that count; those beyond have less than 2e-3 of a part.
inline constexpr std::ptrdiff_t kSplineReach = 4;

// The weights of the points from `first` on, which may lie before the curve or beyond it: those count as its
// end points.
struct SplineDependence {
  std::ptrdiff_t first;
  std::array<double, 2 * kSplineReach + 4> weights;

  // Calls use(point, weight) for the points of a curve of so many.
  template <class Use>
  void ForEach(std::size_t points, Use use) const {
    const auto last = static_cast<std::ptrdiff_t>(points) - 1;
    const bool isInside = first >= 0 && first + std::ssize(weights) <= last;
    for (std::ptrdiff_t k = 0; k < std::ssize(weights); ++k) {
      const std::ptrdiff_t point = isInside ? first + k : std::clamp<std::ptrdiff_t>(first + k, 0, last);
      use(static_cast<std::size_t>(point), weights[static_cast<std::size_t>(k)]);
    }
  }
};

// Of the spline's value, and of its slope, at a fractional point index.
SplineDependence ValueDependence(double at);
SplineDependence SlopeDependence(double at);

// The value, or slope, that these weights give.
double Applied(const SplineDependence& on, const std::vector<double>& y);

}  // namespace TslBL
