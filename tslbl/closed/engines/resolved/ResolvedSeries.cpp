#include <tslbl/closed/engines/resolved/ResolvedSeries.h>

#include <tslbl/closed/engines/resolved/EnvelopeSearch.h>
#include <tslbl/closed/engines/resolved/JointAlignment.h>
#include <tslbl/closed/engines/resolved/SpeciesMaker.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <stdexcept>
#include <string>

namespace TslMath {
namespace {

constexpr std::int32_t kMostChargeOfIsotopes = 1000;
constexpr double kMassOfSeeds = 0.35;  // Da
constexpr std::size_t kMostAnchors = 10;

void Require(bool fact, const char* reason) {
  if (!fact) throw std::invalid_argument(reason);
}

void Check(const ResolvedPrefs& prefs) {
  Require(std::isfinite(prefs.carrierMass), "The mass of the charge carrier is no number.");
  Require(prefs.leastSignalToNoise >= 0.0 && std::isfinite(prefs.leastSignalToNoise),
          "The least signal-to-noise ratio must be 0 or more.");
  Require(prefs.lowestResolution <= prefs.highestResolution, "The lowest resolution is above the highest.");
  Require(prefs.leastScore >= 0.0 && prefs.leastScore <= 1.0, "The least score must be from 0 to 1.");
  Require(prefs.maxCharge >= 1 && prefs.maxCharge <= kMostChargeOfIsotopes,
          "The highest charge must be from 1 to 1000.");
  Require(prefs.maxIsotopeGaps >= 0 && prefs.maxChargeGaps >= 0, "The number of gaps must be 0 or more.");
  Require(prefs.accuracy > 0.0 && std::isfinite(prefs.accuracy), "The accuracy of m/z must be above 0.");
  Require(prefs.massAccuracy >= 0.0 && std::isfinite(prefs.massAccuracy),
          "The accuracy of charge states must be 0 or more.");
  for (const double threshold : {prefs.thresholds.atom, prefs.thresholds.molecule})
    Require(threshold >= 0.0 && threshold <= 1.0, "Thresholds of probability must be from 0 to 1.");
  Require(MonoMass(prefs.averageMolecule) > 0.0, "The average molecule has no atoms.");
}

// All that a search stands on.
struct Workplace {
  Workplace(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs)
      : checked((Check(prefs), prefs)),
        list(peaks, checked),
        patterns(checked.averageMolecule, checked.thresholds),
        remaining(Intensities(list)),
        match(list, checked, patterns, remaining),
        maker(list, checked, match, remaining) {
    checked.maxSpecies = std::max(checked.maxSpecies, 0);
  }

  static std::vector<double> Intensities(const IsotopeList& list) {
    std::vector<double> intensities;
    for (std::size_t i = 0; i < list.Count(); ++i) intensities.push_back(list[i].intensity);
    return intensities;
  }

  std::vector<std::size_t> PlacesOf(std::span<const std::size_t> rows) const {
    std::vector<std::size_t> places;
    for (const std::size_t row : rows)
      if (const std::size_t place = list.PlaceOf(row); place < list.Count()) places.push_back(place);
    return places;
  }

