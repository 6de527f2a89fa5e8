// What docs/numerics.md tells of isotope patterns in peak lists, measured over simulated ones.
//
// Tests: ResolvedSeries.cpp, EnvelopeSearch.cpp, PatternMatch.cpp, SpeciesMaker.cpp.
#include <gtest/gtest.h>

#include <tslbl/closed/engines/resolved/ResolvedSeries.h>

#include <string>

#include "SimulatedIsotopes.h"

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kRightMass = 0.4;  // Da

struct Tally {
  double right = 0;        // shares of the ions of which three isotopes can be seen
  double wrongCharge = 0;  // a state where the ion stands, of another charge
  double extra = 0;        // other states, a list
};

ResolvedPrefs PrefsFor(const IsotopeRecipe& recipe) {
  ResolvedPrefs prefs;
  prefs.lowestResolution = 0;
  prefs.highestResolution = 1e6;
  prefs.maxCharge = recipe.maxCharge;
  prefs.carrierMass = kProtonMass;
  prefs.maxSpecies = 1000;
  return prefs;
}

std::vector<IsotopeState> AllStates(const IsotopeSample& sample, const ResolvedPrefs& prefs) {
  std::vector<IsotopeState> states;
  for (const Species& species : FindAllSpecies(sample.peaks, prefs))
    states.insert(states.end(), species.states.begin(), species.states.end());
  return states;
}

template <class Fits>
bool TakeOne(std::vector<IsotopeState>& states, Fits fits) {
  const auto found = std::ranges::find_if(states, fits);
  if (found == states.end()) return false;
  states.erase(found);
  return true;
}

Tally Measure(const IsotopeRecipe& recipe, ResolvedPrefs prefs) {
  std::mt19937_64 random(5);
  int ions = 0, right = 0, wrongCharge = 0;
  std::size_t extra = 0;
  for (int k = 0; k < SampleCount(); ++k) {
    const IsotopeSample sample = IsotopeSimulator(recipe, random).Make();
    std::vector<IsotopeState> states = AllStates(sample, prefs);
    for (const SimulatedIon& ion : sample.ions) {
      const bool counts = ion.seen >= 3;
      ions += counts;
      const auto isRight = [&](const IsotopeState& state) {
        return state.charge == ion.charge && std::abs(state.monoMass - ion.monoMass) < kRightMass;
      };
      const auto isShifted = [&](const IsotopeState& state) {
        return state.charge == ion.charge && std::abs(state.monoMass - ion.monoMass) < 2.4;
      };
      const auto isThere = [&](const IsotopeState& state) {
        return std::abs(state.monoMass / state.charge - ion.monoMass / ion.charge) < 2;
      };
      if (TakeOne(states, isRight))
        right += counts;
      else if (!TakeOne(states, isShifted) && TakeOne(states, isThere))
        wrongCharge += counts;
    }
    extra += states.size();
  }
  return {static_cast<double>(right) / std::max(ions, 1),
          static_cast<double>(wrongCharge) / std::max(ions, 1), static_cast<double>(extra) / SampleCount()};
}

struct Case {
  const char* name;
  IsotopeRecipe recipe;
  double leastRight;
  double mostWrongCharge;
  double mostExtra;
};

const Case kCases[] = {
    {"fwhm_0.6", {}, 0.94, 0.01, 2},
    {"fwhm_0.6_30_species", {.species = 30}, 0.87, 0.01, 2},
    {"fwhm_0.6_noise_0.1", {.noise = 0.1}, 0.92, 0.015, 4},
    {"fwhm_0.6_weak", {.leastArea = 10, .mostArea = 100}, 0.88, 0.015, 1.5},
    {"fwhm_0.3", {.fwhm = 0.3, .maxCharge = 2, .mzError = 0.02}, 0.93, 0.025, 2},
    {"fwhm_0.2", {.fwhm = 0.2, .maxCharge = 3, .mzError = 0.015, .highestMass = 4000}, 0.92, 0.035, 2},
    {"fwhm_0.05",
     {.fwhm = 0.05, .maxCharge = 8, .mzError = 0.003, .highestMass = 10000, .leastArea = 60},
     0.94,
     0.025,
     2.5},
    {"peptides_fwhm_0.04",
     {.species = 5, .fwhm = 0.04, .maxCharge = 3, .mzError = 0.002, .highestMass = 3500, .leastArea = 200},
     0.985,
     0.01,
     1.5},
};

void Check(const Case& one, const ResolvedPrefs& prefs, const std::string& name) {
  const Tally tally = Measure(one.recipe, prefs);
  testing::Test::RecordProperty(name + "_right", std::to_string(tally.right));
  testing::Test::RecordProperty(name + "_wrong_charge", std::to_string(tally.wrongCharge));
  testing::Test::RecordProperty(name + "_extra", std::to_string(tally.extra));
  EXPECT_GE(tally.right, one.leastRight) << name;
  EXPECT_LE(tally.wrongCharge, one.mostWrongCharge) << name;
  EXPECT_LE(tally.extra, one.mostExtra) << name;
}

TEST(FindAllSpeciesAccuracy, ChargesAndMonoisotopicMassesAreRight) {
  for (const Case& one : kCases) Check(one, PrefsFor(one.recipe), one.name);
}

TEST(FindAllSpeciesAccuracy, HoldsForCrossCorrelation) {
  ResolvedPrefs prefs = PrefsFor(kCases[0].recipe);
  prefs.score = PatternScore::CrossCorrelation;
  Check(kCases[0], prefs, "cross_correlation_fwhm_0.6");
}

TEST(FindAllSpeciesAccuracy, FindsFewPatternsInNoise) {
  const Tally tally = Measure({.species = 0, .noise = 0.1}, PrefsFor({}));
  RecordProperty("noise_extra", std::to_string(tally.extra));
  EXPECT_LE(tally.extra, 4);
}

// Four proteins at five charges each.
double ShareOfFamiliesRight(double about, int lists) {
  std::mt19937_64 random(5);
  const IsotopeRecipe recipe{.species = 0, .fwhm = 0.05, .noise = 0.03, .mzError = 0.002};
  ResolvedPrefs prefs = PrefsFor(recipe);
  prefs.maxCharge = 25;
  prefs.accuracy = 20;
  prefs.massAccuracy = 300;
  prefs.maxSpecies = 40;
  int right = 0;
  for (int k = 0; k < lists; ++k) {
    IsotopeSimulator simulator(recipe, random);
    std::vector<double> masses;
    for (int protein = 0; protein < 4; ++protein) {
      const double mass = about * std::uniform_real_distribution<double>(0.6, 1.4)(random);
      masses.push_back(simulator.AddProtein(mass));
    }
    const auto species = FindAllSpecies(simulator.Make().peaks, prefs);
    for (const double mass : masses)
      right += std::ranges::any_of(species, [&](const Species& one) {
        return std::abs(one.monoMass - mass) < 0.3 && one.states.size() >= 2;
      });
  }
  return static_cast<double>(right) / (4.0 * lists);
}

TEST(FindAllSpeciesAccuracy, FamiliesHaveTheRightMass) {
  for (const double about : {3000.0, 8000.0, 15000.0}) {
    const double share = ShareOfFamiliesRight(about, std::max(5, SampleCount() / 2));
    RecordProperty("family_" + std::to_string(static_cast<int>(about)), std::to_string(share));
    EXPECT_GE(share, about < 10000 ? 0.97 : 0.93) << about;
  }
}

}  // namespace
