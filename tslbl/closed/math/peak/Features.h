#pragma once
// Local maxima of a curve.
//
// A feature is a maximal run l .. r of equal samples, mostly a single one, with y[l-1] < y[l] and y[r+1] <
// y[r]. Its index is (l + r)/2, rounded down. A run that touches an end of the curve is no feature: there the
// peak is cut. Comparisons with NaN fail, so neither a NaN nor a sample beside one is a feature.
//
// y holds n samples; n = 0 gives no feature. Both functions only read y and may run on any number of threads.
// scipy.signal.find_peaks follows the same rule.
#include <tslbl/Export.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace TslMath {

// Index of a sample and its value.
using CurvePt = std::pair<std::uint32_t, double>;

// Replaces `found` by the features whose index lies in [start, start + count), ascending. Samples outside
// that stretch are looked at to judge, so that adjoining stretches report each feature exactly once.
// Cost: O(count), plus the length of runs of equal samples that reach over the ends of the stretch.
TSLBL_API void FindFeatures(const double* y, std::uint32_t n, std::uint32_t start, std::uint32_t count,
                            std::vector<CurvePt>& found);

// Climbs from sample idx (n - 1 if above that) uphill to a feature; from the bottom of a valley to the side
// of the higher neighbour, of equal ones the left. Returns false, leaving `found` alone, if the climb ends
// at an end of the curve or beside a NaN, or if all samples are equal. What is found is one of the features
// of the whole curve.
// Cost: O(distance climbed).
TSLBL_API bool FindOneFeature(const double* y, std::uint32_t n, std::uint32_t idx, CurvePt& found);

}  // namespace TslMath
