// The smooth step: the amplitudes are replaced by smoothed ones.

#include <tslbl/curve/EvalImpl.h>
#include <tslbl/curve/SmoothPasses.h>
#include <tslbl/curve/SmoothRanges.h>
#include <tslbl/curve/Step.h>

namespace TslBL {
namespace {

constexpr StepRule kSmooth = {
    .command = EvalType::Smooth,
    .needs = Curve::STATUS_Y | Curve::STATUS_X,
    .needsPoints = Points::Paired,
    .adds = Curve::STATUS_SMOOTHED,
    .mark = [](Changed& changed) { changed.yAxis = true; },
};

// The curve keeps its amplitudes until all passes are through: one that fails half way, as
// memory may, must not leave it partly smoothed.
bool SmoothCurve(Curve& curve) {
  auto smoothed = SmoothPasses(curve.smoothParams, BuildSmoothRanges(curve), curve.yAxis);
  if (!smoothed) return false;
  curve.yAxis.swap(*smoothed);
  for (double& amplitude : curve.yAxis) amplitude = amplitude < 0.0 ? 0.0 : amplitude;
  return true;
}

}  // namespace

bool DoSmooth(Curve& curve, Changed& changed, std::wstring& error) {
  return RunStep(kSmooth, curve, changed, error, SmoothCurve,
                 [](const Curve& c) { return CurveEval(c.smoothParams); });
}

CurveEval::CurveEval(const SmoothParams& params)
    : impl_(new EvalOf<EvalType::Smooth, SmoothParams>(params)) {}

}  // namespace TslBL
