#pragma once
// The bumps of a curve, by how far they rise above their surroundings.

#include <cstddef>
#include <vector>

namespace TslMath {

struct Bump {
  std::size_t at;            // index of the top, of equal samples the first
  double prominence;         // above the higher of the two lowest places that part it from higher points
  bool isProminent = false;  // with at least a twentieth of the largest prominence
};

// All local maxima, in ascending order of their places; which are prominent is not told. Finite samples.
// O(n).
std::vector<Bump> AllBumps(const std::vector<double>& y);

// The 32 most prominent local maxima, the largest first, down to a twentieth of the largest; and down to a
// four hundredth those that stand alone, as they rise by 0.7 of their height above the middle of the curve.
// Finite samples. O(n).
std::vector<Bump> ProminentBumps(const std::vector<double>& y);

// How many points across the bump with this top is where the curve falls below `level`, on straight lines
// between points. An end of the curve ends it.
double WidthAtLevel(const std::vector<double>& y, std::size_t top, double level);

}  // namespace TslMath
