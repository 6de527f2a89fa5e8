// Dispersion and Median: the noise about the adaptive baseline, a value for each segment.
#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BackgroundKernel.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/baseline/Polyline.h>
#include <tslbl/closed/math/baseline/RobustLine.h>
#include <tslbl/closed/math/baseline/SegmentLoader.h>
#include <tslbl/closed/math/baseline/Segments.h>
#include <tslbl/closed/math/baseline/ShotBackground.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace TslMath {
namespace {

constexpr double kGapSteps = 4;
constexpr std::uint32_t kBaselineWindow = 25;
// Each thread keeps its work space up to so many points: fresh memory for each spectrum takes a fifth of the
// time.
constexpr std::uint32_t kMostKept = 1 << 17;

struct StepRange {
  double least = INFINITY;
  double greatest = 0;
};

// NaN is passed over.
TSLBL_WIDE void FindStepRange(const double* x, std::size_t n, StepRange& range) {
  Lanes least[2] = {range.least - Lanes{}, range.least - Lanes{}};
  Lanes greatest[2] = {};
  std::size_t i = 1;
  for (; i + 2 * kLaneCount <= n; i += 2 * kLaneCount) {
#pragma GCC unroll 2
    for (std::size_t k = 0; k < 2; ++k) {
      Lanes before, here, step;
      Load(x + i + k * kLaneCount - 1, before);
      Load(x + i + k * kLaneCount, here);
      Magnitude(here - before, step);
      least[k] = step < least[k] ? step : least[k];
      greatest[k] = step > greatest[k] ? step : greatest[k];
    }
  }
  for (std::size_t j = 0; j < 2 * kLaneCount; ++j) {
    range.least = std::min(range.least, least[j / kLaneCount][j % kLaneCount]);
    range.greatest = std::max(range.greatest, greatest[j / kLaneCount][j % kLaneCount]);
  }
  for (; i < n; ++i) {
    range.least = std::min(range.least, std::abs(x[i] - x[i - 1]));
    range.greatest = std::max(range.greatest, std::abs(x[i] - x[i - 1]));
  }
}

// Steps above this are gaps of the axis; infinite if there can be none.
double GapLimit(const double* x, std::uint32_t n) {
  StepRange range;
  FindStepRange(x, n, range);
  if (!(range.greatest > kGapSteps * range.least)) return INFINITY;
  std::vector<double> steps;
  steps.reserve(n);
  for (std::uint32_t i = 1; i < n; ++i) {
    const double step = std::abs(x[i] - x[i - 1]);
    steps.push_back(std::isnan(step) ? 0 : step);
  }
  const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
  std::nth_element(steps.begin(), middle, steps.end());
  return *middle > 0 ? kGapSteps * *middle : INFINITY;
}

// The noise of each segment that has enough background, at the segment's centre.
std::vector<Knot> SegmentNoise(const double* y, const double* baseline, const double* firstNoise,
                               std::uint32_t n, std::uint32_t segSize) {
  const RejectionRule rule(kRefiningPoints, kRefiningWidth, n, SmallestStep(y, n));
  const Segments segments(n, std::max<std::size_t>(segSize, rule.LeastCount()));
  SegmentLoader loader(y, baseline, n, segments.Longest(), rule.points);
  std::vector<Knot> all;
  std::vector<Knot> trusted;
  for (std::size_t k = 0; k < segments.Count(); ++k) {
    const SegmentData data = loader.Load(segments.Begin(k), segments.Begin(k + 1));
    const double centre = segments.Centre(k);
    RobustLine start;
    start.noise = firstNoise[static_cast<std::size_t>(centre)];
    const RobustLine fit = GrowLine(data, rule, start, Growth::FixedSlope);
    all.push_back({centre, fit.noise});
    if (IsTrusted(fit, rule, data.length)) trusted.push_back(all.back());
  }
  return trusted.empty() ? all : trusted;
}

void TakeMedians(std::vector<Knot>& knots, std::uint32_t median) {
  const auto count = static_cast<std::uint32_t>(knots.size());
  std::vector<double> level;
  level.reserve(count);
  for (const Knot& knot : knots) level.push_back(knot.level);
  SmoothMedian(level.data(), count, 0, count, median, level.data());
  for (std::uint32_t k = 0; k < count; ++k) knots[k].level = level[k];
}

// `baseline` is work space of n values.
void PartNoise(const double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t median,
               double* baseline, double* out) {
  OpenAdaptively(y, n, segSize, kBaselineWindow, {baseline, out});
  if (n <= 2) return;
  std::vector<Knot> knots = SegmentNoise(y, baseline, out, n, segSize);
  if (median > 0) TakeMedians(knots, median);
  DrawPolyline(knots, n, out);
}

}  // namespace

void APBNoise(double* x, double* y, std::uint32_t n, std::uint32_t segSize, std::uint32_t median,
              double* out) {
  const double gap = x == nullptr ? INFINITY : GapLimit(x, n);
  thread_local std::vector<double> kept;
  std::vector<double> own;
  std::vector<double>& baseline = n <= kMostKept ? kept : own;
  if (baseline.size() < n) baseline.resize(n);
  std::uint32_t begin = 0;
  for (std::uint32_t i = 1; gap < INFINITY && i < n; ++i) {
    if (!(std::abs(x[i] - x[i - 1]) > gap)) continue;
    PartNoise(y + begin, i - begin, segSize, median, baseline.data(), out + begin);
    begin = i;
  }
  PartNoise(y + begin, n - begin, segSize, median, baseline.data(), out + begin);
  TakeShotBackground(y, n, segSize, SmallestStep(y, n), {nullptr, out});
}

}  // namespace TslMath
