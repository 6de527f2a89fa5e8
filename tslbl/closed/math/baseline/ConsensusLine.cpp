#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/baseline/RobustLine.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace TslMath {
namespace {

constexpr std::size_t kMaxBlocks = 10;
// A line that half of the segment lies on needs no rival.
constexpr double kConvincing = 0.5;
// Lines through nearer blocks than this have too uncertain a slope.
constexpr std::size_t kLeastGap = 3;

// Lowest samples, one a block, in order of position.
struct LowPlaces {
  std::array<std::size_t, kMaxBlocks> at;
  std::size_t count;
};

LowPlaces FindLowPlaces(const SegmentData& segment) {
  LowPlaces low;
  low.count = std::min(segment.samples, kMaxBlocks);
  const std::size_t whole = segment.samples / low.count;
  const std::size_t longer = segment.samples % low.count;
  std::size_t end = 0;
  for (std::size_t block = 0; block < low.count; ++block) {
    std::size_t best = end;
    end += whole + (block < longer ? 1 : 0);
    double lowest = segment.sample[best];
    for (std::size_t j = best + 1; j < end; ++j) {
      const bool lower = segment.sample[j] < lowest;
      best = lower ? j : best;
      lowest = lower ? segment.sample[j] : lowest;
    }
    low.at[block] = best;
  }
  return low;
}

// Half the mean square of the steps over `lag` points between begin and end.
double HalfMeanSquareStep(const double* y, std::size_t begin, std::size_t end, std::size_t lag) {
  double sum = 0;
  for (std::size_t k = begin; k + lag <= end; ++k) {
    const double step = y[k + lag] - y[k];
    sum += step * step;
  }
  return sum / (2 * static_cast<double>(end - lag - begin + 1));
}

// Variance of the noise around point i from steps: between neighbours, and, since smoothing
// leaves little between those, over `reach` points.
double StepVariance(const SegmentData& segment, std::size_t i, std::size_t reach) {
  const std::size_t begin = i - std::min(i, reach);
  const std::size_t end = std::min(segment.length - 1, i + reach);
  const double* y = segment.y;
  const double near = end > begin ? HalfMeanSquareStep(y, begin, end, 1) : 0.0;
  return reach > 1 && end >= begin + reach ? std::max(near, HalfMeanSquareStep(y, begin, end, reach)) : near;
}

// The third smallest: some of the low places may lie on the flanks of peaks, and the very smallest is chance.
double FirstNoise(const SegmentData& segment, const LowPlaces& low, const RejectionRule& rule) {
  double first = std::numeric_limits<double>::infinity();
  double second = first;
  double third = first;
  for (std::size_t k = 0; k < low.count; ++k) {
    const double variance =
        StepVariance(segment, low.at[k] * segment.stride + segment.stride / 2, rule.points);
    third = std::min(third, std::max(second, variance));
    second = std::min(second, std::max(first, variance));
    first = std::min(first, variance);
  }
  return std::max(std::sqrt(third), rule.noiseFloor);
}

// A line over the samples of a segment.
struct SampleLine {
  double level;  // at sample 0
  double slope;  // per sample
};

// Samples near the line minus samples clearly below it: a line through peaks has much below it.
TSLBL_WIDE void Score(const double* sample, std::size_t groups, const SampleLine& line, double limit,
                      std::int64_t& score) {
  const Lanes lane = {0, 1, 2, 3};
  Lanes value = line.level + line.slope * lane;
  const double advance = line.slope * static_cast<double>(kLaneCount);
  LaneMask reached{}, below{};
  for (std::size_t g = 0; g < groups; ++g) {
    Lanes r;
    Load(sample + g * kLaneCount, r);
    r -= value;
    value += advance;
    reached -= r <= limit;
    below -= r < -limit;
  }
  reached -= below + below;
  score = reached[0] + reached[1] + reached[2] + reached[3];
}

SampleLine Through(const SegmentData& segment, std::size_t a, std::size_t b) {
  const double slope = (segment.sample[b] - segment.sample[a]) / static_cast<double>(b - a);
  return {segment.sample[a] - slope * static_cast<double>(a), slope};
}

SampleLine FlatThroughLowest(const SegmentData& segment, const LowPlaces& low) {
  double lowest = segment.sample[low.at[0]];
  for (std::size_t k = 1; k < low.count; ++k) lowest = std::fmin(lowest, segment.sample[low.at[k]]);
  return {lowest, 0};
}

// Far pairs come first: their slopes are the surest.
SampleLine BestLine(const SegmentData& segment, const LowPlaces& low, double limit) {
  const std::size_t groups = WholeGroups(segment.samples) / kLaneCount;
  const double convincing = kConvincing * static_cast<double>(segment.samples);
  SampleLine best = FlatThroughLowest(segment, low);
  std::int64_t bestScore = std::numeric_limits<std::int64_t>::min();
  const std::size_t leastGap = std::min(kLeastGap, low.count - 1);
  for (std::size_t gap = low.count - 1; gap > 0 && gap >= leastGap; --gap) {
    for (std::size_t k = 0; k + gap < low.count; ++k) {
      const SampleLine line = Through(segment, low.at[k], low.at[k + gap]);
      std::int64_t score = 0;
      Score(segment.sample, groups, line, limit, score);
      if (score <= bestScore || !std::isfinite(line.slope)) continue;
      best = line;
      bestScore = score;
      if (static_cast<double>(score) >= convincing) return best;
    }
  }
  return best;
}

}  // namespace

RobustLine ConsensusLine(const SegmentData& segment, const RejectionRule& rule) {
  const LowPlaces low = FindLowPlaces(segment);
  RobustLine start;
  start.noise = FirstNoise(segment, low, rule);
  const SampleLine best = BestLine(segment, low, rule.width * start.noise);
  const double stride = static_cast<double>(segment.stride);
  const std::size_t firstSample = segment.stride / 2;
  const double firstT = static_cast<double>(firstSample) - 0.5 * static_cast<double>(segment.length - 1);
  start.line.slope = best.slope / stride;
  start.line.level = best.level - start.line.slope * firstT;
  return start;
}

}  // namespace TslMath
