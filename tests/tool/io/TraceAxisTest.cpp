#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include <tool/frame/InputError.h>
#include <tool/io/TraceAxis.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TslTool::SettledTimes;
using Times = std::vector<double>;

// The values are 1, 2, 3 ..., and the lines of the file are from 2 on.
struct Settled {
  TslTool::Trace trace;
  SettledTimes told;
};

Settled Settle(const Times& seconds, double unit = 1.0) {
  Settled settled;
  settled.trace.seconds = seconds;
  settled.trace.values.resize(seconds.size());
  std::iota(settled.trace.values.begin(), settled.trace.values.end(), 1.0);
  std::vector<std::uint64_t> lines(seconds.size());
  std::iota(lines.begin(), lines.end(), 2U);
  settled.told = TslTool::SettleTimes("in.csv", lines, unit, settled.trace);
  return settled;
}

std::string ErrorOf(const Times& seconds, double unit = 1.0) {
  try {
    Settle(seconds, unit);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

TEST(TraceAxis, KeepsTimesThatAscend) {
  const Settled settled = Settle({1, 2, 3});
  EXPECT_THAT(settled.trace.values, ElementsAre(1, 2, 3));
  EXPECT_THAT(settled.told.notes, IsEmpty());
  EXPECT_THAT(settled.told.warnings, IsEmpty());
}

TEST(TraceAxis, AveragesPointsOfEqualTime) {
  const Settled settled = Settle({1, 1, 1, 2, 3, 3});
  EXPECT_THAT(settled.trace.seconds, ElementsAre(1, 2, 3));
  EXPECT_THAT(settled.trace.values, ElementsAre(2, 4, 5.5));
  EXPECT_THAT(settled.told.notes, ElementsAre("3 points of equal time averaged"));
  EXPECT_THAT(Settle({1, 1}).told.notes, ElementsAre("1 point of equal time averaged"));
}

TEST(TraceAxis, TurnsTimesRoundThatDescend) {
  const Settled settled = Settle({4, 3, 3, 2, 1});
  EXPECT_THAT(settled.trace.seconds, ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(settled.trace.values, ElementsAre(5, 4, 2.5, 1));
  EXPECT_THAT(settled.told.notes,
              ElementsAre("times descend, turned round", "1 point of equal time averaged"));
  EXPECT_THAT(settled.told.warnings, IsEmpty());
}

TEST(TraceAxis, SortsTimesThatAreOutOfOrder) {
  const Settled settled = Settle({5, 6, 7, 8, 1, 2, 3, 4});
  EXPECT_THAT(settled.trace.seconds, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
  EXPECT_THAT(settled.trace.values, ElementsAre(5, 6, 7, 8, 1, 2, 3, 4));
  EXPECT_THAT(settled.told.warnings, ElementsAre("times out of order, sorted (first at line 6)"));
}

TEST(TraceAxis, SortsAPointThatStrays) {
  Times times(100);
  std::iota(times.begin(), times.end(), 0.0);
  times[50] = 47.5;
  EXPECT_THAT(Settle(times).told.warnings, ElementsAre("times out of order, sorted (first at line 52)"));
}

TEST(TraceAxis, RefusesSeveralTracesInTheNumbersOfTheFile) {
  Times times;
  for (int trace = 0; trace < 2; ++trace)
    for (int i = 1; i <= 20; ++i) times.push_back(i * 0.01 * 60.0);
  EXPECT_EQ(ErrorOf(times, 60.0),
            "line 22: times begin again, 0.01 behind 0.2 of line 21; of several traces, write each to a "
            "file of its own");
  const Times down(times.rbegin(), times.rend());
  EXPECT_THAT(ErrorOf(down, 60.0), HasSubstr("line 22: times begin again, 0.2 behind 0.01 of line 21"));
}

TEST(TraceAxis, RefusesAMeanBeyondTheNumbers) {
  TslTool::Trace trace;
  trace.seconds = {60, 60, 120};
  trace.values = {1.5e308, 1.5e308, 1};
  try {
    TslTool::SettleTimes("in.csv", {1, 2, 3}, 60.0, trace);
    FAIL() << "taken";
  } catch (const TslTool::InputError& error) {
    EXPECT_EQ(error.Reason(), "points at the time 1 are too large to be averaged");
  }
}

}  // namespace
}  // namespace tests
