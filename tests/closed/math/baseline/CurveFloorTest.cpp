#include <tslbl/closed/math/baseline/CurveFloor.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>
#include <algorithm>
#include <limits>
#include <random>

using namespace TslMath;
using namespace tests;

namespace {

std::optional<CurveFloor> FloorOf(const Samples& y) { return FindCurveFloor(y.data(), y.size()); }

// 100, 101, 102 ... with the given values first.
Samples AboveHundred(Samples first) {
  for (int i = 0; i < 50; ++i) first.push_back(100 + i);
  return first;
}

// Pairs of 5 at every `stride` points, the first at `offset`, among values that rise from 0 and never repeat.
Samples PairsOfFive(int pairs, std::size_t stride, std::size_t offset) {
  Samples y;
  for (std::size_t i = 0; i < static_cast<std::size_t>(pairs) * stride + offset + 2; ++i)
    y.push_back(0.001 * static_cast<double>(i));
  for (int k = 0; k < pairs; ++k)
    y[static_cast<std::size_t>(k) * stride + offset] = y[static_cast<std::size_t>(k) * stride + offset + 1] =
        5.0;
  return y;
}

// The rule of the header without any shortcut, for values a whole number apart; NaN for none.
double PlainFloor(const Samples& y) {
  Samples repeated;
  double lowest = 1e9;
  for (std::size_t i = 0; i < y.size(); ++i) {
    if (i + 1 < y.size() && y[i] == y[i + 1]) repeated.push_back(y[i]);
    lowest = y[i] < lowest ? y[i] : lowest;
  }
  const auto onLowest = static_cast<std::size_t>(std::count(y.begin(), y.end(), lowest));
  if (repeated.size() >= 10 && repeated.size() > onLowest) {
    Samples judged;
    for (std::size_t k = 0; k < repeated.size(); k += repeated.size() / 256 + 1)
      judged.push_back(repeated[k]);
    std::sort(judged.begin(), judged.end());
    const double value = judged[judged.size() / 2];
    const auto agreeing = std::count(judged.begin(), judged.end(), value);
    if (static_cast<double>(agreeing) >= 0.6 * static_cast<double>(judged.size())) return value;
  }
  return onLowest >= 10 ? lowest : std::nan("");
}

// Values of 0 to 6 of which one is frequent, some NaN, some of a step below all others.
Samples ManyEqualNeighbours(std::mt19937_64& random) {
  std::uniform_real_distribution<double> share(0.0, 1.0);
  const double preferred = share(random);
  const double favourite = std::floor(7.0 * share(random));
  const double missing = share(random) < 0.5 ? 0.0 : 0.02;
  const double below = share(random) < 0.5 ? 0.0 : 0.02;
  Samples y(static_cast<std::size_t>(std::pow(10.0, 4.3 * share(random))));
  for (double& value : y) {
    value = share(random) < preferred ? favourite : std::floor(7.0 * share(random));
    if (share(random) < below) value = -1.0 - std::floor(3.0 * share(random));
    if (share(random) < missing) value = std::nan("");
  }
  return y;
}

}  // namespace

TEST(CurveFloor, IsThatOfAWalkOverAllPoints) {
  std::mt19937_64 random(11);
  int resting = 0;
  int lowest = 0;
  for (int k = 0; k < 2000; ++k) {
    const Samples y = ManyEqualNeighbours(random);
    const double expected = PlainFloor(y);
    const auto floor = FloorOf(y);
    ASSERT_EQ(floor.has_value(), !std::isnan(expected)) << k;
    if (floor) {
      ASSERT_EQ(floor->value, expected) << k;
    }
    resting += expected > 0.0 ? 1 : 0;
    lowest += expected <= 0.0 ? 1 : 0;
  }
  EXPECT_GT(resting, 100);
  EXPECT_GT(lowest, 100);
}

TEST(CurveFloor, CountsEqualNeighboursUpToTheLastPoint) {
  for (std::size_t points = 60; points < 140; ++points) {
    Samples y = PairsOfFive(9, 4, 1);
    while (y.size() < points) y.push_back(0.001 * static_cast<double>(y.size()));
    EXPECT_FALSE(FloorOf(y)) << points;
    y[points - 2] = y[points - 1] = 5.0;
    EXPECT_TRUE(FloorOf(y)) << points;
  }
}

TEST(CurveFloor, IsWhereTenNeighboursAreEqualWhereverTheyStand) {
  for (const std::size_t stride : {4U, 5U}) {
    for (std::size_t offset = 0; offset < 4; ++offset) {
      const auto floor = FloorOf(PairsOfFive(10, stride, offset));
      ASSERT_TRUE(floor) << offset;
      EXPECT_EQ(floor->value, 5.0);
      EXPECT_FALSE(FloorOf(PairsOfFive(9, stride, offset))) << offset;
    }
  }
}

