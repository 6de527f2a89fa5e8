#include <tool/commands/chrom/AreaError.h>

#include <tslbl/curve/PeakArea.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

constexpr double kUnfiltered[] = {1.0};
// Of a straight line through n points its variance, times n, in units of that of a point; robust fits need
// more points.
constexpr double kOfLine = 2.0;

std::vector<double> NoiseVariance(const TslBL::ICObj& curve, const SmoothFilter* filter) {
  if (!filter || curve.noise.size() != curve.yAxis.size()) return {};
  double squares = 0.0;
  for (const double weight : filter->weights) squares += weight * weight;
  std::vector<double> variance;
  variance.reserve(curve.noise.size());
  for (const double noise : curve.noise) variance.push_back(noise * noise / squares);
  return variance;
}

// Points that one line of the baseline was laid through.
double PointsOfBaseline(const TslBL::ICObj& curve) {
  const double points = static_cast<double>(curve.yAxis.size());
  return std::min(points, static_cast<double>(std::max(curve.baselineParams.SegSize, 1U)));
}

}  // namespace

AreaErrors::AreaErrors(const Chromatogram& measured, const TslBL::ICObj& curve, const SmoothFilter* filter)
    : raw_(curve) {
  raw_.yAxis = measured.values;
  variance_ = NoiseVariance(curve, filter);
  if (!measured.variance.empty()) variance_ = measured.variance;
  if (!variance_.empty()) errors_.emplace(raw_, variance_, kUnfiltered);
}

std::pair<double, double> AreaErrors::Of(std::uint32_t peakIdx) {
  const double area = TslBL::QWholePeakArea(raw_, peakIdx);
  if (!errors_) return {area, std::numeric_limits<double>::quiet_NaN()};
  const double own = errors_->Of(peakIdx).area;
  return {area, std::sqrt(own * own + BaselineVariance(peakIdx))};
}

double AreaErrors::BaselineVariance(std::uint32_t peakIdx) const {
  if (!raw_.CheckAllStatus(TslBL::Curve::STATUS_BASELINE) || !raw_.baselineParams.Auto) return 0.0;
  const TslBL::PeakInfo& peak = raw_.peaks[peakIdx];
  const double seconds = raw_.xAxis[peak.endIdx] - raw_.xAxis[peak.startIdx];
  const double level =
      kOfLine / PointsOfBaseline(raw_) * (variance_[peak.startIdx] + variance_[peak.endIdx]) / 2.0;
  return seconds * seconds * level;
}

}  // namespace TslTool
