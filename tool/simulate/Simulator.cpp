#include <tool/simulate/Simulator.h>

#include <tool/simulate/Compounds.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/closed/engines/IsotopePattern.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace TslTool {
namespace {

constexpr double kProton = 1.00727646688;  // Da
constexpr double kFwhm = 0.6;              // m/z
constexpr double kSigma = kFwhm / 2.3548200450309493;
constexpr double kReach = 6.0 * kSigma;  // where a line ends
// Lines of less than this share of their compound's highest are lost in the noise.
constexpr double kLeastShare = 1e-5;
constexpr double kLeastVisible = 0.01;  // counts a point
constexpr std::uint32_t kTuneId = 1;

double Background(double mz) { return 40.0 * std::exp(-mz / 300.0) + 8.0; }

double LineShape(double distance) { return std::exp(-0.5 * distance * distance / (kSigma * kSigma)); }

TslBL::Tune DemonstrationTune() {
  TslBL::Tune tune = TslBL::DevTuneRules(TslBL::Probes::ESI);
  tune.Info.Name = L"Demonstration";
  tune.Info.Comment = L"The demonstration instrument of tslbl";
  // Neither the day nor the site's catalogue of syringes makes another run.
  tune.Info.LastSave = 0;
  tune.SyringeData = {};
  TslBL::Control& control = tune.ControlData;
  control.MZLow = 100.0;
  control.MZHi = 1100.0;
  control.MZStepSize = 0.05;
  control.InitSettleDelay = 1800;
  control.PulseCountDelay = 50;
  control.ScansPerSpec = 4;
  // Not quite straight, as no real scale is.
  tune.MZCalPts = {{L"Low", 5.0, 100.0},
                   {L"Calibrant 1", 322.0481, 6439.6},
                   {L"Calibrant 2", 922.0098, 18441.9},
                   {L"High", 3000.0, 60000.0}};
  return tune;
}

// Each point's m/z, as the evaluation will have it.
std::vector<double> AxisOf(const TslBL::Tune& tune) {
  const TslBL::MZConvert convert(tune.MZCalPts);
  const double start = convert.MZToDAC(tune.ControlData.MZLow);
  const auto step =
      TslBL::DevTuneRules::TranslateField(TslBL::TuneField::MZStepSize, tune.ControlData.MZStepSize);
  std::vector<double> mz(TslBL::DevTuneRules::QNumPulses(tune));
  for (std::size_t i = 0; i < mz.size(); ++i) mz[i] = convert.DACToMZ(static_cast<double>(i) * step + start);
  return mz;
}

struct Place {
  double mz;
  double height;
};

// The isotope lines of one charge state, of which the highest summed line is 1 high.
std::vector<Place> IsotopeLines(const Compound& compound, std::uint32_t charge) {
  const TslMath::Composition average = TslMath::ParseFormula("C117H184N32O35S");
  const TslMath::Composition composition = compound.formula.empty()
                                               ? TslMath::ScaleToMass(average, compound.mass)
                                               : TslMath::ParseFormula(compound.formula);
  const TslMath::IsotopePattern pattern = TslMath::MakeIsotopePattern(composition);
  std::vector<Place> lines;
  for (std::size_t i = 0; i < pattern.probability.size(); ++i)
    lines.push_back({(pattern.monoMass + pattern.mass[i]) / charge + kProton, pattern.probability[i]});
  return lines;
}

double ProfileAt(const std::vector<Place>& lines, double mz) {
  double sum = 0.0;
  for (const Place& line : lines) sum += line.height * LineShape(mz - line.mz);
  return sum;
}

// The mean position of the top quarter of the profile around its maximum at `top`, as a
// peak's centroid is measured.
double TopCentroid(const std::vector<Place>& lines, const Place& top, double step) {
  const double level = 0.75 * top.height;
  double sum = top.height;
  double moment = 0.0;
  for (const double direction : {-step, step}) {
    double height = top.height;
    for (int i = 1; height >= level; ++i) {
      height = ProfileAt(lines, top.mz + i * direction);
      if (height < level) break;
      sum += height;
      moment += height * i * direction;
    }
  }
  return top.mz + moment / sum;
}

// The maxima of the summed profile: what a quadrupole can tell apart. A single charge shows
// the isotopes themselves; the lines of a higher one run together, and count as one line at
// its centroid.
std::vector<Place> VisibleLines(const std::vector<Place>& lines, std::uint32_t charge) {
  constexpr double kStep = 0.001;
  std::vector<Place> visible;
  const double from = lines.front().mz - kFwhm;
  const auto steps = static_cast<int>((lines.back().mz + kFwhm - from) / kStep);
  double before = 0.0;
  double here = ProfileAt(lines, from);
  for (int i = 1; i <= steps; ++i) {
    const double next = ProfileAt(lines, from + i * kStep);
    if (here > before && here >= next) {
      const Place top{from + (i - 1) * kStep, here};
      const auto isotope =
          std::ranges::min(lines, {}, [&](const Place& l) { return std::abs(l.mz - top.mz); });
      visible.push_back({charge == 1 ? isotope.mz : TopCentroid(lines, top, kStep), here});
    }
    before = here;
    here = next;
  }
  return visible;
}

}  // namespace

