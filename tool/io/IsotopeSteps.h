#pragma once
// Whether points follow each other as the isotopes of multiply charged molecules do.

#include <vector>

namespace TslTool {

// Lists of resolved molecules hold rows of peaks 1/4, 1/5 ... 1/40 m/z apart, which look like the points of a
// profile whose zeros were left out. A profile has one step, or one that grows evenly; isotopes have the
// fractions that belong to their charges: three charges and more, and nearly all rows at one of them. Rows
// are of at least 3 points at steps of 0.02 to 0.3 m/z, alike within a half; they must hold half of the
// points. The axis ascends. O(n).
bool FollowAsIsotopes(const std::vector<double>& mz);

}  // namespace TslTool
