#include <tool/commands/chrom/ChromPlot.h>

#include <fmt/format.h>

#include <tool/plot/Axes.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Labels.h>
#include <tool/plot/Legend.h>
#include <algorithm>
#include <span>

namespace TslTool {
namespace {

constexpr double kWidth = 1200.0;
constexpr double kPanel = 300.0;
constexpr double kHeader = 56.0;
constexpr Stroke kMeasured = {"#b0b0b0", 1.0};
constexpr Stroke kEvaluated = {"#1f5fa8", 1.4};
constexpr Stroke kBaseline = {"#b3541e", 1.4, "6 3"};
constexpr Stroke kPeak = {"#2e7d32", 1.0};
constexpr const char* kArea = "#d5e8d6";
constexpr NamedStroke kLegend[] = {
    {kMeasured, "measured"}, {kEvaluated, "evaluated"}, {kBaseline, "baseline"}, {kPeak, "peaks"}};

Range TimesOf(const std::vector<EvaluatedCurve>& curves) {
  Range times;
  for (const EvaluatedCurve& curve : curves)
    for (const double end : {curve.measured.seconds.front(), curve.measured.seconds.back()})
      times.Include(end);
  return times;
}

// What was integrated.
void DrawAreas(Svg& svg, const Axes& axes, const EvaluatedCurve& curve) {
  if (curve.curve.baseline.empty()) return;
  const std::vector<double>& seconds = curve.measured.seconds;
  for (const ChromPeak& peak : curve.peaks) {
    const auto first = std::ranges::lower_bound(seconds, peak.startSeconds) - seconds.begin();
    const auto end = std::ranges::upper_bound(seconds, peak.endSeconds) - seconds.begin();
    const auto part = [&](const std::vector<double>& values) {
      return std::span<const double>(values).subspan(static_cast<std::size_t>(first),
                                                     static_cast<std::size_t>(end - first));
    };
    DrawBand(svg, axes, part(seconds), part(curve.curve.baseline), part(curve.measured.values), kArea);
  }
}

// A line to each top, and the times of the tallest.
void DrawPeaks(Svg& svg, const Axes& axes, const EvaluatedCurve& curve) {
  std::vector<std::size_t> order(curve.peaks.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::ranges::sort(order, std::ranges::greater(), [&](std::size_t i) { return curve.peaks[i].height; });
  std::vector<Label> labels;
  for (const std::size_t i : order) {
    const TslBL::PeakInfo& peak = curve.curve.peaks[curve.peaks[i].row];
    const double seconds = curve.peaks[i].rtSeconds;
    svg.Line(axes.At(seconds, peak.baselineAmpl), axes.At(seconds, peak.ReportedAmpl()), kPeak);
    labels.push_back({axes.At(seconds, peak.maxAmpl), fmt::format("{:.1f}", seconds)});
  }
  DrawLabels(svg, axes.Area(), labels);
}

void DrawPanel(Svg& svg, const Box& panel, const Range& times, const EvaluatedCurve& curve) {
  Range amplitude;
  amplitude.Include(0.0);
  amplitude.Include(curve.measured.values);
  amplitude.Include(curve.curve.yAxis);
  const Axes axes(panel, times, amplitude.Padded(0.1));
  axes.Draw(svg, "s", "amplitude");
  const Chromatogram& measured = curve.measured;
  DrawTitle(svg, panel, measured.title.empty() ? measured.name : measured.name + ": " + measured.title);
  svg.Clipped(axes.Area(), [&] {
    DrawAreas(svg, axes, curve);
    DrawCurve(svg, axes, measured.seconds, measured.values, kMeasured);
    DrawCurve(svg, axes, measured.seconds, curve.curve.yAxis, kEvaluated);
    if (!curve.curve.baseline.empty())
      DrawCurve(svg, axes, measured.seconds, curve.curve.baseline, kBaseline);
    DrawPeaks(svg, axes, curve);
  });
}

}  // namespace

std::string ChromPlot(const std::vector<EvaluatedCurve>& curves, const std::string& title) {
  const Range times = TimesOf(curves).Padded(0.0);
  Svg svg(kWidth, kHeader + kPanel * static_cast<double>(curves.size()));
  DrawHeader(svg, title, kLegend);
  double top = kHeader;
  for (const EvaluatedCurve& curve : curves) {
    DrawPanel(svg, {0.0, top, kWidth, kPanel}, times, curve);
    top += kPanel;
  }
  return svg.Document();
}

}  // namespace TslTool
