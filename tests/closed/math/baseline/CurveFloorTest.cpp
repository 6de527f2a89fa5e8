#include <tslbl/closed/math/baseline/CurveFloor.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>
#include <limits>

using namespace TslMath;
using namespace tests;

namespace {

std::optional<CurveFloor> FloorOf(const Samples& y) { return FindCurveFloor(y.data(), y.size()); }

// 100, 101, 102 ... with the given values first.
Samples AboveHundred(Samples first) {
  for (int i = 0; i < 50; ++i) first.push_back(100 + i);
  return first;
}

}  // namespace

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
