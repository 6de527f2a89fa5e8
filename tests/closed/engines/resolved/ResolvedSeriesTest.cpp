// Tests: ResolvedSeries.cpp, EnvelopeSearch.cpp, PatternMatch.cpp, SpeciesMaker.cpp, IsotopeList.cpp,
// JointAlignment.cpp.
#include <tslbl/closed/engines/resolved/ResolvedSeries.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

using namespace TslMath;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kCarrier = 1.007276;

ResolvedPrefs Prefs() {
  ResolvedPrefs prefs;
  prefs.highestResolution = 1e6;
  return prefs;
}

// The exact pattern of the average molecule of about this mass, down to a hundredth of the top.
std::vector<IonPeak> Pattern(double mass, int charge, double area = 1e4, double carrier = kCarrier) {
  const IsotopePattern pattern = MakeIsotopePattern(ScaleToMass(ResolvedPrefs{}.averageMolecule, mass));
  std::vector<IonPeak> peaks;
  for (std::size_t k = 0; k < pattern.probability.size(); ++k) {
    if (pattern.probability[k] < 0.01 * pattern.probability[pattern.Top()]) continue;
    const double ions = area * pattern.probability[k];
    peaks.push_back({(pattern.monoMass + pattern.mass[k]) / charge + carrier, ions, ions, ions / 5, 20000});
  }
  return peaks;
}

double MonoMassAt(double mass) { return MonoMass(ScaleToMass(ResolvedPrefs{}.averageMolecule, mass)); }

