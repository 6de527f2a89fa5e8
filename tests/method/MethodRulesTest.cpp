#include <tslbl/method/MethodRules.h>

#include <RecordCheck.h>
#include <limits>

#include <method/TestMethod.h>

namespace {

using namespace tests;

// A SIM of one pulse, which settles for as long as is said: 1 ms in all, and the settling.
Tune Sim(std::uint32_t microseconds) {
  Tune tune = TuneOf("+500-500");
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZHi = 0.0;
  tune.ControlData.InitSettleDelay = 0;
  tune.ControlData.PulseCountDelay = microseconds;
  return tune;
}

TEST(NewMethod, IsAMinuteOfTheDefaultTune) {
  const MethodRules rules(0.5);
  EXPECT_EQ(rules.Desc, L"New Method");
  EXPECT_EQ(KeysOf(rules.Tunes), "1");
  EXPECT_TRUE(IsDefaultTune(rules.Tunes.at(1), Probes::ESI));
  EXPECT_EQ(rules.TuneRuns.at(1), TuneRun(1, 1));
  EXPECT_EQ(SequencesOf(rules), "1");
  ASSERT_EQ(rules.QNumTimePeriods(), 1u);
  EXPECT_TRUE(rules.QTPSave(0));
  EXPECT_EQ(rules.QTPTimeout(0), 60000u);
  // 29951 pulses of 1 ms and 3795 microseconds: 29.954795 s go into a minute 2.003 times.
  EXPECT_EQ(rules.QTPNumLoops(0), 3u);
  EXPECT_EQ(rules.QTPSettleDelay(0), 0u);
  EXPECT_EQ(rules.QPolSwitchTime(), 0.5);
  EXPECT_TRUE(rules.Inclusions.empty() && rules.Exclusions.empty());
}

TEST(NewMethod, CountsAsModified) {
  const MethodRules rules(0.5);
  EXPECT_TRUE(rules.IsModified());
  EXPECT_EQ(rules.QLastError(), L"");
}

TEST(NewMethod, HasItsValveAtTheSource) {
  DiverterValveMethod valve = MethodRules(0.5).QValveMethod();
  auto entry = valve.QFirstState();
  EXPECT_EQ(entry.first.count, 0);
  EXPECT_EQ(entry.second.State(), 0u);
  EXPECT_FALSE(valve.QNextState(entry));
}

TEST(NewMethod, TakesAnyTimeOfAChangeOfPolarity) {
  for (const double seconds : {0.0, -1.0, 100.0}) EXPECT_EQ(MethodRules(seconds).QPolSwitchTime(), seconds);
}

TEST(MethodOfATune, IsAsLongAsItsSpectra) {
  struct Row {
    std::uint32_t pulse, records, timeout;
  };
  const Row rows[] = {
      {1000, 1, 1},                    // exactly
      {1001, 1, 2},                    // 1.001 ms, rounded up
      {1001, 999, 1000},               // 999.999
      {1001, 1000, 1001},              // 1001.0
      {2000000, 30, 60000},            // a minute
      {1000, 0, 0},                    // no spectrum
      {2000000, 4000000, 0xFFFFFFFF},  // beyond 32 bits, the nearest end
  };
  for (const Row& row : rows) {
    const MethodRules rules(0.5, Sim(row.pulse), row.records);
    EXPECT_EQ(rules.QTPTimeout(0), row.timeout) << row.pulse << " " << row.records;
    EXPECT_EQ(rules.TuneRuns.at(1), TuneRun(1, row.records));
    EXPECT_EQ(rules.QTPNumLoops(0), 1u);
    EXPECT_EQ(rules.Desc, L"New Method");
    EXPECT_EQ(rules.Tunes.at(1), Sim(row.pulse));
    EXPECT_FALSE(rules.IsModified());
  }
}

// 144 spectra of 29.954795 s wrap around to 18523184 microseconds.
TEST(MethodOfATune, CountsTheTimeOfASpectrumIn32Bits) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.ControlData.ScansPerSpec = 144;
  EXPECT_EQ(MethodRules(0.5, tune, 1).QTPTimeout(0), 18524u);
}

TEST(MethodOfATune, IsAsLongAsItsSpectraWereBeforeItSettles) {
  Tune tune = Sim(1000);
  tune.ControlData.MZHi = 2.0;            // 499 to 501 in 21 pulses of 0.1
  tune.ControlData.InitSettleDelay = 50;  // 21050 microseconds as given
  const MethodRules rules(0.5, tune, 1);
  EXPECT_EQ(rules.QTPTimeout(0), 22u);
  EXPECT_EQ(InitSettleDelaysOf(rules), "503");  // 2 + 501
}

