// The baseline step, and the subtraction that takes the baseline out of the amplitudes for
// good.

#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/curve/BaselineAndNoiseSteps.h>
#include <tslbl/curve/Step.h>

namespace TslBL {
namespace {

constexpr StepRule kBaseline = {
    .command = EvalType::Baseline,
    .needs = Curve::STATUS_Y,
    .needsPoints = Points::Some,
    .adds = Curve::STATUS_BASELINE,
    .mark = [](Changed& changed) { changed.baseline = true; },
};

constexpr StepRule kBaselineSubtract = {
    .command = EvalType::BaselineSubtract,
    .needs = Curve::STATUS_BASELINE,
    .needsPoints = Points::None,
    .adds = 0,
    .mark = [](Changed& changed) { changed.yAxis = changed.baseline = true; },
};

// Fills `out`; false for an algorithm that does not exist. `out.noise` is null, or as for
// DoBaseline.
bool AutomaticBaseline(const Curve& curve, const TslMath::BaselineAndNoise& out) {
  const BaselineParams& p = curve.baselineParams;
  const double* y = curve.yAxis.data();
  const std::uint32_t n = curve.QNumPoints();
  switch (p.Alg) {
    case BaselineParams::VFBaseline:
      TslMath::FollowValleys(y, n, p.SegSize, out);
      return true;
    case BaselineParams::Adaptive:
      TslMath::APBMorph(y, n, p.SegSize, p.Window, out.baseline);
      return true;
    case BaselineParams::LinearFitSD:
      TslMath::FitLinesSD(y, n, p.SegSize, p.Points, p.Width, out);
      return true;
  }
  return false;
}

bool ComputeBaseline(Curve& curve, double* noise) {
  if (curve.baselineParams.Auto)
    return ReplaceValues(curve, Curve::STATUS_BASELINE, curve.baseline, [&](double* out) {
      return AutomaticBaseline(curve, {out, noise});
    });
  curve.baseline.assign(curve.yAxis.size(), curve.baselineParams.ManVal);
  return true;
}

bool SubtractBaseline(Curve& curve) {
  if (curve.baseline.size() != curve.yAxis.size()) return false;
  double* y = curve.yAxis.data();
  double* b = curve.baseline.data();
  for (std::size_t i = 0; i < curve.yAxis.size(); ++i) {
    const double above = y[i] - b[i];
    y[i] = above > 0.0 ? above : 0.0;
    b[i] = 0.0;
  }
  return true;
}

}  // namespace

bool DoBaseline(Curve& curve, Changed& changed, std::wstring& error, double* noise) {
  return RunStep(
      kBaseline, curve, changed, error, [noise](Curve& c) { return ComputeBaseline(c, noise); },
      [](const Curve& c) { return CurveEval(c.baselineParams); });
}

bool DoBaseline(Curve& curve, Changed& changed, std::wstring& error) {
  return DoBaseline(curve, changed, error, nullptr);
}

bool DoBaselineSubtract(Curve& curve, Changed& changed, std::wstring& error) {
  return RunStep(kBaselineSubtract, curve, changed, error, SubtractBaseline,
                 [](const Curve&) { return CurveEval(CurveEval::BaselineSubtract()); });
}

CurveEval::CurveEval(const BaselineParams& params) : impl_(new BaselineImpl(params)) {}
CurveEval::CurveEval(const BaselineSubtract&) : impl_(new EvalOf<EvalType::BaselineSubtract>) {}

}  // namespace TslBL
