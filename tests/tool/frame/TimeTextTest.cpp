#include <gtest/gtest.h>

#include <tool/frame/TimeText.h>
#include <tool/frame/UsageError.h>
#include "UsageErrorOf.h"

namespace tests {
namespace {

using namespace TslTool;

TEST(TimeText, IsReadInEachUnit) {
  const std::pair<const char*, std::uint32_t> kTexts[] = {
      {"0", 0},          {"90", 90000},   {"90s", 90000},
      {"1.5min", 90000}, {"250ms", 250},  {"0.0004", 0},
      {"0.0005s", 1},    {"2h", 7200000}, {"4294967295ms", 4294967295},
      {"1e3ms", 1000}};
  for (const auto& [text, ms] : kTexts) EXPECT_EQ(ParseMilliseconds("--time", text), ms) << text;
}

TEST(TimeText, IsRefusedBeyondWhatAMethodHolds) {
  EXPECT_EQ(UsageErrorOf([] { ParseMilliseconds("--time", "-1s"); }),
            "--time: \"-1s\" is no time from 0 to 4294967295 ms");
  EXPECT_EQ(UsageErrorOf([] { ParseMilliseconds("--time", "2000h"); }),
            "--time: \"2000h\" is no time from 0 to 4294967295 ms");
}

TEST(TimeText, IsRefusedIfItIsNoNumber) {
  for (const char* text : {"", "s", "soon", "1 min", "1m", "nan", "inf"})
    EXPECT_NE(UsageErrorOf([&] { ParseMilliseconds("--time", text); }), "") << text;
}

TEST(TimeText, IsShownInTheLargestUnitThatFits) {
  const std::pair<std::uint32_t, const char*> kTexts[] = {
      {0, "0ms"},        {250, "250ms"},  {1000, "1s"},      {1005, "1005ms"}, {90500, "90.5s"},
      {90000, "1.5min"}, {60000, "1min"}, {5400000, "1.5h"}, {3600000, "1h"},  {4294967295, "4294967295ms"}};
  for (const auto& [ms, text] : kTexts) EXPECT_EQ(ShownMilliseconds(ms), text);
}

TEST(TimeText, IsReadAsItWasShown) {
  for (std::uint32_t ms = 1; ms < 4000000000; ms = ms * 3 + ms % 7)
    EXPECT_EQ(ParseMilliseconds("--time", ShownMilliseconds(ms)), ms);
}

TEST(TimeText, ShowsSecondsWithSixDigits) { EXPECT_EQ(ShownSeconds(0.01234567), "0.0123457 s"); }

}  // namespace
}  // namespace tests
