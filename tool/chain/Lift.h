#pragma once
// Amplitudes below 0, which smoothing would take for 0.

#include <tslbl/curve/Curve.h>
#include <vector>

namespace TslTool {

// What to add to amplitudes of which one in a hundred or more is below 0, as where a baseline was subtracted:
// so much that noise does not reach 0, but not what a single stray value would need. 0 for others. O(n).
double LiftOf(const std::vector<double>& amplitudes);

// Takes it off an evaluated curve again: off its curve, its baseline and the levels of its peaks.
void Lower(TslBL::Curve& curve, double lift);

}  // namespace TslTool
