#include <tool/commands/peaks/ClippedNoise.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace tests {
namespace {

using TslTool::HasClippedNoise;

// Normal noise about 0 with a line here and there, in whole steps where `isWhole`.
std::vector<double> Noise(double deviation, bool isWhole) {
  std::mt19937_64 random(1);
  std::normal_distribution noise(0.0, deviation);
  std::vector<double> y(20000);
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double offset = std::remainder(static_cast<double>(i) - 500.0, 1000.0) / 4.0;
    y[i] = noise(random) + 300.0 * deviation * std::exp(-0.5 * offset * offset);
    if (isWhole) y[i] = std::round(y[i]);
  }
  return y;
}

std::vector<double> Clipped(std::vector<double> y) {
  for (double& value : y) value = std::max(value, 0.0);
  return y;
}

TEST(ClippedNoise, IsKnownByItsLoneZeros) {
  EXPECT_TRUE(HasClippedNoise(Clipped(Noise(5.0, false))));
  EXPECT_FALSE(HasClippedNoise(Noise(5.0, false)));
  EXPECT_FALSE(HasClippedNoise(std::vector<double>(1000)));
  EXPECT_FALSE(HasClippedNoise({}));
}

TEST(ClippedNoise, IsKnownInWholeNumbersByItsFewOnes) {
  for (const double deviation : {3.0, 5.0, 20.0, 100.0})
    EXPECT_TRUE(HasClippedNoise(Clipped(Noise(deviation, true)))) << deviation;
}

TEST(ClippedNoise, IsNotThatOfCounts) {
  for (const double mean : {0.36, 0.5, 0.7, 1.0, 1.3, 1.6})
    EXPECT_FALSE(HasClippedNoise(Shots(mean, 20000, 1))) << mean;
}

}  // namespace
}  // namespace tests
