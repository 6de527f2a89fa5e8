#pragma once
// Names of points, such as the m/z of peaks.

#include <tool/plot/Svg.h>
#include <span>
#include <string>

namespace TslTool {

struct Label {
  Point at;
  std::string text;
};

// Writes each text above its point, in order; one that would cover an earlier one, or leave the box, is left
// out. The most important comes first, such as that of the tallest peak.
void DrawLabels(Svg& svg, const Box& box, std::span<const Label> labels);

}  // namespace TslTool
