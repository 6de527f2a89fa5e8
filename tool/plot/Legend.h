#pragma once
// What the lines of a picture are.

#include <tool/plot/Svg.h>
#include <string_view>

namespace TslTool {

// A piece of the line and its name behind it. `at` is the left end, halfway up; the text is 15 pixels high.
void DrawLegend(Svg& svg, Point at, Stroke stroke, std::string_view name);

}  // namespace TslTool