std::vector<IonPeak> operator+(std::vector<IonPeak> a, const std::vector<IonPeak>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

std::vector<int> Charges(const Species& species) {
  std::vector<int> charges;
  for (const IsotopeState& state : species.states) charges.push_back(state.charge);
  return charges;
}

std::size_t CountFound(const std::vector<IonPeak>& peaks, const ResolvedPrefs& prefs) {
  return FindAllSpecies(peaks, prefs).size();
}

TEST(FindAllSpecies, FindsChargeAndMassOfAPattern) {
  for (const int charge : {1, 2, 3}) {
    const auto species = FindAllSpecies(Pattern(1500, charge), Prefs());
    ASSERT_EQ(species.size(), 1U);
    EXPECT_EQ(Charges(species[0]), std::vector<int>{charge});
    EXPECT_NEAR(species[0].monoMass, MonoMassAt(1500), 0.01);
    EXPECT_GT(species[0].states[0].score, 0.98);
    EXPECT_EQ(species[0].states[0].MonoPeak(), 0U);
    EXPECT_EQ(species[0].standardDeviation, 0);
  }
}

TEST(FindAllSpecies, NumbersIsotopesAndTheirPeaks) {
  auto peaks = Pattern(1500, 2);
  std::reverse(peaks.begin(), peaks.end());
  const auto species = FindAllSpecies(peaks, Prefs());
  ASSERT_EQ(species.size(), 1U);
  const auto& isotopes = species[0].states[0].isotopes;
  ASSERT_EQ(isotopes.size(), peaks.size());
  for (std::size_t k = 0; k < isotopes.size(); ++k) {
    EXPECT_EQ(isotopes[k].isotope, static_cast<std::int32_t>(k));
    EXPECT_EQ(isotopes[k].peak, peaks.size() - 1 - k);
  }
}

TEST(FindAllSpecies, PutsTheChargesOfOneMassTogether) {
  const auto species = FindAllSpecies(Pattern(1500, 1) + Pattern(1500, 2) + Pattern(1500, 3), Prefs());
  ASSERT_EQ(species.size(), 1U);
  EXPECT_EQ(Charges(species[0]), (std::vector<int>{1, 2, 3}));
  for (const IsotopeState& state : species[0].states)
    EXPECT_DOUBLE_EQ(state.deviation, state.monoMass - species[0].monoMass);
}

TEST(FindAllSpecies, TakesOverlappedPatternsApart) {
  const auto species = FindAllSpecies(Pattern(1500, 2, 1e4) + Pattern(1501.6, 2, 6e3), Prefs());
  ASSERT_EQ(species.size(), 2U);
  EXPECT_NEAR(species[0].monoMass, MonoMassAt(1500), 0.05);
  EXPECT_NEAR(species[1].monoMass, MonoMassAt(1501.6), 0.05);
}

// A peptide with two atoms of sulfur: its last isotopes are stronger than those of the
// average molecule.
TEST(FindAllSpecies, MakesNoSpeciesOfTheLastIsotopesOfAnother) {
  const IsotopePattern pattern = MakeIsotopePattern(ParseFormula("C50 H84 N14 O16 S2"));
  std::vector<IonPeak> peaks;
  for (std::size_t k = 0; k < pattern.probability.size(); ++k) {
    const double ions = 5e4 * pattern.probability[k];
    if (ions > 100.0)
      peaks.push_back({(pattern.monoMass + pattern.mass[k]) / 2 + kCarrier, ions, ions, ions / 30, 20000});
  }
  EXPECT_EQ(CountFound(peaks, Prefs()), 1U);
}

TEST(FindAllSpecies, FindsTheSpeciesThatBeginsAtTheLastIsotopesOfAnother) {
  constexpr std::size_t kIsotopes = 4;
  std::vector<IonPeak> peaks = Pattern(1500, 2);
  for (IonPeak peak : Pattern(1500, 2, 3000)) {
    peak.mz += kIsotopes * 1.0025 / 2;
    const auto same =
        std::ranges::find_if(peaks, [&](const auto& one) { return std::abs(one.mz - peak.mz) < 0.1; });
    if (same == peaks.end())
      peaks.push_back(peak);
    else
      same->intensity += peak.intensity;
  }
  const auto all = FindAllSpecies(peaks, Prefs());
  ASSERT_EQ(all.size(), 2U);
  EXPECT_NEAR(all[1].monoMass - all[0].monoMass, kIsotopes * 1.0025, 0.03);
}

TEST(FindAllSpecies, HasNoMonoisotopicPeakWhereNoneCanBeSeen) {
  ResolvedPrefs prefs = Prefs();
  prefs.maxCharge = 20;
  prefs.accuracy = 20;
  const auto species = FindAllSpecies(Pattern(14000, 16, 1e5), prefs);
  ASSERT_EQ(species.size(), 1U);
  EXPECT_NEAR(species[0].monoMass, MonoMassAt(14000), 0.02);
  EXPECT_FALSE(species[0].states[0].MonoPeak());
}

ResolvedPrefs PrefsForProteins() {
  ResolvedPrefs prefs = Prefs();
  prefs.maxCharge = 20;
  prefs.accuracy = 20;
  return prefs;
}

// A protein whose pattern stands so many isotopes lower than that of the average molecule.
std::vector<IonPeak> Lower(double isotopes, double mass, int charge, double area) {
  std::vector<IonPeak> peaks = Pattern(mass, charge, area);
  for (std::size_t k = 0; k + 1 < peaks.size(); ++k)
    peaks[k].intensity = std::lerp(peaks[k].intensity, peaks[k + 1].intensity, isotopes);
  return peaks;
}

std::vector<IonPeak> ThreeLower(double isotopes, double mass, double area) {
  return Lower(isotopes, mass, 14, area) + Lower(isotopes, mass, 15, area) + Lower(isotopes, mass, 16, area);
}

TEST(FindAllSpecies, CountsIsotopesByAllCharges) {
  const auto distorted = Lower(0.9, 14000, 17, 2e5);
  const auto alone = FindAllSpecies(distorted, PrefsForProteins());
  ASSERT_EQ(alone.size(), 1U);
  EXPECT_NEAR(alone[0].monoMass, MonoMassAt(14000) - 1.00235, 0.02);
  const auto species = FindAllSpecies(distorted + ThreeLower(0, 14000, 1e5), PrefsForProteins());
  ASSERT_EQ(species.size(), 1U);
  EXPECT_EQ(Charges(species[0]), (std::vector<int>{14, 15, 16, 17}));
  EXPECT_NEAR(species[0].monoMass, MonoMassAt(14000), 0.02);
}

// The methylated form alone stands nearer to the next isotope.
TEST(FindAllSpecies, CountsFormsOfOneProteinAlike) {
  const double mass = MonoMassAt(14000) + 14.01565;
  const auto form = ThreeLower(0.6, mass, 3e5);
  const auto alone = FindAllSpecies(form, PrefsForProteins());
  ASSERT_EQ(alone.size(), 1U);
  EXPECT_NEAR(alone[0].monoMass, MonoMassAt(mass) - 1.00235, 0.02);
  const auto both = FindAllSpecies(ThreeLower(0.4, 14000, 1e6) + form, PrefsForProteins());
  ASSERT_EQ(both.size(), 2U);
  EXPECT_NEAR(both[0].monoMass, MonoMassAt(14000), 0.02);
  EXPECT_NEAR(both[1].monoMass, MonoMassAt(mass), 0.02);
}

// ---- What each preference does

TEST(FindAllSpecies, LeavesOutPeaksWithLittleSignal) {
  ResolvedPrefs prefs = Prefs();
  prefs.leastSignalToNoise = 1e6;
  EXPECT_EQ(CountFound(Pattern(1500, 1), prefs), 0U);
}

TEST(FindAllSpecies, LeavesOutPeaksBeyondTheResolutions) {
  ResolvedPrefs prefs = Prefs();
  prefs.lowestResolution = 20001;
  EXPECT_EQ(CountFound(Pattern(1500, 1), prefs), 0U);
  prefs.lowestResolution = 1000;
  prefs.highestResolution = 19999;
  EXPECT_EQ(CountFound(Pattern(1500, 1), prefs), 0U);
  prefs.highestResolution = 20000;
  EXPECT_EQ(CountFound(Pattern(1500, 1), prefs), 1U);
}

// The second isotope is as strong again as it should be.
TEST(FindAllSpecies, TakesNoPatternBelowTheLeastScore) {
  auto peaks = Pattern(1500, 1);
  peaks[1].intensity *= 2;
  ResolvedPrefs prefs = Prefs();
  const auto species = FindAllSpecies(peaks, prefs);
  ASSERT_EQ(species.size(), 1U);
  const double score = species[0].states[0].score;
  EXPECT_LT(score, 0.9);
  EXPECT_GT(score, 0.6);
  prefs.leastScore = score + 0.01;
  for (const Species& one : FindAllSpecies(peaks, prefs)) EXPECT_GE(one.states[0].score, prefs.leastScore);
}

TEST(FindAllSpecies, ScoresByTheFunctionAskedFor) {
  auto peaks = Pattern(1500, 1);
  peaks[1].intensity *= 2;
  ResolvedPrefs prefs = Prefs();
  const double sum = FindAllSpecies(peaks, prefs)[0].states[0].score;
  prefs.score = PatternScore::CrossCorrelation;
  const double correlation = FindAllSpecies(peaks, prefs)[0].states[0].score;
  EXPECT_GT(correlation, sum + 0.05);
  EXPECT_LE(correlation, 1);
}

TEST(FindAllSpecies, TakesNoChargeAboveTheHighest) {
  ResolvedPrefs prefs = Prefs();
  for (const Species& one : FindAllSpecies(Pattern(3000, 4), prefs)) EXPECT_LE(one.states[0].charge, 3);
  prefs.maxCharge = 4;
  const auto species = FindAllSpecies(Pattern(3000, 4), prefs);
  ASSERT_EQ(species.size(), 1U);
  EXPECT_EQ(species[0].states[0].charge, 4);
}

TEST(FindAllSpecies, BridgesAsManyMissingIsotopesAsAllowed) {
  ResolvedPrefs prefs = Prefs();
  auto peaks = Pattern(3000, 1);
  peaks.erase(peaks.begin() + 3);
  const auto short_ = FindAllSpecies(peaks, prefs);
  prefs.maxIsotopeGaps = 1;
  prefs.leastScore = 0.5;
  const auto whole = FindAllSpecies(peaks, prefs);
  ASSERT_FALSE(whole.empty());
  EXPECT_EQ(whole[0].states[0].isotopes.size(), peaks.size());
  for (const Species& one : short_) EXPECT_LT(one.states[0].isotopes.size(), peaks.size());
}

TEST(FindAllSpecies, BridgesAnyNumberOfGaps) {
  ResolvedPrefs prefs = Prefs();
  prefs.maxIsotopeGaps = prefs.maxChargeGaps = std::numeric_limits<std::int32_t>::max();
  const auto species = FindAllSpecies(Pattern(1500, 1) + Pattern(1500, 3), prefs);
  ASSERT_EQ(species.size(), 1U);
  EXPECT_EQ(Charges(species[0]), (std::vector<int>{1, 3}));
}

TEST(FindAllSpecies, TakesIsotopesWithinTheAccuracy) {
  auto peaks = Pattern(1500, 1);
  for (std::size_t k = 1; k < peaks.size(); k += 2) peaks[k].mz += 0.06;  // 40 ppm
  ResolvedPrefs prefs = Prefs();
  prefs.accuracy = 100;
  ASSERT_EQ(CountFound(peaks, prefs), 1U);
  EXPECT_EQ(FindAllSpecies(peaks, prefs)[0].states[0].isotopes.size(), peaks.size());
  prefs.accuracy = 20;
  for (const Species& one : FindAllSpecies(peaks, prefs))
    EXPECT_LT(one.states[0].isotopes.size(), peaks.size());
}

TEST(FindAllSpecies, TakesTheMassOfTheCarrierOff) {
  ResolvedPrefs prefs = Prefs();
  prefs.carrierMass = 22.989221;
  const auto species = FindAllSpecies(Pattern(1500, 2, 1e4, 22.989221), prefs);
  ASSERT_EQ(species.size(), 1U);
  EXPECT_NEAR(species[0].monoMass, MonoMassAt(1500), 0.01);
}

// 0.2 Da apart.
TEST(FindAllSpecies, PutsMassesTogetherThatAreAlikeWithinTheirAccuracy) {
  auto other = Pattern(1500, 2);
  for (IonPeak& peak : other) peak.mz += 0.1;
  ResolvedPrefs prefs = Prefs();
  prefs.massAccuracy = 1000;
  EXPECT_EQ(CountFound(Pattern(1500, 1) + other, prefs), 1U);
  const auto one = FindAllSpecies(Pattern(1500, 1) + other, prefs);
  EXPECT_NEAR(one[0].standardDeviation, 0.2 / std::sqrt(2), 0.01);
}

TEST(FindAllSpecies, BridgesAsManyMissingChargesAsAllowed) {
  ResolvedPrefs prefs = Prefs();
  prefs.maxCharge = 6;
  prefs.massAccuracy = 10;
  // Far from whole isotopes, or they would be put together as charges whose isotopes were counted
  // differently.
  auto other = Pattern(3000, 6);
  for (IonPeak& peak : other) peak.mz += 0.5 / 6;
  EXPECT_EQ(CountFound(Pattern(3000, 3) + other, prefs), 2U);
  prefs.massAccuracy = 1000;
  prefs.maxChargeGaps = 1;
  EXPECT_EQ(CountFound(Pattern(3000, 3) + other, prefs), 2U);
  prefs.maxChargeGaps = 2;
  const auto species = FindAllSpecies(Pattern(3000, 3) + other, prefs);
  EXPECT_LE(species.size(), 2U);
}

TEST(FindAllSpecies, WeighsMassesByIntensityIfAsked) {
  auto other = Pattern(1500, 2, 1e5);
  for (IonPeak& peak : other) peak.mz += 0.05;
  const auto peaks = Pattern(1500, 1, 1e4) + other;
  ResolvedPrefs prefs = Prefs();
  EXPECT_NEAR(FindAllSpecies(peaks, prefs)[0].monoMass, MonoMassAt(1500) + 0.05, 0.005);
  prefs.mean = MassMean::Weighted;
  EXPECT_NEAR(FindAllSpecies(peaks, prefs)[0].monoMass, MonoMassAt(1500) + 0.1 * 10 / 11, 0.005);
}

TEST(FindAllSpecies, GivesTheMostIntenseWhereMoreAreThanAskedFor) {
  ResolvedPrefs prefs = Prefs();
  const auto peaks = Pattern(900, 1, 1e4) + Pattern(1300, 1, 3e4);
  ASSERT_EQ(CountFound(peaks, prefs), 2U);
  prefs.maxSpecies = 1;
  const auto species = FindAllSpecies(peaks, prefs);
  ASSERT_EQ(species.size(), 1U);
  EXPECT_NEAR(species[0].monoMass, MonoMassAt(1300), 0.01);
}

// Ten chlorines: a pattern that no average of living matter has.
TEST(FindAllSpecies, TakesThePatternOfTheAverageMolecule) {
  ResolvedPrefs prefs = Prefs();
  prefs.averageMolecule = ParseFormula("C20 H30 Cl10");
  const IsotopePattern pattern = MakeIsotopePattern(ScaleToMass(prefs.averageMolecule, 1250));
  std::vector<IonPeak> peaks;
  for (std::size_t k = 0; k < pattern.probability.size(); ++k) {
    if (pattern.probability[k] < 1e-3) continue;
    const double ions = 1e4 * pattern.probability[k];
    peaks.push_back({pattern.monoMass + pattern.mass[k] + kCarrier, ions, ions, ions, 20000});
  }
  const auto chlorine = FindAllSpecies(peaks, prefs);
  ASSERT_EQ(chlorine.size(), 1U);
  EXPECT_NEAR(chlorine[0].monoMass, pattern.monoMass, 0.01);
  EXPECT_GT(chlorine[0].states[0].score, 0.95);
  for (const Species& living : FindAllSpecies(peaks, Prefs()))
    EXPECT_LT(living.states[0].score, chlorine[0].states[0].score);
}

// Without isotopes of less than 5 % carbon has but one.
TEST(FindAllSpecies, LeavesOutIsotopesBelowTheThresholds) {
  ResolvedPrefs prefs = Prefs();
  prefs.thresholds.atom = 0.05;
  EXPECT_EQ(CountFound(Pattern(1500, 1), prefs), 0U);
  prefs.thresholds.atom = 1e-6;
  prefs.thresholds.molecule = 0.2;
  const auto species = FindAllSpecies(Pattern(1500, 1), prefs);
  ASSERT_FALSE(species.empty());
  EXPECT_LE(species[0].states[0].isotopes.size(), 3U);
}

// ---- Bad lists and preferences

TEST(FindAllSpecies, FindsNothingInListsWithoutPatterns) {
  EXPECT_EQ(CountFound({}, Prefs()), 0U);
  EXPECT_EQ(CountFound({{1000, 1, 1, 5, 2000}}, Prefs()), 0U);
  EXPECT_EQ(CountFound(std::vector<IonPeak>(5000, {1000, 1, 1, 5, 2000}), Prefs()), 0U);
}

TEST(FindAllSpecies, LeavesRowsOutThatSayNothing) {
  auto peaks = Pattern(1500, 1);
  for (const double value : {0.0, -5.0, kNaN, kInfinity, -kInfinity, 1e300}) {
    peaks.push_back({value, 1000, 1000, 50, 2000});
    if (value < 1e300 || std::isinf(value)) peaks.push_back({1502, value, value, 50, 2000});
    peaks.push_back({1502, 1000, 1000, value < 3 ? value : kNaN, 2000});
    peaks.push_back({1502, 1000, 1000, 50, value});
  }
  const auto species = FindAllSpecies(peaks, Prefs());
  ASSERT_EQ(species.size(), 1U);
  EXPECT_NEAR(species[0].monoMass, MonoMassAt(1500), 0.01);
}

TEST(FindAllSpecies, ComesToAnEndWhateverTheList) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> within(0, 1);
  ResolvedPrefs prefs = Prefs();
  prefs.maxCharge = 20;
  const auto began = std::chrono::steady_clock::now();
  for (const double width : {0.5, 20.0, 2000.0}) {
    std::vector<IonPeak> peaks;
    for (int k = 0; k < 3000; ++k)
      peaks.push_back({500 + width * within(random), within(random), 1, 50, 5000});
    FindAllSpecies(peaks, prefs);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(60));
}

