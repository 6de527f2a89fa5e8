#pragma once
// How many peaks a group of overlapped peaks has, and where.
#include <cstdint>
#include <span>
#include <vector>

namespace TslMath {

// The points at which peaks of the group stand, ascending, each once: maxima, and shoulders that have none.
// Amplitudes are counts, or counts times any factor; the answer does not depend on the factor. If `smooth`, a
// Gaussian filter that is `numSmoothPts` points across is run over them before, at most 100; 1 and less
// change nothing.
//
// First come the places where the curve is bent most, through filters of three widths that follow from the
// curve itself. Then a sum of Gaussians is held against the points, and where one peak more explains them far
// better it is added. A deviation of 4 % of the height from a Gaussian counts for nothing, so that peaks that
// tail stay one; two peaks less than 0.75 FWHM apart are not told from one of another shape.
//
// Of a group without any bend the highest place is given; of no points, points that are not finite, or none
// above 0, nothing. Of a million points the answer takes less than some seconds. Threads: nothing is shared.
std::vector<std::int32_t> InitialEstimates(bool smooth, std::int32_t numSmoothPts, std::span<const double> y);

}  // namespace TslMath
