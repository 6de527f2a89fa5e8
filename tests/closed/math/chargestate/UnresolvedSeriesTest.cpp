// Tests: UnresolvedSeries.cpp, SeriesSearch.cpp.
#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <numeric>
#include <stdexcept>

#include "SimulatedSeries.h"

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

UnresolvedPrefs Protons() {
  UnresolvedPrefs prefs;
  prefs.minMass = 3000;
  prefs.maxMass = 120000;
  prefs.carrierMass = kProton;
  return prefs;
}

// Places are off by up to 2 * `error`, in both directions.
std::vector<IonPeak> Ladder(double mass, int from, int to, double error = 0.03, double carrier = kProton) {
  std::vector<IonPeak> peaks;
  for (int charge = from; charge <= to; ++charge)
    peaks.push_back({mass / charge + carrier + error * ((charge * 7) % 5 - 2), 1000, 1000, 50, 1000});
  return peaks;
}

std::vector<IonPeak> operator+(std::vector<IonPeak> a, const std::vector<IonPeak>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

std::vector<std::int32_t> Charges(const ChargeSeries& series) {
  std::vector<std::int32_t> charges;
  for (const SeriesMember& member : series.members) charges.push_back(member.charge);
  return charges;
}

std::size_t CountFound(const std::vector<IonPeak>& peaks, const UnresolvedPrefs& prefs) {
  return FindAllSeries(peaks, prefs).size();
}

TEST(FindAllSeries, FindsThePublishedSeriesOfCytochromeC) {
  std::vector<IonPeak> peaks;
  for (const double mz : {651.6, 687.7, 728.1, 773.5, 825.0, 883.9, 951.7, 1030.9, 1124.5})
    peaks.push_back({mz, 1000, 1000, 100, 0});
  const auto series = FindAllSeries(peaks, Protons());
  ASSERT_EQ(series.size(), 1U);
  EXPECT_EQ(Charges(series[0]), (std::vector<std::int32_t>{11, 12, 13, 14, 15, 16, 17, 18, 19}));
  EXPECT_NEAR(series[0].mass, 12359.6, 0.5);
  EXPECT_NEAR(series[0].standardDeviation, 1.0, 0.3);
  EXPECT_NEAR(series[0].standardError, 0.4, 0.2);
}

TEST(FindAllSeries, TellsMassesAndDeviationsOfMembers) {
  const auto peaks = Ladder(16951.5, 12, 20);
  const auto series = FindAllSeries(peaks, Protons());
  ASSERT_EQ(series.size(), 1U);
  double squares = 0;
  for (const SeriesMember& member : series[0].members) {
    EXPECT_DOUBLE_EQ(member.mass, member.charge * (peaks[member.peak].mz - kProton));
    EXPECT_DOUBLE_EQ(member.deviation, member.mass - series[0].mass);
    squares += member.deviation * member.deviation;
  }
  EXPECT_NEAR(series[0].standardDeviation, std::sqrt(squares / 8), 1e-9);
}

TEST(FindAllSeries, DoesNotDependOnTheOrderOfTheList) {
  auto peaks = Ladder(16951.5, 12, 20) + Ladder(8123.4, 6, 13);
  const auto before = FindAllSeries(peaks, Protons());
  std::reverse(peaks.begin(), peaks.end());
  const auto after = FindAllSeries(peaks, Protons());
  ASSERT_EQ(before.size(), 2U);
  ASSERT_EQ(after.size(), 2U);
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_DOUBLE_EQ(before[k].mass, after[k].mass);
    EXPECT_EQ(Charges(before[k]), Charges(after[k]));
    EXPECT_EQ(before[k].members[0].peak, peaks.size() - 1 - after[k].members[0].peak);
  }
}

