#include <tool/commands/tune/TunePlot.h>

#include <fmt/format.h>

#include <tool/commands/tune/LensCurves.h>
#include <tool/plot/Axes.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Legend.h>
#include <tool/plot/Strokes.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MassRange.h>
#include <algorithm>
#include <cmath>
#include <functional>

namespace TslTool {
namespace {

using TslBL::Tune;

constexpr double kPanelWidth = 460;
constexpr double kPanelHeight = 200;
constexpr double kHeader = 56;
constexpr int kColumns = 2;
constexpr int kSamples = 400;

using Points = std::vector<std::pair<double, double>>;

struct Panel {
  std::string title;
  std::function<MZCurve(const Tune& tune)> curve;
  std::function<Points(const Tune& tune)> marks;
};

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

// What one tune has in one panel, each value worked out once; NaN where there is none.
struct Trace {
  std::vector<double> mz;
  std::vector<double> values;
  std::vector<Point> marks;  // in m/z and values
};

Trace MakeTrace(const Tune& tune, const Panel& panel) {
  const auto [low, high] = TslBL::QMassRange(tune);
  const MZCurve curve = panel.curve(tune);
  const auto valueAt = [&](double mz) { return curve(mz).value_or(std::nan("")); };
  Trace trace;
  // Evenly, and at the points of the curve that the range has, so that no corner is cut.
  for (int i = 0; i <= kSamples; ++i) trace.mz.push_back(low + (high - low) * i / kSamples);
  for (const auto& [mz, ignored] : panel.marks(tune)) {
    if (mz < low || mz > high) continue;
    trace.mz.push_back(mz);
    trace.marks.push_back({mz, valueAt(mz)});
  }
  std::ranges::sort(trace.mz);
  std::ranges::transform(trace.mz, std::back_inserter(trace.values), valueAt);
  return trace;
}

void Draw(Svg& svg, const Axes& axes, const Trace& trace, const Stroke& stroke) {
  constexpr double kNarrow = 4.0;
  svg.Polyline(CurvePoints(axes, trace.mz, trace.values), stroke);
  for (const auto& [mz, value] : trace.marks) svg.Circle(axes.At(mz, value), 3, stroke.colour);
  // A range that is hardly wider than its line is a dot.
  if (axes.X(trace.mz.back()) - axes.X(trace.mz.front()) < kNarrow)
    svg.Circle(axes.At(trace.mz.front(), trace.values.front()), 4, stroke.colour);
}

std::string Shortened(const std::string& text) {
  constexpr std::size_t kLongest = 44;
  const std::wstring wide = TslCommon::FromUtf8(text);
  return wide.size() <= kLongest ? text : TslCommon::ToUtf8(wide.substr(0, kLongest)) + "...";
}

void Draw(Svg& svg, const Box& box, const Panel& panel, const std::vector<PlottedTune>& tunes,
          const Range& mz) {
  std::vector<Trace> traces;
  Range values;
  std::string title = panel.title;
  for (const auto& [tune, label] : tunes) {
    const Trace& trace = traces.emplace_back(MakeTrace(tune, panel));
    values.Include(trace.values);
    if (std::ranges::none_of(trace.values, [](double value) { return std::isfinite(value); }))
      title += tunes.size() > 1 ? "; no points: " + Shortened(label) : ": no points";
  }
  DrawTitle(svg, box, title);
  if (values.IsEmpty()) return;
  const Axes axes(box, mz, values.Padded(0.08));
  axes.Draw(svg, "m/z", "");
  for (std::size_t i = 0; i < traces.size(); ++i) Draw(svg, axes, traces[i], StrokeOf(i));
}

Range MZOf(const std::vector<PlottedTune>& tunes) {
  Range mz;
  for (const PlottedTune& plotted : tunes) {
    const auto [low, high] = TslBL::QMassRange(plotted.tune);
    mz.Include(low);
    mz.Include(high);
  }
  // One m/z has a neighbourhood of its own size.
  return mz.low == mz.high ? Range{mz.low - 1.0, mz.high + 1.0} : mz;
}

Box PanelBox(std::size_t index) {
  const std::size_t row = index / kColumns;
  const std::size_t column = index % kColumns;
  return {kPanelWidth * static_cast<double>(column), kHeader + kPanelHeight * static_cast<double>(row),
          kPanelWidth, kPanelHeight};
}

}  // namespace

std::string TunePlot(const std::vector<PlottedTune>& tunes) {
  const std::vector<Panel> panels = Panels();
  Svg svg(kColumns * kPanelWidth, PanelBox(panels.size() - 1).Bottom());
  for (std::size_t i = 0; i < tunes.size(); ++i)
    DrawLegend(svg, {PanelBox(i).left + 64, 28}, StrokeOf(i), Shortened(tunes[i].label));
  const Range mz = MZOf(tunes);
  for (std::size_t i = 0; i < panels.size(); ++i) Draw(svg, PanelBox(i), panels[i], tunes, mz);
  return svg.Document();
}

}  // namespace TslTool