TEST(MethodOfATune, RunsFreelyForFreelyManySpectra) {
  Tune tune = Sim(1000);
  // Nobody asks for the time of a spectrum.
  tune.ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN();
  const MethodRules rules(0.5, tune, MethodRules::FreeRun);
  EXPECT_EQ(rules.QTPTimeout(0), 0xFFFFFFFFu);
  EXPECT_EQ(rules.QTPNumLoops(0), 1u);
  EXPECT_EQ(rules.TuneRuns.at(1).Records, 0xFFFFFFFFu);
}

TEST(MethodOfATune, WhoseStepIsNoNumberThrows) {
  Tune tune = TuneOf("+100-200");
  tune.ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW(MethodRules(0.5, tune, 1), std::runtime_error);
}

TEST(RulesOfAMethod, DropTunesThatNoRunUses) {
  Method method = MethodOf("+100-200 +100-200");
  method.Tunes.emplace(7, TuneOf("+5-50"));
  method.TuneRuns.at(2).TuneId = 1;
  const MethodRules rules(0.5, method);
  EXPECT_EQ(KeysOf(rules.Tunes), "1");
  EXPECT_EQ(KeysOf(rules.TuneRuns), "1 2");
}

TEST(RulesOfAMethod, KeepRunsThatNoSequenceHolds) {
  Method method = MethodOf("+100-200");
  method.Tunes.emplace(7, TuneOf("+5-50"));
  method.TuneRuns.emplace(9, TuneRun(7, 1));
  const MethodRules rules(0.5, method);
  EXPECT_EQ(KeysOf(rules.Tunes), "1 7");
  EXPECT_EQ(KeysOf(rules.TuneRuns), "1 9");
}

TEST(RulesOfAMethod, AreModifiedIfADelayAtAChangeOfPolarityWasAnother) {
  EXPECT_FALSE(MethodRules(0.5, MethodOf("+100-200 +300-400")).IsModified());
  EXPECT_TRUE(MethodRules(0.5, MethodOf("+100-200 -300-400")).IsModified());
  EXPECT_TRUE(MethodRules(0.5, MethodOf("+100-200 | -300-400")).IsModified());
  const Method settled = MethodRules(0.5, MethodOf("+100-200 -300-400 | -50-60"));
  EXPECT_FALSE(MethodRules(0.5, settled).IsModified());
}

TEST(RulesOfAMethod, AreNotModifiedByWhatATuneNeeds) {
  const MethodRules rules(0.5, MethodOf("+100-200"));
  EXPECT_EQ(InitSettleDelaysOf(rules), "650");  // not 3795
  EXPECT_FALSE(rules.IsModified());
}

TEST(Assignment, TakesAnotherMethodAndKeepsTheSwitchTime) {
  MethodRules rules(0.7);
  rules.WDescription(L"before");
  const Method method = MethodOf("+100-200 +300-400");
  rules = method;
  EXPECT_EQ(SequencesOf(rules), "1 2");
  EXPECT_EQ(rules.Desc, L"");
  EXPECT_FALSE(rules.IsModified());
  EXPECT_EQ(rules.QPolSwitchTime(), 0.7);
  rules = MethodOf("+100-200 -300-400");
  EXPECT_TRUE(rules.IsModified());
  EXPECT_EQ(RunDelaysOf(rules), "700000 700000");
}

TEST(Assignment, DropsTunesThatNoRunUses) {
  MethodRules rules(0.7);
  Method method = MethodOf("+100-200");
  method.Tunes.emplace(7, TuneOf("+5-50"));
  rules = method;
  EXPECT_EQ(KeysOf(rules.Tunes), "1");
}

// ---- Conversion ------------------------------------------------------------------------------

TEST(MethodOfRules, HasTheLoopsOfItsTime) {
  MethodRules rules = RulesOf("+100-200");
  rules.WTPNumLoops(0, 7);
  // 1001 pulses of 1 ms and 650 microseconds: 1.00165 s go into a minute 59.9 times.
  EXPECT_EQ(rules.operator Method().TimePeriods[0].Loops, 60u);
  EXPECT_EQ(rules.QTPNumLoops(0), 7u) << "the rules stay";
}

TEST(MethodOfRules, ThatRunsFreelyKeepsItsLoops) {
  MethodRules rules = RulesOf("+100-200");
  rules.WTPTimeout(0, MethodRules::FreeRun);
  rules.WTPNumLoops(0, 7);
  EXPECT_EQ(rules.operator Method().TimePeriods[0].Loops, 7u);
}

