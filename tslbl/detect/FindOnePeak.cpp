#include <tslbl/detect/FindOnePeak.h>

#include <tslbl/closed/math/peak/Features.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/detect/DescribeAndSelect.h>
#include <tslbl/detect/FindPeak.h>
#include <tslbl/detect/InsertPeak.h>
#include <tslbl/detect/PeakWalks.h>
#include <vector>

namespace TslBL {
namespace {

// Runs the step unless the curve has what it gives.
bool Has(Curve& curve, Curve::Status status, EvalType step) {
  Changed changed;
  std::wstring error;
  return curve.CheckAllStatus(status) || RunStepOf(step, curve, changed, error);
}

bool HasBaselineAndNoise(Curve& curve) {
  return Has(curve, Curve::STATUS_BASELINE, EvalType::Baseline) &&
         Has(curve, Curve::STATUS_NOISE, EvalType::Noise) && curve.baseline.size() == curve.yAxis.size() &&
         curve.noise.size() == curve.yAxis.size() && curve.xAxis.size() == curve.yAxis.size();
}

// The span of the maximum around a point.
bool SpanAround(const Curve& curve, std::uint32_t curveIdx, SearchRange& span) {
  TslMath::CurvePt top;
  if (!TslMath::FindOneFeature(curve.yAxis.data(), curve.QNumPoints(), curveIdx, top)) return false;
  const auto& [index, amplitude] = top;
  const CurveView view{curve.yAxis.data(), curve.baseline.data(),
                       static_cast<std::ptrdiff_t>(curve.yAxis.size())};
  const double valley =
      CalcPeakValleyAmplitude(amplitude, curve.baseline[index], curve.peakDetectParams.MaxValley);
  span.first = static_cast<std::uint32_t>(WalkLeft(view, index, valley));
  span.last = static_cast<std::uint32_t>(WalkRight(view, index, valley));
  return true;
}

}  // namespace

std::int32_t FindOnePeak(Curve& curve, std::uint32_t curveIdx) {
  SearchRange span{};
  if (!HasBaselineAndNoise(curve) || !SpanAround(curve, curveIdx, span)) return -1;
  FeatureRows found = FindFeaturesSorted(curve, span, PeakCntLimit::Ignored, 0.0);
  if (found.list.empty()) return -1;
  DescribePeaks(curve, found.list);
  std::erase(found.list, nullptr);
  const std::int32_t row = FindPeakIdxByCurveIdx(found.list, curveIdx);
  return row < 0 ? -1 : InsertPeak(curve, *found.list[static_cast<std::size_t>(row)]);
}

}  // namespace TslBL
