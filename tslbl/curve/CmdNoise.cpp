// The noise step: a noise amplitude for every point.

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/curve/BaselineAndNoiseSteps.h>
#include <tslbl/curve/Step.h>
#include <exception>
#include <limits>
#include <span>

namespace TslBL {
namespace {

constexpr StepRule kNoise = {
    .command = EvalType::Noise,
    .needs = Curve::STATUS_Y,
    .needsPoints = Points::Some,
    .adds = Curve::STATUS_NOISE,
    .mark = [](Changed& changed) { changed.noise = true; },
};

// What is no number says nothing about the noise: it is passed over. NaN if there is nothing else.
double PeakToPeak(std::span<const double> y) {
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -lowest;
  for (const double amplitude : y) {
    if (amplitude < lowest) lowest = amplitude;
    if (amplitude > highest) highest = amplitude;
  }
  return lowest <= highest ? highest - lowest : std::numeric_limits<double>::quiet_NaN();
}

// The noise of the stretch that the user named; of the whole curve if it is empty.
double ManualNoise(const Curve& curve) {
  const NoiseParams& p = curve.noiseParams;
  std::uint32_t first = curve.QXAxisToIdx(p.Start, ROUND_UP);
  std::uint32_t last = curve.QXAxisToIdx(p.End, ROUND_DOWN);
  if (first >= last) {
    first = 0;
    last = curve.QNumPoints();
  }
  const std::span<const double> stretch(curve.yAxis.data() + first, last - first);
  if (p.AlgMan == NoiseParams::ManAlgs::PeakToPeak) return PeakToPeak(stretch);
  return 6.0 * TslMath::StandardDeviation(stretch.data(), last - first);
}

// Fills `out`; false for an algorithm that does not exist.
bool AutomaticNoise(Curve& curve, double* out) {
  const NoiseParams& p = curve.noiseParams;
  const std::uint32_t n = curve.QNumPoints();
  double* x = curve.xAxis.data();
  double* y = curve.yAxis.data();
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

// Gaps in the axis, or the ends of the stretch, which without STATUS_X is the whole curve.
bool ReadsX(const Curve& curve) {
  const NoiseParams& p = curve.noiseParams;
  if (!p.Auto) return curve.CheckAllStatus(Curve::STATUS_X);
  return p.AlgAuto == NoiseParams::AutoAlgs::Dispersion || p.AlgAuto == NoiseParams::AutoAlgs::Median;
}

bool ComputeNoise(Curve& curve) {
  if (ReadsX(curve) && curve.xAxis.size() != curve.yAxis.size()) return false;
  if (curve.noiseParams.Auto)
    return ReplaceValues(curve, Curve::STATUS_NOISE, curve.noise,
                         [&](double* out) { return AutomaticNoise(curve, out); });
  curve.noise.assign(curve.yAxis.size(), ManualNoise(curve));
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