TEST(FindAllSpecies, RefusesPreferencesThatSayNothing) {
  const auto refuses = [](auto change) {
    ResolvedPrefs prefs = Prefs();
    change(prefs);
    EXPECT_THROW(CountFound(Pattern(1500, 1), prefs), std::invalid_argument);
  };
  for (const double value : {kNaN, kInfinity, -1.0}) {
    refuses([&](ResolvedPrefs& prefs) { prefs.leastSignalToNoise = value; });
    refuses([&](ResolvedPrefs& prefs) { prefs.leastScore = value; });
    refuses([&](ResolvedPrefs& prefs) { prefs.accuracy = value; });
    refuses([&](ResolvedPrefs& prefs) { prefs.massAccuracy = value; });
    refuses([&](ResolvedPrefs& prefs) { prefs.thresholds.atom = value; });
    refuses([&](ResolvedPrefs& prefs) { prefs.thresholds.molecule = value; });
  }
  refuses([](ResolvedPrefs& prefs) { prefs.carrierMass = kNaN; });
  refuses([](ResolvedPrefs& prefs) { prefs.lowestResolution = 2e6; });
  refuses([](ResolvedPrefs& prefs) { prefs.maxCharge = 0; });
  refuses([](ResolvedPrefs& prefs) { prefs.maxIsotopeGaps = -1; });
  refuses([](ResolvedPrefs& prefs) { prefs.maxChargeGaps = -1; });
  refuses([](ResolvedPrefs& prefs) { prefs.averageMolecule = Composition(); });
}

