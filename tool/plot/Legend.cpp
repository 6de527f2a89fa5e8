#include <tool/plot/Legend.h>

#include <algorithm>

namespace TslTool {

void DrawLegend(Svg& svg, Point at, Stroke stroke, std::string_view name) {
  constexpr double kLength = 34;
  stroke.width = 2.5;
  svg.Line(at, {at.x + kLength, at.y}, stroke);
  svg.Text({at.x + kLength + 8, at.y + 5}, Anchor::Start, 15, name);
}

void DrawHeader(Svg& svg, const std::string& title, std::span<const NamedStroke> strokes) {
  constexpr double kLeft = 64;
  constexpr double kLeastStep = 170;
  constexpr double kLine = 54;  // with the room about it
  constexpr double kLetter = 8.4;
  svg.Text({kLeft, 22}, Anchor::Start, 14, title);
  Point at = {kLeft, 42};
  for (const auto& [stroke, name] : strokes) {
    DrawLegend(svg, at, stroke, name);
    at.x += std::max(kLeastStep, kLine + kLetter * static_cast<double>(name.size()));
  }
}

}  // namespace TslTool
