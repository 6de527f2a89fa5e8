#pragma once
// From the width table of the smooth parameters to stretches of one width each.

#include <cstdint>
#include <vector>

namespace TslBL {

class Curve;

struct SmoothRange {
  std::uint32_t first;  // first point
  std::uint32_t end;    // one past the last
  std::uint32_t width;  // window, points

  bool operator==(const SmoothRange&) const = default;
};

// The ranges of the curve's smoothParams over its x axis, which must not be empty, in the
// order in which they are to be smoothed. None if the table is empty or begins above the
// axis.
std::vector<SmoothRange> BuildSmoothRanges(const Curve& curve);

}  // namespace TslBL
