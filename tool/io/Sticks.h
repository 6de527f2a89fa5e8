#pragma once
// Peak lists that were written to be drawn as lines.

#include <tool/io/Scan.h>

namespace TslTool {

// Whether the amplitude rises from zero and falls to it again at each point: nearly all of the 50 tallest
// stand alone between zeros, or between ends of the spectrum. So do single counts of an empty background:
// most of the heights must differ. False of less than 5 peaks. O(n).
bool AreSticks(const Scan& scan);

}  // namespace TslTool
