#include <tslbl/closed/math/overlap/GroupNoise.h>

#include <gtest/gtest.h>

#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

using Values = std::vector<double>;

TEST(LocalMeans, AreOfFivePointsAndOfFewerAtTheEnds) {
  EXPECT_EQ(LocalMeans(Values{3, 6, 0, 3, 3, 5, 7}), (Values{3, 3, 3, 3.4, 3.6, 5, 7}));
}

double MeanVariancePerMean(double factor) {
  Random random(1);
  double sum = 0;
  for (int k = 0; k < 200; ++k) {
    SimulatedGroup group = SimulateGroup({.peaks = 3, .spacing = 1.2}, random);
    for (double& value : group.y) value *= factor;
    sum += VariancePerMean(group.y) / 200;
  }
  return sum;
}

TEST(VariancePerMean, OfCountsIsOneWhateverThePeaks) { EXPECT_NEAR(MeanVariancePerMean(1), 1, 0.05); }

TEST(VariancePerMean, OfScaledCountsIsTheFactor) { EXPECT_NEAR(MeanVariancePerMean(0.01), 0.01, 0.0005); }

TEST(VariancePerMean, OfASmoothedCurveIsMoreBetweenPointsFartherApart) {
  Random random(1);
  SimulatedGroup group;
  group.mean.assign(3000, 100.0);
  CountIons(group, random);
  Values smoothed = group.y;
  for (std::size_t i = 1; i + 1 < smoothed.size(); ++i)
    smoothed[i] = (group.y[i - 1] + group.y[i] + group.y[i + 1]) / 3;
  EXPECT_NEAR(VariancePerMean(group.y, 3), 1, 0.2);
  EXPECT_LT(VariancePerMean(smoothed), 0.15);
  EXPECT_NEAR(VariancePerMean(smoothed, 3), 1.0 / 3, 0.07);
}

TEST(VariancePerMean, IsOneWhereItCannotBeTold) {
  EXPECT_EQ(VariancePerMean(Values(8, 5.0)), 1);
  EXPECT_EQ(VariancePerMean(Values(20, 0.0)), 1);
  EXPECT_EQ(VariancePerMean(Values(20, -3.0)), 1);
  EXPECT_EQ(VariancePerMean(Values{1, 5, 2, 4, 1, 5, 2, 4, 1, 5, 2, 4}, 3), 1);
  EXPECT_EQ(VariancePerMean({}), 1);
}

}  // namespace
