#include <tslbl/curve/FilterWeights.h>

#include <tslbl/curve/SmoothParams.h>

#include <gtest/gtest.h>

#include <numeric>

using namespace TslBL;

namespace {

using Values = std::vector<double>;

SmoothParams Smooth(SmoothParams::Algs alg, std::uint32_t size, std::uint32_t passes = 1) {
  SmoothParams p;
  p.Alg = alg;
  p.Passes = passes;
  p.Steps = {{0.0, size}};
  return p;
}

void ExpectNear(const Values& weights, const Values& expected) {
  ASSERT_EQ(weights.size(), expected.size());
  for (std::size_t i = 0; i < weights.size(); ++i) EXPECT_NEAR(weights[i], expected[i], 1e-12) << i;
}

}  // namespace

TEST(FilterWeights, OfAMeanAreAlike) {
  ExpectNear(QFilterWeights(Smooth(SmoothParams::Mean, 5)), {0.2, 0.2, 0.2, 0.2, 0.2});
}

// A. Savitzky, M. J. E. Golay, Smoothing and differentiation of data, 1964: table I.
TEST(FilterWeights, OfSavitzkyGolayAreThePublishedOnes) {
  Values expected = {-2, 3, 6, 7, 6, 3, -2};
  for (double& weight : expected) weight /= 21.0;
  ExpectNear(QFilterWeights(Smooth(SmoothParams::SavitzkyGolay, 7)), expected);
}

TEST(FilterWeights, OfSeveralPassesAreAllOfThem) {
  ExpectNear(QFilterWeights(Smooth(SmoothParams::Mean, 3, 2)), {1 / 9.0, 2 / 9.0, 3 / 9.0, 2 / 9.0, 1 / 9.0});
}

TEST(FilterWeights, AreOddAndTheirSumIsOne) {
  for (const auto alg : {SmoothParams::Mean, SmoothParams::Gaussian, SmoothParams::SavitzkyGolay})
    for (const std::uint32_t size : {2U, 9U, 64U}) {
      const Values weights = QFilterWeights(Smooth(alg, size));
      EXPECT_EQ(weights.size() % 2, 1U);
      EXPECT_NEAR(std::reduce(weights.begin(), weights.end()), 1.0, 1e-12);
    }
}

TEST(FilterWeights, OfNoSmoothingAreThePointItself) {
  ExpectNear(QFilterWeights(Smooth(SmoothParams::Mean, 1)), {1.0});
  ExpectNear(QFilterWeights(Smooth(SmoothParams::Mean, 9, 0)), {1.0});
}

TEST(FilterWeights, AMedianAndChangingWindowsHaveNone) {
  EXPECT_TRUE(QFilterWeights(Smooth(SmoothParams::Median, 5)).empty());
  SmoothParams steps = Smooth(SmoothParams::Mean, 5);
  steps.Steps.push_back({500.0, 9});
  EXPECT_TRUE(QFilterWeights(steps).empty());
}

TEST(FilterWeights, GoAsFarAs100000Points) {
  EXPECT_EQ(QFilterWeights(Smooth(SmoothParams::Mean, 49'999)).size(), 49'999U);
  EXPECT_TRUE(QFilterWeights(Smooth(SmoothParams::Mean, 50'000)).empty());
  EXPECT_FALSE(QFilterWeights(Smooth(SmoothParams::Mean, 24'999, 2)).empty());
  EXPECT_TRUE(QFilterWeights(Smooth(SmoothParams::Mean, 25'000, 2)).empty());
  EXPECT_TRUE(QFilterWeights(Smooth(SmoothParams::Mean, 4'000'000'000U)).empty());
  EXPECT_TRUE(QFilterWeights(Smooth(SmoothParams::Mean, 9, 4'000'000'000U)).empty());
}
