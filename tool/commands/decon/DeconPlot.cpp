#include <tool/commands/decon/DeconPlot.h>

#include <fmt/format.h>

#include <tool/commands/decon/SeriesRows.h>
#include <tool/plot/Axes.h>
#include <tool/plot/CurvePart.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Labels.h>
#include <tool/plot/Legend.h>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace TslTool {
namespace {

using TslBL::CSPeakIndicator;
using TslBL::DeconSpectrum;

constexpr double kWidth = 1200.0;
constexpr double kHeader = 56.0;
constexpr Box kSpectrum = {0.0, kHeader, kWidth, 420.0};
constexpr Box kMasses = {0.0, kHeader + 420.0, kWidth, 260.0};
constexpr Stroke kEvaluated = {"#808080", 1.2};
constexpr Stroke kMassCurve = {"#1f5fa8", 1.4};
constexpr std::size_t kNamed = 6;  // series in the legend
constexpr double kBeside = 0.05;   // of the range of masses
constexpr double kAdducts = 0.01;  // of the mass
constexpr double kFoot = 0.05;     // of the height
constexpr double kShown = 0.02;  // least intensity, of the largest, for which the range of masses makes room

// A series with its looks and its ladder.
struct Ladder {
  SeriesRow row;
  std::string colour;
  std::string name;
  std::vector<CSPeakIndicator> rungs;

