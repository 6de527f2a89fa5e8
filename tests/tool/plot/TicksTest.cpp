#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <string>

#include <tool/plot/Ticks.h>

using TslTool::Range;
using TslTool::Tick;
using TslTool::Ticks;

namespace {

std::string Texts(const Range& range, int parts = 6) {
  std::string texts;
  for (const Tick& tick : Ticks(range, parts)) texts += (texts.empty() ? "" : " ") + tick.text;
  return texts;
}

struct Marked {
  Range range;
  const char* texts;
};

TEST(Ticks, AreMultiplesOfOneTwoOrFive) {
  for (const auto& [range, texts] :
       {Marked{{0, 120}, "0 20 40 60 80 100 120"}, Marked{{5, 3000}, "500 1000 1500 2000 2500 3000"},
        Marked{{0, 6}, "0 1 2 3 4 5 6"}, Marked{{-7, 12}, "-5 0 5 10"},
        Marked{{499, 501}, "499.0 499.5 500.0 500.5 501.0"}, Marked{{89.6, 166.4}, "100 120 140 160"}})
    EXPECT_EQ(Texts(range), texts);
}

TEST(Ticks, IncludeBothEndsWhateverRoundingDoesToThem) {
  EXPECT_EQ(Texts({0.0, 3 * 0.1}), "0.00 0.05 0.10 0.15 0.20 0.25 0.30");
  EXPECT_EQ(Texts({0.7, 1.3}), "0.7 0.8 0.9 1.0 1.1 1.2 1.3");
}

TEST(Ticks, ZeroHasNoSign) { EXPECT_EQ(Texts({-0.3, 0.3}), "-0.3 -0.2 -0.1 0.0 0.1 0.2 0.3"); }

TEST(Ticks, OfLargeValuesAndSmallStepsArePowersOfTen) {
  EXPECT_EQ(Texts({0, 3e7}), "0 5e6 1e7 1.5e7 2e7 2.5e7 3e7");
  EXPECT_EQ(Texts({-2e-9, 4e-9}), "-2e-9 -1e-9 0 1e-9 2e-9 3e-9 4e-9");
  EXPECT_EQ(Texts({12345678, 12345680}), "12345678 12345678.5 12345679 12345679.5 12345680");
}

TEST(Ticks, AreNeverMoreThanThePartsAndOne) {
  for (const int parts : {1, 2, 3, 5, 20})
    EXPECT_LE(Ticks({0, 1000}, parts).size(), static_cast<std::size_t>(parts) + 1) << parts;
}

// What the contract says, over ranges of every size and place.
TEST(Ticks, OfAnyRangeLieInsideAndHaveTextsThatReadBackApart) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> power(-300, 290), part(0, 9), sign(-1, 1);
  for (int i = 0; i < 20000; ++i) {
    const double low = sign(random) * std::pow(10.0, power(random));
    const Range range{low, low + std::abs(low) * std::pow(10.0, -part(random) + 1)};
    const std::vector<Tick> ticks = Ticks(range, 5);
    ASSERT_GE(ticks.size(), 2U) << low;
    ASSERT_LE(ticks.size(), 6U) << low;
    const double step = ticks[1].value - ticks[0].value;
    std::set<std::string> texts;
    for (const Tick& tick : ticks) {
      ASSERT_GE(tick.value, range.low - 1e-6 * step);
      ASSERT_LE(tick.value, range.high + 1e-6 * step);
      ASSERT_NEAR(std::stod(tick.text), tick.value, 1e-5 * step) << tick.text;
      texts.insert(tick.text);
    }
    ASSERT_EQ(texts.size(), ticks.size()) << "two ticks have one text at " << low;
  }
}

}  // namespace
