#include <tool/plot/Legend.h>

namespace TslTool {

void DrawLegend(Svg& svg, Point at, Stroke stroke, std::string_view name) {
  constexpr double kLength = 34;
  stroke.width = 2.5;
  svg.Line(at, {at.x + kLength, at.y}, stroke);
  svg.Text({at.x + kLength + 8, at.y + 5}, Anchor::Start, 15, name);
}

}  // namespace TslTool
