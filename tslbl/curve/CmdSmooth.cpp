// The smooth step: the amplitudes are replaced by smoothed ones.

#include <tslbl/closed/math/smooth/Smoothing.h>
#include <tslbl/curve/EvalImpl.h>
#include <tslbl/curve/SmoothRanges.h>
#include <tslbl/curve/Step.h>
#include <algorithm>
#include <cstring>

namespace TslBL {
namespace {

constexpr StepRule kSmooth = {
    .command = EvalType::Smooth,
    .needs = Curve::STATUS_Y | Curve::STATUS_X,
    .needsPoints = Points::Paired,
    .adds = Curve::STATUS_SMOOTHED,
    .mark = [](Changed& changed) { changed.yAxis = true; },
};

// Smooths one range of y into out; false for an algorithm that does not exist.
bool SmoothOneRange(const SmoothParams& p, const std::vector<double>& y, const SmoothRange& range,
                    std::vector<double>& out) {
  const auto n = static_cast<std::uint32_t>(y.size());
  switch (p.Alg) {
    case SmoothParams::Mean:
      TslMath::SmoothMean(y.data(), n, range.first, range.end, range.width, out.data());
      return true;
    case SmoothParams::Median:
      TslMath::SmoothMedian(y.data(), n, range.first, range.end, range.width, out.data());
      return true;
    case SmoothParams::SavitzkyGolay:
      TslMath::SmoothSavitzkyGolay(y.data(), n, range.first, range.end, range.width, p.Order, out.data());
      return true;
    case SmoothParams::Gaussian:
      TslMath::SmoothGaussian(y.data(), n, range.first, range.end, range.width, out.data());
      return true;
  }
  return false;
}

bool SmoothOnce(const SmoothParams& p, const std::vector<SmoothRange>& ranges, const std::vector<double>& y,
                std::vector<double>& out) {
  out = y;  // points outside all ranges keep their value
  return std::ranges::all_of(ranges,
                             [&](const SmoothRange& range) { return SmoothOneRange(p, y, range, out); });
}

bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
  return std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// The curve keeps its amplitudes until all passes are through: one that fails half way, as
// memory may, must not leave it partly smoothed.
bool SmoothCurve(Curve& curve) {
  const std::vector<SmoothRange> ranges = BuildSmoothRanges(curve);
  std::vector<double> y;  // empty before the first pass
  std::vector<double> out;
  for (std::uint32_t pass = 0; pass < curve.smoothParams.Passes; ++pass) {
    const std::vector<double>& from = y.empty() ? curve.yAxis : y;
    if (!SmoothOnce(curve.smoothParams, ranges, from, out)) return false;
    if (SameBits(from, out)) break;  // and so would all further passes
    y.swap(out);
  }
  if (!y.empty()) curve.yAxis.swap(y);
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
