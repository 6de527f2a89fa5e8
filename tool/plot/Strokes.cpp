#include <tool/plot/Strokes.h>

namespace TslTool {

Stroke StrokeOf(std::size_t index, double width) {
  constexpr Stroke kLooks[kStrokes] = {
      {"#1f5fa8", 0, ""},         {"#c4510e", 0, "6 3"},  {"#2b2b2b", 0, "2 2"},
      {"#9b8b76", 0, "10 3 2 3"}, {"#9000f0", 0, "12 4"},
  };
  Stroke stroke = kLooks[index % kStrokes];
  stroke.width = width;
  return stroke;
}

}  // namespace TslTool
