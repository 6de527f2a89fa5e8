// The peak detection step: features, their description, and the selection of those that
// meet the user's limits.

#include <tslbl/curve/EvalImpl.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/curve/Step.h>
#include <tslbl/detect/DescribeAndSelect.h>
#include <tslbl/detect/PeakDetectLog.h>
#include <algorithm>
#include <optional>

namespace TslBL {
namespace {

constexpr StepRule kPeakDetect = {
    .command = EvalType::PeakDetect,
    .needs = Curve::STATUS_Y | Curve::STATUS_X | Curve::STATUS_BASELINE | Curve::STATUS_NOISE,
    .needsPoints = Points::Paired,
    .adds = Curve::STATUS_PEAKS,
    .mark = [](Changed& changed) { changed.peaks = true; },
};

std::optional<SearchRange> QSearchRange(const Curve& curve) {
  const PeakDetectParams& p = curve.peakDetectParams;
  const std::vector<double>& x = curve.xAxis;
  if (p.FullSearch) return SearchRange{0, curve.QNumPoints() - 1};
  // A limit that is no number is no range either.
  if (!(p.SearchStart <= p.SearchEnd)) return std::nullopt;
  const auto first = std::ranges::lower_bound(x, p.SearchStart);
  const auto pastLast = std::ranges::upper_bound(x, p.SearchEnd);
  if (first >= pastLast) return std::nullopt;
  return SearchRange{static_cast<std::uint32_t>(first - x.begin()),
                     static_cast<std::uint32_t>(pastLast - x.begin() - 1)};
}

// An amplitude below which no candidate can survive selection. It only saves work, so its
// margins keep it below what the limits finally ask for.
double AmplitudeFloor(const Curve& curve, const SearchRange& range) {
  const PeakDetectParams& p = curve.peakDetectParams;
  const double* y = curve.yAxis.data();
  const double tallest = range.last > range.first ? *std::max_element(y + range.first, y + range.last) : 0.0;
  double floor = curve.baseline[0];
  if (p.SNInUse) floor = std::max(floor, p.SN * curve.noise[0] / 3.0);
  if (p.ThresholdInUse) floor = std::max(floor, curve.thresholdParams.Value);
  if (p.RelAmplInUse) floor = std::max(floor, tallest * 0.01 * p.RelAmpl * 0.5);
  if (p.RelAreaInUse) floor = std::max(floor, tallest * 0.01 * p.RelArea * 0.25);
  if (p.AbsAreaInUse) floor = std::max(floor, p.AbsArea / 10.0);
  return floor;
}

FeatureRows FindFeatureRows(const Curve& curve, const SearchRange& range) {
  FeatureRows found;
  if (curve.peakDetectParams.FindFeatureAlgorithm == PeakDetectParams::Sorted) {
    const StageTimer timer(L"Find Features Sorted");
    found = FindFeaturesSorted(curve, range, PeakCntLimit::Obeyed, AmplitudeFloor(curve, range));
  } else {
    const StageTimer timer(L"Find Features Sequential");
    found = FindFeaturesSequential(curve, range, timer.IsHeard() ? Features::All : Features::Promising);
  }
  LogFeatures(curve, found);
  return found;
}

// Copies the survivors into the curve's table. The old one goes when there is memory for all.
void StorePeaks(Curve& curve, const std::vector<PeakInfo*>& list, const LargestPeaks& largest) {
  const auto lost = static_cast<std::size_t>(std::ranges::count(list, nullptr));
  curve.peaks.reserve(list.size() - lost);
  curve.peaks.clear();
  curve.largestAreaIdx = curve.largestMaxIdx = curve.largestCentroidIdx = -1;
  for (const PeakInfo* row : list) {
    if (row == nullptr) continue;
    const auto place = static_cast<std::int32_t>(curve.peaks.size());
    curve.peaks.push_back(*row);
    if (row == largest.area) curve.largestAreaIdx = place;
    if (row == largest.maxAmpl) curve.largestMaxIdx = place;
    if (row == largest.centroidAmpl) curve.largestCentroidIdx = place;
  }
}

bool CurvePeakDetect(Curve& curve) {
  const std::optional<SearchRange> range = QSearchRange(curve);
  if (!range) return false;
  if (curve.peakDetectParams.ThresholdInUse && !curve.CheckAllStatus(Curve::STATUS_THRESHOLD)) return false;
  const std::size_t n = curve.yAxis.size();
  if (curve.baseline.size() != n || curve.noise.size() != n) return false;

  FeatureRows found = FindFeatureRows(curve, *range);
  LargestPeaks largest;
  if (!found.list.empty()) {
    largest = DescribePromisingPeaks(curve, found.list);
    largest = SelectPeaks(curve, found.list, largest);
  }
  StorePeaks(curve, found.list, largest);
  return true;
}

}  // namespace

double CalcPeakValleyAmplitude(double peak, double valley, double percent) {
  return valley >= peak ? peak : valley + (peak - valley) * percent * 0.01;
}

bool DoPeakDetect(Curve& curve, Changed& changed, std::wstring& error) {
  return RunStep(kPeakDetect, curve, changed, error, CurvePeakDetect,
                 [](const Curve& c) { return CurveEval(c.peakDetectParams); });
}

CurveEval::CurveEval(const PeakDetectParams& params)
    : impl_(new EvalOf<EvalType::PeakDetect, PeakDetectParams>(params)) {}

}  // namespace TslBL
