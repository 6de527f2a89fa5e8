#include <tool/simulate/Simulator.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <vector>

#include <tool/simulate/SimulatedCounts.h>
#include <tslbl/tune/rules/DevTuneRules.h>

namespace tests {
namespace {

using TslTool::Simulator;
using TslTool::TrueLine;

double Background(double mz) { return 40.0 * std::exp(-mz / 300.0) + 8.0; }

double Gaussian(double distance) { return std::exp(-4.0 * std::log(2.0) * std::pow(distance / 0.6, 2)); }

// The heights of two lines side by side, fitted to the counts above the background.
std::pair<double, double> FitTwo(const Counts& mz, const Counts& y, double first, double second) {
  double aa = 0.0, ab = 0.0, bb = 0.0, ay = 0.0, by = 0.0;
  for (std::size_t i = IndexOf(mz, first - 0.5); i < IndexOf(mz, second + 0.4); ++i) {
    const double a = Gaussian(mz[i] - first), b = Gaussian(mz[i] - second), counts = y[i] - Background(mz[i]);
    aa += a * a, ab += a * b, bb += b * b, ay += a * counts, by += b * counts;
  }
  const double determinant = aa * bb - ab * ab;
  return {(ay * bb - by * ab) / determinant, (by * aa - ay * ab) / determinant};
}

// The top of the parabola through the points within 0.15 of a line.
double TopOf(const Counts& mz, const Counts& y, double line) {
  const std::size_t middle = IndexOf(mz, line - 0.025);
  double s2 = 0.0, s4 = 0.0, y0 = 0.0, y1 = 0.0, y2 = 0.0;
  for (int k = -3; k <= 3; ++k) {
    const double value = y[middle + static_cast<std::size_t>(k + 3) - 3];
    s2 += k * k, s4 += k * k * k * k, y0 += value, y1 += k * value, y2 += k * k * value;
  }
  const double slope = y1 / s2;
  const double curvature = (y2 - s2 / 7.0 * y0) / (s4 - s2 * s2 / 7.0);
  return mz[middle] - slope / (2.0 * curvature) * (mz[middle + 1] - mz[middle]);
}

const TrueLine& LineAt(const std::vector<TrueLine>& truth, const std::string& compound, double mz) {
  const auto line = std::ranges::find_if(
      truth, [&](const TrueLine& l) { return l.compound == compound && std::abs(l.mz - mz) < 0.1; });
  if (line == truth.end()) throw std::out_of_range(compound);
  return *line;
}

TEST(Simulator, ItsTuneIsOneThatTheInstrumentTakes) {
  TslBL::DevTuneRules rules(TslTool::Simulator(1, 1).Tune());
  EXPECT_TRUE(rules.QFaults().empty());
  EXPECT_FALSE(rules.CalculateInitialSettlingDelay()) << "it rests as long as it must";
}

TEST(Simulator, EqualSeedsMakeEqualScans) {
  EXPECT_EQ(Simulator(5, 9).MakeScan(3), Simulator(5, 9).MakeScan(3));
  EXPECT_NE(Simulator(5, 9).MakeScan(3).counts, Simulator(5, 10).MakeScan(3).counts);
  EXPECT_NE(Simulator(5, 1).MakeScan(3).counts, Simulator(5, 1 + (1ULL << 32)).MakeScan(3).counts);
}

TEST(Simulator, ScansComeInAnyOrder) {
  const Simulator forth(5), back(5);
  const TslBL::RawSpectrum first = forth.MakeScan(0), last = forth.MakeScan(4);
  EXPECT_EQ(back.MakeScan(4), last);
  EXPECT_EQ(back.MakeScan(0), first);
  EXPECT_NE(first.counts, last.counts);
}

TEST(Simulator, HeadersFollowFromTuneAndCounts) {
  const Simulator simulator(5);
  const TslBL::RawSpectrum raw = simulator.MakeScan(2);
  EXPECT_EQ(raw.counts.size(), TslBL::DevTuneRules::QNumPulses(simulator.Tune()));
  EXPECT_EQ(raw.info.TIC, std::accumulate(raw.counts.begin(), raw.counts.end(), 0.0));
  EXPECT_EQ(raw.info.Id, 3U);
  EXPECT_NEAR(raw.info.TimeStamp, 2 * TslBL::DevTuneRules::QDuration(simulator.Tune()) / 1000.0, 0.5);
}

TEST(Simulator, CountsAreWholeAndNotNegative) {
  for (const double count : Simulator(1).MakeScan(0).counts)
    ASSERT_TRUE(count >= 0.0 && count == std::floor(count));
}

TEST(Simulator, TheAxisIsNotQuiteStraight) {
  const Simulator simulator(1);
  const Counts mz = MzOf(simulator);
  EXPECT_EQ(mz.front(), 100.0);
  EXPECT_NEAR(mz.back(), 1100.0, 0.2);
  EXPECT_NE(mz[1] - mz[0], mz[15000] - mz[14999]);
}

// Between 100 and 140 there is no line. Over 100 scans the index of dispersion of each of its
// points follows chi-square with 99 degrees of freedom, and the mean its background.
TEST(Simulator, BackgroundCountsArePoissonDistributed) {
  const Simulator simulator(100);
  const Counts mz = MzOf(simulator);
  const Moments m = MomentsOf(simulator, 100);
  const std::size_t n = IndexOf(mz, 140.0);
  double chiSquare = 0.0, deviation = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    chiSquare += m.squares[i] / m.mean[i];
    const double expected = Background(mz[i]);
    deviation += (m.mean[i] - expected) * (m.mean[i] - expected) / (expected / m.scans);
  }
  const double freedom = static_cast<double>(n) * (m.scans - 1);
  EXPECT_NEAR(chiSquare, freedom, 4.0 * std::sqrt(2.0 * freedom));
  EXPECT_NEAR(deviation, static_cast<double>(n), 4.0 * std::sqrt(2.0 * static_cast<double>(n)));
}

// What 100 scans of the infused compounds look like on average.
struct Infused : testing::Test {
  static const Simulator& Instrument() {
    static const Simulator simulator(100);
    return simulator;
  }
  static const Moments& Average() {
    static const Moments moments = MomentsOf(Instrument(), 100);
    return moments;
  }
  const Counts mz = MzOf(Instrument());
  const Counts& mean = Average().mean;
};

TEST_F(Infused, LinesAre0Point6WideAtHalfTheirHeight) {
  for (const double line : {186.2216, 322.0481}) {
    const double background = Background(line);
    const double half = (mean[IndexOf(mz, line)] - background) / 2.0 + background;
    std::size_t left = IndexOf(mz, line), right = left;
    while (mean[left] > half) --left;
    while (mean[right] > half) ++right;
    const auto crossing = [&](std::size_t a, std::size_t b) {
      return mz[a] + (half - mean[a]) / (mean[b] - mean[a]) * (mz[b] - mz[a]);
    };
    EXPECT_NEAR(crossing(right - 1, right) - crossing(left, left + 1), 0.6, 0.01) << line;
  }
}

// C12H28N+: 12 carbons, 28 hydrogens (the proton is none), one nitrogen with the isotope
// abundances of M. Berglund and M. Wieser, Isotopic compositions of the elements 2009, 2011.
TEST_F(Infused, IsotopesAreAsHighAsNatureHasThem) {
  const double ratio = 12 * 0.0107 / 0.9893 + 27 * 0.000115 / 0.999885 + 0.00364 / 0.99636;
  const auto [first, second] = FitTwo(mz, mean, 186.2216, 187.2249);
  EXPECT_NEAR(second / first, ratio, 0.02 * ratio);
}

TEST_F(Infused, EveryLineOfTheTruthIsWhereTheProfileHasIt) {
  int lines = 0;
  for (const TrueLine& line : Instrument().Truth(0)) {
    const double height = line.height / kRatePerCount;
    if (height < 40.0) continue;
    EXPECT_NEAR(TopOf(mz, mean, line.mz), line.mz, 0.02) << line.compound;
    EXPECT_NEAR((mean[IndexOf(mz, line.mz - 0.025)] - Background(line.mz)) / height, 1.0, 0.05) << line.mz;
    ++lines;
  }
  EXPECT_GT(lines, 8);
}

// Chlorine: 75.76 % 35Cl and 24.24 % 37Cl; bromine: 50.69 % 79Br and 49.31 % 81Br. The rest
// of M+2 are two carbons 13 and oxygen 18.
TEST(Simulator, HalogensShowTheirIsotopes) {
  const auto truth = Simulator(20).Truth(15);
  const double chlorine =
      LineAt(truth, "diclofenac", 298.02).height / LineAt(truth, "diclofenac", 296.02).height;
  EXPECT_NEAR(chlorine, 2 * 0.2424 / 0.7576, 0.02);
  const auto bromine = Simulator(20).Truth(13);
  EXPECT_NEAR(
      LineAt(bromine, "bromocriptine", 656.16).height / LineAt(bromine, "bromocriptine", 654.16).height,
      0.4931 / 0.5069, 0.10);
}

TEST(Simulator, TruthAscendsAndIsInReach) {
  const Simulator simulator(20);
  for (std::uint32_t scan = 0; scan < 20; ++scan) {
    const auto truth = simulator.Truth(scan);
    EXPECT_TRUE(std::ranges::is_sorted(truth, {}, &TrueLine::mz));
    for (const TrueLine& line : truth) {
      EXPECT_TRUE(line.mz > 100.0 && line.mz < 1100.0 && line.height >= 0.01 * kRatePerCount) << line.mz;
    }
  }
}

TEST(Simulator, CompoundsElute) {
  const Simulator simulator(20);
  const auto has = [&](std::uint32_t scan, const std::string& compound) {
    return std::ranges::any_of(simulator.Truth(scan),
                               [&](const TrueLine& l) { return l.compound == compound && l.height > 1e6; });
  };
  EXPECT_TRUE(has(5, "caffeine"));
  EXPECT_FALSE(has(15, "caffeine"));
  EXPECT_TRUE(has(0, "tributylamine"));
  EXPECT_TRUE(has(19, "tributylamine"));
}

}  // namespace
}  // namespace tests