TEST(FindAllSeries, TakesNoSeriesSmallerThanTheLeastSize) {
  UnresolvedPrefs prefs = Protons();
  EXPECT_EQ(CountFound(Ladder(16951.5, 16, 20), prefs), 1U);
  EXPECT_EQ(CountFound(Ladder(16951.5, 16, 19), prefs), 0U);
  prefs.minSeriesSize = 4;
  EXPECT_EQ(CountFound(Ladder(16951.5, 16, 19), prefs), 1U);
  prefs.minSeriesSize = 6;
  EXPECT_EQ(CountFound(Ladder(16951.5, 16, 20), prefs), 0U);
}

TEST(FindAllSeries, StaysWithinTheMasses) {
  UnresolvedPrefs prefs = Protons();
  const auto peaks = Ladder(16951.5, 12, 20);
  prefs.minMass = 10000;
  prefs.maxMass = 16900;
  EXPECT_EQ(CountFound(peaks, prefs), 0U);
  prefs.maxMass = 17000;
  EXPECT_EQ(CountFound(peaks, prefs), 1U);
  prefs.minMass = 16990;
  EXPECT_EQ(CountFound(peaks, prefs), 0U);
}

TEST(FindAllSeries, GivesTheLikeliestWhereMoreAreThanAskedFor) {
  UnresolvedPrefs prefs = Protons();
  const auto peaks = Ladder(16951.5, 12, 22) + Ladder(8123.4, 6, 12);
  EXPECT_EQ(CountFound(peaks, prefs), 2U);
  prefs.maxSeries = 1;
  const auto series = FindAllSeries(peaks, prefs);
  ASSERT_EQ(series.size(), 1U);
  EXPECT_NEAR(series[0].mass, 16951.5, 1);
  prefs.maxSeries = 0;
  EXPECT_EQ(CountFound(peaks, prefs), 0U);
}

// Charges 15 and 16 lack.
TEST(FindAllSeries, BridgesAsManyGapsAsAllowed) {
  UnresolvedPrefs prefs = Protons();
  prefs.minSeriesSize = 8;
  const auto peaks = Ladder(16951.5, 10, 14) + Ladder(16951.5, 17, 22);
  EXPECT_EQ(CountFound(peaks, prefs), 0U);
  prefs.maxGaps = 2;
  const auto series = FindAllSeries(peaks, prefs);
  ASSERT_EQ(series.size(), 1U);
  EXPECT_EQ(series[0].members.size(), 11U);
}

TEST(FindAllSeries, JoinsRunsOfOneMass) {
  UnresolvedPrefs prefs = Protons();
  const auto series = FindAllSeries(Ladder(16951.5, 10, 15) + Ladder(16951.5, 20, 26), prefs);
  ASSERT_EQ(series.size(), 1U);
  EXPECT_EQ(series[0].members.size(), 13U);
}

TEST(FindAllSeries, TakesThePeaksWithinTheAccuracy) {
  UnresolvedPrefs prefs = Protons();
  const auto peaks = Ladder(16951.5, 12, 20, 0.1);  // up to 240 ppm off
  prefs.accuracy = 500;
  EXPECT_EQ(CountFound(peaks, prefs), 1U);
  prefs.accuracy = 20;
  EXPECT_EQ(CountFound(peaks, prefs), 0U);
}

TEST(FindAllSeries, TakesTheMassOfTheCarrierOff) {
  UnresolvedPrefs prefs = Protons();
  const auto peaks = Ladder(16951.5, 12, 20, 0.0, 22.98);
  prefs.carrierMass = 22.98;
  const auto series = FindAllSeries(peaks, prefs);
  ASSERT_EQ(series.size(), 1U);
  EXPECT_NEAR(series[0].mass, 16951.5, 1e-6);
  prefs.carrierMass = -1.00727646688;
  const auto negative = FindAllSeries(Ladder(16951.5, 12, 20, 0.0, -1.00727646688), prefs);
  ASSERT_EQ(negative.size(), 1U);
  EXPECT_NEAR(negative[0].mass, 16951.5, 1e-6);
}

TEST(FindAllSeries, PrefersAMassToItsHalfAndDouble) {
  for (const double mass : {12000.0, 17000.0, 40000.0}) {
    const auto middle = static_cast<int>(mass / 900);
    const auto series = FindAllSeries(Ladder(mass, middle - 5, middle + 5), Protons());
    ASSERT_EQ(series.size(), 1U) << mass;
    EXPECT_NEAR(series[0].mass, mass, mass * 1e-4);
  }
}

