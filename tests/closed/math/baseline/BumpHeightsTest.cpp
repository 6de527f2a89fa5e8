#include <tslbl/closed/math/baseline/BumpHeights.h>

#include <gtest/gtest.h>

using namespace TslMath;

namespace {

TEST(BumpHeights, AreTheLevelsOfTheBumps) {
  const std::vector<Knot> bumps = {{1.0, 5.0}, {2.0, 3.0}};
  EXPECT_EQ(HeightsOf(bumps), (std::vector<double>{5.0, 3.0}));
}

TEST(ShareOfEqual, CountsThoseThatHaveTheHeightOfAnother) {
  EXPECT_EQ(ShareOfEqual({3.0, 1.0, 2.0, 1.0}), 0.5);
  EXPECT_EQ(ShareOfEqual({3.0, 3.0, 3.0}), 1.0);
  EXPECT_EQ(ShareOfEqual({1.0, 2.0, 3.0}), 0.0);
  EXPECT_EQ(ShareOfEqual({}), 0.0);
}

TEST(ShareOfEqual, IsTrueToAMillionth) {
  EXPECT_EQ(ShareOfEqual({1000.0, 1000.0009}), 1.0);
  EXPECT_EQ(ShareOfEqual({1000.0, 1000.002}), 0.0);
}

}  // namespace