TEST(CurveFloor, WantsSixInTenOfTheEqualNeighboursToAgree) {
  for (const int agreeing : {12, 11}) {
    Samples y = PairsOfFive(20, 4, 1);
    for (std::size_t k = static_cast<std::size_t>(agreeing); k < 20; ++k)
      y[4 * k + 1] = y[4 * k + 2] = 10.0 + static_cast<double>(k);
    EXPECT_EQ(FloorOf(y).has_value(), agreeing == 12) << agreeing;
  }
}

TEST(CurveFloor, IsWhereEqualNeighboursAgreeRatherThanTheLowestValue) {
  Samples y = PairsOfFive(20, 4, 1);
  for (std::size_t k = 0; k < 20; ++k) y[4 * k] = -1.0;
  for (const std::size_t lowest : {20U, 19U}) {
    if (lowest < 20) y[0] = 0.5;
    const auto floor = FloorOf(y);
    ASSERT_TRUE(floor);
    EXPECT_EQ(floor->value, lowest < 20 ? 5.0 : -1.0);
  }
}

TEST(CurveFloor, TakesValuesApartByABillionthOfTheLargestForEqual) {
  for (const double largest : {1000.0, -1000.0}) {
    for (const double step : {0.9e-6, 1.1e-6}) {
      Samples y = PairsOfFive(12, 4, 1);
      for (std::size_t k = 0; k < 12; ++k) y[4 * k + 2] += step;
      y.push_back(largest);
      EXPECT_EQ(FloorOf(y).has_value(), step < 1e-6) << largest;
    }
  }
}

TEST(CurveFloor, IsTheLowestValueIfTenPointsHaveIt) {
  const auto floor = FloorOf(AboveHundred(Samples(10, 7.0)));
  ASSERT_TRUE(floor);
  EXPECT_EQ(floor->value, 7.0);
}

TEST(CurveFloor, IsNotFoundOnNinePoints) {
  EXPECT_FALSE(FloorOf(AboveHundred(Samples{7, 7, 7, 7, 7, 7, 7, 7, 7})));
}

TEST(CurveFloor, IsWhereAFilterComesToRestWithSwingsBelowIt) {
  for (const double offset : {0.0, 20.0}) {
    const auto floor = FloorOf(Filtered(Shots(0.05, 20000, 1), 15, offset));
    ASSERT_TRUE(floor) << offset;
    EXPECT_NEAR(floor->value, offset, 1e-9);
  }
}

TEST(CurveFloor, IsMissingInDenseCounts) {
  EXPECT_FALSE(FloorOf(Shots(30, 20000, 1)));
  EXPECT_FALSE(FloorOf(Filtered(Shots(30, 20000, 1), 15, 0.0)));
}

TEST(CurveFloor, IsMissingInAnalogSignals) {
  Samples y = Shots(30, 20000, 1);
  for (std::size_t i = 0; i < y.size(); ++i) y[i] += 1e-3 * std::sin(static_cast<double>(i * i % 9973));
  EXPECT_FALSE(FloorOf(y));
}

TEST(CurveFloor, PassesOverWhatIsNotFinite) {
  Samples y = AboveHundred(Samples(10, 7.0));
  y.insert(y.end(),
           {std::nan(""), -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()});
  const auto floor = FloorOf(y);
  ASSERT_TRUE(floor);
  EXPECT_EQ(floor->value, 7.0);
}

TEST(CurveFloor, HasNoShareOfEmptyCurves) { EXPECT_FALSE(FloorOf({})); }

TEST(CurveFloor, CountsThePointsThatLieOnItWithinRounding) {
  const CurveFloor floor{2.0, 0.1};
  const Samples y = {2.0, 2.05, 1.95, 2.2, 1.8, 3, 4, std::nan(""), 2.0, 2.0};
  EXPECT_EQ(floor.ShareOf(y.data(), y.size()), 0.5);
}

TEST(CurveFloor, CountsMoreThan65536Points) {
  EXPECT_EQ((CurveFloor{2.0, 0.0}).ShareOf(Samples(70000, 2.0).data(), 70000), 1.0);
  Samples y(65541, 5.0);
  for (int i = 0; i < 9; ++i) y.push_back(0.1 * i);
  const auto floor = FloorOf(y);
  ASSERT_TRUE(floor);
  EXPECT_EQ(floor->value, 5.0);
}

TEST(CurveFloor, CountsEachPointAlike) {
  for (std::size_t at = 0; at < 11; ++at) {
    Samples y(11, 7.0);
    y[at] = 2.0;
    EXPECT_EQ((CurveFloor{2.0, 0.0}).ShareOf(y.data(), y.size()), 1.0 / 11) << at;
  }
}
