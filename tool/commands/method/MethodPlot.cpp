#include <tool/commands/method/MethodPlot.h>

#include <fmt/format.h>

#include <tool/commands/method/MethodPlace.h>
#include <tool/commands/method/MethodTimes.h>
#include <tool/commands/method/ValveSpans.h>
#include <tool/frame/TimeText.h>
#include <tool/plot/Axes.h>
#include <tool/plot/Legend.h>
#include <tool/plot/Strokes.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MassRange.h>
#include <array>

namespace TslTool {
namespace {

using TslBL::MethodRules;
using TslBL::Tune;

constexpr double kWidth = 960;
constexpr double kHeader = 60;
constexpr double kScans = 320;  // heights of the panels
constexpr double kLane = 46;
constexpr double kFooter = 24;
constexpr std::string_view kGrey = "#d8d8d8";
constexpr std::string_view kLine = "#404040";

Stroke StrokeOfPolarity(const Tune& tune) {
  return StrokeOf(tune.ControlData.PolarityType == TslCommon::PolarityPositive ? 0 : 1, 2.0);
}

// Times in the unit of the axis.
struct TimeUnit {
  double seconds;
  const char* title;
};

TimeUnit UnitFor(double end) {
  if (end >= 120.0) return {60.0, "time, min"};
  return {1.0, "time, s"};
}

double EndOf(const std::vector<PeriodTimes>& times) {
  double end = 0.0;
  for (const PeriodTimes& period : times) end += period.length;
  return end;
}

const Tune& TuneOf(const MethodRules& rules, const ItemTimes& item) {
  return rules.QTRTune(static_cast<std::uint32_t>(item.period), static_cast<std::uint32_t>(item.item), 0);
}

Range MZOf(const MethodRules& rules, const std::vector<PeriodTimes>& times) {
  Range mz;
  for (const PeriodTimes& period : times) {
    for (const ItemTimes& item : period.items) {
      const auto [low, high] = TslBL::QMassRange(TuneOf(rules, item));
      mz.Include(low);
      mz.Include(high);
    }
  }
  return mz.Padded(0.06);
}

void FillBox(Svg& svg, const Box& box, std::string_view fill) {
  const std::array<Point, 4> corners = {Point{box.left, box.top},
                                        {box.Right(), box.top},
                                        {box.Right(), box.Bottom()},
                                        {box.left, box.Bottom()}};
  svg.Polygon(corners, fill);
}

// What goes before a scan, grey; then the scan from its low to its high m/z.
void DrawItem(Svg& svg, const Axes& axes, const Tune& tune, const ItemTimes& item, double from,
              double scale) {
  const double begin = from + scale * (item.polaritySwitch + item.initSettling);
  const double end = from + scale * item.Total();
  const Box& area = axes.Area();
  if (begin > from) FillBox(svg, {axes.X(from), area.top, axes.X(begin) - axes.X(from), area.height}, kGrey);
  const auto [low, high] = TslBL::QMassRange(tune);
  const Stroke stroke = StrokeOfPolarity(tune);
  svg.Line(axes.At(begin, low), axes.At(end, high), stroke);
  if (low == high) svg.Circle(axes.At((begin + end) / 2.0, low), 3, stroke.colour);
}

void DrawScans(Svg& svg, const MethodRules& rules, const std::vector<PeriodTimes>& times, const Axes& axes,
               const TimeUnit& unit) {
  double from = 0.0;
  for (const PeriodTimes& period : times) {
    const double length = period.length / unit.seconds;
    const double scale = period.loop > 0.0 ? length / period.loop : 0.0;
    double at = from;
    for (const ItemTimes& item : period.items) {
      DrawItem(svg, axes, TuneOf(rules, item), item, at, scale);
      at += scale * item.Total();
    }
    from += length;
    const double x = axes.X(from);
    svg.Line({x, axes.Area().top}, {x, axes.Area().Bottom()}, {kLine, 0.6, "2 3"});
  }
}

// A lane of named pieces below the scans, with their time axis.
class Lane {
 public:
  Lane(Svg& svg, const Axes& axes, double top, std::string_view name) : svg_(svg), axes_(axes), top_(top) {
    svg_.TextUpwards({18, top + kLane / 2}, Anchor::Middle, 11, name);
  }

