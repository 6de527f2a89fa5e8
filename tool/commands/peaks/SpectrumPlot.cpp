#include <tool/commands/peaks/SpectrumPlot.h>

#include <fmt/format.h>

#include <tool/plot/Axes.h>
#include <tool/plot/CurvePart.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Labels.h>
#include <tool/plot/Legend.h>
#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace TslTool {
namespace {

constexpr Box kPage = {0.0, 0.0, 1200.0, 560.0};
constexpr double kHeader = 56.0;
constexpr Stroke kMeasured = {"#b0b0b0", 1.0};
constexpr Stroke kEvaluated = {"#1f5fa8", 1.4};
constexpr Stroke kBaseline = {"#b3541e", 1.4, "6 3"};
constexpr Stroke kPeak = {"#2e7d32", 1.0};
constexpr NamedStroke kLegend[] = {
    {kMeasured, "measured"}, {kEvaluated, "evaluated"}, {kBaseline, "baseline, noise"}, {kPeak, "peaks"}};
constexpr const char* kNoise = "#f3dcc8";

using Values = std::span<const double>;

Range ViewOf(const std::vector<double>& x, const std::optional<RealRange>& view) {
  if (view) return {view->from, view->to};
  return x.empty() ? Range() : Range{x.front(), x.back()};
}

double PlaceOf(const TslBL::Spectrum& spectrum, double index) {
  const auto i = std::min(static_cast<std::size_t>(index), spectrum.xAxis.size() - 2);
  return spectrum.xAxis[i] + (index - static_cast<double>(i)) * (spectrum.xAxis[i + 1] - spectrum.xAxis[i]);
}

// A line from the baseline to each top, and the names of the tallest.
void DrawPeaks(Svg& svg, const Axes& axes, const TslBL::Spectrum& spectrum) {
  std::vector<TslBL::PeakInfo> peaks = spectrum.peaks;
  std::ranges::sort(peaks, std::ranges::greater(), &TslBL::PeakInfo::maxAmpl);
  std::vector<Label> labels;
  for (const TslBL::PeakInfo& peak : peaks) {
    const double mz = PlaceOf(spectrum, peak.ReportedIdx());
    if (mz < axes.XRange().low || mz > axes.XRange().high) continue;
    svg.Line(axes.At(mz, peak.baselineAmpl), axes.At(mz, peak.ReportedAmpl()), kPeak);
    labels.push_back({axes.At(mz, peak.maxAmpl), fmt::format("{:.4f}", mz)});
  }
  DrawLabels(svg, axes.Area(), labels);
}

void DrawNoise(Svg& svg, const Axes& axes, Values x, Values baseline, Values noise) {
  if (baseline.empty() || noise.empty()) return;
  std::vector<double> low(baseline.begin(), baseline.end());
  std::vector<double> high = low;
  for (std::size_t i = 0; i < low.size(); ++i) {
    low[i] -= noise[i];
    high[i] += noise[i];
  }
  DrawBand(svg, axes, x, low, high, kNoise);
}

}  // namespace

std::string SpectrumPlot(const LoadedSpectrum& loaded, const std::string& title,
                         const std::optional<RealRange>& view) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  const Range mz = ViewOf(spectrum.xAxis, view);
  const CurvePart part(spectrum.xAxis, mz);
  const Values x = part.Of(spectrum.xAxis);
  Svg svg(kPage.width, kPage.height);
  DrawHeader(svg, title, kLegend);
  Range amplitude;
  amplitude.Include(0.0);
  for (const auto* values : {&spectrum.yAxis, &loaded.measured}) amplitude.Include(part.Of(*values));
  const Axes axes({0.0, kHeader, kPage.width, kPage.height - kHeader}, mz.Padded(0.0),
                  amplitude.Padded(0.08));
  axes.Draw(svg, "m/z", "amplitude");
  svg.Clipped(axes.Area(), [&] {
    DrawNoise(svg, axes, x, part.Of(spectrum.baseline), part.Of(spectrum.noise));
    if (const Values measured = part.Of(loaded.measured); !measured.empty())
      DrawCurve(svg, axes, x, measured, kMeasured);
    DrawCurve(svg, axes, x, part.Of(spectrum.yAxis), kEvaluated);
    if (const Values baseline = part.Of(spectrum.baseline); !baseline.empty())
      DrawCurve(svg, axes, x, baseline, kBaseline);
    DrawPeaks(svg, axes, spectrum);
  });
  return svg.Document();
}

}  // namespace TslTool
