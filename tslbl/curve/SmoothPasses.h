#pragma once
// The passes of a filter over the amplitudes of a curve.

#include <tslbl/curve/SmoothRanges.h>
#include <optional>
#include <vector>

namespace TslBL {

struct SmoothParams;

// What all passes of `p` make of y, each range with its width; points outside all ranges keep their value.
// Nothing for an algorithm that does not exist.
std::optional<std::vector<double>> SmoothPasses(const SmoothParams& p, const std::vector<SmoothRange>& ranges,
                                                const std::vector<double>& y);

}  // namespace TslBL
