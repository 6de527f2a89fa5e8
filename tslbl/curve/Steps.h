#pragma once
// The steps: each does its one thing, with the parameters that the curve holds.

#include <tslbl/curve/Changed.h>
#include <string>
#include <vector>

namespace TslBL {

class Curve;
struct NoiseParams;

bool DoSmooth(Curve& curve, Changed& changed, std::wstring& error);
bool DoBaseline(Curve& curve, Changed& changed, std::wstring& error);
bool DoBaselineSubtract(Curve& curve, Changed& changed, std::wstring& error);
bool DoNoise(Curve& curve, Changed& changed, std::wstring& error);
bool DoThreshold(Curve& curve, Changed& changed, std::wstring& error);
bool DoThresholdSubtract(Curve& curve, Changed& changed, std::wstring& error);
bool DoPeakDetect(Curve& curve, Changed& changed, std::wstring& error);

// The baseline step and then the noise step with the parameters given. Where both ask for the
// same algorithm with the same parameters one pass finds both, for half the time.
bool DoBaselineAndNoise(Curve& curve, const NoiseParams& params, Changed& changed, std::wstring& error);
// The two halves of that pass. `noise` has a place for each point, or is null; it is filled
// only where the algorithm finds both. `found` becomes the curve's noise.
bool DoBaseline(Curve& curve, Changed& changed, std::wstring& error, double* noise);
bool DoNoise(Curve& curve, Changed& changed, std::wstring& error, std::vector<double>& found);

}  // namespace TslBL
