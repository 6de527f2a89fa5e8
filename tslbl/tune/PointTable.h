#pragma once
// A table of points and the straight lines between neighbours, as both the m/z conversion
// and the Q1 calibration curves use it.
//
// For the sources of this room; not part of the library's interface.

#include <cstddef>
#include <utility>
#include <vector>

namespace TslBL {

using TablePoint = std::pair<double, double>;  // abscissa, ordinate
using PointTable = std::vector<TablePoint>;

// Ascending by abscissa; points that tie are in no defined order. A NaN, which a damaged
// file may hold, goes last.
void SortByAbscissa(PointTable& points);

// The upper end of the segment that holds `at`, for a table of two points or more: the
// first inner point whose coordinate is not below `at`, or else the last point. A value at
// an inner point thus lies on the segment below it. The walk trusts no order, so that it
// ends whatever the table holds.
template <double TablePoint::*coordinate>
std::size_t SegmentEnd(const PointTable& points, double at) {
  std::size_t i = 1;
  while (i + 1 < points.size() && !(at <= points[i].*coordinate)) ++i;
  return i;
}

struct Line {
  double slope;
  double intercept;

  double At(double x) const { return x * slope + intercept; }
};

// Through two points with any abscissae: equal ones give an infinite or undefined slope.
Line LineThrough(const TablePoint& a, const TablePoint& b);
// Throws std::runtime_error "Divide by zero error" if the abscissae are equal.
Line CheckedLineThrough(const TablePoint& a, const TablePoint& b);

}  // namespace TslBL
