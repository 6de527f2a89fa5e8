// Tests: RankedPeaks.cpp, PlaceMap.cpp.
#include <tslbl/closed/math/chargestate/PlaceMap.h>

#include <gtest/gtest.h>

#include <cmath>

#include "SimulatedSeries.h"

using namespace TslMath;
using namespace tests;

namespace {

std::vector<IonPeak> RandomPeaks(int count, double from, double to) {
  Random random(4);
  std::uniform_real_distribution<double> within(0, 1);
  std::vector<IonPeak> peaks;
  for (int k = 0; k < count; ++k)
    peaks.push_back({from + (to - from) * within(random), std::ceil(9 * within(random)), 1, 5, 1000});
  return peaks;
}

TEST(RankedPeaks, AscendInMzAndTellTheirRows) {
  const auto rows = RandomPeaks(200, 500, 2000);
  const RankedPeaks peaks(rows, 1, 1e-3);
  ASSERT_GT(peaks.Count(), 190U);
  for (std::size_t i = 0; i < peaks.Count(); ++i) {
    EXPECT_EQ(peaks[i].mz, rows[peaks[i].row].mz);
    EXPECT_EQ(peaks.PlaceOf(peaks[i].row), i);
    EXPECT_TRUE(i == 0 || peaks[i].mz > peaks[i - 1].mz);
  }
}

TEST(RankedPeaks, KeepTheStrongerOfTwoAtOnePlace) {
  const std::vector<IonPeak> rows = {{1000, 5, 5, 5, 1}, {1000.005, 9, 9, 5, 1}, {1000.2, 1, 1, 5, 1}};
  const RankedPeaks peaks(rows, 1, 1e-3);
  ASSERT_EQ(peaks.Count(), 2U);
  EXPECT_EQ(peaks[0].row, 1U);
  EXPECT_EQ(peaks.PlaceOf(0), peaks.Count());
}

TEST(RankedPeaks, CountPeaksOfLikeStrengthAsOneByOneDoes) {
  const auto rows = RandomPeaks(300, 500, 2000);
  const RankedPeaks peaks(rows, 1, 1e-3);
  const double reach = 0.12 * (peaks.HighestMz() - peaks.LowestMz());
  for (std::size_t i = 0; i < peaks.Count(); ++i) {
    const double from = std::max(peaks.LowestMz(), peaks[i].mz - reach);
    const double to = std::min(peaks.HighestMz(), peaks[i].mz + reach);
    double alike = 0.5;
    for (std::size_t k = 0; k < peaks.Count(); ++k)
      alike += peaks[k].mz >= from && peaks[k].mz <= to &&
               std::abs(peaks[k].logIntensity - peaks[i].logIntensity) < 0.7;
    EXPECT_NEAR(peaks[i].logAlike, std::log(alike / (1.4 * (to - from))), 1e-12);
  }
}

TEST(RankedPeaks, FindTheFirstFromAnyPlace) {
  for (const double to : {2000.0, 501.0, 500.0}) {
    const RankedPeaks peaks(RandomPeaks(150, 500, to), 1, 1e-3);
    for (double mz = 490; mz < to + 10; mz += 0.37) {
      std::size_t first = 0;
      while (first < peaks.Count() && peaks[first].mz < mz) ++first;
      EXPECT_EQ(peaks.FirstFrom(mz), first) << mz;
    }
  }
}

TEST(RankedPeaks, TellTheStrongest) {
  const RankedPeaks peaks(RandomPeaks(100, 500, 2000), 1, 1e-3);
  const auto strongest = peaks.Strongest(10);
  ASSERT_EQ(strongest.size(), 10U);
  for (std::size_t k = 1; k < 10; ++k)
    EXPECT_GE(peaks[strongest[k - 1]].logIntensity, peaks[strongest[k]].logIntensity);
  EXPECT_EQ(peaks.Strongest(1000).size(), peaks.Count());
}

TEST(PlaceMap, MissesNoPeakWithinTheWindow) {
  for (const double window : {1e-6, 1e-3, 0.1}) {
    const RankedPeaks peaks(RandomPeaks(60, 500, 2000), 1, window);
    const PlaceMap map(peaks, window);
    for (double mz = 400; mz < 2300; mz += 0.0731) {
      const std::size_t first = peaks.FirstFrom(mz * (1 - window));
      if (first == peaks.Count() || peaks[first].mz > mz * (1 + window)) continue;
      ASSERT_NE(map.FirstNear(mz), PlaceMap::kNone) << mz;
      ASSERT_LE(static_cast<std::size_t>(map.FirstNear(mz)), first) << mz;
    }
  }
}

TEST(PlaceMap, SaysNoFarFromAllPeaks) {
  const std::vector<IonPeak> rows = {{500, 1, 1, 5, 1}, {1500, 1, 1, 5, 1}};
  const RankedPeaks peaks(rows, 1, 1e-3);
  const PlaceMap map(peaks, 1e-3);
  for (const double mz : {-1.0, 0.0, 490.0, 503.0, 1000.0, 1490.0, 1510.0, 1e9})
    EXPECT_EQ(map.FirstNear(mz), PlaceMap::kNone) << mz;
}

}  // namespace
