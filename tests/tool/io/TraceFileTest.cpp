#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/io/TraceFile.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using TslTool::TraceChoice;
using TslTool::Traces;

Traces Read(const std::string& text, const TraceChoice& choice = {}) {
  const TempFile file("trace.csv", text);
  return TslTool::ReadTraces(TslTool::ByteSource(file.Path()), choice);
}

std::string ErrorOf(const std::string& text, const TraceChoice& choice = {}) {
  try {
    Read(text, choice);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

TEST(TraceFile, ReadsTimesInTheUnitOfTheirName) {
  const Traces read = Read("time (min),signal\n1,5\n1.5,7\n");
  ASSERT_THAT(read.all, SizeIs(1));
  EXPECT_EQ(read.all[0].name, "signal");
  EXPECT_THAT(read.all[0].seconds, ElementsAre(60.0, 90.0));
  EXPECT_THAT(read.all[0].values, ElementsAre(5.0, 7.0));
  EXPECT_THAT(read.warnings, IsEmpty());
}

TEST(TraceFile, WarnsWhereNothingTellsTheUnit) {
  const Traces read = Read("time,signal\n1,5\n2,7\n");
  EXPECT_THAT(read.all[0].seconds, ElementsAre(1.0, 2.0));
  EXPECT_THAT(read.warnings,
              ElementsAre(HasSubstr("no unit of the times is told by \"time\"; taken as seconds")));
}

TEST(TraceFile, TakesTheUnitOfTheCaller) {
  const Traces read = Read("time,signal\n1,5\n2,7\n", {{}, 60.0});
  EXPECT_THAT(read.all[0].seconds, ElementsAre(60.0, 120.0));
  EXPECT_THAT(read.warnings, IsEmpty());
}

TEST(TraceFile, MultipliesBySaidMultiplier) {
  const std::string head = "Intensity Units\tmV\nIntensity Multiplier\t0.001\n";
  const Traces read = Read(head + "R.Time (min)\tIntensity\n0\t5000\n1\t7\n");
  EXPECT_THAT(read.all[0].values, ElementsAre(5.0, 0.007));
  EXPECT_THAT(read.notes, testing::Contains("signals times 0.001, the multiplier that the file tells"));
  EXPECT_THAT(Read("Intensity Multiplier;0,5\ntime (s);y\n0;5\n1;7\n").all[0].values, ElementsAre(2.5, 3.5));
}

TEST(TraceFile, EndsWhereAnotherSectionBegins) {
  const Traces read =
      Read("[Chromatogram]\ntime (s)\ty\n0\t5\n1\t7\n[Peak Table]\n# of Peaks\t1\nPeak\tArea\n1\t9\n");
  EXPECT_THAT(read.all[0].values, ElementsAre(5.0, 7.0));
  EXPECT_THAT(read.warnings,
              ElementsAre("line 5 \"[Peak Table]\" begins another section, which is left out with "
                          "all behind it"));
}

TEST(TraceFile, EndsAtASectionFarBehindItsHeadToo) {
  std::string text = "time (s)\ty\n";
  for (int i = 0; i < 3000; ++i) text += std::to_string(i) + "\t1\n";
  const Traces read = Read(text + "[Other]\n5000\t2\n");
  EXPECT_THAT(read.all[0].values, SizeIs(3000));
  EXPECT_THAT(read.warnings, ElementsAre(HasSubstr("line 3002 \"[Other]\" begins another section")));
}

TEST(TraceFile, LeavesColumnsOfWordsOut) {
  const Traces read = Read("time (s),signal,detector\n0,5,UV\n1,7,UV\n");
  ASSERT_THAT(read.all, SizeIs(1));
  EXPECT_THAT(read.all[0].values, ElementsAre(5.0, 7.0));
  EXPECT_THAT(read.notes, testing::Contains("column \"detector\" (3) holds words, left out"));
  EXPECT_THAT(ErrorOf("time (s),detector\n0,UV\n1,UV\n"), HasSubstr("no column of a signal among"));
}

TEST(TraceFile, TakesEverySignalForATrace) {
  const Traces read = Read("rt_s\tTIC\tA\n1\t5\t\n2\t6\t8\n3\t7\t9\n");
  ASSERT_THAT(read.all, SizeIs(2));
  EXPECT_THAT(read.all[0].seconds, ElementsAre(1.0, 2.0, 3.0));
  EXPECT_EQ(read.all[1].name, "A");
  EXPECT_THAT(read.all[1].seconds, ElementsAre(2.0, 3.0));
}

TEST(TraceFile, TakesTheColumnsOfTheCaller) {
  const std::string text = "x,bg,y\n0,1,5\n1,1,6\n";
  EXPECT_EQ(Read(text, {{"x", "y"}, 1.0}).all[0].name, "y");
  EXPECT_THAT(Read(text, {{"1", "3"}, 1.0}).all[0].values, ElementsAre(5.0, 6.0));
  EXPECT_THAT(ErrorOf(text, {{"x", "z"}, 1.0}),
              HasSubstr("line 2: the columns x and z are not found among \"x\" (1)"));
}

TEST(TraceFile, TakesTwoColumnsWithoutNamesForTimeAndSignal) {
  EXPECT_THAT(Read("0 5\n1 6\n").all[0].values, ElementsAre(5.0, 6.0));
}

TEST(TraceFile, ReadsDecimalCommas) {
  const Traces read = Read("Zeit (min);Signal\n0,5;5,25\n1,25;6,5\n");
  EXPECT_THAT(read.all[0].seconds, ElementsAre(30.0, 75.0));
  EXPECT_THAT(read.all[0].values, ElementsAre(5.25, 6.5));
}

TEST(TraceFile, KeepsNegativeSignals) {
  EXPECT_THAT(Read("t,s\n-1,-5\n0,2\n").all[0].values, ElementsAre(-5.0, 2.0));
}

TEST(TraceFile, ReadsATableWithWordsWhereTheCallerChoosesTheColumns) {
  const std::string text = "stamp_s,note,uv\n1,a,5\n2,b,6\n";
  EXPECT_THAT(Read(text, {{"stamp_s", "uv"}, {}}).all.at(0).values, ElementsAre(5.0, 6.0));
  EXPECT_THAT(ErrorOf(text), HasSubstr("of a table, --columns tells which hold them"));
}

TEST(TraceFile, AveragesWhereRoundingMadeTimesEqualAndTellsItOnceForAllSignals) {
  const Traces read = Read("min,uv,ms\n0.01,1,5\n0.01,3,7\n0.02,4,9\n");
  EXPECT_THAT(read.all[0].seconds, ElementsAre(0.6, 1.2));
  EXPECT_THAT(read.all[0].values, ElementsAre(2.0, 4.0));
  EXPECT_THAT(read.all[1].values, ElementsAre(6.0, 9.0));
  EXPECT_THAT(read.notes, ElementsAre(HasSubstr("time is column"), "1 point of equal time averaged"));
}

TEST(TraceFile, SaysWhereTheCallerOverrulesTheUnitOfTheHead) {
  const std::string text = "RT (min),signal\n1,5\n2,7\n";
  EXPECT_THAT(Read(text, {{}, 1.0}).warnings,
              ElementsAre("the times are in min by \"RT (min)\", and --time-unit s overrules it"));
  EXPECT_THAT(Read(text, {{}, 1.0}).all[0].seconds, ElementsAre(1.0, 2.0));
  EXPECT_THAT(Read(text, {{}, 60.0}).warnings, IsEmpty());
}

struct Refused {
  const char* text;
  const char* reason;
};

TEST(TraceFile, RefusesWhatIsNoTraceAndNamesTheLine) {
  const Refused cases[] = {
      {"mz,intensity\n100,5\n101,6\n",
       "line 2: no column of times among \"mz\" (1), \"intensity\" (2): --columns"},
      {"bg,y,z\n1,2,3\n2,3,4\n", "line 2: no column of times among"},
      {"1,2,3\n2,3,4\n", "line 1: no column of times among"},
      {"5\n6\n", "line 1: one column, \"5\", where a time and a signal are expected"},
      {"time,signal\n", "holds no line with a time and a signal; line 1 is \"time,signal\""},
      {"time,note,b\n\"#,y,6\n", "holds no line with a time and a signal; line 1 is \"time,note,b\""},
      {"time,b\n[,5,]\n", "holds no line with a time and a signal; line 1 is \"time,b\""},
      {"t,s\n1,5\n", "\"s\" has one point; a chromatogram has two points of different times at least"},
      {"t,s\n1,5\n1,6\n", "\"s\" has one point"},
      {"min,s\n.01,5\n.02,5\n.03,5\n.04,5\n.01,6\n.02,6\n.03,6\n.04,6\n",
       "line 6: times begin again, 0.01 behind 0.04 of line 5; of several traces, write each"},
      {"t,s\n1,5\n2,x\n", "line 3: \"x\""},
      {"t,s\n1,5\n2,6,7\n", "line 3: 3 columns"},
      {"t;s\n1,234;5,678\n1,235;5,679\n", "has a decimal comma or a mark for thousands"},
  };
  for (const Refused& each : cases) EXPECT_THAT(ErrorOf(each.text), HasSubstr(each.reason)) << each.text;
}

}  // namespace
}  // namespace tests
