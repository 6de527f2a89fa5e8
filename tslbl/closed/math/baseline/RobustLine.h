#pragma once
// The background of one segment of a curve as a straight line with its noise, whatever peaks stand on it.
//
// Two steps. The consensus start takes the line through two of ten low places that most of the segment lies
// on (P. Rousseeuw, Least median of squares regression, 1984). From there the set of background points grows
// (A. Atkinson, Fast very robust methods for the detection of multiple outliers, 1994): least squares through
// the set, a new set within a number of standard deviations of the line, until nothing moves. A peak's foot
// is a run of small positive residuals that no single point shows, so the mean over a few neighbours is
// tested too.
#include <tslbl/closed/math/baseline/AcceptedSums.h>

#include <cstddef>
#include <cstdint>

namespace TslMath {

// When a point is background. Made once for a curve.
struct RejectionRule {
  std::size_t points;   // neighbourhood whose mean is tested; odd
  double width;         // limit in standard deviations
  double untruncation;  // a normal distribution's SD over its SD when cut off at +-width
  double noiseFloor;    // least standard deviation

  // From a user's settings for a curve of n >= 1 points. Zeros count as 1; `points` counts as the next odd
  // number, but as no more than the curve has. `quantum` is the smallest step of the data.
  RejectionRule(std::uint32_t points, std::uint32_t width, std::size_t n, double quantum);

  // Points that a set must have for its line to be told from noise.
  std::size_t LeastCount() const;
};

// One segment to be fitted. Each array is followed by NaN up to a whole group of lanes.
struct SegmentData {
  const double* y;
  const double* mean;    // moving mean of y over rule.points
  std::size_t length;    // of y and mean, at least 1
  const double* sample;  // every stride-th mean: sample[j] = mean[j * stride + stride / 2]
  std::size_t samples;   // length / stride, at least 1
  std::size_t stride;
};

struct RobustLine {
  SegmentLine line;
  double noise = 0;       // standard deviation about the line
  std::size_t count = 0;  // points in the final set; 0 if no set could be grown
};

// The starting line and a first guess of the noise.
RobustLine ConsensusLine(const SegmentData& segment, const RejectionRule& rule);

// The line grown from `start`. `FixedSlope` keeps the slope of the start and moves the level alone.
enum class Growth { Line, FixedSlope };
RobustLine GrowLine(const SegmentData& segment, const RejectionRule& rule, const RobustLine& start,
                    Growth growth);

// Whether enough of the segment is background for its line to be trusted.
bool IsTrusted(const RobustLine& fit, const RejectionRule& rule, std::size_t length);

}  // namespace TslMath
