#include <tool/commands/overlap/OverlapPlot.h>

#include <fmt/format.h>

#include <tool/commands/overlap/FittedCurves.h>
#include <tool/commands/overlap/FittedPoints.h>
#include <tool/commands/overlap/GroupFits.h>
#include <tool/plot/Axes.h>
#include <tool/plot/CurvePart.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Labels.h>
#include <tool/plot/Legend.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

constexpr double kWidth = 1200.0;
constexpr double kHeader = 56.0;
constexpr Box kData = {0.0, kHeader, kWidth, 440.0};
constexpr Box kResidual = {0.0, kHeader + 440.0, kWidth, 220.0};
constexpr double kBeyondGroups = 2.0;  // m/z to either side
constexpr Stroke kMeasured = {"#b0b0b0", 1.0};
constexpr Stroke kEvaluated = {"#1f5fa8", 1.4};
constexpr Stroke kPeak = {"#2e7d32", 1.2, "5 2"};
constexpr Stroke kSum = {"#b3261e", 1.6};
constexpr Stroke kZero = {"#606060", 1.0};
constexpr NamedStroke kLegend[] = {
    {kMeasured, "measured"}, {kEvaluated, "evaluated"}, {kPeak, "fitted peaks"}, {kSum, "their sum"}};
constexpr const char* kNoise = "#f3dcc8";

using Groups = std::vector<FittedGroup>;

Range ViewOf(const TslBL::Spectrum& spectrum, const Groups& groups, const std::optional<RealRange>& view) {
  const std::vector<double>& x = spectrum.xAxis;
  if (view) return {view->from, view->to};
  if (x.empty()) return {};
  if (groups.empty()) return {x.front(), x.back()};
  const FittedGroup& last = groups.back();
  return {std::max(x.front(), x[groups.front().first] - kBeyondGroups),
          std::min(x.back(), x[last.first + last.sum.size() - 1] + kBeyondGroups)};
}

std::span<const double> AxisOf(const TslBL::Spectrum& spectrum, const FittedGroup& group) {
  return std::span(spectrum.xAxis).subspan(group.first, group.sum.size());
}

// What the sum leaves; a gap between groups.
std::vector<double> ResidualOf(const std::vector<double>& points, const Groups& groups) {
  std::vector<double> residual(points.size(), std::numeric_limits<double>::quiet_NaN());
  for (const FittedGroup& group : groups)
    for (std::size_t i = 0; i < group.sum.size(); ++i)
      residual[group.first + i] = points[group.first + i] - group.sum[i];
  return residual;
}

// The m/z of the fitted peaks, the tallest first where there is no room for all.
void DrawNames(Svg& svg, const Axes& axes, const TslBL::Spectrum& spectrum) {
  std::vector<TslBL::OverlapPeakInfo> peaks = spectrum.overlapPeaks;
  std::ranges::sort(peaks, std::ranges::greater(), &TslBL::OverlapPeakInfo::Height);
  std::vector<Label> labels;
  for (const TslBL::OverlapPeakInfo& peak : peaks) {
    const double mz = spectrum.FractionalIndexToXAxisVal(peak.Position);
    if (mz < axes.XRange().low || mz > axes.XRange().high) continue;
    labels.push_back({axes.At(mz, peak.Baseline + peak.Height), fmt::format("{:.4f}", mz)});
  }
  DrawLabels(svg, axes.Area(), labels);
}

void DrawData(Svg& svg, const Range& mz, const CurvePart& part, const LoadedSpectrum& loaded,
              const Groups& groups) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  Range amplitude;
  amplitude.Include(0.0);
  for (const auto* values : {&spectrum.yAxis, &loaded.measured}) amplitude.Include(part.Of(*values));
  const Axes axes(kData, mz.Padded(0.0), amplitude.Padded(0.08));
  axes.Draw(svg, "", "amplitude");
  svg.Clipped(axes.Area(), [&] {
    const auto x = part.Of(spectrum.xAxis);
    if (const auto measured = part.Of(loaded.measured); !measured.empty())
      DrawCurve(svg, axes, x, measured, kMeasured);
    DrawCurve(svg, axes, x, part.Of(spectrum.yAxis), kEvaluated);
    for (const FittedGroup& group : groups) {
      for (const std::vector<double>& peak : group.peaks)
        DrawCurve(svg, axes, AxisOf(spectrum, group), peak, kPeak);
      DrawCurve(svg, axes, AxisOf(spectrum, group), group.sum, kSum);
    }
    DrawNames(svg, axes, spectrum);
  });
}

// What points scatter by: counts, where they are known and were fitted, else the noise.
std::vector<double> ScatterOf(const LoadedSpectrum& loaded, const Groups& groups) {
  std::vector<double> scatter = loaded.spectrum->noise;
  const double count = VariancePerMeanOf(loaded);
  if (!(count > 0.0) || scatter.empty()) return scatter;
  for (const FittedGroup& group : groups)
    for (std::size_t i = 0; i < group.sum.size(); ++i)
      scatter[group.first + i] = std::sqrt(std::max(group.sum[i], 0.0) * count);
  return scatter;
}

void DrawResidual(Svg& svg, const Range& mz, const CurvePart& part, const LoadedSpectrum& loaded,
                  const Groups& groups) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  const std::vector<double> all = ResidualOf(FittedPoints(loaded), groups);
  const std::vector<double> high = ScatterOf(loaded, groups);
  std::vector<double> low(high);
  for (double& value : low) value = -value;
  Range range;
  for (const auto& values : {all, low, high}) range.Include(part.Of(values));
  const Axes axes(kResidual, mz.Padded(0.0), range.Padded(0.1));
  axes.Draw(svg, "m/z", "");
  DrawTitle(svg, kResidual, AreMeasuredFitted(loaded) ? "measured - sum" : "evaluated - sum");
  svg.Clipped(axes.Area(), [&] {
    const auto x = part.Of(spectrum.xAxis);
    if (!part.Of(low).empty()) DrawBand(svg, axes, x, part.Of(low), part.Of(high), kNoise);
    svg.Line(axes.At(axes.XRange().low, 0.0), axes.At(axes.XRange().high, 0.0), kZero);
    DrawCurve(svg, axes, x, part.Of(all), kSum);
  });
}

}  // namespace

std::string OverlapPlot(const LoadedSpectrum& loaded, const std::string& title,
                        const std::optional<RealRange>& view) {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  const Groups groups = FittedGroups(loaded);
  const Range mz = ViewOf(spectrum, groups, view);
  const CurvePart part(spectrum.xAxis, mz);
  Svg svg(kWidth, kResidual.Bottom());
  DrawHeader(svg, title, kLegend);
  DrawData(svg, mz, part, loaded, groups);
  DrawResidual(svg, mz, part, loaded, groups);
  return svg.Document();
}

}  // namespace TslTool
