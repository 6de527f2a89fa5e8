#include <tslbl/curve/Execute.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/Steps.h>
#include <exception>

namespace TslBL {
namespace {

// One run of a cascade. What has run before is run again when something under it changed.
struct Cascade {
  Curve& curve;
  Changed& changed;
  std::wstring& error;

  bool Run(bool (*step)(Curve&, Changed&, std::wstring&)) { return step(curve, changed, error); }
  bool Has(Curve::Status bits) const { return curve.CheckAllStatus(bits); }
  bool UsesThreshold() const { return curve.peakDetectParams.ThresholdInUse; }

  bool BaselineAndNoise() { return DoBaselineAndNoise(curve, curve.noiseParams, changed, error); }
  bool BaselineAndNoiseAgain() {
    if (Has(Curve::STATUS_BASELINE) && Has(Curve::STATUS_NOISE)) return BaselineAndNoise();
    return BaselineAgain() && NoiseAgain();
  }
  bool BaselineAgain() { return !Has(Curve::STATUS_BASELINE) || Run(DoBaseline); }
  bool NoiseAgain() { return !Has(Curve::STATUS_NOISE) || Run(DoNoise); }
  bool PeaksAgain() { return !Has(Curve::STATUS_PEAKS) || Run(DoPeakDetect); }
};

}  // namespace

bool ExecuteSmooth(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(DoSmooth) && c.BaselineAndNoiseAgain() && c.PeaksAgain();
}

bool ExecuteBaseline(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(DoBaseline) && c.PeaksAgain();
}

bool ExecuteBaselineSubtract(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(DoBaselineSubtract) && c.NoiseAgain() && c.PeaksAgain();
}

bool ExecuteNoise(Curve& curve, Changed& changed, std::wstring& error) {
  // As in the step itself, a failure of the numerics is a message to the user.
  try {
    Cascade c{curve, changed, error};
    return c.Run(DoNoise) && c.PeaksAgain();
  } catch (const std::exception& e) {
    error = TslNarrowToWideStr(e.what());
    return false;
  }
}

bool ExecuteThreshold(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(DoThreshold) && (!c.UsesThreshold() || c.PeaksAgain());
}

bool ExecuteThresholdSubtract(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  return c.Run(DoThresholdSubtract) && c.BaselineAndNoiseAgain() && c.PeaksAgain();
}

bool ExecutePeakDetect(Curve& curve, Changed& changed, std::wstring& error) {
  Cascade c{curve, changed, error};
  const bool hasBaseline = c.Has(Curve::STATUS_BASELINE);
  const bool hasNoise = c.Has(Curve::STATUS_NOISE);
  if (!hasBaseline && !(hasNoise ? c.Run(DoBaseline) : c.BaselineAndNoise())) return false;
  if (hasBaseline && !hasNoise && !c.Run(DoNoise)) return false;
  if (c.UsesThreshold() && !c.Has(Curve::STATUS_THRESHOLD) && !c.Run(DoThreshold)) return false;
  return c.Run(DoPeakDetect);
}

}  // namespace TslBL
