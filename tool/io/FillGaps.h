#pragma once
// Puts zeros back that a file leaves out of a profile.

#include <cstddef>
#include <vector>

namespace TslTool {

// Many programs leave points of no amplitude out (Gaps.h tells where). Up to 16 zeros, a step apart, take
// each side of it, so that no peak leans over it and no filter mixes what stands on its two sides. Not
// between windows over a background, as of selected ions or of a scan in segments, which goes on beyond their
// ends: most stretches are of 8 points or more, and at most of their ends the last 3 points lie hardly lower
// than the 3 before, and not at one and the same amplitude; or half of their ends lie above 0 although zeros
// are listed elsewhere; or a tenth do, another tenth do not fall, and four stretches in five are equally
// long, to a point. Where every window cuts a line off, its ends are those of peaks. Where gaps are fewer
// than 20 they may also be those between the windows of selected ions: one is filled only if the amplitude
// falls to half towards it on both sides, and in a stretch of 8 points or more still falls over the last 6.
// Returns the number of gaps filled. Both arrays have the same length; m/z ascends. O(n).
std::size_t FillGaps(std::vector<double>& mz, std::vector<double>& amplitude);

}  // namespace TslTool
