#pragma once
// The steps: each does its one thing, with the parameters that the curve holds.

#include <tslbl/curve/Changed.h>
#include <string>

namespace TslBL {

class Curve;

bool DoSmooth(Curve& curve, Changed& changed, std::wstring& error);
bool DoBaseline(Curve& curve, Changed& changed, std::wstring& error);
bool DoBaselineSubtract(Curve& curve, Changed& changed, std::wstring& error);
bool DoNoise(Curve& curve, Changed& changed, std::wstring& error);
bool DoThreshold(Curve& curve, Changed& changed, std::wstring& error);
bool DoThresholdSubtract(Curve& curve, Changed& changed, std::wstring& error);
bool DoPeakDetect(Curve& curve, Changed& changed, std::wstring& error);

}  // namespace TslBL
