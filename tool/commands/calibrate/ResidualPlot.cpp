#include <tool/commands/calibrate/ResidualPlot.h>

#include <tool/commands/calibrate/CalibrationTable.h>
#include <tool/plot/Axes.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Labels.h>
#include <tool/plot/Legend.h>
#include <tool/plot/Strokes.h>

namespace TslTool {
namespace {

constexpr Box kPage = {0.0, 0.0, 1000.0, 480.0};
constexpr double kHeader = 56.0;
constexpr double kLegendStep = 120.0;
constexpr double kRadius = 3.5;
constexpr double kRoom = 0.08;
constexpr Stroke kZero = {"#404040", 1.0};

struct Residuals {
  std::vector<double> mz;
  std::vector<double> ppm;
};

Residuals ResidualsOf(const std::vector<CalibratedPoint>& points,
                      std::optional<double> CalibratedPoint::*seen) {
  Residuals residuals;
  for (const CalibratedPoint& point : points) {
    if (!(point.*seen)) continue;
    residuals.mz.push_back(point.expected);
    residuals.ppm.push_back(PpmOf(*(point.*seen), point.expected));
  }
  return residuals;
}

void DrawResiduals(Svg& svg, const Axes& axes, const Residuals& residuals, const Stroke& stroke) {
  DrawCurve(svg, axes, residuals.mz, residuals.ppm, stroke);
  for (std::size_t i = 0; i < residuals.mz.size(); ++i)
    svg.Circle(axes.At(residuals.mz[i], residuals.ppm[i]), kRadius, stroke.colour);
}

void DrawNames(Svg& svg, const Axes& axes, const std::vector<CalibratedPoint>& points) {
  std::vector<Label> labels;
  for (const CalibratedPoint& point : points)
    if (point.before)
      labels.push_back({axes.At(point.expected, PpmOf(*point.before, point.expected)), point.name});
  DrawLabels(svg, axes.Area(), labels);
}

}  // namespace

std::string ResidualPlot(const std::vector<CalibratedPoint>& points, const std::string& title) {
  const Residuals before = ResidualsOf(points, &CalibratedPoint::before);
  const Residuals after = ResidualsOf(points, &CalibratedPoint::after);
  Range mz;
  for (const CalibratedPoint& point : points) mz.Include(point.expected);
  Range ppm;
  ppm.Include(0.0);
  for (const Residuals* residuals : {&before, &after}) ppm.Include(residuals->ppm);
  const Axes axes({0.0, kHeader, kPage.width, kPage.height - kHeader}, mz.Padded(kRoom), ppm.Padded(kRoom));
  Svg svg(kPage.width, kPage.height);
  svg.Text({64.0, 22.0}, Anchor::Start, 14.0, title);
  DrawLegend(svg, {64.0, 42.0}, StrokeOf(0), "before");
  DrawLegend(svg, {64.0 + kLegendStep, 42.0}, StrokeOf(1), "after");
  axes.Draw(svg, "m/z", "deviation, ppm");
  svg.Clipped(axes.Area(), [&] {
    svg.Line(axes.At(axes.XRange().low, 0.0), axes.At(axes.XRange().high, 0.0), kZero);
    DrawResiduals(svg, axes, before, StrokeOf(0));
    DrawResiduals(svg, axes, after, StrokeOf(1));
    DrawNames(svg, axes, points);
  });
  return svg.Document();
}

}  // namespace TslTool