  void Add(double from, double to, std::string_view fill, const std::string& text) {
    constexpr double kGapBelow = 8;
    constexpr double kLetter = 6;
    const Box box = {axes_.X(from), top_, axes_.X(to) - axes_.X(from), kLane - kGapBelow};
    FillBox(svg_, box, fill);
    svg_.Frame(box, {kLine, 0.8});
    if (kLetter * static_cast<double>(text.size()) < box.width)
      svg_.Text({box.left + box.width / 2, top_ + box.height / 2 + 4}, Anchor::Middle, 11, text);
  }

 private:
  Svg& svg_;
  const Axes& axes_;
  double top_;
};

std::string PeriodLabel(std::size_t tp, const PeriodTimes& period) {
  return fmt::format("{}: {} x {}{}", PlaceName(tp), period.loops, ShownSeconds(period.loop),
                     period.isFree ? ", no end" : "");
}

void DrawPeriods(const MethodRules& rules, const std::vector<PeriodTimes>& times, const TimeUnit& unit,
                 Lane lane) {
  double from = 0.0;
  for (std::uint32_t tp = 0; tp < times.size(); ++tp) {
    const double to = from + times[tp].length / unit.seconds;
    lane.Add(from, to, rules.QTPSave(tp) ? "#e8f0f8" : "#f4f4f4", PeriodLabel(tp, times[tp]));
    from = to;
  }
}

void DrawValve(const MethodRules& rules, double end, const TimeUnit& unit, Lane lane) {
  for (const ValveSpan& span : ValveSpans(rules.QValveMethod(), end)) {
    const bool isSource = span.state == TslCommon::DiverterValve(TslCommon::DiverterValve::kToSource);
    lane.Add(span.from / unit.seconds, span.to / unit.seconds, isSource ? "#e6f4ea" : "#f7e9d7",
             TslCommon::ToUtf8(TslCommon::DiverterValve::ToStr(span.state)));
  }
}

void DrawPolarities(Svg& svg) {
  DrawLegend(svg, {420, 28}, StrokeOf(0, 2.0), "positive ions");
  DrawLegend(svg, {600, 28}, StrokeOf(1, 2.0), "negative ions");
}

std::string TitleOf(const MethodRules& rules) {
  constexpr std::size_t kLongest = 48;
  std::wstring title = rules.Desc.substr(0, rules.Desc.find_first_of(L"\r\n"));
  if (title.size() > kLongest) title = title.substr(0, kLongest) + L"...";
  return TslCommon::ToUtf8(title);
}

}  // namespace

std::string MethodPlot(const MethodRules& rules) {
  const std::vector<PeriodTimes> times = TimesOf(rules);
  const double end = EndOf(times);
  const TimeUnit unit = UnitFor(end);
  Svg svg(kWidth, kHeader + kScans + 2 * kLane + kFooter);
  svg.Text({64, 32}, Anchor::Start, 15, TitleOf(rules));
  DrawPolarities(svg);
  const Axes axes({0, kHeader, kWidth, kScans}, Range{0.0, end / unit.seconds}.Padded(0.0),
                  MZOf(rules, times));
  axes.Draw(svg, unit.title, "m/z, one loop of each time period");
  svg.Clipped(axes.Area(), [&] { DrawScans(svg, rules, times, axes, unit); });
  DrawPeriods(rules, times, unit, Lane(svg, axes, kHeader + kScans, "periods"));
  DrawValve(rules, end, unit, Lane(svg, axes, kHeader + kScans + kLane, "valve"));
  return svg.Document();
}

}  // namespace TslTool
