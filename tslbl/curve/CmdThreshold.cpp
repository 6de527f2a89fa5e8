// The threshold step, and the subtraction that takes the threshold out of the amplitudes.

#include <tslbl/curve/EvalImpl.h>
#include <tslbl/curve/Step.h>

namespace TslBL {
namespace {

constexpr StepRule kThreshold = {
    .command = EvalType::Threshold,
    .needs = 0,
    .needsPoints = Points::None,
    .adds = Curve::STATUS_THRESHOLD,
    .mark = [](Changed& changed) { changed.threshold = true; },
};

constexpr StepRule kThresholdSubtract = {
    .command = EvalType::ThresholdSubtract,
    .needs = Curve::STATUS_THRESHOLD,
    .needsPoints = Points::None,
    .adds = 0,
    .mark = [](Changed& changed) { changed.yAxis = changed.threshold = true; },
};

bool SubtractThreshold(Curve& curve) {
  const double threshold = curve.thresholdParams.Value;
  for (double& y : curve.yAxis) y = y > threshold ? y - threshold : 0.0;
  curve.thresholdParams.Value = 0.0;
  return true;
}

}  // namespace

bool DoThreshold(Curve& curve, Changed& changed, std::wstring& error) {
  return RunStep(
      kThreshold, curve, changed, error, [](Curve&) { return true; },
      [](const Curve& c) { return CurveEval(c.thresholdParams); });
}

bool DoThresholdSubtract(Curve& curve, Changed& changed, std::wstring& error) {
  return RunStep(kThresholdSubtract, curve, changed, error, SubtractThreshold,
                 [](const Curve&) { return CurveEval(CurveEval::ThresholdSubtract()); });
}

CurveEval::CurveEval(const ThresholdParams& params)
    : impl_(new EvalOf<EvalType::Threshold, ThresholdParams>(params)) {}
CurveEval::CurveEval(const ThresholdSubtract&) : impl_(new EvalOf<EvalType::ThresholdSubtract>) {}

}  // namespace TslBL
