#include <tslbl/closed/math/overlap/WidthGuess.h>

#include <gtest/gtest.h>

#include <tslbl/closed/math/overlap/PeakSum.h>

#include <vector>

using namespace TslMath;

namespace {

std::vector<double> Curve(const PeakSum& sum, int from = 0, int to = 100) {
  std::vector<double> y;
  for (int i = from; i < to; ++i) y.push_back(sum.At(i));
  return y;
}

const PeakSum kOne{{100}, {50}, {6}, 0, 10};
const PeakSum kThree{{80, 100, 80}, {36, 50, 64}, {6, 6, 6}, 0, 10};

TEST(WidthAtHalfHeight, IsThatOfASinglePeak) { EXPECT_NEAR(WidthAtHalfHeight(Curve(kOne)), 6, 1); }

TEST(WidthAtHalfHeight, TakesTheSideWithoutANeighbour) {
  EXPECT_NEAR(WidthAtHalfHeight(Curve({{100, 60}, {40, 54}, {6, 6}, 0, 10})), 6, 1);
}

TEST(WidthAtHalfHeight, TakesTheSideThatIsThere) {
  EXPECT_NEAR(WidthAtHalfHeight(Curve(kOne, 50)), 6, 1);
  EXPECT_NEAR(WidthAtHalfHeight(Curve(kOne, 0, 51)), 6, 1);
}

TEST(WidthAtHalfHeight, IsAtLeastOnePoint) {
  for (const std::vector<double>& y : {std::vector<double>{5}, {0, 0, 9, 0, 0}, {1, 1, 1}, {1, 2}})
    EXPECT_GE(WidthAtHalfHeight(y), 1);
  EXPECT_EQ(WidthAtHalfHeight(std::vector<double>{0, 0, 9, 0, 0}), 1);
}

TEST(WidthOfBends, IsThatOfEachPeakWhereNeighboursFillTheValleys) {
  const std::vector<double> y = Curve(kThree);
  const std::vector<double> variances(y.size(), 1e-4);
  EXPECT_GT(WidthAtHalfHeight(y), 9);
  EXPECT_NEAR(WidthOfBends(y, variances, WidthAtHalfHeight(y)), 6, 2);
}

TEST(WidthOfBends, IsNeverMoreThanTold) {
  const std::vector<double> y = Curve(kOne);
  EXPECT_EQ(WidthOfBends(y, std::vector<double>(y.size(), 1e9), 7), 7);
  EXPECT_LE(WidthOfBends(y, std::vector<double>(y.size(), 1e-4), 3), 3);
}

}  // namespace
