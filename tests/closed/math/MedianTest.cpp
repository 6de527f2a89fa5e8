#include <tslbl/closed/math/Median.h>

#include <gtest/gtest.h>

#include <random>

using namespace TslMath;

namespace {

TEST(Median, IsInTheMiddle) {
  EXPECT_EQ(Median({3, 1, 2}), 2.0);
  EXPECT_EQ(Median({7}), 7.0);
}

TEST(Median, OfAnEvenNumberIsTheUpperOne) { EXPECT_EQ(Median({4, 1, 3, 2}), 3.0); }

TEST(Median, OfNothingIsZero) { EXPECT_EQ(Median({}), 0.0); }

TEST(Quantile, IsTheOneThatThisShareIsLowerThan) {
  EXPECT_EQ(Quantile({5, 4, 3, 2, 1}, 0.0), 1.0);
  EXPECT_EQ(Quantile({5, 4, 3, 2, 1}, 0.2), 2.0);
  EXPECT_EQ(Quantile({5, 4, 3, 2, 1}, 0.99), 5.0);
  EXPECT_EQ(Quantile({}, 0.5), 0.0);
}

std::vector<double> Noise(double deviation) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> noise(0.0, deviation);
  std::vector<double> y(20000);
  for (double& value : y) value = noise(random);
  return y;
}

TEST(PointScatter, IsTheStandardDeviationOfNoise) {
  EXPECT_NEAR(PointScatter(Noise(5.0)), 5.0, 0.1);
  EXPECT_NEAR(PointScatter(Noise(5.0), 10), 5.0, 0.3);
}

TEST(PointScatter, DoesNotSeeALineOrAFewPeaks) {
  std::vector<double> y = Noise(5.0);
  for (std::size_t i = 0; i < y.size(); ++i)
    y[i] += 3.0 * static_cast<double>(i) + (i % 100 < 10 ? 1e4 * static_cast<double>(i % 10) : 0.0);
  EXPECT_NEAR(PointScatter(y), 5.0, 1.0);
}

TEST(PointScatter, OfTooFewPointsIsZero) {
  EXPECT_EQ(PointScatter({}), 0.0);
  EXPECT_EQ(PointScatter(std::vector<double>{1, 2}), 0.0);
}

}  // namespace