TEST(MethodOfRules, IsOtherwiseTheSame) {
  MethodRules rules = RulesOf("+100-200 | -100-200 +5-50");
  rules.WDescription(L"two");
  Method expected = rules;
  expected.TimePeriods[0].Loops = 60;
  // 1.001 s and 0.451 s, 650 and 617 microseconds of settling (200 to 5 and 50 to 100; 195 + 597 is 792, 50 +
  // 525 is 575), and two changes of polarity of half a second: 2.453367 s go into a minute 24.5 times.
  expected.TimePeriods[1].Loops = 25;
  EXPECT_EQ(rules.operator Method(), expected);
}

// A method that Validate refuses may be stored, to be mended later.
TEST(MethodOfRules, ThatAreBrokenKeepsLoopsThatAreNotKnown) {
  Method broken = MethodOf("+100-200 | +5-50");
  broken.TimePeriods[0].Sequence.push_back({99});
  broken.TimePeriods[0].Loops = 7;
  const Method method = MethodRules(0.5, broken).operator Method();
  EXPECT_EQ(method.TimePeriods[0].Loops, 7u);
  EXPECT_EQ(method.TimePeriods[1].Loops, 133u);  // 0.451 s and 567 microseconds: 132.9 times
}

// ---- Ids -------------------------------------------------------------------------------------

Method WithIds(const std::vector<std::uint32_t>& ids) {
  Method method;
  for (const std::uint32_t id : ids) {
    method.TuneRuns.emplace(id, TuneRun(id, 1));
    method.Tunes.emplace(id, TuneOf("+100-200"));
  }
  return method;
}

TEST(FreeId, IsTheLowestFromOne) {
  struct Row {
    std::vector<std::uint32_t> ids;
    std::uint32_t free;
  };
  const Row rows[] = {
      {{}, 1},
      {{1}, 2},
      {{2}, 1},
      {{1, 2, 4}, 3},
      {{2, 3}, 1},
      {{1, 2, 3}, 4},
      {{0xFFFFFFFF}, 1},
      // An id that no run may have counts as the first one.
      {{0}, 2},
      {{0, 1, 5}, 3},
  };
  for (const Row& row : rows) {
    const Method method = WithIds(row.ids);
    EXPECT_EQ(MethodRules::GetTuneRunId(method), row.free) << KeysOf(method.TuneRuns);
    std::uint32_t id = 77;
    EXPECT_FALSE(MethodRules::GetTuneId(method, TuneOf("+5-50"), id));
    EXPECT_EQ(id, row.free) << KeysOf(method.Tunes);
  }
}

TEST(TuneId, IsThatOfTheFirstEqualTune) {
  Method method = MethodOf("+100-200 +5-50 +5-50");
  std::uint32_t id = 77;
  EXPECT_TRUE(MethodRules::GetTuneId(method, TuneOf("+5-50"), id));
  EXPECT_EQ(id, 2u);
}

TEST(TuneId, IsOfATuneThatIsEqualInAllItsParts) {
  const Method method = MethodOf("+100-200");
  std::uint32_t id = 0;
  const std::vector<std::function<void(Tune&)>> changes = {
      [](Tune& t) { t.Source.EndPlate += 1; },         [](Tune& t) { t.ControlData.ScansPerSpec += 1; },
      [](Tune& t) { t.Info.Comment = L"other"; },      [](Tune& t) { t.SyringeData.FlowRate += 1; },
      [](Tune& t) { t.MZCalPts.back().MassDAC += 1; }, [](Tune& t) { t.Q1CalPts.pop_back(); },
  };
  for (const auto& change : changes) {
    Tune tune = TuneOf("+100-200");
    EXPECT_TRUE(MethodRules::GetTuneId(method, tune, id));
    change(tune);
    EXPECT_FALSE(MethodRules::GetTuneId(method, tune, id));
    EXPECT_EQ(id, 2u);
  }
}

TEST(MethodLimits, AreThoseOfTheInstrument) {
  EXPECT_EQ(MethodRules::QMaxTimePeriods(), 30u);
  EXPECT_EQ(MethodRules::QMinTimePeriods(), 1u);
  EXPECT_EQ(MethodRules::QMinValveDuration(), 0.01);
  EXPECT_EQ(MethodRules::FreeRun, 0xFFFFFFFFu);
  EXPECT_EQ(Method::INVALID_ID, 0u);
}

}  // namespace
