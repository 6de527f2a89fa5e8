#pragma once
// Between which values each interval of a cubic spline stays: what lets a search pass over most of them.
#include <cstddef>

namespace TslMath {

// The curve stays within lower[i] .. upper[i] between the samples i and i + 1; unit spacing. `curvature` has
// the second derivatives. There are `count` intervals, and each array has room for WholeGroups(count) + 1
// values, since the last group of lanes is worked on whole; the samples beyond may have any values.
//
// (A cubic lies within the hull of its Bezier points.) lower is not above CubicSegment::LowerBound, neither
// of the interval nor of the mirrored one, which may differ by rounding.
void BoundIntervals(const double* y, const double* curvature, std::size_t count, double* lower,
                    double* upper);

}  // namespace TslMath
