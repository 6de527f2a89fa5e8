#include <tslbl/method/CheckPeakMethod.h>

#include <cmath>
#include <stdexcept>

#include <method/TestMethod.h>

namespace {

using namespace tests;

// "490-510 at 0.1"
std::string ScanOf(const Tune& tune) {
  std::ostringstream text;
  const Control& control = tune.ControlData;
  text << control.MZLow << "-" << control.MZHi << " at " << control.MZStepSize;
  return text.str();
}

TEST(CheckPeakMethod, OfOnePeakHasOneScanAroundIt) {
  const Method method = CheckPeakMethod({500}, TuneOf("-5-3000"));
  EXPECT_EQ(SequencesOf(method), "1");
  EXPECT_EQ(ScanOf(method.Tunes.at(1)), "490-510 at 0.1");
  EXPECT_EQ(method.Desc, L"New Method");
}

TEST(CheckPeakMethod, OfMorePeaksHasTheirScansInAscendingOrder) {
  const Method method = CheckPeakMethod({1000.5, 118, 322}, TuneOf("+5-3000"));
  EXPECT_EQ(SequencesOf(method), "1 2 3");
  EXPECT_EQ(TuneIdsOf(method), "1 3 4");
  EXPECT_EQ(KeysOf(method.Tunes), "1 3 4");
  EXPECT_EQ(ScanOf(method.Tunes.at(1)), "108-128 at 0.1");
  EXPECT_EQ(ScanOf(method.Tunes.at(3)), "312-332 at 0.1");
  EXPECT_EQ(ScanOf(method.Tunes.at(4)), "990.5-1010.5 at 0.1");
  for (const auto& [id, run] : method.TuneRuns) EXPECT_EQ(run, TuneRun(run.TuneId, 1));
}

TEST(CheckPeakMethod, RunsFreely) {
  const Method method = CheckPeakMethod({118, 322}, TuneOf("+5-3000"));
  ASSERT_EQ(method.TimePeriods.size(), 1u);
  EXPECT_EQ(method.TimePeriods[0].Timeout, 0xFFFFFFFFu);
  EXPECT_EQ(method.TimePeriods[0].Loops, 1u);
  EXPECT_TRUE(method.TimePeriods[0].Save);
}

TEST(CheckPeakMethod, LeavesTheValveAtTheSource) {
  DiverterValveMethod valve = CheckPeakMethod({118, 322}, TuneOf("+5-3000")).QValveMethod();
  auto entry = valve.QFirstState();
  EXPECT_EQ(entry.first.count, 0);
  EXPECT_EQ(entry.second.State(), 0u);
  EXPECT_FALSE(valve.QNextState(entry));
}

// 332 to 108: 224 + 612; 128 to 312: 184 + 592.
TEST(CheckPeakMethod, HasTheDelaysOfItsSequence) {
  EXPECT_EQ(InitSettleDelaysOf(CheckPeakMethod({118, 322}, TuneOf("+5-3000"))), "836 776");
}

TEST(CheckPeakMethod, TakesAllElseFromTheTune) {
  Tune tune = TuneOf("-5-3000");
  tune.Source = DevTuneRules(Probes::APCI).Source;
  tune.Info.Name = L"mine";
  const Method method = CheckPeakMethod({118, 322}, tune);
  for (const auto& [id, scan] : method.Tunes) {
    Tune expected = tune;
    expected.ControlData.MZLow = scan.ControlData.MZLow;
    expected.ControlData.MZHi = scan.ControlData.MZHi;
    expected.ControlData.InitSettleDelay = scan.ControlData.InitSettleDelay;
    EXPECT_EQ(scan, expected);
  }
}

// Neither the polarity of negative ions nor the time that it takes: new tunes are positive for a moment.
TEST(CheckPeakMethod, OfNegativeIonsHasNoChangeOfPolarity) {
  const Method method = CheckPeakMethod({118, 322}, TuneOf("-5-3000"));
  EXPECT_EQ(RunDelaysOf(method), "0 0");
  EXPECT_EQ(PeriodDelaysOf(method), "0");
}

TEST(CheckPeakMethod, KeepsAnEndThatTheRulesRefuse) {
  struct Row {
    const char* tune;
    double mz;
    const char* scan;
  };
  const Row rows[] = {
      {"+5-3000", 12, "5-22 at 0.1"},         // below the lowest m/z
      {"+5-3000", 2995, "2985-3000 at 0.1"},  // above the highest
      {"+100-200", 500, "100-510 at 0.1"},    // the low end would have passed the high one
      {"+300-400", 100, "90-110 at 0.1"},     //
      {"+5-3000", 2000000, "5-3000 at 0.1"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(ScanOf(CheckPeakMethod({row.mz}, TuneOf(row.tune)).Tunes.at(1)), row.scan) << row.tune;
}

TEST(CheckPeakMethod, OfASimKeepsItsSpan) {
  Tune tune = TuneOf("+5-3000");
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZHi = 0.4;
  EXPECT_EQ(ScanOf(CheckPeakMethod({500}, tune).Tunes.at(1)), "490-0.4 at 0.1");
}

TEST(CheckPeakMethod, IsAccepted) {
  MethodRules rules(0.5, CheckPeakMethod({118, 322, 622}, DevTuneRules(Probes::ESI)));
  EXPECT_TRUE(rules.Validate());
  EXPECT_EQ(rules.QLastError(), L"");
}

TEST(CheckPeakMethod, WithoutPeaksThrows) {
  EXPECT_THROW(CheckPeakMethod({}, TuneOf("+5-3000")), std::invalid_argument);
}

TEST(CheckPeakMethod, OfAnOpenCalibrationThrows) {
  Tune tune = TuneOf("+5-3000");
  tune.MZCalPts = {{L"", 500, 100}, {L"", 500, 200}};
  EXPECT_THROW(CheckPeakMethod({510}, tune), std::runtime_error);
}

}  // namespace
