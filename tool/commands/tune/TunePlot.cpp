#include <tool/commands/tune/TunePlot.h>

#include <fmt/format.h>

#include <tool/commands/tune/LensCurves.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MassRange.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

namespace TslTool {
namespace {

using TslBL::Tune;

constexpr double kPanelWidth = 460;
constexpr double kPanelHeight = 200;
constexpr double kLeft = 64;  // of the axis, within its panel
constexpr double kTop = 30;
constexpr double kAxisWidth = 376;
constexpr double kAxisHeight = 126;
constexpr double kHeader = 56;
constexpr int kColumns = 2;
constexpr int kSamples = 400;
// The second is dashed as well, for those who cannot tell the colours apart.
constexpr const char* kStrokes[] = {"stroke=\"#1f5fa8\"", "stroke=\"#c4510e\" stroke-dasharray=\"6 3\""};
constexpr const char* kFills[] = {"#1f5fa8", "#c4510e"};

struct Range {
  double low;
  double high;

  double Part(double at) const { return (at - low) / (high - low); }
  void Include(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  // Air at both ends; a level curve has some, too, and one that is level as far as an axis
  // can show.
  Range Padded(double share) const {
    const double size = std::max(std::abs(low), std::abs(high));
    const bool isLevel = !(high - low > 1e-9 * size);
    const double air = isLevel ? std::max(1.0, size * 0.1) : (high - low) * share;
    return {low - air, high + air};
  }
};

using Points = std::vector<std::pair<double, double>>;

struct Panel {
  std::string title;
  std::function<MZCurve(const Tune& tune)> curve;
  std::function<Points(const Tune& tune)> marks;
};

std::string Escaped(const std::string& text) {
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

std::string Shortened(const std::string& text) {
  constexpr std::size_t kLongest = 44;
  const std::wstring wide = TslCommon::FromUtf8(text);
  return wide.size() <= kLongest ? text : TslCommon::ToUtf8(wide.substr(0, kLongest)) + "...";
}

std::string Text(double x, double y, const char* anchor, int size, const std::string& text) {
  return fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"{}\" font-size=\"{}\">{}</text>\n", x, y,
                     anchor, size, Escaped(text));
}

// A step of 1, 2 or 5 times a power of ten that divides a range into two to six parts.
double TickStep(const Range& range) {
  const double rough = (range.high - range.low) / 6.0;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (rough <= factor * power) return factor * power;
  return 10.0 * power;
}

std::vector<double> Ticks(const Range& range) {
  constexpr int kMost = 8;
  const double step = TickStep(range);
  const double first = std::ceil(range.low / step);
  std::vector<double> ticks;
  for (int i = 0; i < kMost && (first + i) * step <= range.high; ++i) ticks.push_back((first + i) * step);
  return ticks;
}

std::string TickText(double value, double step) {
  const double digits = std::ceil(-std::log10(step) - 1e-9);
  const int decimals = digits > 0.0 && digits < 12.0 ? static_cast<int>(digits) : 0;
  if (std::abs(value) >= 1e7) return fmt::format("{:.3g}", value);
  return fmt::format("{:.{}f}", value == 0.0 ? 0.0 : value, decimals);
}

class Axes {
 public:
  Axes(double x, double y, const Range& mz, const Range& values)
      : left_(x + kLeft), top_(y + kTop), mz_(mz), values_(values) {}

  double X(double mz) const { return left_ + kAxisWidth * mz_.Part(mz); }
  double Y(double value) const { return top_ + kAxisHeight * (1.0 - values_.Part(value)); }

  std::string Frame(const std::string& title) const {
    std::string svg = fmt::format(
        "<rect x=\"{:.1f}\" y=\"{:.1f}\" width=\"{}\" height=\"{}\" fill=\"none\" stroke=\"#888\"/>\n", left_,
        top_, kAxisWidth, kAxisHeight);
    for (const double tick : Ticks(mz_)) {
      svg += Grid(X(tick), top_, X(tick), top_ + kAxisHeight);
      svg += Text(X(tick), top_ + kAxisHeight + 15, "middle", 11, TickText(tick, TickStep(mz_)));
    }
    for (const double tick : Ticks(values_)) {
      svg += Grid(left_, Y(tick), left_ + kAxisWidth, Y(tick));
      svg += Text(left_ - 6, Y(tick) + 4, "end", 11, TickText(tick, TickStep(values_)));
    }
    svg += Text(left_, top_ - 8, "start", 13, title);
    return svg + Text(left_ + kAxisWidth, top_ + kAxisHeight + 30, "end", 11, "m/z");
  }

 private:
  static std::string Grid(double x1, double y1, double x2, double y2) {
    return fmt::format("<line x1=\"{:.1f}\" y1=\"{:.1f}\" x2=\"{:.1f}\" y2=\"{:.1f}\" stroke=\"#e2e2e2\"/>\n",
                       x1, y1, x2, y2);
  }