TEST(FindAllSeries, FindsNativeComplexesWhoseNeighboursDifferTwentyfold) {
  UnresolvedPrefs prefs = Protons();
  prefs.maxMass = 1e6;
  std::vector<IonPeak> peaks = Ladder(801000, 66, 72, 1.0);
  const double shares[] = {0.004, 0.06, 0.45, 1, 0.5, 0.07, 0.004};
  for (std::size_t k = 0; k < peaks.size(); ++k) peaks[k].intensity = 1e6 * shares[k];
  const auto series = FindAllSeries(peaks, prefs);
  ASSERT_EQ(series.size(), 1U);
  EXPECT_NEAR(series[0].mass, 801000, 100);
}

// As the steps of an overlaid oscillation make them.
TEST(FindAllSeries, FindsNothingInRipplesAtEvenDistances) {
  UnresolvedPrefs prefs = Protons();
  prefs.maxMass = 1e6;
  for (const double distance : {0.7, 1.0, 2.5, 6.0}) {
    std::vector<IonPeak> peaks;
    for (double mz = 700; mz < 700 + 80 * distance; mz += distance)
      peaks.push_back({mz, 1000, 1000, 50, 1000});
    EXPECT_EQ(CountFound(peaks, prefs), 0U) << distance;
  }
}

TEST(FindAllSeries, FollowsASeriesToChargesThatItsOwnScatterTellsApart) {
  UnresolvedPrefs prefs = Protons();
  prefs.maxMass = 1e6;
  for (const int highest : {160, 230, 290}) {
    const auto series = FindAllSeries(Ladder(148050, highest - 90, highest, 0.01), prefs);
    ASSERT_EQ(series.size(), 1U) << highest;
    EXPECT_NEAR(series[0].mass, 148050, 10);
    EXPECT_EQ(series[0].members.back().charge, highest);
  }
}

// No charge is low enough for the wide window.
TEST(FindAllSeries, FindsAMassBehindItsHalf) {
  UnresolvedPrefs prefs = Protons();
  prefs.maxMass = 1e6;
  const auto series = FindAllSeries(Ladder(148050, 204, 276, 0.01), prefs);
  ASSERT_EQ(series.size(), 1U);
  EXPECT_NEAR(series[0].mass, 148050, 10);
}

// The dimer has three charges of its own, 11, 13 and 15, and the others may not be missing: they would be
// seen among peaks as faint as these.
TEST(FindAllSeries, FindsADimerThatSharesEverySecondChargeWithItsMonomer) {
  const auto envelope = [](double off) { return std::exp(-0.5 * off * off / 1.44); };
  std::vector<IonPeak> peaks;
  for (int charge = 9; charge <= 22; ++charge) {
    const bool isShared = charge % 2 == 0;
    const double monomer = isShared ? 1e5 * envelope(charge / 2 - 8) : 0.0;
    const double intensity = monomer + 4e4 * envelope(charge - 12.5);
    if (intensity > 1000) peaks.push_back({34000.0 / charge + kProton, intensity, 0, 50, 0});
  }
  for (int k = 0; k < 20; ++k) peaks.push_back({500 + k * 171.3, 1000.0 + 40 * k, 0, 50, 0});
  const auto series = FindAllSeries(peaks, Protons());
  ASSERT_EQ(series.size(), 2U);
  EXPECT_NEAR(series[0].mass, 17000, 5);
  EXPECT_NEAR(series[1].mass, 34000, 10);
}

