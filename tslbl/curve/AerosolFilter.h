#pragma once
// The filter against isolated tall spikes.

#include <cstdint>
#include <span>

namespace TslBL {

// A point of at least 25 that is more than ten times the mean of its left neighbour and the
// point `width` to its right takes that mean. Works in place, so that a replaced point is
// what the next one sees. The first point and the last two never change; fewer than four
// points are left alone. Widths above 1 run the narrower filters first.
void RemoveSpikes(std::span<double> y, std::uint32_t width);

}  // namespace TslBL