// ---- The species that peaks belong to

TEST(FindSpeciesOf, FindsTheOneThatHoldsItsSeeds) {
  const auto peaks = Pattern(1300, 1, 3e4) + Pattern(1500, 2) + Pattern(1500, 3);
  const std::size_t seeds[] = {Pattern(1300, 1).size(), Pattern(1300, 1).size() + 1};
  const auto species = FindSpeciesOf(peaks, Prefs(), seeds);
  ASSERT_TRUE(species);
  EXPECT_NEAR(species->monoMass, MonoMassAt(1500), 0.01);
  EXPECT_EQ(Charges(*species), (std::vector<int>{2, 3}));
}

TEST(FindSpeciesOf, TakesAnyNumberOfSeeds) {
  const auto peaks =
      Pattern(1300, 1, 1e3) + Pattern(1500, 2, 3e4) + Pattern(1500, 3, 3e4) + Pattern(700, 1, 1e3);
  std::vector<std::size_t> seeds(peaks.size());
  for (std::size_t k = 0; k < seeds.size(); ++k) seeds[k] = k;
  const auto species = FindSpeciesOf(peaks, Prefs(), seeds);
  ASSERT_TRUE(species);
  EXPECT_NEAR(species->monoMass, MonoMassAt(1500), 0.01);
}