// Low resolution of small molecules: a peak at nearly each unit of m/z, strong ones among weak ones.
TEST(FindAllSeries, FindsNothingWhereEachUnitOfMzHasAPeak) {
  UnresolvedPrefs prefs = Protons();
  prefs.maxMass = 1e6;
  Random random(5);
  std::normal_distribution<double> normal(0, 1);
  std::size_t found = 0;
  for (int list = 0; list < 10; ++list) {
    std::vector<IonPeak> peaks;
    for (int mz = 200; mz < 600; ++mz)
      peaks.push_back({mz + 0.1 * normal(random), 2000 * std::exp(0.8 * normal(random)), 1, 50, 0});
    found += CountFound(peaks, prefs);
  }
  EXPECT_EQ(found, 0U);
}

TEST(FindAllSeries, LeavesRowsOutThatSayNothing) {
  std::vector<IonPeak> peaks = Ladder(16951.5, 12, 20);
  const auto before = FindAllSeries(peaks, Protons());
  for (const double mz : {0.0, -5.0, kNaN, kInfinity, 1.0, 1e300})
    peaks.push_back({mz, 1000, 1000, 50, 1000});
  for (const double value : {0.0, -5.0, kNaN, kInfinity}) peaks.push_back({900, value, value, value, value});
  const auto after = FindAllSeries(peaks, Protons());
  ASSERT_EQ(after.size(), 1U);
  EXPECT_EQ(after[0].mass, before[0].mass);
}

TEST(FindAllSeries, WeighsAllPlacesAlikeWhereAreasSayNothing) {
  for (const double value : {0.0, -5.0, kNaN, kInfinity}) {
    std::vector<IonPeak> peaks = Ladder(16951.5, 12, 20);
    for (IonPeak& peak : peaks) peak.area = peak.resolution = value;
    const auto series = FindAllSeries(peaks, Protons());
    ASSERT_EQ(series.size(), 1U);
    EXPECT_NEAR(series[0].mass, 16951.5, 0.5);
  }
}

TEST(FindAllSeries, FindsNothingInListsWithoutSeries) {
  EXPECT_EQ(CountFound({}, Protons()), 0U);
  EXPECT_EQ(CountFound({{1000, 1, 1, 5, 1000}}, Protons()), 0U);
  EXPECT_EQ(CountFound(std::vector<IonPeak>(5000, {1000, 1, 1, 5, 1000}), Protons()), 0U);
}

TEST(FindAllSeries, TakesPlacesAndAccuraciesNextToZero) {
  UnresolvedPrefs prefs = Protons();
  prefs.carrierMass = 0;
  prefs.minSeriesSize = 2;
  EXPECT_EQ(CountFound({{5e-324, 1, 1, 5, 1}, {1e-300, 1, 1, 5, 1}}, prefs), 0U);
  prefs.accuracy = 5e-324;
  EXPECT_EQ(CountFound(Ladder(16951.5, 12, 20), prefs), 0U);
}

TEST(FindAllSeries, ComesToAnEndWhateverTheList) {
  Random random(2);
  std::uniform_real_distribution<double> within(0, 1);
  const auto began = std::chrono::steady_clock::now();
  for (const double width : {1.0, 100.0, 20000.0}) {
    std::vector<IonPeak> peaks;
    for (int k = 0; k < 5000; ++k)
      peaks.push_back({500 + width * within(random), within(random), 1, 5, 1000});
    FindAllSeries(peaks, Protons());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(30));
}

TEST(FindAllSeries, RefusesPreferencesThatSayNothing) {
  const auto refuses = [](auto change) {
    UnresolvedPrefs prefs = Protons();
    change(prefs);
    EXPECT_THROW(CountFound(Ladder(16951.5, 12, 20), prefs), std::invalid_argument);
  };
  refuses([](UnresolvedPrefs& prefs) { prefs.minMass = 2 * prefs.maxMass; });
  refuses([](UnresolvedPrefs& prefs) { prefs.maxGaps = -1; });
  for (const double value : {kNaN, kInfinity, -kInfinity}) {
    refuses([&](UnresolvedPrefs& prefs) { prefs.minMass = value; });
    refuses([&](UnresolvedPrefs& prefs) { prefs.maxMass = value; });
    refuses([&](UnresolvedPrefs& prefs) { prefs.carrierMass = value; });
    refuses([&](UnresolvedPrefs& prefs) { prefs.accuracy = value; });
  }
  refuses([](UnresolvedPrefs& prefs) { prefs.minMass = 0; });
  refuses([](UnresolvedPrefs& prefs) { prefs.accuracy = 0; });
}