  ResolvedPrefs checked;
  IsotopeList list;
  VisiblePatterns patterns;
  std::vector<double> remaining;
  PatternMatch match;
  SpeciesMaker maker;
};

bool Holds(const Envelope& envelope, std::size_t peak) {
  return std::ranges::find(envelope.peaks, peak, &PatternPeak::peak) != envelope.peaks.end();
}

bool HoldsAny(const std::vector<Envelope>& envelopes, std::size_t peak) {
  return std::ranges::any_of(envelopes, [&](const Envelope& envelope) { return Holds(envelope, peak); });
}

// The strongest, of which the pattern that holds most has some.
std::vector<std::size_t> Anchors(const IsotopeList& list, std::span<const std::size_t> seeds) {
  std::vector<std::size_t> anchors(seeds.begin(), seeds.end());
  std::ranges::stable_sort(anchors, std::greater{}, [&](std::size_t seed) { return list[seed].intensity; });
  anchors.resize(std::min(anchors.size(), kMostAnchors));
  return anchors;
}

// That of any charge and any isotope which holds most of the seeds, and of those the one with most evidence.
std::optional<Envelope> BestWith(Workplace& work, std::span<const std::size_t> seeds) {
  std::optional<Envelope> best;
  std::size_t most = 0;
  Envelope trial;
  for (const std::size_t seed : Anchors(work.list, seeds)) {
    for (std::int32_t charge = 1; charge <= work.checked.maxCharge; ++charge) {
      const VisiblePattern& pattern = work.match.PatternOf(seed, charge);
      for (std::size_t place = 0; place < pattern.Size(); ++place) {
        if (!work.match.Lay(seed, charge, pattern, place, trial)) continue;
        if (trial.score < work.checked.leastScore) continue;
        const auto held = static_cast<std::size_t>(
            std::ranges::count_if(seeds, [&](std::size_t one) { return Holds(trial, one); }));
        if (best && (held < most || (held == most && trial.evidence <= best->evidence))) continue;
        most = held;
        best = trial;
      }
    }
  }
  return best;
}

// The pattern of this mass at another charge, from the peak near its top that fits best.
std::optional<Envelope> AtCharge(Workplace& work, double mass, std::int32_t charge) {
  const VisiblePattern& pattern = work.patterns.At(std::log(mass));
  const double top = (mass + pattern.mass[pattern.top]) / charge + work.checked.carrierMass;
  const double reach = work.match.HalfWindow(top, charge);
  std::optional<Envelope> best;
  Envelope trial;
  for (std::size_t i = work.list.FirstFrom(top - reach); i < work.list.Count(); ++i) {
    if (work.list[i].mz > top + reach) break;
    if (!work.match.BestAtMass(i, charge, mass, kMassOfSeeds, trial)) continue;
    if (trial.score < work.checked.leastScore || (best && trial.evidence <= best->evidence)) continue;
    best = trial;
  }
  return best;
}

// A peak of a given species that no pattern takes in: a state of itself.
Envelope Alone(const Workplace& work, std::size_t peak, std::int32_t charge, double mass,
               const VisiblePattern& pattern) {
  const double own = work.match.MassOf(peak, charge);
  const auto off = [&](double more) { return std::abs(own - more - mass); };
  const auto nearest = std::ranges::min_element(pattern.mass, {}, off);
  const auto isotope = static_cast<std::int32_t>(nearest - pattern.mass.begin()) + pattern.firstIsotope;
  return {charge, own - *nearest, 0.0, 0.0, {{isotope, peak, 0.0}}};
}

Envelope StateAround(Workplace& work, std::size_t peak, std::int32_t charge, double mass) {
  constexpr double kAnyMass = 1e9;
  constexpr auto kNoDemand = PatternMatch::Demand::None;
  Envelope envelope;
  if (work.match.BestAtMass(peak, charge, mass, kMassOfSeeds, envelope, kNoDemand)) return envelope;
  if (work.match.BestAtMass(peak, charge, mass, kAnyMass, envelope, kNoDemand)) return envelope;
  return Alone(work, peak, charge, mass, work.match.PatternOf(peak, charge));
}

// Its peaks that the list has.
std::vector<Envelope> FamilyOf(const IsotopeList& list, const Species& species) {
  std::vector<Envelope> family;
  for (const IsotopeState& state : species.states) {
    Envelope envelope{state.charge, state.monoMass, state.score, 0.0, {}};
    for (const MatchedIsotope& isotope : state.isotopes)
      if (const std::size_t place = list.PlaceOf(isotope.peak); place < list.Count())
        envelope.peaks.push_back({isotope.isotope, place, 0.0});
    if (!envelope.peaks.empty()) family.push_back(std::move(envelope));
  }
  return family;
}

}  // namespace

std::optional<std::size_t> IsotopeState::MonoPeak() const {
  if (isotopes.empty() || isotopes.front().isotope != 0) return std::nullopt;
  return isotopes.front().peak;
}

std::vector<Species> FindAllSpecies(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs) {
  Workplace work(peaks, prefs);
  return work.maker.Group(EnvelopeSearch(work.list, work.match, work.remaining).All());
}

std::optional<Species> FindSpeciesOf(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs,
                                     std::span<const std::size_t> seeds) {
  Workplace work(peaks, prefs);
  const std::optional<Envelope> first = BestWith(work, work.PlacesOf(seeds));
  if (!first) return std::nullopt;
  std::vector<Envelope> family = {*first};
  for (const std::int32_t step : {-1, +1}) {
    std::int32_t gaps = 0;
    for (std::int32_t charge = first->charge + step;
         charge >= 1 && charge <= work.checked.maxCharge && gaps <= work.checked.maxChargeGaps;
         charge += step) {
      std::optional<Envelope> next = AtCharge(work, first->monoMass, charge);
      gaps = next ? 0 : gaps + 1;
      if (next) family.push_back(std::move(*next));
    }
  }
  return work.maker.Make(std::move(family));
}

std::optional<Species> RecalculateSpecies(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs,
                                          double monoMass, std::span<const std::size_t> members) {
  Workplace work(peaks, prefs);
  std::vector<Envelope> family;
  for (const std::size_t peak : work.PlacesOf(members)) {
    const double charge = std::round(monoMass / work.list[peak].massAtOne);
    if (!(charge >= 1.0 && charge <= kMostChargeOfIsotopes) || HoldsAny(family, peak)) continue;
    family.push_back(StateAround(work, peak, static_cast<std::int32_t>(charge), monoMass));
  }
  if (family.empty()) return std::nullopt;
  return work.maker.Make(std::move(family));
}

std::vector<double> CountErrors(std::span<const IonPeak> peaks, const ResolvedPrefs& prefs,
                                std::span<const Species> species) {
  Workplace work(peaks, prefs);
  std::vector<std::vector<Envelope>> families;
  std::vector<std::size_t> owners;
  for (std::size_t i = 0; i < species.size(); ++i) {
    std::vector<Envelope> family = FamilyOf(work.list, species[i]);
    if (family.empty()) continue;
    families.push_back(std::move(family));
    owners.push_back(i);
  }
  const std::vector<double> found =
      JointAlignment(work.list, work.checked, work.match, work.remaining, families).Errors();
  std::vector<double> errors(species.size(), 0.0);
  for (std::size_t i = 0; i < found.size(); ++i) errors[owners[i]] = found[i];
  return errors;
}

}  // namespace TslMath
