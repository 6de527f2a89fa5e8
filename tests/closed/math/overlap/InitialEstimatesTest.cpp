#include <tslbl/closed/math/overlap/InitialEstimates.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

using Places = std::vector<std::int32_t>;
using Values = std::vector<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Values Counts(const GroupRecipe& recipe, std::uint64_t seed) {
  Random random(seed);
  return SimulateGroup(recipe, random).y;
}

TEST(InitialEstimates, SeeEachPeak) {
  Random random(1);
  const SimulatedGroup group = SimulateGroup({.peaks = 4, .spacing = 1.5}, random);
  for (const bool smooth : {false, true}) {
    const Places places = InitialEstimates(smooth, 3, group.y);
    ASSERT_EQ(places.size(), 4u);
    for (std::size_t k = 0; k < 4; ++k) EXPECT_NEAR(places[k], group.centres[k], 2);
  }
}

TEST(InitialEstimates, SeeAShoulder) {
  Values y;
  for (int i = 0; i < 70; ++i) y.push_back(1e4 * ShapeAt(i - 30, 5, 5) + 3e3 * ShapeAt(i - 43, 5, 5) + 50);
  for (std::size_t i = 31; i < 70; ++i) ASSERT_LE(y[i], y[i - 1]);
  const Places places = InitialEstimates(false, 0, y);
  ASSERT_EQ(places.size(), 2u);
  EXPECT_EQ(places[0], 30);
  EXPECT_NEAR(places[1], 43, 1);
}

TEST(InitialEstimates, DoNotDependOnAFactor) {
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    const Values y = Counts({.peaks = 2 + seed % 4, .spacing = 1}, seed);
    const Places places = InitialEstimates(true, 3, y);
    for (const double factor : {0.01, 1.0 / 1024, 1e9}) {
      Values scaled = y;
      for (double& value : scaled) value *= factor;
      EXPECT_EQ(InitialEstimates(true, 3, scaled), places) << seed;
    }
  }
}

TEST(InitialEstimates, OfTheMirroredCurveAreMirrored) {
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    Values y = Counts({.peaks = 3, .spacing = 1.3, .signalToNoise = 100}, seed);
    Places places = InitialEstimates(false, 0, y);
    std::ranges::reverse(y);
    const Places mirrored = InitialEstimates(false, 0, y);
    ASSERT_EQ(mirrored.size(), places.size());
    for (std::size_t k = 0; k < places.size(); ++k)
      EXPECT_NEAR(static_cast<double>(y.size()) - 1 - mirrored[places.size() - 1 - k], places[k], 1) << seed;
  }
}

TEST(InitialEstimates, SeeWidePeaksInSumsOfPoints) {
  Random random(4);
  const SimulatedGroup group = SimulateGroup({.peaks = 3, .spacing = 1.3, .fwhm = 300}, random);
  const Places places = InitialEstimates(false, 0, group.y);
  ASSERT_EQ(places.size(), 3u);
  for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(places[k], group.centres[k], 40);
}

TEST(InitialEstimates, AreAscendingPointsOfTheGroup) {
  Random random(5);
  for (int k = 0; k < 300; ++k) {
    Values y(1 + random() % 60);
    for (double& value : y) value = std::floor(std::exp(Between(random, -3, 9))) - 2;
    const Places places = InitialEstimates(k % 2 == 0, static_cast<std::int32_t>(random() % 20), y);
    for (std::size_t i = 0; i < places.size(); ++i) {
      EXPECT_GE(places[i], i == 0 ? 0 : places[i - 1] + 1);
      EXPECT_LT(places[i], static_cast<std::int32_t>(y.size()));
    }
  }
}

TEST(InitialEstimates, OfACurveWithoutABendAreItsHighestPlace) {
  EXPECT_EQ(InitialEstimates(false, 0, Values{7}), Places{0});
  EXPECT_EQ(InitialEstimates(false, 0, Values{1, 2, 3}), Places{2});
  EXPECT_EQ(InitialEstimates(false, 0, Values(40, 5.0)).size(), 1u);
}

TEST(InitialEstimates, OfNothingAreNone) {
  for (const Values& y :
       {Values{}, Values(40, 0.0), Values(40, -3.0), Values{1, kNaN, 2}, Values{1, kInfinity, 2}})
    EXPECT_TRUE(InitialEstimates(true, 3, y).empty());
}

TEST(InitialEstimates, TakeAnyWidthOfTheFilter) {
  const Values y = Counts({.spacing = 2}, 6);
  for (const std::int32_t width : {-5, 0, 1, 2, 1000, std::numeric_limits<std::int32_t>::max()})
    EXPECT_FALSE(InitialEstimates(true, width, y).empty());
}

TEST(InitialEstimates, OfSumsThatCancelAreTheHighestPlace) {
  Values y;
  for (int i = 0; i < 400; ++i) y.push_back(i % 2 ? -1 : 1);
  y[200] = y[201] = 0;
  EXPECT_EQ(InitialEstimates(false, 0, y).size(), 1u);
}

TEST(InitialEstimates, OfTheLargestNumbersAreThoseOfSmallOnes) {
  Values y = Counts({.spacing = 1.5}, 7);
  const Places places = InitialEstimates(true, 3, y);
  for (double& value : y) value *= 0x1p1008;
  EXPECT_EQ(InitialEstimates(true, 3, y), places);
}

// A group as no spectrum has it; what matters is that there is an end.
TEST(InitialEstimates, OfAMillionPointsComeToAnEnd) {
  Random random(8);
  Values y(1000000);
  for (double& value : y) value = static_cast<double>(random() % 100);
  EXPECT_FALSE(InitialEstimates(true, 3, y).empty());
}

// As the fourth isotope of an ion is.
TEST(InitialEstimates, SeeALowPeakThatHasAMaximumBesideTallOnes) {
  Values y;
  for (int i = 0; i < 90; ++i)
    y.push_back(2 + std::round(5000 * ShapeAt(i - 16, 4.2, 4.2) + 1400 * ShapeAt(i - 33, 4.2, 4.2) +
                               190 * ShapeAt(i - 50, 4.2, 4.2) + 22 * ShapeAt(i - 67, 4.2, 4.2)));
  const Places places = InitialEstimates(true, 1, y);
  ASSERT_EQ(places.size(), 4u);
  EXPECT_NEAR(places[3], 67, 2);
}

TEST(InitialEstimates, TakeNoTailForALowPeak) {
  Random random(3);
  int tails = 0;
  for (int seed = 0; seed < 100; ++seed) {
    Values y;
    for (int i = 0; i < 90; ++i) {
      const double tail = i > 25 ? 60 * std::exp(-(i - 25) / 12.0) : 0;
      y.push_back(std::poisson_distribution<int>(2 + 5000 * ShapeAt(i - 20, 4.2, 4.2) + tail)(random));
    }
    tails += InitialEstimates(true, 1, y).size() > 1;
  }
  EXPECT_LE(tails, 5);
}

}  // namespace
