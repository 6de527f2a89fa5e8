#include <tool/simulate/Simulator.h>

#include <tool/simulate/IsotopeLines.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>
#include <random>

namespace TslTool {
namespace {

// Lines of less than this share of their compound's molecules are lost in the noise.
constexpr double kLeastShare = 1e-5;
constexpr double kLeastVisible = 0.01;  // counts a point
constexpr std::uint32_t kTuneId = 1;

// Of a sample with the usual one.
double Background(double mz) { return 40.0 * std::exp(-mz / 300.0) + Sample::kUsualBackground; }

// A distribution around 0 is none.
double PoissonCount(double expected, std::mt19937_64& random) {
  if (expected <= 0.0) return 0.0;
  return static_cast<double>(std::poisson_distribution<std::int64_t>(expected)(random));
}

}  // namespace

Simulator::Simulator(std::uint32_t scans, std::uint64_t seed, const Sample& sample,
                     const Instrument& instrument)
    : scans_(scans),
      seed_(seed),
      compounds_(sample.compounds),
      shape_(instrument.width),
      tune_(TuneOf(instrument)),
      mz_(AxisOf(tune_)),
      steady_(mz_.size()) {
  const double scale = sample.background / Sample::kUsualBackground;
  std::ranges::transform(mz_, steady_.begin(), [&](double mz) { return scale * Background(mz); });
  for (std::size_t c = 0; c < compounds_.size(); ++c) AddCompound(c);
  std::ranges::sort(visible_, {}, &CompoundLine::mz);
}

void Simulator::AddCompound(std::size_t compound) {
  const Compound& c = compounds_[compound];
  const std::vector<IsotopeMass> masses = IsotopeMasses(c);
  for (const auto& [charge, share] : c.charges) {
    const std::vector<Line> lines = IsotopeLines(masses, charge, shape_.Blur());
    if (!IsScanned(lines)) continue;
    const std::vector<Line> visible = VisibleLines(lines, charge, shape_);
    const double scale = c.height * share / std::ranges::max(visible, {}, &Line::height).height;
    for (const Line& line : visible) visible_.push_back({line.mz, line.height * scale, compound, charge});
    for (const Line& line : lines) {
      if (line.height <= kLeastShare) continue;
      if (c.elutionWidth > 0.0) {
        eluting_.push_back({line.mz, line.height * scale, compound, charge});
      } else {
        Draw(line.mz, line.height * scale, steady_);
      }
    }
  }
}

bool Simulator::IsScanned(const std::vector<Line>& lines) const {
  return lines.back().mz + shape_.Reach() >= mz_.front() && lines.front().mz - shape_.Reach() <= mz_.back();
}

void Simulator::Draw(double mz, double height, std::vector<double>& counts) const {
  auto i = static_cast<std::size_t>(std::ranges::lower_bound(mz_, mz - shape_.Reach()) - mz_.begin());
  for (; i < mz_.size() && mz_[i] <= mz + shape_.Reach(); ++i) counts[i] += height * shape_.At(mz_[i] - mz);
}

double Simulator::Elution(std::size_t compound, std::uint32_t index) const {
  const Compound& c = compounds_[compound];
  if (c.elutionWidth <= 0.0) return 1.0;
  // A plug of sample with blurred edges, as flow injection gives.
  constexpr double kEdge = 0.004;
  const double at = (index + 0.5) / scans_;
  const double rises = 1.0 / (1.0 + std::exp((c.elutesAt - c.elutionWidth - at) / kEdge));
  const double falls = 1.0 / (1.0 + std::exp((at - c.elutesAt - c.elutionWidth) / kEdge));
  return rises * falls;
}

std::vector<double> Simulator::Expected(std::uint32_t index) const {
  std::vector<double> counts = steady_;
  for (const CompoundLine& line : eluting_)
    Draw(line.mz, line.height * Elution(line.compound, index), counts);
  return counts;
}

TslBL::RawSpectrum Simulator::MakeScan(std::uint32_t index) const {
  std::seed_seq seeds{static_cast<std::uint32_t>(seed_), static_cast<std::uint32_t>(seed_ >> 32), index};
  std::mt19937_64 random(seeds);
  TslBL::RawSpectrum raw;
  raw.counts = Expected(index);
  for (double& count : raw.counts) {
    count = PoissonCount(count, random);
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
  for (const CompoundLine& line : visible_) {
    const double height = line.height * Elution(line.compound, index);
    if (height < kLeastVisible || line.mz < mz_.front() || line.mz > mz_.back()) continue;
    truth.push_back({line.mz, height * countsToRate, compounds_[line.compound].name, line.charge});
  }
  return truth;
}

}  // namespace TslTool
