#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include <tool/commands/average/OnLine.h>
#include <tool/commands/average/ProfileSum.h>

namespace tests {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using TslTool::ProfileSum;
using Values = std::vector<double>;

TEST(ProfileSum, AddsPointByPointOnOneAxis) {
  ProfileSum sum;
  sum.Add({100, 101, 102}, {1, 2, 3});
  sum.Add({100, 101, 102}, {5, 0, 3});
  EXPECT_TRUE(sum.IsOneAxis());
  EXPECT_EQ(sum.Count(), 2U);
  EXPECT_THAT(sum.Mean(false), ElementsAre(3, 1, 3));
}

TEST(ProfileSum, OfOneProfileIsThatProfile) {
  ProfileSum sum;
  sum.Add({100, 100.3, 102}, {1, -2, 1e300});
  EXPECT_THAT(sum.Mz(), ElementsAre(100, 100.3, 102));
  EXPECT_THAT(sum.Mean(false), ElementsAre(1, -2, 1e300));
}

TEST(ProfileSum, ReadsAShiftedAxisOnStraightLines) {
  ProfileSum sum;
  sum.Add({100, 101, 102, 103}, {0, 0, 0, 0});
  sum.Add({99.8, 100.8, 101.8, 102.8, 103.8}, {10, 20, 30, 40, 50});
  EXPECT_FALSE(sum.IsOneAxis());
  // The shifted axis goes on for 0.8 of a step at the right end.
  EXPECT_THAT(sum.Mz(), ElementsAre(100, 101, 102, 103, 103.8));
  EXPECT_THAT(sum.Mean(false), ElementsAre(DoubleNear(6, 1e-9), DoubleNear(11, 1e-9), DoubleNear(16, 1e-9),
                                           DoubleNear(21, 1e-9), 50));
}

TEST(ProfileSum, TakesInWhatLiesInAGap) {
  ProfileSum sum;
  sum.Add({100, 101, 102, 110, 111, 112}, {0, 4, 0, 0, 4, 0});
  sum.Add({100, 101, 102, 104, 105, 106, 110, 111, 112}, {0, 0, 0, 0, 8, 0, 0, 0, 0});
  EXPECT_THAT(sum.Mz(), ElementsAre(100, 101, 102, 104, 105, 106, 110, 111, 112));
  EXPECT_THAT(sum.Mean(false), ElementsAre(0, 2, 0, 0, 4, 0, 0, 2, 0));
}

TEST(ProfileSum, TakesInAFinerAxisAndReadsACoarserOneBetweenItsPoints) {
  const Values coarse = {100, 102, 104};
  const Values fine = {100, 101, 102, 103, 104};
  for (const bool isCoarseFirst : {true, false}) {
    ProfileSum sum;
    if (isCoarseFirst) sum.Add(coarse, {0, 20, 0});
    sum.Add(fine, {2, 2, 2, 2, 2});
    if (!isCoarseFirst) sum.Add(coarse, {0, 20, 0});
    EXPECT_EQ(sum.Mz(), fine);
    EXPECT_THAT(sum.Mean(false), ElementsAre(1, 6, 11, 6, 1)) << isCoarseFirst;
  }
}

TEST(ProfileSum, BeyondAnEndOnlyThoseCountThatReachThereUnlessTheyAreZero) {
  ProfileSum sum;
  sum.Add({100, 101, 102}, {6, 6, 6});
  sum.Add({101, 102, 103}, {2, 2, 2});
  EXPECT_THAT(sum.Mz(), ElementsAre(100, 101, 102, 103));
  EXPECT_THAT(sum.Mean(false), ElementsAre(6, 4, 4, 2));
  EXPECT_THAT(sum.Mean(true), ElementsAre(3, 4, 4, 1));
}

TEST(ProfileSum, ItsAxisDoesNotGrowWithProfilesOfOneSpacing) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> jitter(0.0, 0.1);
  ProfileSum sum;
  for (int k = 0; k < 300; ++k) {
    Values mz;
    const double shift = jitter(random);
    for (int i = 0; i < 1000; ++i) mz.push_back(100 + 0.1 * i + shift);
    sum.Add(mz, Values(mz.size(), 1.0));
  }
  EXPECT_LE(sum.Mz().size(), 1003U);
  for (const double mean : sum.Mean(false)) EXPECT_NEAR(mean, 1.0, 1e-9);
}

TEST(ProfileSum, KeepsAPeakThatOtherAxesResolveOtherwise) {
  ProfileSum sum;
  const auto peak = [](double mz) { return 1000 * std::exp(-std::pow((mz - 105.0) / 0.05, 2)); };
  for (const double step : {0.01, 0.013, 0.02}) {
    Values mz, amplitude;
    for (double at = 100; at < 110; at += step) {
      mz.push_back(at);
      amplitude.push_back(peak(at));
    }
    sum.Add(mz, amplitude);
  }
  const Values mean = sum.Mean(false);
  for (std::size_t i = 0; i < mean.size(); ++i) EXPECT_NEAR(mean[i], peak(sum.Mz()[i]), 25.0);
}

TEST(OnLine, MeetsItsEndsExactly) {
  EXPECT_EQ(TslTool::OnLine(0.1, 0.1, 0.7, 0.3, 0.1), 0.7);
  EXPECT_EQ(TslTool::OnLine(0.3, 0.1, 0.7, 0.3, 0.1), 0.1);
  EXPECT_EQ(TslTool::OnLine(1.5, 1.0, 10.0, 2.0, 20.0), 15.0);
}

}  // namespace
}  // namespace tests
