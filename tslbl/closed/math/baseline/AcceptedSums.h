#pragma once
// The moments of those points of a segment that lie near a line: the pass that a robust fit repeats.
#include <cstddef>

namespace TslMath {

// A straight line over the points of one segment; t counts points from the middle of the segment.
struct SegmentLine {
  double level = 0;  // at t = 0
  double slope = 0;  // per point

  double At(double t) const { return level + slope * t; }
};

// A point counts as background if it is within `point` of the line on either side and the mean of its
// neighbourhood is at most `mean` above the line.
struct AcceptanceLimits {
  double point;
  double mean;
};

// Sums over the accepted points; r is the distance from the line, m that of the neighbourhood's mean.
struct AcceptedSums {
  double n = 0;
  double t = 0, tt = 0;
  double r = 0, tr = 0, rr = 0;
  double mm = 0;  // of the means below the line only
};

// `y` and `mean` hold `length` values, followed by NaN up to a whole group of lanes. NaN is never accepted.
AcceptedSums SumAccepted(const double* y, const double* mean, std::size_t length, const SegmentLine& line,
                         const AcceptanceLimits& limits);

}  // namespace TslMath
