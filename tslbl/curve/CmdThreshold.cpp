// The threshold step, and the subtraction that takes the threshold out of the amplitudes.

#include <tslbl/curve/Commands.h>
#include <tslbl/curve/Step.h>
#include <tslbl/curve/Steps.h>

namespace TslBL {
namespace {

constexpr StepRule kThreshold = {
    .needs = 0,
    .needsPoints = Points::None,
    .adds = Curve::STATUS_THRESHOLD,
    .mark = [](Changed& changed) { changed.threshold = true; },
    .failure = kUnableToThreshold,
};

constexpr StepRule kThresholdSubtract = {
    .needs = Curve::STATUS_THRESHOLD,
    .needsPoints = Points::None,
    .adds = 0,
    .mark = [](Changed& changed) { changed.yAxis = changed.threshold = true; },
    .failure = kUnableToSubtractThreshold,
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

using ThresholdImpl = EvalOf<EvalType::Threshold, ThresholdParams, DoThreshold>;
using ThresholdSubtractImpl =
    EvalOf<EvalType::ThresholdSubtract, NoParams<EvalType::ThresholdSubtract>, DoThresholdSubtract>;

CurveEval::CurveEval(const ThresholdParams& params) : impl_(new ThresholdImpl(params)) {}
CurveEval::CurveEval(const ThresholdSubtract&) : impl_(new ThresholdSubtractImpl) {}
CurveEval::EvalImpl* MakeThreshold() { return new ThresholdImpl; }
CurveEval::EvalImpl* MakeThresholdSubtract() { return new ThresholdSubtractImpl; }

}  // namespace TslBL
