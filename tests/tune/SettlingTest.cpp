#include <tslbl/tune/Settling.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using TslBL::SettlingDelay;

struct Row {
  double high, low, change;
  std::uint32_t microseconds;
};

TEST(SettlingDelay, OfTheMassAxis) {
  const Row rows[] = {
      {100, 100, 0, 0},       // no move
      {100.0005, 100, 0, 0},  // below a thousandth
      {0.001, 0, 0, 500},     // 0.001 + 500.0005
      {10, 0, 0, 515},        // 10 + 505
      {101, 0, 0, 651},       // 101 + 550.5, truncated
      {600, 0, 0, 1400},      // the fixed part levels off here
      {601, 0, 0, 1401},      // and stays at 800
      {3000, 5, 0, 3795},     // the whole range
      {5, 3000, 0, 3795},     // either way
  };
  for (const Row& row : rows)
    EXPECT_EQ(SettlingDelay(row.high, row.low, row.change), row.microseconds) << row.high << " " << row.low;
}

TEST(SettlingDelay, OfTheCapillaryExit) {
  const Row rows[] = {
      {0, 0, 39.999, 0}, {0, 0, 40, 0},      {0, 0, 40.5, 62},  {0, 0, 70, 3750}, {0, 0, -70, 3750},
      {0, 0, 80, 5000},  {0, 0, 80.5, 5000}, {0, 0, 800, 5000}, {0, 0, -39, 0},
  };
  for (const Row& row : rows)
    EXPECT_EQ(SettlingDelay(row.high, row.low, row.change), row.microseconds) << row.change;
}

TEST(SettlingDelay, IsTheLongerOfBoth) {
  EXPECT_EQ(SettlingDelay(3000, 5, 70), 3795u);
  EXPECT_EQ(SettlingDelay(3000, 5, 100), 5000u);
  EXPECT_EQ(SettlingDelay(110, 100, 70), 3750u);
}

TEST(SettlingDelay, OfNumbersOutOfRangeStaysInRange) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(SettlingDelay(kHuge, 0, 0), 2147483647u);
  EXPECT_EQ(SettlingDelay(kNaN, 0, 0), 0u);
  EXPECT_EQ(SettlingDelay(0, 0, kNaN), 0u);
}

}  // namespace