  Stroke Line(bool isFound) const { return {colour, isFound ? 1.6 : 1.0, isFound ? "" : "3 3"}; }
};

std::vector<Ladder> LaddersOf(const LoadedSpectrum& loaded) {
  const DeconSpectrum& spectrum = DeconvolvedOf(loaded);
  std::vector<Ladder> ladders;
  for (SeriesRow& row : SeriesRows(loaded)) {
    TslBL::CSPeakIndicators indicators;
    spectrum.BuildCSPeakIndictors(row.index, indicators);
    const auto colour = DeconSpectrum::GetSeriesColor(static_cast<int>(row.index));
    const std::string name = fmt::format("{} {:.2f} Da", row.label, row.mass);
    ladders.push_back(
        {std::move(row), fmt::format("#{:06x}", colour), name, std::move(indicators.Indicators)});
  }
  return ladders;
}

Range ViewOf(const std::vector<double>& x, const std::optional<RealRange>& view) {
  if (view) return {view->from, view->to};
  return x.empty() ? Range() : Range{x.front(), x.back()};
}

bool Shows(const Range& range, double value) { return value >= range.low && value <= range.high; }

double AmplitudeAt(const DeconSpectrum& spectrum, double mz) {
  return spectrum.yAxis.empty() ? 0.0 : spectrum.yAxis[spectrum.QXAxisToIdx(mz, TslBL::ROUND_DOWN)];
}

struct ChargeLabel {
  double amplitude;
  Label label;
};

void DrawLadders(Svg& svg, const Axes& axes, const DeconSpectrum& spectrum,
                 const std::vector<Ladder>& ladders, char sign) {
  std::vector<ChargeLabel> charges;
  for (const Ladder& ladder : ladders) {
    for (const CSPeakIndicator& rung : ladder.rungs) {
      if (!Shows(axes.XRange(), rung.MZ)) continue;
      const double amplitude = AmplitudeAt(spectrum, rung.MZ);
      svg.Line(axes.At(rung.MZ, axes.YRange().low), axes.At(rung.MZ, amplitude), ladder.Line(rung.Found));
      if (rung.Found)
        charges.push_back(
            {amplitude,
             {axes.At(rung.MZ, amplitude), fmt::format("{} {}{}", ladder.row.label, rung.Charge, sign)}});
    }
  }
  std::ranges::stable_sort(charges, std::greater(), &ChargeLabel::amplitude);
  std::vector<Label> labels;
  labels.reserve(charges.size());
  for (ChargeLabel& charge : charges) labels.push_back(std::move(charge.label));
  DrawLabels(svg, axes.Area(), labels);
}

void DrawSpectrum(Svg& svg, const LoadedSpectrum& loaded, const std::vector<Ladder>& ladders,
                  const Range& mz) {
  const DeconSpectrum& spectrum = DeconvolvedOf(loaded);
  const CurvePart part(spectrum.xAxis, mz);
  Range amplitude;
  amplitude.Include(0.0);
  amplitude.Include(part.Of(spectrum.yAxis));
  const Axes axes(kSpectrum, mz.Padded(0.0), amplitude.Padded(0.08));
  axes.Draw(svg, "m/z", "amplitude");
  svg.Clipped(axes.Area(), [&] {
    DrawCurve(svg, axes, part.Of(spectrum.xAxis), part.Of(spectrum.yAxis), kEvaluated);
    DrawLadders(svg, axes, spectrum, ladders, loaded.polarity < 0 ? '-' : '+');
  });
}

// As far as the curve about a mass stands out of a twentieth of its height there.
void IncludePeakAt(double mass, const DeconSpectrum& spectrum, Range& range) {
  range.Include(mass);
  const std::size_t top = spectrum.QCSMassCurveIdx(mass);
  if (top >= spectrum.MassY.size()) return;
  const double least = kFoot * spectrum.MassY[top];
  std::size_t left = top;
  while (left > 0 && spectrum.MassY[left] > least) --left;
  std::size_t right = top;
  while (right + 1 < spectrum.MassY.size() && spectrum.MassY[right] > least) ++right;
  range.Include(spectrum.MassX[left]);
  range.Include(spectrum.MassX[right]);
}

// A trace of something small would take the room from what there is. A mass alone has the room of its
// adducts.
Range MassesOf(const DeconSpectrum& spectrum, const std::vector<Ladder>& ladders) {
  std::vector<double> shown;
  for (const Ladder& ladder : ladders)
    if (ladder.row.intensity >= kShown * ladders.front().row.intensity) shown.push_back(ladder.row.mass);
  Range masses;
  for (const double mass : shown) IncludePeakAt(mass, spectrum, masses);
  if (shown.size() == 1)
    for (const double off : {-kAdducts, kAdducts}) masses.Include((1.0 + off) * shown.front());
  return masses.Padded(kBeside);
}

void DrawMasses(Svg& svg, const DeconSpectrum& spectrum, const std::vector<Ladder>& ladders) {
  const Range masses = MassesOf(spectrum, ladders);
  Range density;
  density.Include(0.0);
  density.Include(spectrum.MassY);
  const Axes axes(kMasses, masses, density.Padded(0.1));
  axes.Draw(svg, "mass, Da", "");
  DrawTitle(svg, kMasses, ladders.empty() ? "no series found" : "deconvolved");
  svg.Clipped(axes.Area(), [&] {
    std::vector<Label> labels;
    for (const Ladder& ladder : ladders) {
      const double mass = ladder.row.mass;
      const auto point = spectrum.QCSMassCurveIdx(mass);
      const double height = point < spectrum.MassY.size() ? spectrum.MassY[point] : 0.0;
      svg.Line(axes.At(mass, axes.YRange().low), axes.At(mass, height), ladder.Line(true));
      labels.push_back({axes.At(mass, height), fmt::format("{} {:.2f}", ladder.row.label, mass)});
    }
    DrawCurve(svg, axes, spectrum.MassX, spectrum.MassY, kMassCurve);
    DrawLabels(svg, axes.Area(), labels);
  });
}

std::vector<NamedStroke> LegendOf(const std::vector<Ladder>& ladders) {
  std::vector<NamedStroke> legend;
  for (std::size_t i = 0; i < std::min(ladders.size(), kNamed); ++i)
    legend.push_back({ladders[i].Line(true), ladders[i].name});
  return legend;
}

}  // namespace

std::string DeconPlot(const LoadedSpectrum& loaded, const std::string& title,
                      const std::optional<RealRange>& view) {
  const DeconSpectrum& spectrum = DeconvolvedOf(loaded);
  const std::vector<Ladder> ladders = LaddersOf(loaded);
  Svg svg(kWidth, kMasses.Bottom());
  DrawHeader(svg, title, LegendOf(ladders));
  DrawSpectrum(svg, loaded, ladders, ViewOf(spectrum.xAxis, view));
  DrawMasses(svg, spectrum, ladders);
  return svg.Document();
}

}  // namespace TslTool
