#include <tool/commands/tune/LimitsText.h>

#include <gtest/gtest.h>

namespace tests {
namespace {

using TslBL::Gap;
using TslBL::Limits;
using TslTool::LimitsText;

TEST(LimitsText, OfAnInterval) {
  EXPECT_EQ(LimitsText({5, 3000, 0.05}, {}), "5 to 3000 by 0.05");
  EXPECT_EQ(LimitsText({0.46, 10.3, 0}, {}), "0.46 to 10.3");
  EXPECT_EQ(LimitsText({}, {}), "");
}

TEST(LimitsText, OfAGapInThem) {
  EXPECT_EQ(LimitsText({25, 350, 5}, Gap{26, 149}), "25 (off), or 150 to 350 by 5");
  EXPECT_EQ(LimitsText({0, 60, 5}, Gap{1, 14}), "0 (off), or 15 to 60 by 5");
}

TEST(LimitsText, OfASiteThatMovedThemAcrossTheGap) {
  EXPECT_EQ(LimitsText({20, 500, 1}, Gap{26, 149}), "20 to 25 by 1, or 150 to 500 by 1");
  EXPECT_EQ(LimitsText({100, 500, 1}, Gap{26, 149}), "150 to 500 by 1");
  EXPECT_EQ(LimitsText({200, 500, 1}, Gap{26, 149}), "200 to 500 by 1");
  EXPECT_EQ(LimitsText({25, 100, 1}, Gap{26, 149}), "25 (off)");
  EXPECT_EQ(LimitsText({30, 100, 1}, Gap{26, 149}), "") << "no value is left";
}

}  // namespace
}  // namespace tests
