// V-F: a polygon through the valleys of the curve, and the kernel on what stands above it.
#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BackgroundKernel.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/closed/math/baseline/Polyline.h>
#include <tslbl/closed/math/baseline/SegmentGuard.h>
#include <tslbl/closed/math/baseline/Segments.h>
#include <tslbl/closed/math/baseline/ShotBackground.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace TslMath {
namespace {

// Less than half a peak's width: single counts make no valleys, and valleys between peaks stay.
constexpr std::uint32_t kSmoothingWidth = 5;
constexpr std::size_t kNoiseReach = 10;

// Finds one knot a segment. Flat bottoms count as valleys, point by point.
class KnotFinder {
 public:
  KnotFinder(const double* smooth, std::size_t n, std::size_t longest)
      : z_(smooth), n_(n), valleys_(longest) {
    levels_.reserve(longest);
  }

  // Whether the points begin .. end-1 have a valley.
  bool Find(std::size_t begin, std::size_t end, Knot& knot) {
    const std::size_t count = CollectValleys(begin, end);
    if (count > 0) knot = LowerHalf(count);
    return count > 0;
  }

 private:
  std::size_t CollectValleys(std::size_t begin, std::size_t end) {
    std::size_t count = 0;
    for (std::size_t i = std::max<std::size_t>(begin, 1); i < end && i + 1 < n_; ++i) {
      valleys_[count] = i;
      count += IsValley(i) ? 1 : 0;
    }
    return count;
  }

  // A sample that is no number, or infinite, is none.
  bool IsValley(std::size_t i) const {
    return (z_[i] <= z_[i - 1]) & (z_[i] <= z_[i + 1]) & std::isfinite(z_[i]);
  }

  // The lower half of the valleys, since the upper may lie between overlapping peaks.
  Knot LowerHalf(std::size_t count) {
    levels_.clear();
    for (std::size_t k = 0; k < count; ++k) levels_.push_back(z_[valleys_[k]]);
    const auto half = static_cast<std::ptrdiff_t>((count + 1) / 2);
    const auto begin = levels_.begin();
    std::nth_element(begin, begin + (half - 1), levels_.end());
    const double highest = begin[half - 1];
    std::nth_element(begin, begin + half / 2, begin + half);
    const double upper = begin[half / 2];
    const double lower = half % 2 == 1 ? upper : *std::max_element(begin, begin + half / 2);
    return {MeanPosition(count, highest), lower + 0.5 * (upper - lower)};
  }

  double MeanPosition(std::size_t count, double highest) const {
    double sum = 0;
    double taken = 0;
    for (std::size_t k = 0; k < count; ++k) {
      if (z_[valleys_[k]] > highest) continue;
      sum += static_cast<double>(valleys_[k]);
      taken += 1;
    }
    return sum / taken;
  }

  const double* z_;
  std::size_t n_;
  std::vector<std::size_t> valleys_;
  std::vector<double> levels_;
};

// At the ends of the curve, where a slope has no valley, its last point serves.
std::vector<Knot> FindKnots(const double* smooth, std::size_t n, const Segments& segments) {
  KnotFinder finder(smooth, n, segments.Longest());
  std::vector<Knot> knots;
  knots.reserve(segments.Count() + 1);
  const auto addEnd = [&](std::size_t i) {
    if (std::isfinite(smooth[i])) knots.push_back({static_cast<double>(i), smooth[i]});
  };
  for (std::size_t k = 0; k < segments.Count(); ++k) {
    Knot knot{};
    if (finder.Find(segments.Begin(k), segments.Begin(k + 1), knot)) {
      knots.push_back(knot);
    } else if (k == 0) {
      addEnd(0);
    } else if (k + 1 == segments.Count()) {
      addEnd(n - 1);
    }
  }
  if (knots.empty()) knots.push_back({0, 0});
  return knots;
}

// Noise of the raw data around a knot, from the steps between neighbours.
double NoiseAround(const double* y, std::size_t n, double position, double floor) {
  const auto middle = static_cast<std::size_t>(position);
  const std::size_t begin = middle - std::min(middle, kNoiseReach);
  const std::size_t end = std::min(n - 1, middle + kNoiseReach + 1);
  double sum = 0;
  for (std::size_t i = begin; i < end; ++i) sum += (y[i + 1] - y[i]) * (y[i + 1] - y[i]);
  return std::max(std::sqrt(sum / (2 * static_cast<double>(end - begin))), floor);
}

std::vector<Knot> WithoutPeaks(const std::vector<Knot>& knots, const double* y, std::size_t n,
                               std::size_t segSize, double noiseFloor) {
  std::vector<SegmentLevel> levels;
  levels.reserve(knots.size());
  for (const Knot& knot : knots) {
    levels.push_back({knot.level, NoiseAround(y, n, knot.position, noiseFloor), true});
  }
  DropPeakSegments(levels, segSize);
  std::vector<Knot> kept;
  for (std::size_t k = 0; k < knots.size(); ++k) {
    if (levels[k].valid) kept.push_back(knots[k]);
  }
  return kept.empty() ? knots : kept;
}

}  // namespace

void FollowValleys(const double* y, std::uint32_t n, std::uint32_t segSize, const BaselineAndNoise& out) {
  const BackgroundSettings refining{std::max(segSize, kRefiningSegment), kRefiningPoints, kRefiningWidth};
  const double quantum = SmallestStep(y, n);
  if (IsFlat(y, n, quantum)) return DrawFlat(y, n, quantum, out);
  double* shape = out.baseline != nullptr ? out.baseline : out.noise;
  SmoothGaussian(y, n, 0, n, kSmoothingWidth, shape);
  const std::size_t usable = std::max<std::size_t>(segSize, 1);
  const std::vector<Knot> knots = FindKnots(shape, n, Segments(n, usable));
  DrawPolyline(WithoutPeaks(knots, y, n, usable, quantum / 2), n, shape);
  FitBackground(y, shape, n, quantum, refining, out);
  TakeShotBackground(y, n, segSize, quantum, out);
}

}  // namespace TslMath