  double left_, top_;
  Range mz_, values_;
};

// What one tune has in one panel, each value worked out once.
struct Trace {
  std::vector<std::pair<double, std::optional<double>>> line;
  std::vector<std::pair<double, std::optional<double>>> marks;
  std::string label;
};

Trace MakeTrace(const PlottedTune& plotted, const Panel& panel) {
  const auto [low, high] = TslBL::QMassRange(plotted.tune);
  const MZCurve curve = panel.curve(plotted.tune);
  Trace trace;
  trace.label = plotted.label;
  // Evenly, and at the points of the curve that the range has, so that no corner is cut.
  for (int i = 0; i <= kSamples; ++i)
    trace.line.emplace_back(low + (high - low) * i / kSamples, std::nullopt);
  for (const auto& [at, value] : panel.marks(plotted.tune)) {
    if (at < low || at > high) continue;
    trace.line.emplace_back(at, std::nullopt);
    trace.marks.emplace_back(at, curve(at));
  }
  std::ranges::sort(trace.line, {}, [](const auto& point) { return point.first; });
  for (auto& [at, value] : trace.line) value = curve(at);
  return trace;
}

bool IsEmpty(const Trace& trace) {
  return std::ranges::none_of(trace.line, [](const auto& point) { return point.second.has_value(); });
}

std::string Dot(const Axes& axes, double mz, const std::optional<double>& value, int radius,
                std::size_t colour) {
  if (!value) return "";
  return fmt::format("<circle cx=\"{:.2f}\" cy=\"{:.2f}\" r=\"{}\" fill=\"{}\"/>\n", axes.X(mz),
                     axes.Y(*value), radius, kFills[colour]);
}

std::string Line(const Trace& trace, const Axes& axes, std::size_t colour) {
  constexpr double kNarrow = 4.0;
  std::string path;
  bool on = false;
  for (const auto& [at, value] : trace.line) {
    if (value) path += fmt::format("{}{:.2f} {:.2f}", on ? "L" : "M", axes.X(at), axes.Y(*value));
    on = value.has_value();
  }
  std::string svg =
      fmt::format("<path d=\"{}\" fill=\"none\" stroke-width=\"1.6\" {}/>\n", path, kStrokes[colour]);
  for (const auto& [at, value] : trace.marks) svg += Dot(axes, at, value, 3, colour);
  // A range that is hardly wider than its line is a dot.
  const auto& [low, first] = trace.line.front();
  if (axes.X(trace.line.back().first) - axes.X(low) < kNarrow) svg += Dot(axes, low, first, 4, colour);
  return svg;
}

std::string Draw(const Panel& panel, const std::vector<PlottedTune>& tunes, const Range& mz, double x,
                 double y) {
  std::vector<Trace> traces;
  std::optional<Range> values;
  std::string title = panel.title;
  for (const PlottedTune& plotted : tunes) {
    const Trace& trace = traces.emplace_back(MakeTrace(plotted, panel));
    if (IsEmpty(trace)) title += tunes.size() > 1 ? "; no points: " + Shortened(trace.label) : ": no points";
    for (const auto& [at, value] : trace.line) {
      if (!value || !std::isfinite(*value)) continue;
      if (!values) values = Range{*value, *value};
      values->Include(*value);
    }
  }
  if (!values) return Text(x + kLeft, y + kTop - 8, "start", 13, title);
  const Axes axes(x, y, mz, values->Padded(0.08));
  std::string svg = axes.Frame(title);
  for (std::size_t i = 0; i < traces.size(); ++i) svg += Line(traces[i], axes, i);
  return svg;
}

std::vector<Panel> Panels() {
  std::vector<Panel> panels;
  for (const LensField& field : LensFields()) {
    panels.push_back({fmt::format("{}, {}", field.name, field.unit),
                      [&field](const Tune& tune) { return LensCurve(tune, field); },
                      [&field](const Tune& tune) { return LensPoints(tune, field); }});
  }
  panels.push_back(
      {"settling after a move from the low end, us", SettlingCurve, [](const Tune&) { return Points(); }});
  return panels;
}

Range MZOf(const std::vector<PlottedTune>& tunes) {
  const auto [low, high] = TslBL::QMassRange(tunes.front().tune);
  Range mz{low, high};
  for (const PlottedTune& plotted : tunes) {
    const auto [from, to] = TslBL::QMassRange(plotted.tune);
    mz.Include(from);
    mz.Include(to);
  }
  // One m/z has a neighbourhood of its own size.
  const double air = mz.high > mz.low ? 0.0 : 1.0;
  return Range{mz.low - air, mz.high + air}.Padded(0.0);
}

std::string Legend(const std::vector<PlottedTune>& tunes) {
  std::string svg;
  for (std::size_t i = 0; i < tunes.size(); ++i) {
    const double x = kLeft + kPanelWidth * static_cast<double>(i);
    svg += fmt::format("<line x1=\"{}\" y1=\"28\" x2=\"{}\" y2=\"28\" stroke-width=\"2.5\" {}/>\n", x, x + 34,
                       kStrokes[i]);
    svg += Text(x + 42, 33, "start", 15, Shortened(tunes[i].label));
  }
  return svg;
}

}  // namespace

std::string TunePlot(const std::vector<PlottedTune>& tunes) {
  const std::vector<Panel> panels = Panels();
  const Range mz = MZOf(tunes);
  const double width = kColumns * kPanelWidth;
  const double height = kHeader + kPanelHeight * std::ceil(static_cast<double>(panels.size()) / kColumns);
  std::string svg = fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}\" height=\"{1}\" viewBox=\"0 0 {0} {1}\" "
      "font-family=\"sans-serif\" fill=\"#222\">\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n",
      width, height);
  svg += Legend(tunes);
  for (std::size_t i = 0; i < panels.size(); ++i) {
    const std::size_t row = i / kColumns;
    const double x = kPanelWidth * static_cast<double>(i % kColumns);
    svg += Draw(panels[i], tunes, mz, x, kHeader + kPanelHeight * static_cast<double>(row));
  }
  return svg + "</svg>\n";
}

}  // namespace TslTool
