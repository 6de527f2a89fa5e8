#pragma once
// What a smooth step does to a single point.

#include <tslbl/Export.h>
#include <vector>

namespace TslBL {

struct SmoothParams;

// The weights with which smoothing spreads a point over its neighbours: an odd number, the middle one is the
// point's own, and their sum is 1. All passes together; away from the ends of a curve. {1} for smoothing that
// changes nothing. Empty if there are no such weights: for a median, and for windows that change along the
// axis. Empty, too, where passes * (2 * window + 2) is more than 100 000 points: behind such a filter no peak
// is left, and its weights would take seconds.
TSLBL_API std::vector<double> QFilterWeights(const SmoothParams& smooth);

}  // namespace TslBL
