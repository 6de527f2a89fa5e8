#include <tslbl/closed/engines/resolved/SpeciesMaker.h>

#include <tslbl/closed/engines/resolved/JointAlignment.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

namespace TslMath {
namespace {

constexpr double kSameIsotope = 0.35;           // Da, at most
constexpr double kBothOff = 2.0;                // times the accuracy, where two masses are compared
constexpr double kIsotopeStepOfMass = 1.00235;  // Da, of large molecules
constexpr double kMostShift = 3.0;              // isotopes

bool HaveChargeInCommon(const std::vector<Envelope>& a, const std::vector<Envelope>& b) {
  return std::ranges::any_of(a, [&](const Envelope& envelope) {
    return std::ranges::find(b, envelope.charge, &Envelope::charge) != b.end();
  });
}

double MeanMass(const std::vector<Envelope>& family) {
  double sum = 0.0;
  for (const Envelope& envelope : family) sum += envelope.monoMass - family.front().monoMass;
  return family.front().monoMass + sum / static_cast<double>(family.size());
}

double Evidence(const std::vector<Envelope>& family) {
  double sum = 0.0;
  for (const Envelope& envelope : family) sum += envelope.evidence;
  return sum;
}

}  // namespace

SpeciesMaker::SpeciesMaker(const IsotopeList& list, const ResolvedPrefs& prefs, PatternMatch& match,
                           std::vector<double>& remaining)
    : list_(list), prefs_(prefs), match_(match), remaining_(remaining) {}

double SpeciesMaker::SameIsotope(double mass) const {
  return std::min(kSameIsotope, kBothOff * prefs_.accuracy * 1e-6 * mass);
}

bool SpeciesMaker::IsWholeIsotopesOff(double a, double b) const {
  const double isotopes = std::abs(a - b) / kIsotopeStepOfMass;
  return isotopes < kMostShift + 0.5 &&
         std::abs(isotopes - std::round(isotopes)) * kIsotopeStepOfMass < SameIsotope(b);
}

// Envelopes come in the order of what they explain.
std::vector<SpeciesMaker::Family> SpeciesMaker::Families(std::vector<Envelope> envelopes) const {
  std::vector<std::vector<std::size_t>> ofCharge(static_cast<std::size_t>(prefs_.maxCharge) + 1);
  for (std::size_t k = 0; k < envelopes.size(); ++k)
    ofCharge[static_cast<std::size_t>(envelopes[k].charge)].push_back(k);
  std::vector<char> isUsed(envelopes.size(), 0);
  const auto takeAt = [&](std::int32_t charge, double mass, Family& family) {
    for (const std::size_t k : ofCharge[static_cast<std::size_t>(charge)]) {
      const double found = envelopes[k].monoMass;
      if (isUsed[k] != 0 || std::abs(found - mass) > prefs_.massAccuracy * 1e-6 * mass ||
          !IsWholeIsotopesOff(found, mass))
        continue;
      isUsed[k] = 1;
      family.push_back(std::move(envelopes[k]));
      return true;
    }
    return false;
  };
  std::vector<Family> families;
  for (std::size_t k = 0; k < envelopes.size(); ++k) {
    if (isUsed[k] != 0) continue;
    isUsed[k] = 1;
    Family family{envelopes[k]};
    for (const std::int32_t step : {-1, +1}) {
      std::int32_t gaps = 0;
      for (std::int32_t charge = family[0].charge + step;
           charge >= 1 && charge <= prefs_.maxCharge && gaps <= prefs_.maxChargeGaps; charge += step)
        gaps = takeAt(charge, family[0].monoMass, family) ? 0 : gaps + 1;
    }
    families.push_back(std::move(family));
  }
  return families;
}

// The same peaks, as they were before patterns were taken off, with another count of isotopes.
bool SpeciesMaker::Refit(const Envelope& envelope, double mass, Envelope& refitted) {
  std::vector<double> before;
  for (const PatternPeak& peak : envelope.peaks) {
    before.push_back(remaining_[peak.peak]);
    remaining_[peak.peak] = list_[peak.peak].intensity;
  }
  const auto strongest = std::ranges::max_element(
      envelope.peaks, {}, [&](const PatternPeak& peak) { return list_[peak.peak].intensity; });
  const bool fits = match_.BestAtMass(strongest->peak, envelope.charge, mass, SameIsotope(mass), refitted);
  for (std::size_t k = 0; k < before.size(); ++k) remaining_[envelope.peaks[k].peak] = before[k];
  return fits && refitted.score >= prefs_.leastScore;
}

double SpeciesMaker::SupportOf(const Family& family, double mass) {
  double support = 0.0;
  Envelope refitted;
  for (const Envelope& envelope : family) {
    if (std::abs(envelope.monoMass - mass) < SameIsotope(mass))
      support += envelope.evidence;
    else if (Refit(envelope, mass, refitted))
      support += std::max(0.0, refitted.evidence);
  }
  return support;
}

double SpeciesMaker::BestSupported(const Family& family) {
  double best = family.front().monoMass;
  double most = -1.0;
  for (const Envelope& envelope : family) {
    const double support = SupportOf(family, envelope.monoMass);
    if (support <= most) continue;
    most = support;
    best = envelope.monoMass;
  }
  return best;
}

// Envelopes that do not fit the mass of the others leave the family.
void SpeciesMaker::Agree(Family& family, std::vector<Family>& others) {
  const auto isAt = [&](double mass) {
    return [this, mass](const Envelope& envelope) {
      return std::abs(envelope.monoMass - mass) < SameIsotope(mass);
    };
  };
  if (std::ranges::all_of(family, isAt(family.front().monoMass))) return;
  const double mass = BestSupported(family);
  Family agreeing;
  Envelope refitted;
  for (Envelope& envelope : family) {
    if (isAt(mass)(envelope))
      agreeing.push_back(std::move(envelope));
    else if (Refit(envelope, mass, refitted))
      agreeing.push_back(refitted);
    else
      others.push_back({std::move(envelope)});
  }
  family = std::move(agreeing);
}

// All of them, or none.
bool SpeciesMaker::MoveInto(Family& family, const Family& other) {
  const double mass = MeanMass(family);
  Family moved;
  for (const Envelope& envelope : other) {
    Envelope refitted;
    if (std::abs(envelope.monoMass - mass) < SameIsotope(mass))
      refitted = envelope;
    else if (!Refit(envelope, mass, refitted))
      return false;
    moved.push_back(std::move(refitted));
  }
  family.insert(family.end(), moved.begin(), moved.end());
  return true;
}

// Charges whose isotopes were counted differently and that stood too far from the others.
void SpeciesMaker::JoinShifted(std::vector<Family>& families) {
  std::ranges::stable_sort(families, std::greater{}, Evidence);
  for (std::size_t i = 0; i < families.size(); ++i) {
    for (std::size_t k = i + 1; k < families.size();) {
      const bool areOne = IsWholeIsotopesOff(MeanMass(families[i]), MeanMass(families[k])) &&
                          !HaveChargeInCommon(families[i], families[k]) && MoveInto(families[i], families[k]);
      if (areOne)
        families.erase(families.begin() + static_cast<std::ptrdiff_t>(k));
      else
        ++k;
    }
  }
}

double SpeciesMaker::IntensityOf(const IsotopeState& state) const {
  double sum = 0.0;
  for (const MatchedIsotope& isotope : state.isotopes) sum += list_[isotope.peak].intensity;
  return sum;
}

void SpeciesMaker::SetMass(Species& species) const {
  double weights = 0.0;
  double masses = 0.0;
  const double reference = species.states.front().monoMass;
  for (const IsotopeState& state : species.states) {
    const double intensity = IntensityOf(state);
    species.intensity += intensity;
    const double weight = prefs_.mean == MassMean::Weighted ? intensity : 1.0;
    weights += weight;
    masses += weight * (state.monoMass - reference);
  }
  species.monoMass = reference + masses / weights;
  double squares = 0.0;
  for (IsotopeState& state : species.states) {
    state.deviation = state.monoMass - species.monoMass;
    squares += state.deviation * state.deviation;
  }
  const auto n = static_cast<double>(species.states.size());
  species.standardDeviation = n > 1.0 ? std::sqrt(squares / (n - 1.0)) : 0.0;
}

Species SpeciesMaker::Make(Family family) {
  std::ranges::stable_sort(family, {}, &Envelope::charge);
  Species species;
  for (const Envelope& envelope : family) {
    IsotopeState state{envelope.charge, envelope.monoMass, 0.0, envelope.score, {}};
    for (const PatternPeak& peak : envelope.peaks) state.isotopes.push_back({peak.isotope, peak.peak});
    species.states.push_back(std::move(state));
  }
  SetMass(species);
  for (IsotopeState& state : species.states)
    for (MatchedIsotope& isotope : state.isotopes) isotope.peak = list_[isotope.peak].row;
  return species;
}

std::vector<Species> SpeciesMaker::Group(std::vector<Envelope> envelopes) {
  std::vector<Family> families = Families(std::move(envelopes));
  std::vector<Family> others;
  for (Family& family : families) Agree(family, others);
  std::ranges::move(others, std::back_inserter(families));
  JoinShifted(families);
  if (JointAlignment(list_, prefs_, match_, remaining_, families).Align()) JoinShifted(families);
  std::vector<Species> all;
  all.reserve(families.size());
  for (Family& family : families) all.push_back(Make(std::move(family)));
  std::ranges::stable_sort(all, std::greater{}, &Species::intensity);
  all.resize(std::min(all.size(), static_cast<std::size_t>(prefs_.maxSpecies)));
  return all;
}

}  // namespace TslMath
