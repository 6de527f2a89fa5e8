#include <tool/commands/ramp/RampPlot.h>

#include <fmt/format.h>

#include <tool/plot/Axes.h>
#include <tool/plot/Curves.h>
#include <tool/plot/Legend.h>
#include <tool/plot/Strokes.h>
#include <algorithm>
#include <map>

namespace TslTool {
namespace {

constexpr double kWidth = 1000.0;
constexpr double kHeader = 60.0;
constexpr double kPanel = 320.0;
constexpr double kRadius = 4.0;
constexpr double kRoom = 0.05;
constexpr Stroke kOverall = {"#404040", 1.0, "4 4"};

struct Quantity {
  const char* title;
  TslBL::MZPeakField::Types field;
};
constexpr Quantity kQuantities[] = {{"amplitude, %", TslBL::MZPeakField::Ampl},
                                    {"resolution, %", TslBL::MZPeakField::Res}};

double ValueOf(const TslBL::MZPeak& peak, const Quantity& quantity) {
  return TslBL::QMZPeakField(peak, quantity.field);
}

// Whether a step has the values of another one but for this lens.
bool IsBeside(const RampSteps& steps, std::size_t step, std::size_t other, std::size_t lens) {
  for (std::size_t i = 0; i < steps.lenses.size(); ++i)
    if (i != lens && steps.values[step][i] != steps.values[other][i]) return false;
  return true;
}

class Panel {
 public:
  Panel(Svg& svg, const RampResponse& response, std::size_t lens, const Quantity& quantity, const Box& box)
      : svg_(svg),
        response_(response),
        lens_(lens),
        quantity_(quantity),
        axes_(box, ValueRange(), PercentRange()) {}

  void Draw(const std::string& lensTitle) const {
    axes_.Draw(svg_, lensTitle, quantity_.title);
    svg_.Clipped(axes_.Area(), [this] {
      const double overall = response_.steps.values[response_.overall][lens_];
      svg_.Line(axes_.At(overall, axes_.YRange().low), axes_.At(overall, axes_.YRange().high), kOverall);
      for (std::size_t i = 0; i < response_.mz.size(); ++i) DrawResponse(i);
    });
  }

 private:
  Range ValueRange() const {
    Range range;
    for (const auto& values : response_.steps.values) range.Include(values[lens_]);
    return range.Padded(kRoom);
  }
  static Range PercentRange() {
    Range range;
    range.Include(0.0);
    range.Include(100.0);
    return range.Padded(kRoom);
  }

  void DrawResponse(std::size_t i) const {
    const auto& peaks = response_.peaks[i];
    double highest = 0.0;
    for (const auto& peak : peaks) highest = std::max(highest, ValueOf(peak.Peak, quantity_));
    if (!(highest > 0.0)) return;
    std::map<double, double> curve;
    for (std::size_t step = 0; step < peaks.size(); ++step)
      if (IsBeside(response_.steps, step, response_.best[i], lens_))
        curve[response_.steps.values[step][lens_]] = 100.0 * ValueOf(peaks[step].Peak, quantity_) / highest;
    std::vector<double> x, y;
    x.reserve(curve.size());
    y.reserve(curve.size());
    for (const auto& [value, percent] : curve) {
      x.push_back(value);
      y.push_back(percent);
    }
    DrawCurve(svg_, axes_, x, y, StrokeOf(i));
    const double best = response_.steps.values[response_.best[i]][lens_];
    svg_.Circle(axes_.At(best, curve.at(best)), kRadius, StrokeOf(i).colour);
  }

  Svg& svg_;
  const RampResponse& response_;
  std::size_t lens_;
  const Quantity& quantity_;
  Axes axes_;
};

}  // namespace

std::string RampPlot(const RampResponse& response, const TslBL::Tune& tune, const std::string& title) {
  const std::size_t lenses = response.steps.lenses.size();
  Svg svg(kWidth, kHeader + static_cast<double>(lenses) * kPanel);
  std::vector<std::string> names;
  names.reserve(response.mz.size());
  for (const double mz : response.mz) names.push_back(fmt::format("m/z {}", mz));
  std::vector<NamedStroke> strokes;
  strokes.reserve(names.size() + 1);
  for (std::size_t i = 0; i < names.size(); ++i) strokes.push_back({StrokeOf(i), names[i]});
  strokes.push_back({kOverall, "overall"});
  DrawHeader(svg, title, strokes);
  constexpr double kHalf = kWidth / std::size(kQuantities);
  for (std::size_t lens = 0; lens < lenses; ++lens)
    for (std::size_t q = 0; q < std::size(kQuantities); ++q)
      Panel(svg, response, lens, kQuantities[q],
            {static_cast<double>(q) * kHalf, kHeader + static_cast<double>(lens) * kPanel, kHalf, kPanel})
          .Draw(LensTitle(tune, response.steps.lenses[lens]));
  return svg.Document();
}

}  // namespace TslTool
