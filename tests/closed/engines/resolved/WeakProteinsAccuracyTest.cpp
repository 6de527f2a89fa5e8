// What docs/numerics.md tells of the isotopes of large proteins, counted by few and weak charges and beside
// others.
//
// Tests: JointAlignment.cpp, IsotopeAlignment.cpp, ResolvedSeries.cpp.
#include <gtest/gtest.h>

#include <tslbl/closed/engines/resolved/ResolvedSeries.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "RandomProteins.h"

using namespace TslMath;
using namespace tests;

namespace {

// Another protein at the same charges.
struct Neighbour {
  double off;                // Da
  double share;              // of the intensity
  bool isOtherwise = false;  // of other residues
};

struct Case {
  const char* name;
  double from, to;           // Da
  double leastTop, mostTop;  // of each charge, over the noise
  int leastStates, mostStates;
  std::optional<Neighbour> neighbour;  // then this one is judged
  double leastRight;
};

const Case kCases[] = {
    {"alone_10_to_15_kDa", 10000, 15000, 5, 20, 2, 4, {}, 0.95},
    {"alone_15_to_20_kDa", 15000, 20000, 5, 20, 2, 4, {}, 0.90},
    {"alone_20_to_29_kDa", 20000, 29000, 5, 20, 2, 4, {}, 0.85},
    {"strong_20_to_29_kDa", 20000, 29000, 100, 200, 2, 4, {}, 0.90},
    {"methylated_10_to_15_kDa", 10000, 15000, 30, 100, 3, 6, Neighbour{14.01565, 0.3}, 0.97},
    {"methylated_15_to_29_kDa", 15000, 29000, 30, 100, 3, 6, Neighbour{14.01565, 0.3}, 0.93},
    {"sodium_10_to_29_kDa", 10000, 29000, 30, 100, 3, 6, Neighbour{21.98194, 0.15}, 0.93},
    {"another_10_to_29_kDa", 10000, 29000, 30, 100, 3, 6, Neighbour{75, 0.5, true}, 0.85},
};

struct Tally {
  int proteins = 0;
  int right = 0;
  int found = 0;        // within four isotopes
  double squares = 0;   // of what the found ones are off, Da
  double expected = 0;  // of what they are told to be off
};

int ListCount() {
  const char* told = std::getenv("TSLBL_LISTS");
  return told != nullptr ? std::atoi(told) : 100;
}

ResolvedPrefs Prefs() {
  ResolvedPrefs prefs;
  prefs.lowestResolution = 0;
  prefs.highestResolution = 1e6;
  prefs.maxCharge = 40;
  prefs.accuracy = 10;
  prefs.massAccuracy = 300;
  prefs.carrierMass = WeakSpectrum::kProton;
  prefs.maxSpecies = 100;
  return prefs;
}

void Judge(const std::vector<IonPeak>& peaks, double mass, Tally& tally) {
  const std::vector<Species> species = FindAllSpecies(peaks, Prefs());
  const std::vector<double> errors = CountErrors(peaks, Prefs(), species);
  const auto isNear = [&](double reach) {
    return [mass, reach](const Species& one) { return std::abs(one.monoMass - mass) < reach; };
  };
  ++tally.proteins;
  tally.right += std::ranges::any_of(species, isNear(0.3));
  const auto found = std::ranges::find_if(species, isNear(4.3));
  if (found == species.end()) return;
  ++tally.found;
  tally.squares += std::pow(found->monoMass - mass, 2);
  tally.expected += std::pow(errors[static_cast<std::size_t>(found - species.begin())], 2);
}

Tally Measure(const Case& one) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> within(0, 1);
  Tally tally;
  for (int k = 0; k < ListCount(); ++k) {
    const double mass = one.from + (one.to - one.from) * within(random);
    const IsotopePattern pattern = MakeIsotopePattern(RandomProtein(mass, random), {0, 1e-9});
    IsotopePattern other = pattern;
    if (one.neighbour && one.neighbour->isOtherwise)
      other = MakeIsotopePattern(RandomProtein(mass + one.neighbour->off, random), {0, 1e-9});
    else if (one.neighbour)
      other.monoMass += one.neighbour->off;
    const int states = std::uniform_int_distribution<int>(one.leastStates, one.mostStates)(random);
    const int first = static_cast<int>(mass / 900) - states / 2;
    WeakSpectrum spectrum(random);
    for (int charge = first; charge < first + states; ++charge) {
      const double top = one.leastTop + (one.mostTop - one.leastTop) * within(random);
      spectrum.AddState(pattern, charge, top);
      if (one.neighbour) spectrum.AddState(other, charge, one.neighbour->share * top);
    }
    spectrum.AddNoise(600, 1400, 0.1);
    Judge(spectrum.Peaks(), other.monoMass, tally);
  }
  return tally;
}

TEST(FindAllSpeciesAccuracy, CountsIsotopesByAllChargesAndTellsHowSurely) {
  double squares = 0, expected = 0;
  for (const Case& one : kCases) {
    const Tally tally = Measure(one);
    const double right = static_cast<double>(tally.right) / tally.proteins;
    RecordProperty(std::string(one.name) + "_right", std::to_string(right));
    RecordProperty(std::string(one.name) + "_rms", std::to_string(std::sqrt(tally.squares / tally.found)));
    RecordProperty(std::string(one.name) + "_told", std::to_string(std::sqrt(tally.expected / tally.found)));
    EXPECT_GE(right, one.leastRight) << one.name;
    squares += tally.squares;
    expected += tally.expected;
  }
  const double ratio = std::sqrt(squares / expected);
  RecordProperty("count_error_ratio", std::to_string(ratio));
  EXPECT_GT(ratio, 0.75);
  EXPECT_LT(ratio, 1.25);
}

}  // namespace
