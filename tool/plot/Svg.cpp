#include <tool/plot/Svg.h>

#include <fmt/format.h>

#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

bool IsPlace(Point point) { return std::isfinite(point.x) && std::isfinite(point.y); }

// Two decimals, of which trailing zeros are not printed; nor is the sign of a zero.
double Short(double length) { return std::round(length * 100.0) / 100.0 + 0.0; }

std::string Escaped(std::string_view text) {
  std::wstring escaped;
  for (const wchar_t c : TslCommon::FromUtf8(text)) {
    if (c == L'<') {
      escaped += L"&lt;";
    } else if (c == L'&') {
      escaped += L"&amp;";
    } else {
      // Others have no place in a document.
      escaped += c < 0x20 || c == 0xFFFE || c == 0xFFFF ? L' ' : c;
    }
  }
  return TslCommon::ToUtf8(escaped);
}

std::string Attributes(const Stroke& stroke) {
  std::string text = stroke.width == 1.0 ? "" : fmt::format("stroke-width=\"{}\" ", stroke.width);
  text += fmt::format("stroke=\"{}\"", stroke.colour);
  return stroke.dashes.empty() ? text : text + fmt::format(" stroke-dasharray=\"{}\"", stroke.dashes);
}

const char* Name(Anchor anchor) {
  return anchor == Anchor::Start ? "start" : anchor == Anchor::Middle ? "middle" : "end";
}

std::string PathThrough(std::span<const Point> points) {
  std::string path;
  const auto end = std::back_inserter(path);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto [x, y] = points[i];
    if (!IsPlace(points[i])) continue;
    const bool starts = i == 0 || !IsPlace(points[i - 1]);
    const bool ends = i + 1 == points.size() || !IsPlace(points[i + 1]);
    // A line from a point to itself would not be seen.
    if (starts && ends)
      fmt::format_to(end, "M{} {}h1", Short(x - 0.5), Short(y));
    else
      fmt::format_to(end, "{}{} {}", starts ? 'M' : 'L', Short(x), Short(y));
  }
  return path;
}

}  // namespace

Svg::Svg(double width, double height) : width_(width), height_(height) {}

void Svg::Line(Point from, Point to, const Stroke& stroke) {
  if (!IsPlace(from) || !IsPlace(to)) return;
  elements_ += fmt::format("<line x1=\"{}\" y1=\"{}\" x2=\"{}\" y2=\"{}\" {}/>\n", Short(from.x),
                           Short(from.y), Short(to.x), Short(to.y), Attributes(stroke));
}

void Svg::Polyline(std::span<const Point> points, const Stroke& stroke) {
  const std::string path = PathThrough(points);
  if (path.empty()) return;
  elements_ += fmt::format("<path d=\"{}\" fill=\"none\" {}/>\n", path, Attributes(stroke));
}

void Svg::Polygon(std::span<const Point> points, std::string_view fill) {
  if (points.empty() || !std::ranges::all_of(points, IsPlace)) return;
  elements_ += fmt::format("<path d=\"{}Z\" fill=\"{}\"/>\n", PathThrough(points), fill);
}

void Svg::Frame(const Box& box, const Stroke& stroke) {
  elements_ +=
      fmt::format("<rect x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\" fill=\"none\" {}/>\n", Short(box.left),
                  Short(box.top), Short(box.width), Short(box.height), Attributes(stroke));
}

void Svg::Circle(Point centre, double radius, std::string_view fill) {
  if (!IsPlace(centre)) return;
  elements_ += fmt::format("<circle cx=\"{}\" cy=\"{}\" r=\"{}\" fill=\"{}\"/>\n", Short(centre.x),
                           Short(centre.y), Short(radius), fill);
}

void Svg::Text(Point at, Anchor anchor, double size, std::string_view text) {
  AddText(at, anchor, size, text, "");
}

void Svg::TextUpwards(Point at, Anchor anchor, double size, std::string_view text) {
  AddText(at, anchor, size, text, fmt::format(" transform=\"rotate(-90 {} {})\"", Short(at.x), Short(at.y)));
}

void Svg::AddText(Point at, Anchor anchor, double size, std::string_view text, std::string_view turn) {
  if (!IsPlace(at) || text.empty()) return;
  elements_ += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"{}\" font-size=\"{}\"{}>{}</text>\n",
                           Short(at.x), Short(at.y), Name(anchor), Short(size), turn, Escaped(text));
}

// A document in the document cuts at its edges and, unlike a clip path, needs no name, of which two could
// meet on a page that shows several pictures.
void Svg::Clipped(const Box& box, const std::function<void()>& draw) {
  elements_ +=
      fmt::format("<svg x=\"{0}\" y=\"{1}\" width=\"{2}\" height=\"{3}\" viewBox=\"{0} {1} {2} {3}\">\n",
                  Short(box.left), Short(box.top), Short(box.width), Short(box.height));
  draw();
  elements_ += "</svg>\n";
}

std::string Svg::Document() const {
  return fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}\" height=\"{1}\" viewBox=\"0 0 {0} {1}\" "
      "font-family=\"sans-serif\" fill=\"#222\">\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n"
      "{2}</svg>\n",
      Short(width_), Short(height_), elements_);
}

}  // namespace TslTool
