#pragma once
// The looks of the lines of one picture.

#include <tool/plot/Svg.h>
#include <cstddef>

namespace TslTool {

// How many lines can be told apart by their looks.
inline constexpr std::size_t kStrokes = 5;

// The look of line `index` of a picture; after kStrokes lines they begin again. No two have the same colour
// or the same dashes; the colours stand out from white and are apart for the colour-blind, too.
Stroke StrokeOf(std::size_t index, double width = 1.6);

}  // namespace TslTool
