#include <tool/plot/Curves.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslTool {
namespace {

using Values = std::span<const double>;

// Which values an axis shows, and the nearest one on either side.
struct Shown {
  std::size_t from;
  std::size_t size;

  Values Of(Values values) const { return values.subspan(from, size); }
};

Shown ShownOn(const Range& range, Values x) {
  const auto index = [&](auto place) { return static_cast<std::size_t>(place - x.begin()); };
  const std::size_t first = index(std::ranges::lower_bound(x, range.low));
  const std::size_t last = index(std::ranges::upper_bound(x, range.high));
  const std::size_t from = first > 0 ? first - 1 : 0;
  return {from, std::min(last + 1, x.size()) - from};
}

// Of two points of a column and a later one, the one in the middle goes.
void KeepExtremes(Point& first, Point& second, Point later) {
  const auto [low, high] = std::minmax(first.y, second.y);
  if (low <= later.y && later.y <= high) return;
  const bool secondIsBetween = (first.y < second.y) == (second.y <= later.y);
  if (!secondIsBetween) first = second;
  second = later;
}

std::vector<Point> Thinned(const Axes& axes, Values x, Values y) {
  std::vector<Point> points;
  double column = std::numeric_limits<double>::quiet_NaN();
  bool isPair = false;    // the column has two points
  bool isBroken = false;  // since the last point
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (!std::isfinite(y[i])) {
      isBroken = true;
      continue;
    }
    const Point point = axes.At(x[i], y[i]);
    if (std::floor(point.x) != column) {
      if (isBroken && !points.empty()) points.push_back(kGap);
      points.push_back(point);
      column = std::floor(point.x);
      isPair = false;
    } else if (!isPair) {
      points.push_back(point);
      isPair = true;
    } else {
      KeepExtremes(points.end()[-2], points.back(), point);
    }
    isBroken = false;
  }
  return points;
}

std::vector<Point> All(const Axes& axes, Values x, Values y) {
  std::vector<Point> points;
  points.reserve(x.size());
  for (std::size_t i = 0; i < x.size(); ++i)
    points.push_back(std::isfinite(y[i]) ? axes.At(x[i], y[i]) : kGap);
  return points;
}

// With room for a line that runs along an edge.
Box ClipOf(const Axes& axes) {
  const Box& area = axes.Area();
  return {area.left - 1, area.top - 1, area.width + 2, area.height + 2};
}

void FillBetween(Svg& svg, const Axes& axes, Values x, Values low, Values high, std::string_view fill) {
  std::vector<Point> around = CurvePoints(axes, x, high);
  const std::vector<Point> back = CurvePoints(axes, x, low);
  around.insert(around.end(), back.rbegin(), back.rend());
  svg.Polygon(around, fill);
}

}  // namespace

std::vector<Point> CurvePoints(const Axes& axes, Values x, Values y) {
  if (x.size() != y.size()) throw std::invalid_argument("CurvePoints: as many y as x are needed");
  constexpr double kMostInColumn = 4.0;
  const Shown shown = ShownOn(axes.XRange(), x);
  const bool isLong = static_cast<double>(shown.size) > kMostInColumn * axes.Area().width;
  return (isLong ? Thinned : All)(axes, shown.Of(x), shown.Of(y));
}

void DrawCurve(Svg& svg, const Axes& axes, Values x, Values y, const Stroke& stroke) {
  svg.Clipped(ClipOf(axes), [&] { svg.Polyline(CurvePoints(axes, x, y), stroke); });
}

void DrawBand(Svg& svg, const Axes& axes, Values x, Values low, Values high, std::string_view fill) {
  if (low.size() != x.size() || high.size() != x.size())
    throw std::invalid_argument("DrawBand: as many ends as x are needed");
  const auto isThere = [&](std::size_t i) { return std::isfinite(low[i]) && std::isfinite(high[i]); };
  svg.Clipped(ClipOf(axes), [&] {
    for (std::size_t from = 0, to = 0; from < x.size(); from = to + 1) {
      for (to = from; to < x.size() && isThere(to);) ++to;
      const Shown piece{from, to - from};
      FillBetween(svg, axes, piece.Of(x), piece.Of(low), piece.Of(high), fill);
    }
  });
}

}  // namespace TslTool
