#include <tslbl/closed/math/baseline/NoiseThreshold.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace TslMath;

namespace {

// Of noise, above a threshold that is 100 at the first bump and `rise` times as high at the last one.
std::vector<Knot> NoiseBumps(int count, double rise) {
  std::mt19937_64 random(1);
  std::exponential_distribution<double> above(1.0);
  std::vector<Knot> bumps;
  for (int k = 0; k < count; ++k)
    bumps.push_back({10.0 * k, 100.0 * std::pow(rise, double(k) / count) * (1.0 + 0.6 * above(random))});
  return bumps;
}

// Heights of all orders.
std::vector<Knot> Lines(int count) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> order(0.0, 4.0);
  std::vector<Knot> bumps;
  for (int k = 0; k < count; ++k) bumps.push_back({10.0 * k, std::pow(10.0, order(random))});
  return bumps;
}

TEST(NoiseThreshold, IsWhatTheNoiseExceeds) {
  const NoiseThreshold found = FindNoiseThreshold(NoiseBumps(400, 1.0));
  ASSERT_EQ(found.levels.size(), 1U);
  EXPECT_NEAR(found.levels[0].level, 100.0, 5.0);
  EXPECT_TRUE(found.hasEdge);
}

TEST(NoiseThreshold, IsFollowedWhereItRises) {
  const NoiseThreshold found = FindNoiseThreshold(NoiseBumps(1600, 10.0));
  ASSERT_EQ(found.levels.size(), 8U);
  for (const Knot& knot : found.levels) {
    const double there = 100.0 * std::pow(10.0, knot.position / 16000.0);
    EXPECT_NEAR(knot.level, there, 0.2 * there) << knot.position;
  }
  EXPECT_EQ(found.Least(), found.levels[0].level);
}

TEST(NoiseThreshold, OfLinesThereIsNone) {
  for (const int count : {60, 600, 2000}) EXPECT_TRUE(FindNoiseThreshold(Lines(count)).levels.empty());
  EXPECT_EQ(FindNoiseThreshold(Lines(600)).Least(), 0.0);
}

TEST(NoiseThreshold, ThirtyOneBumpsAreNoEvidence) {
  EXPECT_TRUE(FindNoiseThreshold(NoiseBumps(31, 1.0)).levels.empty());
  EXPECT_FALSE(FindNoiseThreshold(NoiseBumps(32, 1.0)).levels.empty());
}

TEST(NoiseThreshold, CountsMakeNoEdge) {
  std::vector<Knot> bumps;
  for (int k = 0; k < 400; ++k) bumps.push_back({10.0 * k, k % 3 == 0 ? 1.0 : k % 3 + 0.0});
  EXPECT_FALSE(FindNoiseThreshold(bumps).hasEdge);
}

}  // namespace