TEST(FindSpeciesOf, FindsNothingWhereNoPatternPasses) {
  const std::vector<IonPeak> peaks = {{1000, 50, 50, 50, 2000}, {1000.4, 50, 50, 50, 2000}};
  const std::size_t seeds[] = {0, 1};
  EXPECT_FALSE(FindSpeciesOf(peaks, Prefs(), seeds));
  EXPECT_FALSE(FindSpeciesOf(peaks, Prefs(), {}));
  const std::size_t beyond[] = {99};
  EXPECT_FALSE(FindSpeciesOf(peaks, Prefs(), beyond));
}

// ---- A species with given peaks

TEST(RecalculateSpecies, HasAStateForEachChargeOfItsPeaks) {
  const auto peaks = Pattern(1500, 1) + Pattern(1500, 2) + Pattern(1500, 3);
  const std::size_t n = Pattern(1500, 1).size();
  const std::size_t members[] = {0, 2 * n + 1};  // monoisotopic of charge 1, the next of charge 3
  const auto species = RecalculateSpecies(peaks, Prefs(), MonoMassAt(1500), members);
  ASSERT_TRUE(species);
  EXPECT_EQ(Charges(*species), (std::vector<int>{1, 3}));
  EXPECT_NEAR(species->monoMass, MonoMassAt(1500), 0.01);
  EXPECT_EQ(species->states[1].MonoPeak(), 2 * n);
}

