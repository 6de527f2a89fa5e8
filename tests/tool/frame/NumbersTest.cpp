#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include <tool/frame/CommandLine.h>
#include <tool/frame/Numbers.h>

namespace tests {
namespace {

using TslTool::ParseCount;
using TslTool::ParseCountRange;
using TslTool::ParseLongCount;
using TslTool::ParseReal;
using TslTool::ParseRealRange;
using TslTool::SplitColons;
using TslTool::UsageError;

std::string ErrorOf(const std::function<void()>& parse) {
  try {
    parse();
  } catch (const UsageError& error) {
    return error.what();
  }
  return "";
}

TEST(Numbers, RealsAreReadToTheBit) {
  EXPECT_EQ(ParseReal("--x", "0.1"), 0.1);
  EXPECT_EQ(ParseReal("--x", "-2.5e-3"), -2.5e-3);
  EXPECT_EQ(ParseReal("--x", "1e300"), 1e300);
}

TEST(Numbers, WhatIsNotWhollyAFiniteNumberIsNone) {
  for (const char* text : {"", " 1", "1 ", "1,5", "1x", "+1", "0x1p3", "1e999", "--1"})
    EXPECT_EQ(ErrorOf([&] { ParseReal("--x", text); }), "--x: \"" + std::string(text) + "\" is not a number");
  for (const char* text : {"nan", "inf", "-inf"})
    EXPECT_EQ(ErrorOf([&] { ParseReal("--x", text); }),
              "--x: \"" + std::string(text) + "\" is not a finite number");
}

TEST(Numbers, CountsReachToTheirLimits) {
  EXPECT_EQ(ParseCount("--n", "4294967295"), 4294967295U);
  EXPECT_EQ(ParseLongCount("--n", "18446744073709551615"), 18446744073709551615U);
}

TEST(Numbers, WhatIsNotAWholeNumberInReachIsNoCount) {
  for (const char* text : {"", "-1", "1.0", "1e3", "4294967296", "0x10", "1 "})
    EXPECT_EQ(ErrorOf([&] { ParseCount("--n", text); }),
              "--n: \"" + std::string(text) + "\" is not a whole number from 0 to 4294967295");
  EXPECT_NE(ErrorOf([] { ParseLongCount("--n", "18446744073709551616"); }), "");
}

struct RangeCase {
  const char* text;
  double from, to;
};

TEST(Numbers, ARangeIsTwoNumbersOrOne) {
  for (const auto& [text, from, to] :
       {RangeCase{"60-90", 60, 90}, RangeCase{"5", 5, 5}, RangeCase{"-5-5", -5, 5},
        RangeCase{"-5--2", -5, -2}, RangeCase{"-7", -7, -7}, RangeCase{"1e-3-2e-3", 1e-3, 2e-3},
        RangeCase{"1E-3", 1e-3, 1e-3}, RangeCase{"2-2", 2, 2}}) {
    const auto range = ParseRealRange("--rt", text);
    EXPECT_EQ(range.from, from) << text;
    EXPECT_EQ(range.to, to) << text;
  }
  EXPECT_EQ(ParseCountRange("--scan", "3-17").to, 17U);
}

TEST(Numbers, ARangeOfOneNumberIsToldFromOneOfTwo) {
  for (const char* text : {"60-90", "-5-5", "-5--2", "1e-3-2e-3", "2-2"})
    EXPECT_TRUE(TslTool::HasTwoEnds(text)) << text;
  for (const char* text : {"5", "-7", "1E-3"}) EXPECT_FALSE(TslTool::HasTwoEnds(text)) << text;
}

TEST(Numbers, WhatIsNoRangeIsNamed) {
  EXPECT_EQ(ErrorOf([] { ParseRealRange("--rt", "90-60"); }), "--rt: \"90-60\" ends before it begins");
  EXPECT_EQ(ErrorOf([] { ParseRealRange("--rt", "1-2-3"); }), "--rt: \"2-3\" is not a number");
  EXPECT_EQ(ErrorOf([] { ParseRealRange("--rt", "1-"); }), "--rt: \"\" is not a number");
  EXPECT_EQ(ErrorOf([] { ParseRealRange("--rt", ""); }), "--rt: \"\" is not a number");
  EXPECT_NE(ErrorOf([] { ParseCountRange("--scan", "-3"); }), "");
}

TEST(Numbers, AListHasNumbersAndRangesTheLastWithoutAnEnd) {
  constexpr std::uint32_t kMost = 4294967295U;
  EXPECT_EQ(TslTool::ParseCountList("--scan", "3"), (std::vector<TslTool::CountRange>{{3, 3}}));
  EXPECT_EQ(TslTool::ParseCountList("--scan", "1,5-9,20-"),
            (std::vector<TslTool::CountRange>{{1, 1}, {5, 9}, {20, kMost}}));
}

TEST(Numbers, WhatIsNoListIsNamed) {
  for (const char* text : {"1,", ",1", "1,,2", "-", "1--", "1;2", "5-3,1"})
    EXPECT_THAT(ErrorOf([&] { TslTool::ParseCountList("--scan", text); }), testing::StartsWith("--scan: \""))
        << text;
}

TEST(Numbers, ColonsSeparateAlsoEmptyParts) {
  EXPECT_EQ(SplitColons("savgol:11:2"), (std::vector<std::string>{"savgol", "11", "2"}));
  EXPECT_EQ(SplitColons(""), std::vector<std::string>{""});
  EXPECT_EQ(SplitColons(":a:"), (std::vector<std::string>{"", "a", ""}));
}

}  // namespace
}  // namespace tests
