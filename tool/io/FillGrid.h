#pragma once
// Puts zeros back that a file leaves out of counts on an even axis.

#include <vector>

namespace TslTool {

// Programs that leave out points without a count leave them out between those of a weak line, too: then the
// steps of an even axis that are twice or three times the others are single zeros, and all other gaps are
// zeros as well. Windows of selected ions have no such steps, nor have axes that are not even. Fills all
// places of the axis, up to a million points, if at least one step in twenty is two or three times the
// smallest, a third are the smallest, and hardly one of those up to sixteen is no multiple of it; and if what
// is missing stands where zeros do: of a file that lists zeros between two of them, of others seldom beside
// the tallest points, or beside a count or two. Rounding of m/z makes such steps anywhere. Sixteen long steps
// of one size in a row are those of a segment of the scan. Whether it has. Both arrays have the same length;
// m/z ascends. O(n) of what results.
bool FillGrid(std::vector<double>& mz, std::vector<double>& amplitude);

}  // namespace TslTool
