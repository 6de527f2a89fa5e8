#include <tool/simulate/ExpectedCounts.h>

#include <tool/simulate/Instrument.h>
#include <tool/simulate/IsotopeLines.h>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace TslTool {
namespace {

// Lines of less than this share of their compound's molecules are lost in the noise.
constexpr double kLeastShare = 1e-5;
constexpr double kLeastVisible = 0.01;  // counts a point
constexpr double kUsualDwell = 200.0;   // microseconds a point, to which the heights of a sample refer

// Of a sample with the usual one.
double Background(double mz) { return 40.0 * std::exp(-mz / 300.0) + Sample::kUsualBackground; }

double MicrosecondsAPoint(const TslBL::Control& control) {
  return static_cast<double>(control.PulseCountDelay) * control.ScansPerSpec;
}

}  // namespace

ExpectedCounts::ExpectedCounts(const Sample& sample, const TslBL::Tune& tune, double width, LensModel lenses)
    : compounds_(sample.compounds),
      width_(width),
      lenses_(std::move(lenses)),
      polarity_(tune.ControlData.PolarityType == TslCommon::PolarityNegative ? -1 : 1),
      isSim_(tune.ControlData.Type == TslBL::Control::Sim),
      dwell_(MicrosecondsAPoint(tune.ControlData) / kUsualDwell),
      countsToRate_(1e6 / MicrosecondsAPoint(tune.ControlData)),
      mz_(AxisOf(tune)),
      background_(mz_.size()) {
  const double scale = sample.background / Sample::kUsualBackground;
  std::ranges::transform(mz_, background_.begin(), [&](double mz) {
    return scale * Background(mz) * (dwell_ * lenses_.Transmission(mz));
  });
  steady_ = background_;
  for (std::size_t c = 0; c < compounds_.size(); ++c) AddCompound(c);
  std::ranges::sort(visible_, {}, &CompoundLine::mz);
}

void ExpectedCounts::AddCompound(std::size_t compound) {
  const Compound& c = compounds_[compound];
  const std::vector<IsotopeMass> masses = IsotopeMasses(c);
  for (const auto& [charge, share] : c.charges) {
    const LineShape shape = ShapeAt(masses.front().mass / charge);
    const std::vector<Line> lines = IsotopeLines(masses, charge, shape.Blur(), polarity_);
    if (!IsScanned(lines)) continue;
    const std::vector<Line> visible = VisibleLines(lines, charge, shape);
    const double scale = c.height * share / std::ranges::max(visible, {}, &Line::height).height;
    const auto counted = [&](const Line& line) {
      return line.height * scale * (dwell_ * lenses_.Transmission(line.mz));
    };
    for (const Line& line : visible) visible_.push_back({line.mz, counted(line), compound, charge});
    for (const Line& line : lines) {
      if (line.height <= kLeastShare) continue;
      if (c.elutionWidth > 0.0) {
        eluting_.push_back({line.mz, counted(line), compound, charge});
      } else {
        Draw(line.mz, counted(line), steady_);
      }
    }
  }
}

bool ExpectedCounts::IsScanned(const std::vector<Line>& lines) const {
  const double reach = ShapeAt(lines.front().mz).Reach();
  return lines.back().mz + reach >= mz_.front() && lines.front().mz - reach <= mz_.back();
}

void ExpectedCounts::Draw(double mz, double height, std::vector<double>& counts) const {
  const LineShape shape = ShapeAt(mz);
  auto i = static_cast<std::size_t>(std::ranges::lower_bound(mz_, mz - shape.Reach()) - mz_.begin());
  for (; i < mz_.size() && mz_[i] <= mz + shape.Reach(); ++i) counts[i] += height * shape.At(mz_[i] - mz);
}

double ExpectedCounts::Elution(std::size_t compound, double fraction) const {
  const Compound& c = compounds_[compound];
  if (c.elutionWidth <= 0.0) return 1.0;
  // A plug of sample with blurred edges, as flow injection gives.
  constexpr double kEdge = 0.004;
  const double rises = 1.0 / (1.0 + std::exp((c.elutesAt - c.elutionWidth - fraction) / kEdge));
  const double falls = 1.0 / (1.0 + std::exp((fraction - c.elutesAt - c.elutionWidth) / kEdge));
  return rises * falls;
}

std::vector<double> ExpectedCounts::OfPoints(std::vector<double> steps) const {
  if (!isSim_) return steps;
  return {std::accumulate(steps.begin(), steps.end(), 0.0)};
}

std::vector<double> ExpectedCounts::At(double fraction) const {
  std::vector<double> counts = steady_;
  for (const CompoundLine& line : eluting_)
    Draw(line.mz, line.height * Elution(line.compound, fraction), counts);
  return OfPoints(std::move(counts));
}

std::vector<TrueLine> ExpectedCounts::Truth(double fraction) const {
  std::vector<TrueLine> truth;
  if (isSim_) return truth;
  for (const CompoundLine& line : visible_) {
    const double height = line.height * Elution(line.compound, fraction);
    if (height < kLeastVisible || line.mz < mz_.front() || line.mz > mz_.back()) continue;
    truth.push_back({line.mz, height * countsToRate_, compounds_[line.compound].name, line.charge});
  }
  return truth;
}

}  // namespace TslTool
