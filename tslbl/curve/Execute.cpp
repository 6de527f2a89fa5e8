#include <tslbl/curve/Execute.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/EvalImpl.h>
#include <exception>

namespace TslBL {
namespace {

// One run of a cascade. What a step needs runs once; what has run before is run again when
// something under it changed.
struct Cascade {
  Curve& curve;
  Changed& changed;
  std::wstring& error;

  bool Has(Curve::Status bits) const { return curve.CheckAllStatus(bits); }
  bool UsesThreshold() const { return curve.peakDetectParams.ThresholdInUse; }

  bool Run(EvalType step) { return RunStepOf(step, curve, changed, error); }
  bool Run(EvalType first, EvalType second) {
    if (FusedSteps* fused = FindFusion(first, second)) return fused(curve, nullptr, changed, error);
    return Run(first) && Run(second);
  }
  bool BaselineAndNoiseOnce() {
    const bool baseline = Has(Curve::STATUS_BASELINE);
    const bool noise = Has(Curve::STATUS_NOISE);
    if (!baseline && !noise) return Run(EvalType::Baseline, EvalType::Noise);
    return (baseline || Run(EvalType::Baseline)) && (noise || Run(EvalType::Noise));
  }
  bool ThresholdOnce() { return Has(Curve::STATUS_THRESHOLD) || Run(EvalType::Threshold); }
  bool BaselineAndNoiseAgain() {
    if (Has(Curve::STATUS_BASELINE) && Has(Curve::STATUS_NOISE))
      return Run(EvalType::Baseline, EvalType::Noise);
    return BaselineAgain() && NoiseAgain();
  }
  bool BaselineAgain() { return !Has(Curve::STATUS_BASELINE) || Run(EvalType::Baseline); }
  bool NoiseAgain() { return !Has(Curve::STATUS_NOISE) || Run(EvalType::Noise); }
  bool PeaksAgain() { return !Has(Curve::STATUS_PEAKS) || Run(EvalType::PeakDetect); }
};

}  // namespace

bool ExecuteCurveEvals(Curve& curve, const std::vector<CurveEval>& evals, Changed& changed,
                       std::wstring& error) {
  // A curve's own history grows by each step: what is run is a copy.
  if (&evals == &curve.evals) return ExecuteCurveEvals(curve, std::vector<CurveEval>(evals), changed, error);
  for (auto eval = evals.begin(); eval != evals.end(); ++eval) {
    const auto next = eval + 1;
    FusedSteps* fused = next != evals.end() ? FindFusion(eval->Type(), next->Type()) : nullptr;
    if (fused == nullptr) {
      if (!eval->Execute(curve, changed, error)) return false;
    } else {
      if (!eval->impl_->StoreParams(curve) || !fused(curve, next->impl_.get(), changed, error)) return false;
      ++eval;
    }
  }
  return true;
}

bool ExecuteSmooth(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(EvalType::Smooth) && c.BaselineAndNoiseAgain() && c.PeaksAgain();
}

bool ExecuteBaseline(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(EvalType::Baseline) && c.PeaksAgain();
}

bool ExecuteBaselineSubtract(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(EvalType::BaselineSubtract) && c.NoiseAgain() && c.PeaksAgain();
}

bool ExecuteNoise(Curve& curve, Changed& changed, std::wstring& error) {
  // As in the step itself, a failure of the numerics is a message to the user.
  try {
    Cascade c{curve, changed, error};
    return c.Run(EvalType::Noise) && c.PeaksAgain();
  } catch (const std::exception& e) {
    error = TslNarrowToWideStr(e.what());
    return false;
  }
}

bool ExecuteThreshold(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(EvalType::Threshold) && (!c.UsesThreshold() || c.PeaksAgain());
}

bool ExecuteThresholdSubtract(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(EvalType::ThresholdSubtract) && c.BaselineAndNoiseAgain() && c.PeaksAgain();
}

bool ExecutePeakDetect(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.BaselineAndNoiseOnce() && (!c.UsesThreshold() || c.ThresholdOnce()) && c.Run(EvalType::PeakDetect);
}

}  // namespace TslBL
