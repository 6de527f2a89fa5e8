#pragma once
// An SVG document, element by element.

#include <functional>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace TslTool {

// Places and lengths are pixels, from the upper left corner, y downwards.
struct Point {
  double x;
  double y;
};

// Among the points of a line: the line is broken here.
inline constexpr Point kGap = {std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::quiet_NaN()};

struct Box {
  double left;
  double top;
  double width;
  double height;

  double Right() const { return left + width; }
  double Bottom() const { return top + height; }
};

// How a line looks. Dashes are lengths on and off, such as "6 3"; empty for a solid line.
struct Stroke {
  std::string_view colour;
  double width = 1.0;
  std::string_view dashes = "";
};

enum class Anchor { Start, Middle, End };

// A white page. Later elements cover earlier ones. Colours are as SVG has them, "#1f5fa8". Numbers are
// written with two decimals at most. An element at a place that is not finite is left out, and so is an empty
// text.
class Svg {
 public:
  Svg(double width, double height);

  void Line(Point from, Point to, const Stroke& stroke);
  // Through all points; one that is not finite is a gap. A point alone between gaps shows as a dot.
  void Polyline(std::span<const Point> points, const Stroke& stroke);
  // Filled, without a line around it.
  void Polygon(std::span<const Point> points, std::string_view fill);
  void Frame(const Box& box, const Stroke& stroke);
  void Circle(Point centre, double radius, std::string_view fill);
  // `at` is on the baseline of the text, which is UTF-8 and may hold any character.
  void Text(Point at, Anchor anchor, double size, std::string_view text);
  // The same, turned to be read from bottom to top.
  void TextUpwards(Point at, Anchor anchor, double size, std::string_view text);
  // What `draw` draws is cut at the edges of the box.
  void Clipped(const Box& box, const std::function<void()>& draw);

  std::string Document() const;

 private:
  void AddText(Point at, Anchor anchor, double size, std::string_view text, std::string_view turn);

  double width_;
  double height_;
  std::string elements_;
};

}  // namespace TslTool
