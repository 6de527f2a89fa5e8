#include <tslbl/closed/math/peak/BumpNoise.h>

#include <gtest/gtest.h>

#include <closed/math/SampleArray.h>
#include <cmath>
#include <limits>
#include <random>

using namespace TslMath;
using namespace tests;

namespace {

using Random = std::mt19937_64;

Samples Counts(std::size_t points, double mean) {
  Random random(1);
  std::poisson_distribution<int> count(mean);
  Samples y(points);
  for (double& value : y) value = count(random);
  return y;
}

Samples GaussianNoise(std::size_t points) {
  Random random(1);
  std::normal_distribution<double> noise;
  Samples y(points);
  for (double& value : y) value = noise(random);
  return y;
}

double VarianceOf(const Samples& y, double ion) { return NoiseVariance(y, 1, ion).At(y.size() / 2); }

TEST(LikelyIon, IsOneCount) {
  for (const double mean : {0.01, 0.1, 1.0, 5.0, 15.0})
    EXPECT_EQ(LikelyIon(Counts(10000, mean)), 1.0) << mean;
}

TEST(LikelyIon, IsSmallBesideTheDeviationOfOtherNoise) {
  EXPECT_NEAR(LikelyIon(GaussianNoise(10000)), 0.18, 0.02);
}

TEST(LikelyIon, IsZeroOfALevelCurve) {
  EXPECT_EQ(LikelyIon(Samples(100, 3.0)), 0.0);
  EXPECT_EQ(LikelyIon({}), 0.0);
}

TEST(NoiseVariance, IsThatOfCounts) {
  for (const double mean : {0.01, 0.1, 1.0, 10.0, 100.0})
    EXPECT_NEAR(VarianceOf(Counts(20000, mean), 1.0) / mean, 1.15, 0.35) << mean;
}

TEST(NoiseVariance, IsThatOfGaussianNoise) { EXPECT_NEAR(VarianceOf(GaussianNoise(20000), 0.18), 1.05, 0.1); }

TEST(NoiseVariance, HardlySeesPeaks) {
  Samples y = GaussianNoise(20000);
  for (std::size_t i = 0; i < y.size(); ++i) y[i] += i % 100 < 10 ? 1000.0 : 0.0;
  EXPECT_LT(VarianceOf(y, 0.18), 1.6);
}

TEST(NoiseVariance, IsLargerWhereThereIsMoreNoise) {
  Samples y = GaussianNoise(20000);
  for (std::size_t i = 0; i < y.size() / 2; ++i) y[i] *= 0.1;
  const NoiseVariance variance(y, 1, 0.02);
  EXPECT_NEAR(variance.At(18000), 1.05, 0.25);
  EXPECT_LT(variance.At(2000), 0.2);
}

TEST(NoiseVariance, DoesNotSeeASlope) {
  Samples y = GaussianNoise(5000);
  for (std::size_t i = 0; i < y.size(); ++i) y[i] += 10.0 * static_cast<double>(i);
  EXPECT_NEAR(VarianceOf(y, 0.18), 1.05, 0.15);
}

TEST(NoiseVariance, OfTooFewPointsIsInfinite) {
  const Samples y(4, 0.0);
  EXPECT_EQ(NoiseVariance(y, 2, 1.0).At(2), std::numeric_limits<double>::infinity());
}

TEST(BumpNoise, TheLowestOfManyPlacesLiesAsDeepAsGaussianNoiseGoes) {
  EXPECT_NEAR((BumpNoise{4.0, 0.1, 10000.0}.Depth()), 2.0 * 4.29, 0.01);
}

// Of 10 000 places one is higher with a probability of 0.001 where each is with 1e-7.
TEST(BumpNoise, OfManyIonsIsAsHighAsGaussianNoiseGoes) {
  const double height = BumpNoise{1.0, 0.001, 10000.0}.Height();
  EXPECT_GT(height, 5.2);
  EXPECT_LT(height, 5.8);
}

// 0.01 ions a place: P(4 or more) = 4e-10, P(3 or more) = 1.7e-7.
TEST(BumpNoise, OfFewIonsIsAsHighAsSomeOfThem) {
  const double height = BumpNoise{0.01, 1.0, 10000.0}.Height();
  EXPECT_GT(height, 2.99);
  EXPECT_LT(height, 5.0);
}

TEST(BumpNoise, ScalesWithTheUnit) {
  const double height = BumpNoise{3.0, 0.5, 1000.0}.Height();
  EXPECT_NEAR((BumpNoise{3.0e12, 0.5e6, 1000.0}.Height()), 1e6 * height, 1e-3);
}

TEST(BumpNoise, OfAPeakHasItsOwnIons) {
  const BumpNoise noise = BumpNoise{1.0, 0.5, 100.0}.With(1000.0);
  EXPECT_DOUBLE_EQ(noise.variance, 1.0 + 0.7 * 0.5 * 1000.0);
}

}  // namespace
