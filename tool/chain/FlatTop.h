#pragma once
// Whether a detector, or its converter, was at its end.

#include <cstddef>
#include <optional>
#include <span>

namespace TslTool {

// Whether the highest amplitude stands in four neighbouring points or more, and the curve falls by more than
// a rounding step beside them. Peaks lose height and area there, and nothing else shows it. A top that is
// flat since it is wide and the amplitudes are rounded falls by one step, and does not count. A curve that
// begins or ends with its highest amplitude does not either.
bool HasFlatTop(std::span<const double> amplitudes);

// The first point of the first such top.
std::optional<std::size_t> FindFlatTop(std::span<const double> amplitudes);

}  // namespace TslTool
