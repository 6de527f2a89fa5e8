#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include <tool/plot/Range.h>

using TslTool::Range;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Range, IsEmptyUntilItIncludesAValue) {
  Range range;
  EXPECT_TRUE(range.IsEmpty());
  range.Include(-3.0);
  EXPECT_FALSE(range.IsEmpty());
  EXPECT_EQ(range.low, -3.0);
  EXPECT_EQ(range.high, -3.0);
}

TEST(Range, HoldsAllValuesAndPassesOverThoseThatAreNotFinite) {
  Range range;
  range.Include(std::vector<double>{4.0, kNaN, -kInfinity, 1.0, kInfinity, 2.0});
  EXPECT_EQ(range.low, 1.0);
  EXPECT_EQ(range.high, 4.0);
}

TEST(Range, OfNothingButNaNIsEmpty) {
  Range range;
  range.Include(std::vector<double>{kNaN, kInfinity});
  EXPECT_TRUE(range.IsEmpty());
}

TEST(Range, PartIsZeroAtLowAndOneAtHigh) {
  const Range range{10.0, 30.0};
  EXPECT_EQ(range.Part(10.0), 0.0);
  EXPECT_EQ(range.Part(25.0), 0.75);
  EXPECT_EQ(range.Part(30.0), 1.0);
  EXPECT_EQ(range.Part(50.0), 2.0);
}

TEST(Range, PaddedAddsAShareAtBothEnds) {
  const Range padded = Range{100.0, 200.0}.Padded(0.1);
  EXPECT_EQ(padded.low, 90.0);
  EXPECT_EQ(padded.high, 210.0);
}

struct Level {
  double low, high;
  double room;
};

TEST(Range, PaddedGivesALevelRangeATenthOfItsValueAndOneAtLeast) {
  for (const auto& [low, high, room] : {Level{0.0, 0.0, 1.0}, Level{5.0, 5.0, 1.0},
                                        Level{-600.0, -600.0, 60.0}, Level{1e9, 1e9 + 0.5, 1e8}}) {
    const Range padded = Range{low, high}.Padded(0.0);
    EXPECT_NEAR(padded.low, low - room, 1.0) << low;
    EXPECT_NEAR(padded.high, high + room, 1.0) << low;
  }
}

TEST(Range, PaddedCanBeShownWhateverItWas) {
  for (const Range& range :
       {Range{}, Range{kNaN, 1.0}, Range{1.0, kNaN}, Range{-kInfinity, kInfinity}, Range{-1e308, 1e308},
        Range{1e308, 1e308}, Range{2.0, 1.0}, Range{0.0, 1e-300}}) {
    const Range padded = range.Padded(0.05);
    EXPECT_TRUE(std::isfinite(padded.high - padded.low)) << range.low;
    EXPECT_GT(padded.high, padded.low) << range.low;
  }
}

}  // namespace
