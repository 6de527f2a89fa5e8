// Tests: Simulator.cpp.

#include <gtest/gtest.h>

#include <numeric>

#include <tool/simulate/Protein.h>
#include <tool/simulate/SimulatedCounts.h>
#include <tool/simulate/Simulator.h>

namespace tests {
namespace {

using TslTool::CountRange;
using TslTool::Instrument;
using TslTool::Sample;
using TslTool::Simulator;
using TslTool::TrueLine;

constexpr Instrument kWide{.mzLow = 400.0, .mzHigh = 3000.0};

Sample ProteinAlone(double mass, const CountRange& charges, double height, double background = 0.0) {
  return {{TslTool::InfusedProtein("protein", mass, charges, height)}, background};
}

double CentroidOf(const Counts& mz, const Counts& counts) {
  double sum = 0.0, moment = 0.0;
  for (std::size_t i = 0; i < mz.size(); ++i) sum += counts[i], moment += counts[i] * mz[i];
  return moment / sum;
}

struct Case {
  double mass;
  std::uint32_t charge;
};

const Case kCases[] = {{501.3, 1},    {2000.0, 2},   {8564.6, 9},     {16951.5, 10},    {16951.5, 20},
                       {66430.3, 45}, {147951, 110}, {800000.0, 300}, {800000.0, 1000}, {2000000.0, 1500}};

TEST(SimulatedProteins, TheCentroidOfALineIsThatOfTheAverageMass) {
  for (const double width : {0.2, 0.6, 2.0}) {
    Instrument instrument = kWide;
    instrument.width = width;
    for (const auto& [mass, charge] : kCases) {
      const Simulator simulator(1, 1, ProteinAlone(mass, {charge, charge}, 1e7), instrument);
      EXPECT_NEAR(CentroidOf(MzOf(simulator), simulator.MakeScan(0).counts),
                  (mass + charge * 1.00727646688) / charge, 0.001)
          << mass << " at charge " << charge;
    }
  }
}

TEST(SimulatedProteins, TheHighestPointHasTheCountsAskedFor) {
  for (const auto& [mass, charge] : kCases) {
    const Simulator simulator(1, 1, ProteinAlone(mass, {charge, charge}, 1e7), kWide);
    EXPECT_NEAR(std::ranges::max(simulator.MakeScan(0).counts), 1e7, 0.01 * 1e7) << mass;
  }
}

// The centroid of the top lies a little below that of the whole line, as light isotopes are more likely than
// a symmetrical pattern has them.
TEST(SimulatedProteins, TheTruthHasALineForEachCharge) {
  const Simulator simulator(2, 1, ProteinAlone(16951.5, {10, 20}, 3000.0), kWide);
  const std::vector<TrueLine> truth = simulator.Truth(1);
  ASSERT_EQ(truth.size(), 11U);
  for (std::size_t i = 0; i < truth.size(); ++i) {
    const auto charge = static_cast<std::uint32_t>(20 - i);
    EXPECT_EQ(truth[i].charge, charge);
    EXPECT_EQ(truth[i].compound, "protein");
    const double mass = (truth[i].mz - 1.00727646688) * charge;
    EXPECT_TRUE(mass < 16951.5 && mass > 16951.5 - 0.4) << mass;
    EXPECT_NEAR(truth[i].height, 3000.0 * kRatePerCount * std::pow(0.1, std::pow((charge - 15.0) / 5.0, 2)),
                1e-6 * truth[i].height);
  }
}

TEST(SimulatedProteins, NarrowLinesShowTheIsotopesOfSmallOnes) {
  Instrument instrument = kWide;
  instrument.width = 0.2;
  const std::vector<TrueLine> truth =
      Simulator(1, 1, ProteinAlone(2000.0, {2, 2}, 3000.0), instrument).Truth(0);
  ASSERT_GT(truth.size(), 4U);
  for (std::size_t i = 1; i < truth.size(); ++i) EXPECT_NEAR(truth[i].mz - truth[i - 1].mz, 0.5015, 0.003);
}

TEST(SimulatedProteins, OnlyTheirScannedChargesAreInTheTruth) {
  const Simulator simulator(1, 1, ProteinAlone(16951.5, {1, 60}, 3000.0), {});
  const std::vector<TrueLine> truth = simulator.Truth(0);
  EXPECT_EQ(truth.front().charge, 60U);
  EXPECT_EQ(truth.back().charge, 16U);
}

TEST(SimulatedProteins, CountsArePoissonDistributed) {
  const Simulator simulator(100, 1, ProteinAlone(16951.5, {10, 20}, 3000.0, 8.0), kWide);
  const Moments m = MomentsOf(simulator, 100);
  double chiSquare = 0.0;
  for (std::size_t i = 0; i < m.mean.size(); ++i) chiSquare += m.squares[i] / m.mean[i];
  const double freedom = static_cast<double>(m.mean.size()) * (m.scans - 1);
  EXPECT_NEAR(chiSquare, freedom, 4.0 * std::sqrt(2.0 * freedom));
}

TEST(SimulatedProteins, AreInfusedAllAlong) {
  const Simulator simulator(50, 1, ProteinAlone(16951.5, {10, 20}, 3000.0), kWide);
  EXPECT_EQ(simulator.Truth(0).front().height, simulator.Truth(49).front().height);
}

TEST(SimulatedProteins, EqualSeedsMakeEqualScans) {
  const Sample sample = ProteinAlone(16951.5, {10, 20}, 3000.0, 8.0);
  EXPECT_EQ(Simulator(5, 9, sample, kWide).MakeScan(3), Simulator(5, 9, sample, kWide).MakeScan(3));
  EXPECT_NE(Simulator(5, 9, sample, kWide).MakeScan(3).counts,
            Simulator(5, 8, sample, kWide).MakeScan(3).counts);
}

TEST(SimulatedBackground, IsScaledOrLeftOut) {
  const auto meanAt = [](double background) {
    const Simulator simulator(100, 1, ProteinAlone(8000.0, {3, 3}, 1.0, background), kWide);
    const Moments m = MomentsOf(simulator, 100);
    return std::accumulate(m.mean.begin(), m.mean.begin() + 1000, 0.0) / 1000.0;
  };
  EXPECT_EQ(meanAt(0.0), 0.0);
  // m/z 400 to 450
  const double usual = 40.0 * std::exp(-425.0 / 300.0) + 8.0;
  EXPECT_NEAR(meanAt(8.0), usual, 0.01 * usual);
  EXPECT_NEAR(meanAt(2.0), usual / 4.0, 0.01 * usual);
}

}  // namespace
}  // namespace tests
