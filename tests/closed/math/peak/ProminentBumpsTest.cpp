#include <tslbl/closed/math/peak/ProminentBumps.h>

#include <gtest/gtest.h>

#include <closed/math/SampleArray.h>
#include <random>

using namespace TslMath;
using namespace tests;

namespace {

// By definition: out from the top to the first higher point or the end.
double LowestBefore(const Samples& y, std::size_t top, std::ptrdiff_t step) {
  double lowest = y[top];
  for (auto i = static_cast<std::ptrdiff_t>(top); i >= 0 && i < std::ssize(y); i += step) {
    if (y[static_cast<std::size_t>(i)] > y[top]) break;
    lowest = std::min(lowest, y[static_cast<std::size_t>(i)]);
  }
  return lowest;
}

TEST(ProminentBumps, RiseAboveTheHigherOfTheLowestPlacesBesideThem) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> height(0, 1000);
  Samples y(400);
  for (double& value : y) value = height(random);
  const std::vector<Bump> bumps = ProminentBumps(y);
  EXPECT_EQ(bumps.size(), 32U);
  for (const Bump& bump : bumps)
    EXPECT_EQ(bump.prominence,
              y[bump.at] - std::max(LowestBefore(y, bump.at, -1), LowestBefore(y, bump.at, 1)));
}

TEST(ProminentBumps, ComeWithTheLargestFirst) {
  const std::vector<Bump> bumps = ProminentBumps({0, 5, 3, 9, 0, 7, 1});
  ASSERT_EQ(bumps.size(), 3U);
  EXPECT_EQ(bumps[0].at, 3U);
  EXPECT_EQ(bumps[1].at, 5U);
  EXPECT_EQ(bumps[2].prominence, 2.0);
}

TEST(ProminentBumps, AreProminentDownToATwentiethOfTheLargest) {
  EXPECT_TRUE(ProminentBumps({0, 100, 0, 5, 0})[1].isProminent);
  EXPECT_FALSE(ProminentBumps({0, 100, 0, 4.9, 0})[1].isProminent);
}

TEST(ProminentBumps, EndAtAFourHundredthOfTheLargest) {
  EXPECT_EQ(ProminentBumps({0, 400, 0, 1, 0}).size(), 2U);
  EXPECT_EQ(ProminentBumps({0, 400, 0, 0.9, 0}).size(), 1U);
}

TEST(ProminentBumps, OnTheFlankOfALargerOneAreLeftOut) {
  EXPECT_EQ(ProminentBumps({0, 0, 0, 50, 46, 100, 0, 0, 0}).size(), 1U);
  EXPECT_EQ(ProminentBumps({0, 0, 0, 50, 45, 100, 0, 0, 0}).size(), 2U);
}

TEST(ProminentBumps, OfEqualSamplesTheFirstIsTheTop) {
  const std::vector<Bump> bumps = ProminentBumps({0, 1, 4, 4, 4, 2});
  ASSERT_EQ(bumps.size(), 1U);
  EXPECT_EQ(bumps[0].at, 2U);
  EXPECT_EQ(bumps[0].prominence, 2.0);
}

TEST(ProminentBumps, AreNotAtAnEnd) {
  for (const Samples& y : {Samples{}, {1.0}, {1, 2}, {1, 2, 2}, {3, 2, 1}, {3, 1, 3}, {2, 2, 2}})
    EXPECT_TRUE(ProminentBumps(y).empty());
}

TEST(WidthAtLevel, IsThatBetweenTheStraightLines) {
  EXPECT_DOUBLE_EQ(WidthAtLevel({0, 4, 8, 2, 0}, 2, 3.0), 1.25 + 5.0 / 6.0);
}

TEST(WidthAtLevel, EndsWithTheCurve) { EXPECT_DOUBLE_EQ(WidthAtLevel({4, 5, 8, 2, 0}, 2, 3.5), 2.75); }

}  // namespace
