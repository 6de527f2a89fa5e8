#include <tslbl/method/MethodRules.h>

#include <tslbl/curve/NoiseParams.h>
#include <functional>
#include <limits>
#include <stdexcept>

#include <method/TestMethod.h>

namespace {

using namespace tests;

using R = MethodRules;

// Whether the change is made and marked, and no change a second time.
void ExpectWritten(const std::function<void(R&)>& write, const std::function<bool(const Method&)>& holds) {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  rules.WTRDDType(0, 1, 0, DDInfo::TuneChange);
  rules.ClearModified();
  EXPECT_FALSE(holds(rules));
  write(rules);
  EXPECT_TRUE(holds(rules));
  EXPECT_TRUE(rules.IsModified());
  rules.ClearModified();
  write(rules);
  EXPECT_FALSE(rules.IsModified());
  EXPECT_TRUE(holds(rules));
}

TEST(DescriptionOfAMethod, IsWritten) {
  ExpectWritten([](R& r) { r.WDescription(L"caffeine"); },
                [](const Method& m) { return m.Desc == L"caffeine"; });
  R rules = RulesOf("+100-200");
  rules.WDescription(L"x");
  EXPECT_EQ(rules.QDescription(), L"x");
}

TEST(SizesOfAMethod, AreCounted) {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  rules.WTRDDType(0, 1, 0, DDInfo::TuneChange);
  EXPECT_EQ(rules.QNumTimePeriods(), 2u);
  EXPECT_EQ(rules.QNumSeqItems(0), 2u);
  EXPECT_EQ(rules.QNumSeqItems(1), 1u);
  EXPECT_EQ(rules.QSINumTuneRuns(0, 0), 1u);
  EXPECT_EQ(rules.QSINumTuneRuns(0, 1), 2u);
}

TEST(FieldsOfATimePeriod, AreWritten) {
  ExpectWritten([](R& r) { r.WTPSave(1, false); }, [](const Method& m) { return !m.TimePeriods[1].Save; });
  ExpectWritten([](R& r) { r.WTPNumLoops(1, 9); },
                [](const Method& m) { return m.TimePeriods[1].Loops == 9; });
  ExpectWritten([](R& r) { r.WTPTimeout(1, 9); },
                [](const Method& m) { return m.TimePeriods[1].Timeout == 9; });
  ExpectWritten([](R& r) { r.WTPSettleDelay(1, 9); },
                [](const Method& m) { return m.TimePeriods[1].SettleDelay == 9; });
}

TEST(FieldsOfATimePeriod, AreRead) {
  Method method = MethodOf("+100-200 | +300-400");
  method.TimePeriods[1].Save = false;
  method.TimePeriods[1].Loops = 3;
  method.TimePeriods[1].Timeout = 4;
  R rules(kSwitchTime, method);
  rules.WTPSettleDelay(1, 5);
  EXPECT_TRUE(rules.QTPSave(0));
  EXPECT_FALSE(rules.QTPSave(1));
  EXPECT_EQ(rules.QTPNumLoops(1), 3u);
  EXPECT_EQ(rules.QTPTimeout(1), 4u);
  EXPECT_EQ(rules.QTPSettleDelay(1), 5u);
}

// 1001 pulses of 1 ms and 650 microseconds of settling: 1.00165 s.
TEST(TimeoutOfATimePeriod, SetsItsLoops) {
  struct Row {
    std::uint32_t timeout, loops;
  };
  const Row rows[] = {{0, 0},
                      {1, 1},
                      {1001, 1},
                      {1002, 2},
                      {60000, 60},
                      {60099, 60},
                      {60100, 61},             // 60.001
                      {0xFFFFFFFF, 4287893}};  // 4294967.295 s, 4287892.3 times
  R rules = RulesOf("+100-200");
  for (const Row& row : rows) {
    rules.WTPTimeout(0, row.timeout);
    EXPECT_EQ(rules.QTPNumLoops(0), row.loops) << row.timeout;
  }
}

TEST(TimeoutOfATimePeriod, ThatItHasSetsItsLoopsToo) {
  R rules = RulesOf("+100-200");
  rules.WTPNumLoops(0, 7);
  rules.ClearModified();
  rules.WTPTimeout(0, 60000);
  EXPECT_EQ(rules.QTPNumLoops(0), 60u);
  EXPECT_TRUE(rules.IsModified());
}

TEST(TimeoutOfATimePeriod, OfASequenceThatTakesNoTime) {
  R rules = RulesOf("+100-200 | +300-400");
  rules.RemoveSeqItem(1, 0);
  rules.WTPTimeout(1, 1);
  EXPECT_EQ(rules.QTPNumLoops(1), 0xFFFFFFFFu);
  rules.WTPTimeout(1, 0);
  EXPECT_EQ(rules.QTPNumLoops(1), 0u);
}

TEST(TimeoutOfATimePeriod, KeepsLoopsThatAreNotKnown) {
  Method noTune = MethodOf("+100-200");
  noTune.TuneRuns.at(1).TuneId = 99;
  Method noRun = MethodOf("+100-200");
  noRun.TimePeriods[0].Sequence.push_back({99});
  Method emptyItem = MethodOf("+100-200");
  emptyItem.TimePeriods[0].Sequence.emplace_back();
  Method noStep = MethodOf("+100-200");
  noStep.Tunes.at(1).ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN();
  for (const Method& method : {noTune, noRun, emptyItem, noStep}) {
    R rules(kSwitchTime, method);
    rules.WTPNumLoops(0, 7);
    rules.WTPTimeout(0, 1000);
    EXPECT_EQ(rules.QTPTimeout(0), 1000u);
    EXPECT_EQ(rules.QTPNumLoops(0), 7u);
  }
}

TEST(FieldsOfATuneRun, AreWritten) {
  ExpectWritten([](R& r) { r.WTRNumRecs(0, 1, 1, 5); },
                [](const Method& m) { return m.TuneRuns.at(4).Records == 5; });
  ExpectWritten([](R& r) { r.WTRSettleDelay(0, 1, 1, 5); },
                [](const Method& m) { return m.TuneRuns.at(4).SettleDelay == 5; });
  ExpectWritten([](R& r) { r.WTRStartTrigger(0, 1, 1, DDInfo::SNAboveThres); },
                [](const Method& m) { return m.TuneRuns.at(4).Info.StartTrigger == DDInfo::SNAboveThres; });
  ExpectWritten([](R& r) { r.WTRStartTriggerValue(0, 1, 1, 0.5); },
                [](const Method& m) { return m.TuneRuns.at(4).Info.StartTriggerValue == 0.5; });
  ExpectWritten([](R& r) { r.WTREndTrigger(0, 1, 1, DDInfo::TriggerTimeout); },
                [](const Method& m) { return m.TuneRuns.at(4).Info.EndTrigger == DDInfo::TriggerTimeout; });
  ExpectWritten([](R& r) { r.WTREndTriggerValue(0, 1, 1, 0.5); },
                [](const Method& m) { return m.TuneRuns.at(4).Info.EndTriggerValue == 0.5; });
  ExpectWritten([](R& r) { r.WTRSpecEvalMethod(0, 1, 1, {CurveEval(NoiseParams())}); },
                [](const Method& m) { return m.TuneRuns.at(4).Info.CurveEvals.size() == 1; });
  ExpectWritten([](R& r) { r.WTRExcludeDuration(0, 1, 1, 5); },
                [](const Method& m) { return m.TuneRuns.at(4).Info.ExclDuration == 5; });
}

TEST(FieldsOfATuneRun, AreRead) {
  Method method = MethodOf("+100-200 -5-50 | +300-400");
  TuneRun& run = method.TuneRuns.at(2);
  run.Info.Type = DDInfo::PeakPark;
  run.Info.StartTrigger = DDInfo::SNAboveThres;
  run.Info.StartTriggerValue = 3.5;
  run.Info.CurveEvals = {CurveEval(NoiseParams())};
  run.Info.EndTrigger = DDInfo::TriggerTimeout;
  run.Info.EndTriggerValue = 2.5;
  run.Info.ExclDuration = 12;
  const R rules(kSwitchTime, method);
  EXPECT_EQ(rules.QTRSettleDelay(0, 1, 0), kSwitch);
  EXPECT_EQ(rules.QTRDDType(0, 1, 0), DDInfo::PeakPark);
  EXPECT_EQ(rules.QTRStartTrigger(0, 1, 0), DDInfo::SNAboveThres);
  EXPECT_EQ(rules.QTRStartTriggerValue(0, 1, 0), 3.5);
  EXPECT_EQ(rules.QTRSpecEvalMethod(0, 1, 0), run.Info.CurveEvals);
  EXPECT_EQ(rules.QTREndTrigger(0, 1, 0), DDInfo::TriggerTimeout);
  EXPECT_EQ(rules.QTREndTriggerValue(0, 1, 0), 2.5);
  EXPECT_EQ(rules.QTRExcludeDuration(0, 1, 0), 12u);
}

TEST(FieldsOfATuneRun, AreReadOfEachRunOfAnItem) {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  rules.WTRDDType(0, 1, 0, DDInfo::TuneChange);
  rules.WTRSettleDelay(0, 1, 1, 7);
  rules.WTRStartTrigger(0, 1, 1, DDInfo::SNAboveThres);
  rules.WTRStartTriggerValue(0, 1, 1, 3.5);
  rules.WTREndTrigger(0, 1, 1, DDInfo::TriggerTimeout);
  rules.WTREndTriggerValue(0, 1, 1, 2.5);
  rules.WTRExcludeDuration(0, 1, 1, 12);
  EXPECT_EQ(rules.QTRSettleDelay(0, 1, 1), 7u);
  EXPECT_EQ(rules.QTRDDType(0, 1, 1), DDInfo::None);
  EXPECT_EQ(rules.QTRStartTrigger(0, 1, 1), DDInfo::SNAboveThres);
  EXPECT_EQ(rules.QTRStartTriggerValue(0, 1, 1), 3.5);
  EXPECT_EQ(rules.QTREndTrigger(0, 1, 1), DDInfo::TriggerTimeout);
  EXPECT_EQ(rules.QTREndTriggerValue(0, 1, 1), 2.5);
  EXPECT_EQ(rules.QTRExcludeDuration(0, 1, 1), 12u);
}

TEST(RecordsOfATuneRun, AreReadAsOne) {
  R rules = RulesOf("+100-200");
  rules.WTRNumRecs(0, 0, 0, 5);
  EXPECT_EQ(rules.QTRNumRecs(0, 0, 0), 1u);
  EXPECT_EQ(rules.TuneRuns.at(1).Records, 5u);
  EXPECT_EQ(rules.QTRNumRecs(8, 9, 10), 1u);
}

TEST(SettleDelayOfATuneRun, StaysUntilDelaysAreWorkedOut) {
  R rules = RulesOf("+100-200 +5-50");
  rules.WTRSettleDelay(0, 1, 0, 77);
  EXPECT_EQ(rules.QTRSettleDelay(0, 1, 0), 77u);
  rules.MoveSeqItem(0, 0, R::ToBeginning);
  EXPECT_EQ(rules.QTRSettleDelay(0, 1, 0), 0u);
}

TEST(TuneOfARun, IsReadInItsPlace) {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  EXPECT_EQ(&rules.QTRTune(0, 1, 0), &rules.Tunes.at(2));
  EXPECT_EQ(&rules.QTRTune(1, 0, 0), &rules.Tunes.at(3));
}

TEST(TuneOfARun, AlwaysHasANewId) {
  R rules = RulesOf("+100-200 +5-50");
  rules.WTRTune(0, 0, 0, TuneOf("+300-400"));
  EXPECT_EQ(KeysOf(rules.Tunes), "2 3");
  EXPECT_EQ(TuneIdsOf(rules), "3 2");
  EXPECT_EQ(rules.QTRTune(0, 0, 0).ControlData.MZLow, 300.0);
  EXPECT_TRUE(rules.IsModified());
  rules.ClearModified();
  rules.WTRTune(0, 0, 0, rules.QTRTune(0, 0, 0));
  EXPECT_EQ(KeysOf(rules.Tunes), "1 2");
  EXPECT_EQ(TuneIdsOf(rules), "1 2");
  EXPECT_EQ(rules.QTRTune(0, 0, 0).ControlData.MZLow, 300.0);
  EXPECT_TRUE(rules.IsModified());
}

TEST(TuneOfARun, StaysWithOtherRunsThatUseIt) {
  Method method = MethodOf("+100-200 +5-50");
  method.TuneRuns.at(2).TuneId = 1;
  R rules(kSwitchTime, method);
  rules.WTRTune(0, 0, 0, TuneOf("+300-400"));
  EXPECT_EQ(KeysOf(rules.Tunes), "1 2");
  EXPECT_EQ(TuneIdsOf(rules), "2 1");
}

// 400 to 300 of its own: 100 + 550.
TEST(TuneOfARun, HasTheDelayThatItNeedsHere) {
  R rules = RulesOf("+100-200");
  Tune tune = TuneOf("+300-400");
  tune.ControlData.InitSettleDelay = 7;
  rules.WTRTune(0, 0, 0, tune);
  EXPECT_EQ(rules.QTRTune(0, 0, 0).ControlData.InitSettleDelay, 650u);
}

TEST(FilterLists, AreWritten) {
  const std::vector<DDFilter> filters = {{100, 101, 1, 2}, {200, 201, 3, 4}};
  ExpectWritten([&](R& r) { r.WInclusionList(filters); },
                [&](const Method& m) { return m.Inclusions == filters && m.Exclusions.empty(); });
  ExpectWritten([&](R& r) { r.WExclusionList(filters); },
                [&](const Method& m) { return m.Exclusions == filters && m.Inclusions.empty(); });
  R rules = RulesOf("+100-200");
  rules.WInclusionList(filters);
  EXPECT_EQ(&rules.QInclusionList(), &rules.Inclusions);
  EXPECT_EQ(&rules.QExclusionList(), &rules.Exclusions);
  rules.ClearModified();
  rules.WInclusionList({{100, 101, 1, 2}, {200, 201, 3, 5}});
  EXPECT_TRUE(rules.IsModified()) << "the last field of the last one differs";
}

TEST(ValveProgram, IsWrittenWithoutAMark) {
  R rules = RulesOf("+100-200");
  DiverterValveMethod program;
  program.AddState(timebase::MSEC(0), DiverterValve(DiverterValve::kToWaste));
  rules.WValveMethod(program);
  EXPECT_EQ(rules.QValveMethod(), program);
  EXPECT_FALSE(rules.IsModified());
}

TEST(FieldsOfAMethod, BeyondItsIndexesThrow) {
  R rules = RulesOf("+100-200 -5-50");
  const std::vector<std::function<void(R&)>> asked = {
      [](R& r) { r.QNumSeqItems(1); },        [](R& r) { r.QSINumTuneRuns(1, 0); },
      [](R& r) { r.QSINumTuneRuns(0, 2); },   [](R& r) { r.QTPSave(1); },
      [](R& r) { r.QTPNumLoops(1); },         [](R& r) { r.QTPTimeout(1); },
      [](R& r) { r.QTPSettleDelay(1); },      [](R& r) { r.WTPSave(1, false); },
      [](R& r) { r.WTPNumLoops(1, 2); },      [](R& r) { r.WTPTimeout(1, 2); },
      [](R& r) { r.WTPSettleDelay(1, 2); },   [](R& r) { r.QTRTune(1, 0, 0); },
      [](R& r) { r.QTRTune(0, 2, 0); },       [](R& r) { r.QTRTune(0, 0, 1); },
      [](R& r) { r.QTRDDType(0, 0, 1); },     [](R& r) { r.WTRTune(0, 0, 1, Tune()); },
      [](R& r) { r.WTRNumRecs(0, 2, 0, 3); }, [](R& r) { r.WTRSettleDelay(1, 0, 0, 3); },
  };
  for (std::size_t i = 0; i < asked.size(); ++i) EXPECT_THROW(asked[i](rules), std::out_of_range) << i;
  EXPECT_FALSE(rules.IsModified());
}

TEST(FieldsOfAMethod, OfAnIdThatNamesNothingThrow) {
  Method method = MethodOf("+100-200 +5-50");
  method.TimePeriods[0].Sequence[0] = {99};
  method.TuneRuns.at(2).TuneId = 99;
  R rules(kSwitchTime, method);
  EXPECT_THROW(rules.QTRDDType(0, 0, 0), std::out_of_range);
  EXPECT_THROW(rules.WTRTune(0, 0, 0, Tune()), std::out_of_range);
  EXPECT_THROW(rules.QTRTune(0, 1, 0), std::out_of_range);
  EXPECT_EQ(rules.QTRDDType(0, 1, 0), DDInfo::None);
  EXPECT_FALSE(rules.IsModified());
  rules.WTRTune(0, 1, 0, TuneOf("+300-400"));
  EXPECT_EQ(rules.QTRTune(0, 1, 0).ControlData.MZLow, 300.0) << "a run without a tune gets one";
}

}  // namespace
