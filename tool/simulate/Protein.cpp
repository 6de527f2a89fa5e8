#include <tool/simulate/Protein.h>

#include <tool/simulate/IsotopeLines.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

constexpr double kDaltonsPerCharge = 100.0;
constexpr double kUsualLow = 700.0;  // m/z
constexpr double kUsualHigh = 1500.0;
constexpr double kShareOfEnds = 0.1;

double Charges(double averageMass, double mz) { return averageMass / (mz - kProton); }

// Whole charges from m/z `high` down to `low`.
CountRange ChargesBetween(double averageMass, double low, double high) {
  return {std::max(1U, static_cast<std::uint32_t>(std::ceil(Charges(averageMass, high)))),
          static_cast<std::uint32_t>(Charges(averageMass, low))};
}

// The share of the highest one is not quite 1 if two are as near to the middle.
std::vector<ChargeState> Envelope(const CountRange& charges) {
  const double middle = 0.5 * charges.from + 0.5 * charges.to;
  const double half = std::max(0.5, 0.5 * (charges.to - charges.from));
  std::vector<ChargeState> states;
  for (std::uint32_t charge = charges.from; charge <= charges.to; ++charge)
    states.push_back({charge, std::pow(kShareOfEnds, std::pow((charge - middle) / half, 2))});
  const double highest = std::ranges::max(states, {}, &ChargeState::share).share;
  for (ChargeState& state : states) state.share /= highest;
  return states;
}

}  // namespace

std::uint32_t MostCharges(double averageMass) {
  return static_cast<std::uint32_t>(averageMass / kDaltonsPerCharge);
}

CountRange ScannedCharges(double averageMass, const Instrument& instrument) {
  return ChargesBetween(averageMass, instrument.mzLow, instrument.mzHigh);
}

CountRange UsualCharges(double averageMass) {
  const CountRange usual = ChargesBetween(averageMass, kUsualLow, kUsualHigh);
  // One that is lighter than m/z 700 has a single charge.
  return {usual.from, std::max(usual.from, usual.to)};
}

CountRange Common(const CountRange& a, const CountRange& b) {
  return {std::max(a.from, b.from), std::min(a.to, b.to)};
}

Compound InfusedProtein(const std::string& name, double averageMass, const CountRange& charges,
                        double height) {
  return {.name = name,
          .formula = "",
          .monoMass = 0.0,
          .charges = Envelope(charges),
          .height = height,
          .elutesAt = 0.0,
          .elutionWidth = 0.0,
          .averageMass = averageMass};
}

}  // namespace TslTool
