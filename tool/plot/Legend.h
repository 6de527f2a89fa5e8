#pragma once
// What the lines of a picture are.

#include <tool/plot/Svg.h>
#include <span>
#include <string>
#include <string_view>

namespace TslTool {

// A piece of the line and its name behind it. `at` is the left end, halfway up; the text is 15 pixels high.
void DrawLegend(Svg& svg, Point at, Stroke stroke, std::string_view name);

struct NamedStroke {
  Stroke stroke;
  std::string_view name;
};

// The title of a picture with its legend in a row below it, both in its upper left corner.
void DrawHeader(Svg& svg, const std::string& title, std::span<const NamedStroke> strokes);

}  // namespace TslTool
