#include <tslbl/closed/math/overlap/GroupSamples.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using TslMath::GroupSamples;
using TslMath::kGroupBlock;

namespace {

using Values = std::vector<double>;

TEST(GroupSamples, LieFromOneToTwo) {
  const GroupSamples samples(Values{1, 2, 3}, Values{5, -700, 40});
  EXPECT_EQ(samples.Scale(), 512);
  EXPECT_EQ(samples.Amplitudes()[1], -700.0 / 512);
}

TEST(GroupSamples, FillTheLastStepWithPointsThatWeighNothing) {
  GroupSamples samples(Values(kGroupBlock + 1, 3.0), Values(kGroupBlock + 1, 1.0));
  samples.WeighBy(Values(kGroupBlock + 1, 1.0));
  EXPECT_EQ(samples.BlockCount(), 2u);
  EXPECT_EQ(samples.CountOf(0), kGroupBlock);
  EXPECT_EQ(samples.CountOf(1), 8u);
  EXPECT_EQ(samples.RootWeights()[kGroupBlock], 1);
  EXPECT_EQ(samples.RootWeights()[kGroupBlock + 1], 0);
}

TEST(GroupSamples, TellTheExtentOfABlockInAnyOrder) {
  const GroupSamples samples(Values{4, -1, 2}, Values{1, 1, 1});
  EXPECT_EQ(samples.Extent(0).first, -1);
  EXPECT_EQ(samples.Extent(0).last, 4);
}

TEST(GroupSamples, WeighByTheVarianceOfCounts) {
  GroupSamples samples(Values{0, 1, 2}, Values{1, 1, 1});
  samples.WeighBy(Values{4, 1, 0}, {0.5, 3});
  EXPECT_DOUBLE_EQ(samples.RootWeights()[0], 1 / std::sqrt(4 + 0.25 * 16 + 9));
  EXPECT_DOUBLE_EQ(samples.RootWeights()[1], 1 / std::sqrt(1.25 + 9));
  EXPECT_DOUBLE_EQ(samples.RootWeights()[2], 1 / std::sqrt(0.001 + 0.25e-6 + 9));
}

TEST(GroupSamples, AreNotMadeOfWhatIsNoNumber) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const Values good = {1, 2, 3};
  EXPECT_TRUE(GroupSamples::IsUsable(good, good));
  for (const Values& bad : {Values{}, Values{1, 2}, Values{1, kNaN, 2}, Values{1, HUGE_VAL, 2}}) {
    EXPECT_FALSE(GroupSamples::IsUsable(bad, good));
    EXPECT_FALSE(GroupSamples::IsUsable(good, bad));
  }
  EXPECT_FALSE(GroupSamples::IsUsable(good, Values{0, 0, 0}));
  EXPECT_FALSE(GroupSamples::IsUsable(good, Values{0, 1e-310, 0}));
}

}  // namespace
