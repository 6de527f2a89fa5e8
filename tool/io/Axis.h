#pragma once
// Puts the m/z axis of a foreign spectrum in order where that loses and invents nothing.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// Instruments that join segments of a spectrum write places where the next segment's first point falls just
// before the last segment's last one. Such a point is a valid reading in the wrong place. The rule:
// - a zero that steps back behind a point that is none only frames its segment, and goes;
// - two neighbouring points in the wrong order change places, if the pair then fits its other neighbours;
// - points with the same m/z become one point with their mean amplitude: the same place was read twice;
// - anything wilder is no spectrum axis and stays as it is.
struct AxisRepair {
  std::size_t exchanged = 0;            // pairs that changed places
  std::size_t dropped = 0;              // zeros that stepped back
  std::size_t merged = 0;               // points that went into their equal neighbour
  std::optional<std::size_t> first;     // index of the first point that one of these happened to
  std::optional<std::size_t> disorder;  // index of the first point with no place in the order; if set, both
                                        // arrays are useless to the caller, who reports it
};

// Whether all values are finite and each is larger than the one before.
bool Ascends(const std::vector<double>& mz);

// Both arrays have the same length and finite values; one pass where the axis ascends strictly.
AxisRepair RepairAxis(std::vector<double>& mz, std::vector<double>& amplitude);

// One sentence for the user that names the place of the first repair; empty if there is nothing to report.
std::string DescribeRepair(const AxisRepair& repair, const std::string& firstPlace);

// Sorts a list of peaks by m/z, equal ones in their old order. A peak list is a set, so nothing is odd.
void SortPeaks(std::vector<double>& mz, std::vector<double>& amplitude);

}  // namespace TslTool
