#include <tool/plot/Axes.h>

#include <tool/plot/Ticks.h>
#include <algorithm>

namespace TslTool {
namespace {

// Of a panel, around the area of its axes.
constexpr double kLeft = 64;
constexpr double kTop = 30;
constexpr double kRight = 20;
constexpr double kBottom = 44;

constexpr double kTextSize = 11;
constexpr double kTitleSize = 13;
// What a tick needs of its axis, so that texts stay apart.
constexpr double kXTick = 60;
constexpr double kYTick = 21;

constexpr Stroke kFrame = {"#888"};
constexpr Stroke kGrid = {"#e2e2e2"};

// Programs that show pictures have limits; lines keep their direction as far as can be seen.
double OnPage(double place) { return std::clamp(place, -1e5, 1e5); }

int TicksOn(double length, double each) { return std::max(3, static_cast<int>(length / each)); }

Box AreaOf(const Box& panel) {
  return {panel.left + kLeft, panel.top + kTop, std::max(1.0, panel.width - kLeft - kRight),
          std::max(1.0, panel.height - kTop - kBottom)};
}

}  // namespace

Axes::Axes(const Box& panel, const Range& x, const Range& y)
    : area_(AreaOf(panel)), x_(x.Padded(0.0)), y_(y.Padded(0.0)) {}

double Axes::X(double value) const { return OnPage(area_.left + area_.width * x_.Part(value)); }

double Axes::Y(double value) const { return OnPage(area_.top + area_.height * (1.0 - y_.Part(value))); }

void Axes::Draw(Svg& svg, std::string_view xTitle, std::string_view yTitle) const {
  svg.Frame(area_, kFrame);
  DrawX(svg);
  DrawY(svg);
  svg.Text({area_.Right(), area_.Bottom() + 30}, Anchor::End, kTextSize, xTitle);
  svg.TextUpwards({area_.left - kLeft + kTextSize + 2, area_.top}, Anchor::End, kTextSize, yTitle);
}

void Axes::DrawX(Svg& svg) const {
  for (const Tick& tick : Ticks(x_, TicksOn(area_.width, kXTick))) {
    const double x = X(tick.value);
    svg.Line({x, area_.top}, {x, area_.Bottom()}, kGrid);
    svg.Text({x, area_.Bottom() + 15}, Anchor::Middle, kTextSize, tick.text);
  }
}

void Axes::DrawY(Svg& svg) const {
  for (const Tick& tick : Ticks(y_, TicksOn(area_.height, kYTick))) {
    const double y = Y(tick.value);
    svg.Line({area_.left, y}, {area_.Right(), y}, kGrid);
    svg.Text({area_.left - 6, y + 4}, Anchor::End, kTextSize, tick.text);
  }
}

void DrawTitle(Svg& svg, const Box& panel, std::string_view title) {
  svg.Text({panel.left + kLeft, panel.top + kTop - 8}, Anchor::Start, kTitleSize, title);
}

}  // namespace TslTool
