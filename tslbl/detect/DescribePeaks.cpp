// Description: a spline through the points of each feature gives the fractional maximum,
// centroid, half-height points, integration limits and area.

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/closed/math/peak/SplinePeak.h>
#include <tslbl/curve/PeakLevels.h>
#include <tslbl/detect/DescribeAndSelect.h>
#include <tslbl/detect/PeakDetectLog.h>
#include <tslbl/detect/RejectionBound.h>
#include <tslbl/detect/RunStage.h>
#include <cmath>

namespace TslBL {
namespace {

constexpr std::uint32_t kFewestPoints = 3;
// Above this percentage the whole peak counts.
constexpr double kWholePeak = 99.0;

double BaselineAt(const Curve& curve, double idx) {
  constexpr double kOnPoint = 0.01;
  const double lo = std::floor(idx);
  const double hi = std::ceil(idx);
  const double below = ValueAt(curve.baseline, Truncate<std::uint32_t>(lo));
  if (idx - lo <= kOnPoint) return below;
  const double above = ValueAt(curve.baseline, Truncate<std::uint32_t>(hi));
  if (hi - idx <= kOnPoint) return above;
  return below + (idx - lo) * (above - below);
}

class DescribePeak {
 public:
  explicit DescribePeak(const Curve& curve) : curve_(curve) {}

  bool Keep(PeakInfo& p) const {
    if (p.endIdx < p.startIdx || p.endIdx - p.startIdx + 1 < kFewestPoints) return false;
    const std::uint32_t count = p.endIdx - p.startIdx + 1;
    const double first = p.startIdx;  // the points behind it follow one by one
    const TslMath::SplinePeak spline(&first, curve_.yAxis.data() + p.startIdx, count);
    const double apexBaseline = curve_.baseline[p.apexIdx];

    spline.PeakMax(p.maxIdx, p.maxAmpl);
    spline.HalfHeightPeakWidth(apexBaseline, p.halfHeightLeftIdx, p.halfHeightRightIdx);
    const double level = Level(p.maxAmpl, apexBaseline);
    spline.PeakCentroid(level, p.centroidIdx, p.centroidAmpl, p.areaStartIdx, p.areaEndIdx);
    p.baselineAmpl = p.maxBaseline = BaselineAt(curve_, p.centroidIdx);
    p.areaIntercept = level;
    p.area = spline.PeakArea(level, p.baselineAmpl, curve_.xAxis.data());
    p.noiseAmpl = ValueAt(curve_.noise, Truncate<std::uint32_t>(p.ReportedIdx()));
    return true;
  }

 private:
  // The level above which centroid and area take the peak: a percentage of it, counted from
  // the top, or all of it.
  double Level(double maxAmpl, double apexBaseline) const {
    const PeakDetectParams& t = curve_.peakDetectParams;
    const bool top = t.RetentionType == PeakDetectParams::CentroidTopPercent && t.Retention <= kWholePeak;
    return top ? maxAmpl - t.Retention * 0.01 * (maxAmpl - apexBaseline) : apexBaseline;
  }

  const Curve& curve_;
};

class DescribePromisingPeak {
 public:
  explicit DescribePromisingPeak(const Curve& curve) : describe_(curve), bound_(curve) {}

  bool Keep(PeakInfo& p) {
    const bool rejected = p.startIdx <= p.endIdx && !bound_.PassesAt(p.apexIdx) &&
                          bound_.RejectsAllBetween(p.startIdx, p.endIdx);
    return !rejected && describe_.Keep(p);
  }

 private:
  DescribePeak describe_;
  RejectionBound bound_;
};

template <class Worker>
LargestPeaks RunDescription(const Curve& curve, std::vector<PeakInfo*>& list) {
  const StageTimer timer(L"Describe Peaks");
  return RunStage(Worker(curve), list, GetMultiThreadingParams().DescribePeaks);
}

}  // namespace

LargestPeaks DescribePeaks(const Curve& curve, std::vector<PeakInfo*>& list) {
  return RunDescription<DescribePeak>(curve, list);
}

LargestPeaks DescribePromisingPeaks(const Curve& curve, std::vector<PeakInfo*>& list) {
  return RunDescription<DescribePromisingPeak>(curve, list);
}

}  // namespace TslBL
