#include <tslbl/closed/math/peak/SplinePeak.h>

#include <tslbl/closed/math/peak/CubicSegment.h>
#include <tslbl/closed/math/peak/IntervalBounds.h>

#include <algorithm>
#include <limits>

namespace TslMath {
namespace {

// Reciprocal pivots of the elimination, the same for every peak; beyond the table they have converged.
struct PivotTable {
  static constexpr std::size_t kSize = 24;
  double reciprocal[kSize];

  constexpr PivotTable() : reciprocal{} {
    double pivot = 4;
    for (double& value : reciprocal) {
      value = 1 / pivot;
      pivot = 4 - value;
    }
  }

  constexpr double operator[](std::size_t k) const { return reciprocal[std::min(k, kSize - 1)]; }
};

constexpr PivotTable kPivots;

double SecondDifference(const double* y, std::size_t i) { return y[i - 1] - 2 * y[i] + y[i + 1]; }

bool IsIndex(double x) { return x >= 0 && x <= std::numeric_limits<std::uint32_t>::max(); }

}  // namespace

SplinePeak::SplinePeak(const double* x, const double* y, std::uint32_t n)
    : count_(n), origin_(n > 0 ? x[0] : 0) {
  const std::size_t room = count_ + kBeyond;
  if (count_ > kInlineSamples) heap_.reset(new double[4 * room]);
  y_ = heap_ ? heap_.get() : inline_.data();
  curvature_ = y_ + room;
  lower_ = curvature_ + room;
  upper_ = lower_ + room;
  if (count_ == 0) return;
  std::fill_n(std::copy(y, y + count_, y_), kBeyond, 0.0);
  std::fill_n(curvature_ + count_, kBeyond, 0.0);
  SolveCurvatures();
  BoundIntervals(y_, curvature_, count_ - 1, lower_, upper_);
  FindApex();
}

SplinePeak::~SplinePeak() = default;

// Not-a-knot ends fix the curvatures next to the ends at the second differences there, and the ends by
// continuing the straight line of the curvatures. Those between follow from M[i-1] + 4 M[i] + M[i+1] = 6 *
// second difference.
void SplinePeak::SolveCurvatures() {
  const std::size_t n = count_;
  const double* __restrict y = y_;
  double* __restrict m = curvature_;
  if (n < 4) {
    std::fill(m, m + n, n == 3 ? SecondDifference(y, 1) : 0.0);
    return;
  }
  m[1] = SecondDifference(y, 1);
  m[n - 2] = SecondDifference(y, n - 2);
  double known = m[1];
  for (std::size_t i = 2; i + 2 < n; ++i) {
    m[i] = 6 * SecondDifference(y, i) - known;
    known = m[i] * kPivots[i - 2];
  }
  known = m[n - 2];
  for (std::size_t i = n - 3; i >= 2; --i) m[i] = known = (m[i] - known) * kPivots[i - 2];
  m[0] = 2 * m[1] - m[2];
  m[n - 1] = 2 * m[n - 2] - m[n - 3];
}

inline CubicSegment SplinePeak::Segment(std::size_t interval) const {
  return {y_[interval], y_[interval + 1], curvature_[interval], curvature_[interval + 1]};
}

inline CubicSegment SplinePeak::Mirrored(std::size_t interval) const {
  return {y_[interval + 1], y_[interval], curvature_[interval + 1], curvature_[interval]};
}

// The highest sample first: hardly any interval can then hold anything higher.
void SplinePeak::FindApex() {
  std::size_t highest = 0;
  for (std::size_t i = 1; i < count_; ++i) {
    if (y_[i] > y_[highest] || y_[highest] != y_[highest]) highest = i;
  }
  apexY_ = y_[highest];
  apex_ = highest + 1 == count_ && highest > 0 ? Place{highest - 1, 1} : Place{highest, 0};
  for (std::size_t i = 0; i + 1 < count_; ++i) {
    if (!(upper_[i] > apexY_)) continue;
    const CubicSegment segment = Segment(i);
    const CubicSegment::Extrema extrema = segment.FindExtrema();
    for (int k = 0; k < extrema.count; ++k) {
      const double value = segment.Value(extrema.t[k]);
      if (!(value > apexY_)) continue;
      apexY_ = value;
      apex_ = {i, extrema.t[k]};
    }
  }
}

double SplinePeak::Value(double offset) const {
  if (count_ < 2) return apexY_;
  const auto interval = std::min(static_cast<std::size_t>(offset), count_ - 2);
  return Segment(interval).Value(offset - static_cast<double>(interval));
}

double SplinePeak::RightCrossing(double level) const {
  double from = apex_.t;
  for (std::size_t i = apex_.interval; i + 1 < count_; ++i) {
    const double t = lower_[i] < level ? Segment(i).FirstBelow(level, from) : -1;
    if (t >= 0) return static_cast<double>(i) + t;
    from = 0;
  }
  return static_cast<double>(count_ - 1);
}

// Going left the segments are mirrored, so that one way of searching serves both sides.
double SplinePeak::LeftCrossing(double level) const {
  double from = 1 - apex_.t;
  for (std::size_t i = std::min(apex_.interval + 1, count_ - 1); i > 0; --i) {
    const double t = lower_[i - 1] < level ? Mirrored(i - 1).FirstBelow(level, from) : -1;
    if (t >= 0) return static_cast<double>(i) - t;
    from = 0;
  }
  return 0;
}

SplinePeak::Part SplinePeak::PartAbove(double level) const {
  const double apex = apex_.Offset();
  if (count_ == 0 || !(level < apexY_)) return {apex, apex};
  return {std::min(LeftCrossing(level), apex), std::max(RightCrossing(level), apex)};
}

template <typename Use>
void SplinePeak::ForEachInterval(const Part& part, Use use) const {
  for (auto i = static_cast<std::size_t>(part.start); i + 1 < count_ && static_cast<double>(i) < part.end;
       ++i) {
    const auto left = static_cast<double>(i);
    use(i, Segment(i), std::max(0.0, part.start - left), std::min(1.0, part.end - left));
  }
}

void SplinePeak::PeakMax(double& x, double& y) const {
  x = origin_ + apex_.Offset();
  y = apexY_;
}

void SplinePeak::HalfHeightPeakWidth(double base, double& leftX, double& rightX) const {
  const Part part = PartAbove(base < apexY_ ? base + (apexY_ - base) / 2 : apexY_);
  leftX = origin_ + part.start;
  rightX = origin_ + part.end;
}

void SplinePeak::PeakCentroid(double level, double& x, double& y, double& startX, double& endX) const {
  const Part part = PartAbove(level);
  double weight = 0;
  double moment = 0;
  ForEachInterval(part, [&](std::size_t i, const CubicSegment& segment, double t0, double t1) {
    const double share = segment.Integral(0, t0, t1);
    weight += share;
    moment += (static_cast<double>(i) - part.start) * share + segment.Moment(t0, t1);
  });
  const double centre = weight > 0 ? part.start + moment / weight : 0.5 * (part.start + part.end);
  // A curve that dips below zero inside the part could throw its mean position out of it.
  const double offset = centre >= part.start ? std::min(centre, part.end) : part.start;
  x = origin_ + offset;
  y = part.start < part.end ? Value(offset) : apexY_;
  startX = origin_ + part.start;
  endX = origin_ + part.end;
}

double SplinePeak::PeakArea(double level, double baseline, const double* xAxis) const {
  const Part part = PartAbove(level);
  if (xAxis == nullptr || !IsIndex(origin_)) return IndexArea(part, baseline);
  const double* axis = xAxis + static_cast<std::size_t>(origin_);
  double area = 0;
  ForEachInterval(part, [&](std::size_t i, const CubicSegment& segment, double t0, double t1) {
    area += segment.Integral(baseline, t0, t1) * (axis[i + 1] - axis[i]);
  });
  return area;
}

double SplinePeak::IndexArea(const Part& part, double baseline) const {
  double area = 0;
  ForEachInterval(part, [&](std::size_t, const CubicSegment& segment, double t0, double t1) {
    area += segment.Integral(baseline, t0, t1);
  });
  return area;
}

}  // namespace TslMath
