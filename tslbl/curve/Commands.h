#pragma once
// How to make each command of this room, with its default parameters. The caller owns the
// result.

#include <tslbl/curve/EvalImpl.h>

namespace TslBL {

CurveEval::EvalImpl* MakeEmpty();
CurveEval::EvalImpl* MakeBaseline();
CurveEval::EvalImpl* MakeBaselineSubtract();
CurveEval::EvalImpl* MakeNoise();
CurveEval::EvalImpl* MakePeakDetect();
CurveEval::EvalImpl* MakeSmooth();
CurveEval::EvalImpl* MakeThreshold();
CurveEval::EvalImpl* MakeThresholdSubtract();
CurveEval::EvalImpl* MakeAerosolFilter();

}  // namespace TslBL
