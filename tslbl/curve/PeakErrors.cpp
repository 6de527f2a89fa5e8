#include <tslbl/curve/PeakErrors.h>

#include <tslbl/curve/Curve.h>
#include <tslbl/curve/SplineDependence.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace TslBL {
namespace {

// Above this percentage the whole peak counts, and its borders are no points of one level.
constexpr double kWholePeak = 99.0;
// Calls use(place, share) for places whose values, weighted with the shares, are the integral of a cubic in
// each interval of points: Simpson's rule.
template <class Use>
void ForEachOfIntegral(double from, double to, Use use) {
  for (double left = std::floor(from); left < to; left += 1.0) {
    const double a = std::max(from, left);
    const double b = std::min(to, left + 1.0);
    use(a, (b - a) / 6.0);
    use(0.5 * (a + b), 4.0 * (b - a) / 6.0);
    use(b, (b - a) / 6.0);
  }
}

// Length of a point along the x axis.
double StepAt(const std::vector<double>& x, double at) {
  const auto i = std::min(static_cast<std::size_t>(at), x.size() - 2);
  return x[i + 1] - x[i];
}

}  // namespace

PeakErrorEstimator::PeakErrorEstimator(const Curve& curve, std::span<const double> variance,
                                       std::span<const double> filter)
    : curve_(curve), variance_(variance), filter_(filter) {}

PeakErrors PeakErrorEstimator::Of(std::uint32_t peakIdx) {
  const PeakInfo& peak = curve_.peaks.at(peakIdx);
  const std::size_t points = curve_.yAxis.size();
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  if (points < 4 || peak.endIdx >= points || peak.startIdx >= peak.endIdx || variance_.size() != points)
    return {kNone, kNone, kNone};
  const double place = peak.ReportedIdx();
  PeakErrors errors{};
  Begin(peak.startIdx, peak.endIdx);
  if (peak.useMax) {
    AddTop(place);
  } else {
    AddCentroid(peakIdx);
  }
  errors.x = StandardError() * StepAt(curve_.xAxis, place);
  Begin(place, place);
  Add(ValueDependence(place), 1.0);
  errors.ampl = StandardError();
  Begin(peak.startIdx, peak.endIdx);
  for (std::uint32_t i = peak.startIdx; i < peak.endIdx; ++i) {
    const double half = 0.5 * (curve_.xAxis[i + 1] - curve_.xAxis[i]);
    sensitivity_[i - first_] += half;
    sensitivity_[i + 1 - first_] += half;
  }
  errors.area = StandardError();
  return errors;
}

void PeakErrorEstimator::Begin(double from, double to) {
  constexpr auto kAround = static_cast<std::size_t>(kSplineReach) + 2;
  const auto begin = static_cast<std::size_t>(from);
  first_ = begin - std::min(begin, kAround);
  const std::size_t end = std::min(static_cast<std::size_t>(to) + kAround + 2, curve_.yAxis.size());
  sensitivity_.assign(end - first_, 0.0);
}

void PeakErrorEstimator::Add(const SplineDependence& on, double factor) {
  const std::ptrdiff_t shift = on.first - static_cast<std::ptrdiff_t>(first_);
  const auto last = static_cast<std::ptrdiff_t>(sensitivity_.size()) - 1;
  for (std::size_t k = 0; k < on.weights.size(); ++k)
    sensitivity_[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(shift + static_cast<std::ptrdiff_t>(k),
                                                                     0, last))] += factor * on.weights[k];
}

double PeakErrorEstimator::Slope(double at) const { return Applied(SlopeDependence(at), curve_.yAxis); }

// The mean position of the part above a level: its inner points pull it, and its ends move with the points
// there and with the level, which follows the maximum.
void PeakErrorEstimator::AddCentroid(std::uint32_t peakIdx) {
  const PeakInfo& peak = curve_.peaks[peakIdx];
  const double from = peak.areaStartIdx;
  const double to = peak.areaEndIdx;
  const double centre = peak.centroidIdx;
  double weight = 0.0;
  ForEachOfIntegral(from, to, [&](double at, double share) {
    weight += share * Applied(ValueDependence(at), curve_.yAxis);
  });
  if (!(weight > 0.0)) return;
  ForEachOfIntegral(
      from, to, [&](double at, double share) { Add(ValueDependence(at), share * (at - centre) / weight); });
  const double retention = curve_.peakDetectParams.Retention;
  if (retention > kWholePeak) return;
  for (const auto& [end, direction] : {std::pair{from, -1.0}, {to, 1.0}}) {
    const double slope = Slope(end);
    if (!(slope * direction < 0.0)) continue;
    const double pull = direction * (end - centre) * peak.areaIntercept / (weight * slope);
    Add(ValueDependence(end), -pull);
    Add(ValueDependence(peak.maxIdx), pull * (1.0 - 0.01 * retention));
  }
}

// Where the slope is 0.
void PeakErrorEstimator::AddTop(double at) {
  const double curvature = Slope(at + 0.5) - Slope(at - 0.5);
  if (!(curvature < 0.0)) return;
  Add(SlopeDependence(at), -1.0 / curvature);
}

// Back through the filter to the points as they were measured.
double PeakErrorEstimator::StandardError() const {
  const auto reach = static_cast<std::ptrdiff_t>(filter_.size() / 2);
  const auto points = static_cast<std::ptrdiff_t>(variance_.size());
  const auto first = static_cast<std::ptrdiff_t>(first_);
  const auto count = static_cast<std::ptrdiff_t>(sensitivity_.size());
  double sum = 0.0;
  for (std::ptrdiff_t raw = std::max<std::ptrdiff_t>(first - reach, 0);
       raw < std::min(first + count + reach, points); ++raw) {
    const std::ptrdiff_t low = std::max<std::ptrdiff_t>(raw - reach - first, 0);
    const std::ptrdiff_t high = std::min(raw + reach - first + 1, count);
    double here = 0.0;
    for (std::ptrdiff_t i = low; i < high; ++i)
      here += sensitivity_[static_cast<std::size_t>(i)] *
              filter_[static_cast<std::size_t>(raw - first - i + reach)];
    sum += here * here * variance_[static_cast<std::size_t>(raw)];
  }
  return std::sqrt(sum);
}

}  // namespace TslBL
