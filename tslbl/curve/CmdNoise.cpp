// The noise step: a noise amplitude for every point.

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/curve/BaselineAndNoiseSteps.h>
#include <tslbl/curve/Step.h>
#include <algorithm>
#include <exception>

namespace TslBL {
namespace {

constexpr StepRule kNoise = {
    .command = EvalType::Noise,
    .needs = Curve::STATUS_Y,
    .needsPoints = Points::Paired,
    .adds = Curve::STATUS_NOISE,
    .mark = [](Changed& changed) { changed.noise = true; },
};

// The noise of the stretch that the user named; of the whole curve if it is empty.
double ManualNoise(const Curve& curve) {
  const NoiseParams& p = curve.noiseParams;
  std::uint32_t first = curve.QXAxisToIdx(p.Start, ROUND_UP);
  std::uint32_t last = curve.QXAxisToIdx(p.End, ROUND_DOWN);
  if (first >= last) {
    first = 0;
    last = curve.QNumPoints();
  }
  const double* begin = curve.yAxis.data() + first;
  const double* end = curve.yAxis.data() + last;
  if (p.AlgMan == NoiseParams::ManAlgs::PeakToPeak) {
    const auto [lowest, highest] = std::minmax_element(begin, end);
    return *highest - *lowest;
  }
  return 6.0 * TslMath::StandardDeviation(begin, last - first);
}

bool AutomaticNoise(Curve& curve) {
  const NoiseParams& p = curve.noiseParams;
  const std::uint32_t n = curve.QNumPoints();
  double* x = curve.xAxis.data();
  double* y = curve.yAxis.data();
  curve.noise.resize(n);
  double* out = curve.noise.data();
  switch (p.AlgAuto) {
    case NoiseParams::AutoAlgs::VFNoise:
      TslMath::VFNoise(y, n, p.SegSize, out);
      return true;
    case NoiseParams::AutoAlgs::Dispersion:
      TslMath::APBNoise(x, y, n, p.SegSize, 0, out);
      return true;
    case NoiseParams::AutoAlgs::Median:
      TslMath::APBNoise(x, y, n, p.SegSize, p.Median, out);
      return true;
    case NoiseParams::AutoAlgs::LinearFitSD:
      TslMath::LinearFitSDNoise(y, n, p.SegSize, p.Points, p.Width, out);
      return true;
  }
  return false;
}

bool ComputeNoise(Curve& curve) {
  if (curve.noiseParams.Auto) return AutomaticNoise(curve);
  curve.noise.assign(curve.QNumPoints(), ManualNoise(curve));
  return true;
}

template <class Compute>
bool RunNoise(Curve& curve, Changed& changed, std::wstring& error, Compute compute) {
  // The numerics of noise may fail on odd data; for the user that is a message.
  try {
    return RunStep(kNoise, curve, changed, error, compute,
                   [](const Curve& c) { return CurveEval(c.noiseParams); });
  } catch (const std::exception& e) {
    error = TslNarrowToWideStr(e.what());
    return false;
  }
}

}  // namespace

bool DoNoise(Curve& curve, Changed& changed, std::wstring& error) {
  return RunNoise(curve, changed, error, ComputeNoise);
}

bool DoNoise(Curve& curve, Changed& changed, std::wstring& error, std::vector<double>& found) {
  return RunNoise(curve, changed, error, [&found](Curve& c) {
    c.noise.swap(found);
    return true;
  });
}

CurveEval::CurveEval(const NoiseParams& params) : impl_(new NoiseImpl(params)) {}

}  // namespace TslBL
