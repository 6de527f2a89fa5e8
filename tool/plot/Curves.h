#pragma once
// Curves of any number of points on axes.

#include <tool/plot/Axes.h>
#include <tool/plot/Svg.h>
#include <span>
#include <string_view>
#include <vector>

namespace TslTool {

// The places through which the curve of y over x is to be drawn; kGap where it is broken. x ascends and is
// finite; y has as many values and is broken where one is not finite. Of x outside the axis only the nearest
// value on either side counts, so that the curve reaches the edge.
//
// More than four points to a pixel of the axis are thinned out: a column of pixels keeps its lowest and its
// highest point, in their order, which looks the same, and a gap within one column is not seen. The result
// then has at most three entries a column, whatever the number of points; it takes one walk over them.
std::vector<Point> CurvePoints(const Axes& axes, std::span<const double> x, std::span<const double> y);

// Draws the curve, cut at the edges of the area.
void DrawCurve(Svg& svg, const Axes& axes, std::span<const double> x, std::span<const double> y,
               const Stroke& stroke);

// Fills what lies between two curves over the same x, wherever both have a value.
void DrawBand(Svg& svg, const Axes& axes, std::span<const double> x, std::span<const double> low,
              std::span<const double> high, std::string_view fill);

}  // namespace TslTool
