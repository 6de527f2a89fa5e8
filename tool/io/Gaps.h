#pragma once
// Where points are missing along an axis.

#include <cstddef>
#include <vector>

namespace TslTool {

struct Gap {
  std::size_t at;  // index of the point behind it
  double step;     // usual in front of it
};

// A gap is where neighbours lie more than 3.5 of the steps apart that are usual there, among the 64 points
// about it and both before and behind it: where a scan goes on with another step there is none. Among
// points that stand alone, as counts of a background without its zeros, the steps are those of the axis to
// both sides. The axis ascends. O(n).
std::vector<Gap> GapsOf(const std::vector<double>& x);

}  // namespace TslTool