TEST(FindAllSeries, SaysWhichLimitsCross) {
  UnresolvedPrefs prefs = Protons();
  prefs.minMass = 20000.5;
  prefs.maxMass = 1000;
  try {
    CountFound({}, prefs);
    FAIL();
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "The lowest mass, 20000.5, is above the highest, 1000.");
  }
}

// ---- The series that peaks belong to

TEST(FindSeriesOf, FindsTheSeriesOfItsSeeds) {
  const auto peaks = Ladder(16951.5, 12, 22) + Ladder(11123.4, 8, 15);
  const std::size_t seeds[] = {12, 14};  // charges 9 and 11 of the second
  const auto series = FindSeriesOf(peaks, Protons(), seeds);
  ASSERT_TRUE(series);
  EXPECT_NEAR(series->mass, 11123.4, 1);
  EXPECT_EQ(series->members.size(), 8U);
}

TEST(FindSeriesOf, TakesASmallSeriesToo) {
  const auto peaks = Ladder(9000, 8, 9);
  const std::size_t seeds[] = {0, 1};
  const auto series = FindSeriesOf(peaks, Protons(), seeds);
  ASSERT_TRUE(series);
  EXPECT_EQ(Charges(*series), (std::vector<std::int32_t>{8, 9}));
  EXPECT_EQ(series->standardError, 0);
}

TEST(FindSeriesOf, FindsNothingWhereNoChargesFit) {
  const std::vector<IonPeak> peaks = {{1000, 1, 1, 5, 1000}, {1000.9, 1, 1, 5, 1000}};
  const std::size_t both[] = {0, 1};
  UnresolvedPrefs prefs = Protons();
  prefs.maxMass = 5000;
  prefs.accuracy = 100;
  EXPECT_FALSE(FindSeriesOf(peaks, prefs, both));
  EXPECT_FALSE(FindSeriesOf(peaks, prefs, {}));
  const std::size_t beyond[] = {7};
  EXPECT_FALSE(FindSeriesOf(peaks, prefs, beyond));
}

// ---- A series with given members

TEST(RecalculateSeries, TakesExactlyItsMembers) {
  const auto peaks = Ladder(16951.5, 12, 20);
  const std::size_t members[] = {5, 1, 3};
  const auto series = RecalculateSeries(peaks, Protons(), 16950, members);
  ASSERT_TRUE(series);
  EXPECT_EQ(Charges(*series), (std::vector<std::int32_t>{13, 15, 17}));
  EXPECT_EQ(series->members[0].peak, 1U);
  EXPECT_NEAR(series->mass, 16951.5, 1);
}

TEST(RecalculateSeries, TakesAPeakOnceThatIsGivenTwice) {
  const auto peaks = Ladder(16951.5, 12, 20);
  const std::size_t members[] = {5, 1, 3};
  const std::size_t again[] = {5, 1, 5, 3, 1};
  const auto series = RecalculateSeries(peaks, Protons(), 16950, again);
  ASSERT_TRUE(series);
  EXPECT_EQ(Charges(*series), (std::vector<std::int32_t>{13, 15, 17}));
  EXPECT_EQ(series->mass, RecalculateSeries(peaks, Protons(), 16950, members)->mass);
}

TEST(RecalculateSeries, GivesNothingWithoutMembersOrMass) {
  const auto peaks = Ladder(16951.5, 12, 20);
  const std::size_t members[] = {5, 99};
  EXPECT_FALSE(RecalculateSeries(peaks, Protons(), 16950, {}));
  EXPECT_EQ(RecalculateSeries(peaks, Protons(), 16950, members)->members.size(), 1U);
  for (const double mass : {0.0, -1.0, kNaN, kInfinity})
    EXPECT_FALSE(RecalculateSeries(peaks, Protons(), mass, members)) << mass;
}

}  // namespace
