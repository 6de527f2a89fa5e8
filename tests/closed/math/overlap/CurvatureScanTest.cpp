#include <tslbl/closed/math/overlap/CurvatureScan.h>

#include <gtest/gtest.h>

#include <tslbl/closed/math/overlap/PeakSum.h>

#include <cmath>

using namespace TslMath;

namespace {

constexpr BendLimits kAnything{0, 0, 0.01};

std::vector<double> Curve(const PeakSum& sum) {
  std::vector<double> y;
  for (int i = 0; i < 100; ++i) y.push_back(sum.At(i));
  return y;
}

const PeakSum kShoulder{{100, 40}, {45, 56}, {5, 5}, 0, 10};

TEST(CurvatureScan, FindsAShoulderThatIsNoMaximum) {
  const std::vector<double> y = Curve(kShoulder);
  for (std::size_t i = 46; i < 99; ++i) EXPECT_LE(y[i], y[i - 1]);
  const std::vector<Bend> bends = CurvatureScan(y, std::vector<double>(100, 1.0), 2).Bends(kAnything);
  ASSERT_EQ(bends.size(), 2u);
  EXPECT_NEAR(static_cast<double>(bends[0].at), 45, 1);
  EXPECT_NEAR(static_cast<double>(bends[1].at), 56, 2);
}

TEST(CurvatureScan, TellsTheWidthOfAGaussian) {
  const std::vector<double> y = Curve({{100}, {50}, {5}, 0, 10});
  const CurvatureScan scan(y, std::vector<double>(100, 1.0), 3);
  const std::vector<Bend> bends = scan.Bends(kAnything);
  ASSERT_EQ(bends.size(), 1u);
  EXPECT_NEAR(scan.SquaredWidth(bends[0], 10), 25 + 9, 0.3);
}

// White noise of one size: the root of the sum of the squared weights.
TEST(CurvatureScan, TellsHowSignificantABendIs) {
  const std::vector<double> y = Curve({{100}, {50}, {5}, 0, 10});
  const Bend bend = CurvatureScan(y, std::vector<double>(100, 4.0), 3).Bends(kAnything)[0];
  const Bend surer = CurvatureScan(y, std::vector<double>(100, 1.0), 3).Bends(kAnything)[0];
  EXPECT_EQ(bend.strength, surer.strength);
  EXPECT_DOUBLE_EQ(2 * bend.significance, surer.significance);
}

TEST(CurvatureScan, LeavesOutWhatIsBelowTheLimits) {
  const std::vector<double> y = Curve(kShoulder);
  const CurvatureScan scan(y, std::vector<double>(100, 1.0), 2);
  EXPECT_EQ(scan.Bends({0, 0, 0.9}).size(), 1u);
  EXPECT_EQ(scan.Bends({1e6, 0, 0.01}).size(), 0u);
  EXPECT_EQ(scan.Bends({0, 1e6, 0.01}).size(), 0u);
}

TEST(CurvatureScan, SeesNothingInALevelCurve) {
  const std::vector<double> level(100, 10.0);
  EXPECT_TRUE(CurvatureScan(level, level, 3).Bends({4, 3.5, 0.03}).empty());
  EXPECT_TRUE(CurvatureScan(std::vector<double>{1}, std::vector<double>{1}, 3).Bends(kAnything).empty());
}

}  // namespace
