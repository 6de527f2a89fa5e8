#pragma once
// Tunes of older binary versions, made current once their numbers have been read.

#include <tslbl/tune/Tune.h>

namespace TslBL {

// Absolute lens voltages become a chain of relative ones, in the single values and in each
// Q1 calibration point at its own m/z; then as from version 2. Throws std::runtime_error
// "Divide by zero error" if two points of one m/z leave a curve undefined there.
void ConvertFromVersion1(Tune& tune);

// Resolutions become percent; the entrance lens and the coarse resolution leave the Q1
// calibration points.
void ConvertFromVersion2(Tune& tune);

}  // namespace TslBL
