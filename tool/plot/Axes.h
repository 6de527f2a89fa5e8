#pragma once
// A plot area: from values to places on the page, with frame, grid and texts.

#include <tool/plot/Range.h>
#include <tool/plot/Svg.h>
#include <string_view>

namespace TslTool {

// The axes of one panel of a page. The area that they span lies inside the panel, with margins for the texts.
class Axes {
 public:
  // The ranges may be any: see Range::Padded.
  Axes(const Box& panel, const Range& x, const Range& y);

  const Box& Area() const { return area_; }
  const Range& XRange() const { return x_; }
  const Range& YRange() const { return y_; }

  // Places of values, which may lie outside of the ranges, up to a hundred thousand pixels; NaN of a NaN.
  double X(double value) const;
  double Y(double value) const;
  Point At(double x, double y) const { return {X(x), Y(y)}; }

  // Frame, grid, ticks, and the titles of both axes, which may be empty. It belongs below the data.
  void Draw(Svg& svg, std::string_view xTitle, std::string_view yTitle) const;

 private:
  void DrawX(Svg& svg) const;
  void DrawY(Svg& svg) const;

  Box area_;
  Range x_;
  Range y_;
};

// The title of a panel, above the area of its axes.
void DrawTitle(Svg& svg, const Box& panel, std::string_view title);

}  // namespace TslTool
