#include <tslbl/closed/math/Normalize.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using TslMath::Normalize;

namespace {

using Values = std::vector<double>;

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Normalize, DividesByTheLargest) { EXPECT_EQ(Values({0.25, 1, 0.5, 0}), Normalize({2, 8, 4, 0})); }

TEST(Normalize, FindsTheLargestOfALongCurve) {
  Values values(70001, 1.0);
  values.back() = 4;
  const Values scaled = Normalize(values);
  EXPECT_EQ(0.25, scaled[69000]);
  EXPECT_EQ(1, scaled.back());
}

TEST(Normalize, KeepsNegativeValuesNegative) { EXPECT_EQ(Values({-4, 1}), Normalize({-8, 2})); }

TEST(Normalize, MakesTheLargestExactlyOne) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> exponent(-300, 300);
  for (int k = 0; k < 1000; ++k) {
    const Values scaled = Normalize({std::pow(10, exponent(random)), std::pow(10, exponent(random))});
    ASSERT_EQ(1.0, std::max(scaled[0], scaled[1]));
  }
}

TEST(Normalize, LeavesValuesWithoutAPositiveOneAlone) {
  for (const Values& values : {Values{}, Values{0, 0}, Values{-1, -5}, Values{-1, 0}}) {
    EXPECT_EQ(values, Normalize(values));
  }
}

TEST(Normalize, LeavesValuesWithAnInfinityAlone) {
  EXPECT_EQ(Values({1, kInfinite}), Normalize({1, kInfinite}));
}

TEST(Normalize, ScalesByTheLargestFiniteValueBelowAnInfiniteNegative) {
  EXPECT_EQ(Values({0.5, -kInfinite, 1}), Normalize({1, -kInfinite, 2}));
}

TEST(Normalize, PassesOverNaN) {
  const Values scaled = Normalize({kNaN, 4, 2});
  EXPECT_TRUE(std::isnan(scaled[0]));
  EXPECT_EQ(1, scaled[1]);
  EXPECT_EQ(0.5, scaled[2]);
}

TEST(Normalize, LeavesAVectorOfNaNAlone) { EXPECT_TRUE(std::isnan(Normalize({kNaN}).front())); }

}  // namespace
