#pragma once
// Noise that was cut off at 0.

#include <vector>

namespace TslTool {

// Whether amplitudes below 0 were set to 0 before the file was written: a good part of the points is 0, one
// by one among others, and these are no counts. The baseline then comes to lie above 0, where the noise was
// even about it, and peaks lose as much. O(n).
bool HasClippedNoise(const std::vector<double>& amplitudes);

}  // namespace TslTool
