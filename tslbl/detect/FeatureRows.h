#pragma once
// What finding features hands on: a row for each candidate, and the list of them in order
// of their apexes. A row that is thrown out later becomes a null pointer in the list, so
// that parallel bodies need no lock.

#include <tslbl/curve/Curve.h>
#include <cstdint>
#include <vector>

namespace TslBL {

struct FeatureRows {
  std::vector<PeakInfo> rows;
  std::vector<PeakInfo*> list;  // into rows, ascending by apexIdx
};

// Points from first to last, both included.
struct SearchRange {
  std::uint32_t first;
  std::uint32_t last;
};

// All features, or those only that are not certain to fail the limits: some that are may be
// left out, if that changes nothing for the others.
enum class Features { All, Promising };

// One sweep from left to right, on one thread or several with the same result.
FeatureRows FindFeaturesSequential(const Curve& curve, const SearchRange& range, Features wanted);

// Whether finding stops at PeakCnt candidates if the curve's parameters say so.
enum class PeakCntLimit { Obeyed, Ignored };

// Candidates taken tallest first, down to the amplitude `floor`.
FeatureRows FindFeaturesSorted(const Curve& curve, const SearchRange& range, PeakCntLimit limit,
                               double floor);

}  // namespace TslBL