Simulator::Simulator(std::uint32_t scans, std::uint64_t seed)
    : scans_(scans), seed_(seed), tune_(DemonstrationTune()), mz_(AxisOf(tune_)) {
  background_.resize(mz_.size());
  std::ranges::transform(mz_, background_.begin(), Background);
  const auto compounds = DemonstrationCompounds();
  for (std::size_t c = 0; c < compounds.size(); ++c) {
    for (const auto& [charge, share] : compounds[c].charges) {
      const std::vector<Place> lines = IsotopeLines(compounds[c], charge);
      const std::vector<Place> visible = VisibleLines(lines, charge);
      const double scale = compounds[c].height * share / std::ranges::max(visible, {}, &Place::height).height;
      for (const Place& line : lines)
        if (line.height > kLeastShare) lines_.push_back({line.mz, line.height * scale, c, charge});
      for (const Place& line : visible) visible_.push_back({line.mz, line.height * scale, c, charge});
    }
  }
  std::ranges::sort(visible_, {}, &Line::mz);
}

double Simulator::Elution(std::size_t compound, std::uint32_t index) const {
  const Compound& c = DemonstrationCompounds()[compound];
  if (c.elutionWidth <= 0.0) return 1.0;
  // A plug of sample with blurred edges, as flow injection gives.
  constexpr double kEdge = 0.004;
  const double at = (index + 0.5) / scans_;
  const double rises = 1.0 / (1.0 + std::exp((c.elutesAt - c.elutionWidth - at) / kEdge));
  const double falls = 1.0 / (1.0 + std::exp((at - c.elutesAt - c.elutionWidth) / kEdge));
  return rises * falls;
}

std::vector<double> Simulator::Expected(std::uint32_t index) const {
  std::vector<double> counts = background_;
  for (const Line& line : lines_) {
    const double height = line.height * Elution(line.compound, index);
    auto i = static_cast<std::size_t>(std::ranges::lower_bound(mz_, line.mz - kReach) - mz_.begin());
    for (; i < mz_.size() && mz_[i] <= line.mz + kReach; ++i)
      counts[i] += height * LineShape(mz_[i] - line.mz);
  }
  return counts;
}

TslBL::RawSpectrum Simulator::MakeScan(std::uint32_t index) const {
  std::seed_seq seeds{static_cast<std::uint32_t>(seed_), static_cast<std::uint32_t>(seed_ >> 32), index};
  std::mt19937_64 random(seeds);
  TslBL::RawSpectrum raw;
  raw.counts = Expected(index);
  for (double& count : raw.counts) {
    count = static_cast<double>(std::poisson_distribution<std::int64_t>(count)(random));
    raw.info.TIC += count;
  }
  raw.info.Id = index + 1;
  raw.info.TuneId = kTuneId;
  raw.info.TimeStamp = TimeStamp(index);
  return raw;
}

std::uint32_t Simulator::TimeStamp(std::uint32_t index) const {
  const double milliseconds = TslBL::DevTuneRules::QDuration(tune_) / 1000.0;
  return TslCommon::Truncate<std::uint32_t>(milliseconds * index + 0.5);
}

std::vector<TrueLine> Simulator::Truth(std::uint32_t index) const {
  const TslBL::Control& control = tune_.ControlData;
  const double countsToRate = 1e6 / (static_cast<double>(control.PulseCountDelay) * control.ScansPerSpec);
  std::vector<TrueLine> truth;
  for (const Line& line : visible_) {
    const double height = line.height * Elution(line.compound, index);
    if (height < kLeastVisible || line.mz < mz_.front() || line.mz > mz_.back()) continue;
    truth.push_back(
        {line.mz, height * countsToRate, DemonstrationCompounds()[line.compound].name, line.charge});
  }
  return truth;
}

}  // namespace TslTool
