#include <tslbl/curve/BaselineAndNoiseSteps.h>

#include <new>

namespace TslBL {
namespace {

bool ShareOnePass(const BaselineParams& b, const NoiseParams& n) {
  using Auto = NoiseParams::AutoAlgs;
  if (!b.Auto || !n.Auto || b.SegSize != n.SegSize) return false;
  if (b.Alg == BaselineParams::VFBaseline) return n.AlgAuto == Auto::VFNoise;
  return b.Alg == BaselineParams::LinearFitSD && n.AlgAuto == Auto::LinearFitSD && b.Points == n.Points &&
         b.Width == n.Width;
}

// Empty if memory is short: the noise step of its own tells that to the user.
std::vector<double> PlaceForNoise(const Curve& curve) {
  try {
    return std::vector<double>(curve.yAxis.size());
  } catch (const std::bad_alloc&) {
    return {};
  }
}

}  // namespace

bool DoBaselineAndNoise(Curve& curve, const CurveEval::EvalImpl* second, Changed& changed,
                        std::wstring& error) {
  const auto* command = static_cast<const NoiseImpl*>(second);
  const NoiseParams& params = command != nullptr ? command->QParams() : curve.noiseParams;
  std::vector<double> noise;
  if (ShareOnePass(curve.baselineParams, params)) noise = PlaceForNoise(curve);
  if (!DoBaseline(curve, changed, error, noise.empty() ? nullptr : noise.data())) return false;
  curve.SetParam(params);
  return noise.empty() ? RunStepOf(EvalType::Noise, curve, changed, error)
                       : DoNoise(curve, changed, error, noise);
}

}  // namespace TslBL
