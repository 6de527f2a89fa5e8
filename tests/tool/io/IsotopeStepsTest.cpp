#include <tool/io/IsotopeSteps.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>
#include <vector>

using TslTool::FollowAsIsotopes;

namespace {

using Values = std::vector<double>;

// Rows of ten isotopes of the charges, 10 m/z apart, off by so many ppm.
Values Rows(const std::vector<int>& charges, double ppm = 0.0) {
  std::mt19937_64 random(1);
  std::normal_distribution error(0.0, 1.0);
  Values mz;
  double begin = 500.0;
  for (const int charge : charges) {
    for (int isotope = 0; isotope < 10; ++isotope)
      mz.push_back((begin + 1.00286 * isotope / charge) * (1.0 + 1e-6 * ppm * error(random)));
    begin += 10.0;
  }
  return mz;
}

// Groups of ten points at a step that grows with m/z.
Values Groups(double firstStep, double growth) {
  Values mz;
  double step = firstStep;
  for (int group = 0; group < 20; ++group, step *= growth)
    for (int i = 0; i < 10; ++i) mz.push_back(500.0 + 10.0 * group + step * i);
  return mz;
}

TEST(IsotopeSteps, RowsOfThreeChargesAreIsotopes) {
  EXPECT_TRUE(FollowAsIsotopes(Rows({4, 5, 6})));
  EXPECT_TRUE(FollowAsIsotopes(Rows({4, 5, 6, 5, 4}, 3.0)));
  EXPECT_TRUE(FollowAsIsotopes(Rows({20, 19, 18, 17, 16}, 1.0)));
}

TEST(IsotopeSteps, OneOrTwoStepsMayBeThoseOfAProfile) {
  EXPECT_FALSE(FollowAsIsotopes(Rows({5, 5, 5, 5})));
  EXPECT_FALSE(FollowAsIsotopes(Rows({5, 5, 10, 10})));
}

TEST(IsotopeSteps, RoundedMassesAreIsotopesStill) {
  for (const double unit : {1e-2, 1e-3, 1e-4}) {
    Values mz = Rows({4, 5, 6, 8, 10});
    for (double& x : mz) x = unit * std::round(x / unit);
    EXPECT_TRUE(FollowAsIsotopes(mz)) << unit;
  }
}

TEST(IsotopeSteps, AStepThatGrowsEvenlyIsNoCharges) {
  for (const double step : {0.025, 0.03, 0.05, 0.1})
    for (const double growth : {1.01, 1.03, 1.05})
      EXPECT_FALSE(FollowAsIsotopes(Groups(step, growth))) << step;
}

// A grid of 0.05, 0.1 ... m/z, of which counts of no ion were left out.
TEST(IsotopeSteps, AGridWithoutItsZerosIsNoCharges) {
  std::mt19937_64 random(1);
  for (const double step : {0.02, 0.025, 0.05, 0.1, 0.2})
    for (const double background : {0.3, 0.5, 1.0, 2.0, 4.0}) {
      Values mz;
      for (int i = 0; i < 4000; ++i)
        if (std::poisson_distribution<int>(background)(random) > 0) mz.push_back(100.0 + step * i);
      EXPECT_FALSE(FollowAsIsotopes(mz)) << step << ", " << background;
    }
}

TEST(IsotopeSteps, RowsMustHoldHalfOfThePoints) {
  Values mz = Rows({4, 5, 6});
  for (int i = 0; i < 29; ++i) mz.push_back(600.0 + 3.0 * i);
  EXPECT_TRUE(FollowAsIsotopes(mz));
  for (int i = 0; i < 2; ++i) mz.push_back(700.0 + 3.0 * i);
  EXPECT_FALSE(FollowAsIsotopes(mz));
}

TEST(IsotopeSteps, AFewPointsAreNone) {
  EXPECT_FALSE(FollowAsIsotopes({}));
  EXPECT_FALSE(FollowAsIsotopes({500.0, 500.2}));
}

}  // namespace