TEST(RecalculateSpecies, KeepsAPeakThatStandsAlone) {
  const std::vector<IonPeak> peaks = {{751.5, 50, 50, 50, 2000}};
  const std::size_t members[] = {0};
  const auto species = RecalculateSpecies(peaks, Prefs(), 1500, members);
  ASSERT_TRUE(species);
  ASSERT_EQ(Charges(*species), std::vector<int>{2});
  EXPECT_EQ(species->states[0].isotopes.size(), 1U);
}

TEST(RecalculateSpecies, TakesChargesAboveTheHighestToo) {
  const auto peaks = Pattern(3000, 5);
  const std::size_t members[] = {1};
  const auto species = RecalculateSpecies(peaks, Prefs(), MonoMassAt(3000), members);
  ASSERT_TRUE(species);
  EXPECT_EQ(Charges(*species), std::vector<int>{5});
  EXPECT_EQ(species->states[0].isotopes.size(), peaks.size());
}

TEST(RecalculateSpecies, GivesNothingWithoutPeaksOrMass) {
  const auto peaks = Pattern(1500, 1);
  const std::size_t members[] = {0};
  EXPECT_FALSE(RecalculateSpecies(peaks, Prefs(), 1500, {}));
  for (const double mass : {0.0, -5.0, kNaN, kInfinity, 1e300})
    EXPECT_FALSE(RecalculateSpecies(peaks, Prefs(), mass, members)) << mass;
}

