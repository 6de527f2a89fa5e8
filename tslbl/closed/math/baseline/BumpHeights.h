#pragma once
// What the heights of the bumps of a curve have in common.
#include <tslbl/closed/math/baseline/Polyline.h>

#include <span>
#include <vector>

namespace TslMath {

std::vector<double> HeightsOf(std::span<const Knot> bumps);

// How many have the height of another one, to a millionth. 0 of none. O(n log n).
double ShareOfEqual(std::vector<double> heights);

}  // namespace TslMath
