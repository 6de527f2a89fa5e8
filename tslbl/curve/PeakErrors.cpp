#include <tslbl/curve/PeakErrors.h>

#include <tslbl/curve/Curve.h>
#include <tslbl/curve/SplineDependence.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace TslBL {
namespace {

// Above this percentage the whole peak counts, and its borders are no points of one level.
constexpr double kWholePeak = 99.0;
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// Calls use(place, share) for places whose values, weighted with the shares, are the integral of a cubic in
// each interval of points: Simpson's rule.
template <class Use>
void ForEachOfIntegral(double from, double to, Use use) {
  double before = 0.0;  // length of the interval that ends here
  double a = from;
  while (a < to) {
    const double b = std::min(to, std::floor(a) + 1.0);
    use(a, (before + b - a) / 6.0);
    use(0.5 * (a + b), 4.0 * (b - a) / 6.0);
    before = b - a;
    a = b;
  }
  use(a, before / 6.0);
}

// The Gaussian of a peak's height and width at half height. The curve's own slopes tell little where ions are
// few: they are noise. All NaN for a peak without height or width.
class Shape {
 public:
  explicit Shape(const PeakInfo& peak) : centre_(peak.maxIdx), height_(peak.maxAmpl - peak.baselineAmpl) {
    const double width = peak.halfHeightRightIdx - peak.halfHeightLeftIdx;
    fall_ = height_ > 0.0 && width > 0.0 ? 4.0 * std::numbers::ln2 / (width * width) : kNone;
  }

  double Slope(double at) const {
    const double distance = at - centre_;
    return -2.0 * fall_ * distance * height_ * std::exp(-fall_ * distance * distance);
  }

  double CurvatureOfTop() const { return -2.0 * fall_ * height_; }

 private:
  double centre_;
  double height_;
  double fall_;
};

// Length of a point along the x axis.
double StepAt(const std::vector<double>& x, double at) {
  const auto i = std::min(static_cast<std::size_t>(at), x.size() - 2);
  return x[i + 1] - x[i];
}

}  // namespace

PeakErrorEstimator::PeakErrorEstimator(const Curve& curve, std::span<const double> variance,
                                       std::span<const double> filter)
    : curve_(curve), variance_(variance), filter_(filter) {
  if (filter.size() % 2 == 0) throw std::invalid_argument("A filter has an odd number of weights.");
}

PeakErrors PeakErrorEstimator::Of(std::uint32_t peakIdx) {
  const PeakInfo& peak = curve_.peaks.at(peakIdx);
  const std::size_t points = curve_.yAxis.size();
  if (points < 4 || peak.endIdx >= points || peak.startIdx >= peak.endIdx || variance_.size() != points)
    return {kNone, kNone, kNone};
  const double place = peak.ReportedIdx();
  PeakErrors errors{};
  if (peak.useMax) {
    Begin(place, place);
    AddTop(peak);
  } else {
    Begin(peak.areaStartIdx, peak.areaEndIdx);
    AddCentroid(peak);
  }
  errors.x = StandardError() * StepAt(curve_.xAxis, place);
  Begin(place, place);
  Add(ValueDependence(place), 1.0);
  errors.ampl = StandardError();
  errors.area = AreaError(peak);
  return errors;
}

// A filter only moves what lies within the limits, but for little at the ends.
double PeakErrorEstimator::AreaError(const PeakInfo& peak) const {
  const std::vector<double>& x = curve_.xAxis;
  double sum = 0.0;
  for (std::uint32_t i = peak.startIdx; i <= peak.endIdx; ++i) {
    const double length = 0.5 * (x[std::min(i + 1, peak.endIdx)] - x[std::max(i, peak.startIdx + 1) - 1]);
    sum += length * length * variance_[i];
  }
  return std::sqrt(sum);
}

void PeakErrorEstimator::Begin(double from, double to) {
  constexpr auto kAround = static_cast<std::size_t>(kSplineReach) + 2;
  const auto begin = static_cast<std::size_t>(from);
  first_ = begin - std::min(begin, kAround);
  const std::size_t end = std::min(static_cast<std::size_t>(to) + kAround + 2, curve_.yAxis.size());
  sensitivity_.assign(end - first_, 0.0);
}

void PeakErrorEstimator::Add(const SplineDependence& on, double factor) {
  SplineDependence here = on;
  here.first -= static_cast<std::ptrdiff_t>(first_);
  here.ForEach(sensitivity_.size(),
               [&](std::size_t point, double weight) { sensitivity_[point] += factor * weight; });
}

// The mean position of the part above a level: its inner points pull it, and its ends move with the points
// there and with the level, which follows the maximum. Below 0 it is the middle of the ends.
void PeakErrorEstimator::AddCentroid(const PeakInfo& peak) {
  const double from = peak.areaStartIdx;
  const double to = peak.areaEndIdx;
  const double centre = peak.centroidIdx;
  double weight = 0.0;
  ForEachOfIntegral(from, to, [&](double at, double share) {
    const SplineDependence on = ValueDependence(at);
    weight += share * Applied(on, curve_.yAxis);
    Add(on, share * (at - centre));
  });
  const bool hasWeight = weight > 0.0;
  for (double& value : sensitivity_) value = hasWeight ? value / weight : 0.0;
  const double retention = curve_.peakDetectParams.Retention;
  if (retention > kWholePeak) return;
  const Shape shape(peak);
  for (const auto& [end, direction] : {std::pair{from, -1.0}, {to, 1.0}}) {
    const double slope = shape.Slope(end);
    if (slope == 0.0) continue;
    const double pull =
        hasWeight ? direction * (end - centre) * peak.areaIntercept / (weight * slope) : 0.5 / slope;
    Add(ValueDependence(end), -pull);
    Add(ValueDependence(peak.maxIdx), pull * (1.0 - 0.01 * retention));
  }
}

// Where the slope is 0.
void PeakErrorEstimator::AddTop(const PeakInfo& peak) {
  Add(SlopeDependence(peak.maxIdx), -1.0 / Shape(peak).CurvatureOfTop());
}

// Back through the filter to the points as they were measured.
double PeakErrorEstimator::StandardError() {
  const std::size_t reach = filter_.size() / 2;
  measured_.assign(sensitivity_.size() + 2 * reach, 0.0);
  for (std::size_t i = 0; i < sensitivity_.size(); ++i) {
    const double here = sensitivity_[i];
    double* __restrict to = measured_.data() + i;
    const double* __restrict weights = filter_.data();
    for (std::size_t k = 0; k < filter_.size(); ++k) to[k] += here * weights[filter_.size() - 1 - k];
  }
  // The first of them may lie before the curve.
  const std::size_t skipped = reach - std::min(reach, first_);
  const std::size_t begin = first_ + skipped - reach;
  const std::size_t count = std::min(measured_.size() - skipped, variance_.size() - begin);
  double sum = 0.0;
  for (std::size_t i = 0; i < count; ++i)
    sum += measured_[skipped + i] * measured_[skipped + i] * variance_[begin + i];
  return std::sqrt(sum);
}

}  // namespace TslBL
