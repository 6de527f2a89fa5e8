#pragma once
// A curve drawn from corner to corner.
#include <cstddef>
#include <vector>

namespace TslMath {

struct Knot {
  double position;  // in points
  double level;
};

// Straight from knot to knot, level beyond the outer ones. At least one knot, ascending positions within
// 0 .. n-1. O(n).
void DrawPolyline(const std::vector<Knot>& knots, std::size_t n, double* out);

}  // namespace TslMath
