#pragma once
// Baseline and noise in one pass, for half the time, where both ask for the same algorithm with
// the same parameters: its two halves.
//
// For the sources of the steps; not part of the library's interface.

#include <tslbl/curve/EvalImpl.h>
#include <string>
#include <vector>

namespace TslBL {

using BaselineImpl = EvalOf<EvalType::Baseline, BaselineParams>;
using NoiseImpl = EvalOf<EvalType::Noise, NoiseParams>;

// The baseline step. `noise` has a place for each point, or is null; it is filled only where
// the algorithm finds both.
bool DoBaseline(Curve& curve, Changed& changed, std::wstring& error, double* noise);
// The noise step with what that has found, which becomes the curve's noise.
bool DoNoise(Curve& curve, Changed& changed, std::wstring& error, std::vector<double>& found);

}  // namespace TslBL
