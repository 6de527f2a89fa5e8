#pragma once
// Takes the rounding off an axis that a file gives with too few decimals for its steps.

#include <vector>

namespace TslTool {

// The coarsest of 1, 0.1 ... 1e-6 of which all are multiples; 0 of values that are not rounded. O(n).
double RoundingUnit(const std::vector<double>& mz);

// Steps of 0.125 written with one decimal alternate between 0.1 and 0.2: no two points are missing, but
// neither widths nor neighbours can be told from such steps. Of an axis of at least 50 points, all multiples
// of 1, 0.1 ... 1e-6, whose mean step is below 4.5 such units, each point is put on the straight line through
// up to 64 on either side, if all lie within 0.8 units of it: half a unit, and the error of the line. Lists
// of peaks, and axes from which points are missing, are no such lines. Whether it has; else the axis stays as
// it is. The axis ascends. O(n).
bool TakeRoundingOff(std::vector<double>& mz);

}  // namespace TslTool
