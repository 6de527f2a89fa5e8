#include <gtest/gtest.h>

#include <tslbl/closed/common/TimeBase.h>
#include <limits>

namespace {

using namespace TslCommon;
using timebase::MSEC;

TEST(MSEC, StartsAtZeroAndOrdersByItsCount) {
  EXPECT_EQ(MSEC().count, 0);
  EXPECT_LT(MSEC(-1), MSEC(0));
  EXPECT_LT(MSEC(999), MSEC(1000));
  EXPECT_EQ(MSEC(5), MSEC(5));
}

TEST(MSToString, GivesMinutesAndThousandthsOfAMinute) {
  const struct {
    std::int32_t ms;
    const wchar_t* text;
  } rows[] = {{0, L"0.000"},
              {29, L"0.000"},
              {30, L"0.001"},
              {60, L"0.001"},
              {600, L"0.010"},
              {59969, L"0.999"},
              {59970, L"1.000"},
              {60000, L"1.000"},
              {90000, L"1.500"},
              {754321, L"12.572"},
              {3600000, L"60.000"},
              {-90000, L"-1.500"},
              {-29, L"0.000"},
              {-30, L"-0.001"},
              {2147483647, L"35791.394"},
              {-2147483647 - 1, L"-35791.394"}};
  for (const auto& [ms, text] : rows) EXPECT_EQ(MSToString(ms, L"%M.%f"), text) << ms;
}

TEST(MSToString, KeepsTheTextAroundItsPlaceholders) {
  EXPECT_EQ(MSToString(90000, L"RET (%M.%f)"), L"RET (1.500)");
  EXPECT_EQ(MSToString(90000, L""), L"");
  EXPECT_EQ(MSToString(90000, L"%M%%"), L"1%");
  EXPECT_EQ(MSToString(90000, L"%x %m %"), L"%x %m %");
}

TEST(MinutesToMS, RoundsToTheNearestMillisecond) {
  EXPECT_EQ(MinutesToMS(0.01), 600);
  EXPECT_EQ(MinutesToMS(1.5), 90000);
  EXPECT_EQ(MinutesToMS(-1.5), -90000);
  EXPECT_EQ(MinutesToMS(0.000008), 0);
  EXPECT_EQ(MinutesToMS(0.000009), 1);
}

TEST(MinutesToMS, StopsAtTheEndsOf32Bits) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(MinutesToMS(1e9), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(MinutesToMS(-kInfinity), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(MinutesToMS(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace
