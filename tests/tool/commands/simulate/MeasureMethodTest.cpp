#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include <tool/ToolRun.h>
#include <tool/io/RunMaker.h>
#include <tool/simulate/Acquisition.h>
#include <tool/simulate/TestMethods.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/RecordForms.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslBL::MethodRules;

// A method as a file, and the run that it is to acquire beside it.
class Bench {
 public:
  explicit Bench(const MethodRules& rules) {
    std::ofstream(Method()) << TslCommon::ToUtf8(TslBL::ToXml(rules.operator TslBL::Method()));
  }
  std::string Method() const { return folder_.Folder() + "/method.xml"; }
  std::string Run() const { return folder_.Folder() + "/a.run"; }
  std::string Folder() const { return folder_.Folder(); }
  Outcome Simulate(const Arguments& more = {}) const {
    Arguments words = {"simulate", "--method", Method(), "--sample", "calibrants", "-o", Run()};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }

 private:
  TempFile folder_{"x", ""};
};

MethodRules TwoPeriods() {
  MethodRules rules = OneSpectrum();
  rules.WDescription(L"Two");
  rules.WTPNumLoops(0, 2);
  rules.InsertTimePeriod();
  rules.WTRTune(1, 0, 0, ShortTune(610, 630));
  rules.WTPTimeout(1, 250);
  return rules;
}

TEST(MeasureMethod, WritesWhatTheMethodAcquiresAndTheMethod) {
  const Bench bench(TwoPeriods());
  const Outcome outcome = bench.Simulate({"--seed", "3", "--width", "0.8"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "tslbl: " + bench.Method() + ": 3 spectra in 2 time periods, 0.65306 s\n");
  TslTool::Acquisition acquisition(TwoPeriods(), TslTool::CalibrantSample(), 0.8, 3);
  TslBL::RawSpectrum raw;
  std::vector<TslTool::TrueLine> truth;
  for (const TslBL::RawSpectrum& scan : ReadRun(bench.Run())) {
    ASSERT_TRUE(acquisition.Next(raw, truth));
    EXPECT_EQ(scan, raw);
  }
  EXPECT_FALSE(acquisition.Next(raw, truth));
  const TslTool::RunReader run(bench.Run());
  ASSERT_NE(run.AcquiredBy(), nullptr);
  EXPECT_EQ(run.AcquiredBy()->Desc, L"Two");
  EXPECT_EQ(run.AcquiredBy()->Tunes, run.Tunes());
}

TEST(MeasureMethod, TheTruthIsNumberedAsTheScansOfTheRun) {
  MethodRules rules = TwoPeriods();
  rules.WTPSave(0, false);
  const Bench bench(rules);
  const std::string truth = bench.Folder() + "/truth.tsv";
  const Outcome outcome = bench.Simulate({"--truth", truth});
  EXPECT_THAT(outcome.err, HasSubstr(": 3 spectra in 2 time periods, 0.65306 s; 1 of them are kept\n"));
  const auto rows = RowsOf(ReadFile(truth));
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows[0].at("scan"), "1");
  EXPECT_EQ(rows[0].at("compound"), "phosphazine 622");
}

TEST(MeasureMethod, AProteinIsSeenInWhatTheTunesScan) {
  const Bench bench(OneSpectrum(ShortTune(840, 860)));
  EXPECT_EQ(RunTool({"simulate", "--method", bench.Method(), "-o", bench.Run(), "--protein", "m=16951.5:20"})
                .status,
            0);
  EXPECT_EQ(RunTool({"simulate", "--method", bench.Method(), "-o", bench.Folder() + "/b.run", "--protein",
                     "m=16951.5:15"})
                .status,
            2);
}

TEST(MeasureMethod, AMethodThatTheRulesRefuseIsRefusedInTheirWords) {
  MethodRules rules = TwoPeriods();
  rules.TuneRuns.begin()->second.Records = 0;
  const Bench bench(rules);
  const Outcome outcome = bench.Simulate();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "tslbl: " + bench.Method() + ": Tune run 1 is invalid.  There are no records to collect.\n");
  EXPECT_THAT(NamesIn(bench.Folder()), ElementsAre("method.xml", "x"));
}

TEST(MeasureMethod, WhatIsTooMuchOrNotSimulatedIsRefused) {
  MethodRules many = OneSpectrum();
  many.WTPNumLoops(0, 4000000);
  EXPECT_THAT(Bench(many).Simulate().err, HasSubstr(": the method takes about 4e+06 spectra of "));
  MethodRules open = OneSpectrum();
  open.Tunes.begin()->second.ControlData.Q1MZType = TslBL::Control::RF_Only;
  EXPECT_THAT(Bench(open).Simulate().err,
              HasSubstr(": tune 1: Q1 lets all masses through, which is not simulated\n"));
}

TEST(MeasureMethod, WhatTheRunWillLackIsTold) {
  MethodRules rules = TwoPeriods();
  rules.WTPTimeout(1, 100);
  rules.WTRDDType(0, 0, 0, TslBL::DDInfo::PeakPark);
  const Bench bench(rules);
  const std::string about = "tslbl: warning: " + bench.Method() + ": ";
  EXPECT_THAT(bench.Simulate().err,
              testing::EndsWith(about + "time period 1 is over before its first spectrum is complete\n" +
                                about + "what tune runs would do on a trigger is not simulated\n"));
}

TEST(MeasureMethod, AChangeOfPolarityTakesTheTimeThatIsGiven) {
  MethodRules rules = OneSpectrum();
  rules.InsertSeqItem(0);
  rules.WTRTune(0, 1, 0, ShortTune(310, 330, TslCommon::PolarityNegative));
  rules.WTPNumLoops(0, 1);
  const Bench bench(rules);
  ASSERT_EQ(bench.Simulate({"--switch-time", "1.5"}).status, 0);
  EXPECT_EQ(ReadRun(bench.Run())[0].info.TimeStamp, 1500U);
}

TEST(MeasureMethod, WrongUsageIsStatus2) {
  const Bench bench(OneSpectrum());
  const std::pair<Arguments, const char*> cases[] = {
      {{"--scans", "3"}, "tslbl: --scans: the --method says this"},
      {{"--mz", "100-200"}, "tslbl: --mz: the --method says this"},
      {{"--mz-step", "0.1"}, "tslbl: --mz-step: the --method says this"},
      {{"--switch-time", "3"}, "tslbl: --switch-time: 3 is not from 0.1 to 2 s"},
      {{"--truth", bench.Method()}, "tslbl: --truth: "},
  };
  for (const auto& [words, message] : cases) {
    const Outcome outcome = bench.Simulate(words);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_THAT(outcome.err, testing::StartsWith(message));
  }
  EXPECT_EQ(RunTool({"simulate", "-o", bench.Run(), "--switch-time", "1"}).err,
            "tslbl: --switch-time: is for a --method\n");
  EXPECT_EQ(RunTool({"simulate", "-o", bench.Method(), "--method", bench.Method()}).status, 2);
}

TEST(MeasureMethod, AFileThatIsNoMethodIsRefused) {
  const TempFile file("a.method", "nothing of the kind");
  const Outcome outcome = RunTool({"simulate", "--method", file.Path(), "-o", file.Folder() + "/a.run"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, testing::StartsWith("tslbl: " + file.Path() + ": "));
  EXPECT_EQ(RunTool({"simulate", "--method", "/no/such", "-o", file.Folder() + "/a.run"}).status, 1);
  EXPECT_THAT(NamesIn(file.Folder()), ElementsAre("a.method"));
}

}  // namespace
}  // namespace tests