// ---- How surely isotopes are counted

double CountErrorOf(const std::vector<IonPeak>& peaks) {
  const auto species = FindAllSpecies(peaks, PrefsForProteins());
  const auto errors = CountErrors(peaks, PrefsForProteins(), species);
  return errors.size() == species.size() && !errors.empty() ? errors[0] : kNaN;
}

TEST(CountErrors, AreNoneWhereTheFirstIsotopesAreSeen) { EXPECT_EQ(CountErrorOf(Pattern(1500, 2)), 0); }

TEST(CountErrors, AreLargestWhereThePatternStandsBetweenTwoCounts) {
  EXPECT_LT(CountErrorOf(ThreeLower(0, 14000, 1e5)), 0.01);
  EXPECT_NEAR(CountErrorOf(ThreeLower(0.5, 14000, 1e5)), std::sqrt(0.5), 0.1);
}

TEST(CountErrors, GrowWithTheNoise) {
  auto peaks = Pattern(14000, 16, 1e5);
  const double noise = std::ranges::max_element(peaks, {}, &IonPeak::intensity)->intensity / 6;
  for (IonPeak& peak : peaks) peak.signalToNoise = peak.intensity / noise;
  EXPECT_GT(CountErrorOf(peaks), 0.1);
}

TEST(CountErrors, OfSpeciesThatTheListHasNotAreNone) {
  Species none;
  none.states.push_back({16, 14000, 0, 0, {{8, 99}}});
  EXPECT_EQ(CountErrors(Pattern(1500, 1), Prefs(), std::vector{none, Species()}),
            (std::vector<double>{0, 0}));
  EXPECT_TRUE(CountErrors({}, Prefs(), {}).empty());
}

}  // namespace
