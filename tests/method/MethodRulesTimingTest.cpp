#include <tslbl/method/MethodRules.h>

#include <functional>
#include <limits>
#include <stdexcept>

#include <method/TestMethod.h>

namespace {

using namespace tests;

using R = MethodRules;

// ---- Durations -------------------------------------------------------------------------------

// 1001 pulses of 1000 microseconds, 1000 steps between them of 7, 650 to settle, 3 scans a spectrum:
// (7000 + 1001000 + 650) * 3.
TEST(DurationOfAnItem, IsThatOfASpectrumOfItsTune) {
  Method method = MethodOf("+100-200");
  method.Tunes.at(1).ControlData.StepSettleDelay = 7;
  method.Tunes.at(1).ControlData.ScansPerSpec = 3;
  const R rules(kSwitchTime, method);
  EXPECT_EQ(rules.QSITuneDuration(0, 0), 3.02595);
  EXPECT_EQ(rules.QSIDuration(0, 0), 3.02595);
}

// 4 spectra of 1.00165 s, and 250000 microseconds before them.
TEST(DurationOfAnItem, CountsItsRecordsAndItsDelay) {
  R rules = RulesOf("+100-200");
  rules.WTRNumRecs(0, 0, 0, 4);
  rules.WTRSettleDelay(0, 0, 0, 250000);
  EXPECT_EQ(rules.QSITuneDuration(0, 0), 1.00165);
  EXPECT_EQ(rules.QSIDuration(0, 0), 4 * 1.00165 + 0.25);
}

TEST(DurationOfAnItem, DoesNotCountWhatItMayChangeTo) {
  R rules = RulesOf("+100-200");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  EXPECT_EQ(rules.QSIDuration(0, 0), 1.00165);
}

// 29954795 microseconds, 144 times, less 4294967296.
TEST(DurationOfAnItem, WrapsAroundIn32Bits) {
  Method method = MethodOf("+5-3000");
  method.Tunes.at(1).ControlData.ScansPerSpec = 144;
  EXPECT_EQ(R(kSwitchTime, method).QSITuneDuration(0, 0), 18.523184);
}

TEST(DurationOfAnItem, ThatIsNotThereThrows) {
  Method method = MethodOf("+100-200 +5-50 +5-50 +5-50");
  method.TimePeriods[0].Sequence[1] = {99};
  method.TimePeriods[0].Sequence[2].clear();
  method.TuneRuns.at(4).TuneId = 99;
  const R rules(kSwitchTime, method);
  for (const std::uint32_t si : {1u, 2u, 3u, 4u}) {
    EXPECT_THROW(rules.QSITuneDuration(0, si), std::out_of_range) << si;
    EXPECT_THROW(rules.QSIDuration(0, si), std::out_of_range) << si;
  }
  EXPECT_THROW(rules.QSIDuration(1, 0), std::out_of_range);
}

TEST(DurationOfAMethod, IsThatOfItsTimePeriods) {
  R rules(0.5);
  EXPECT_EQ(rules.QDuration(), 60.0);
  rules.InsertTimePeriod();
  rules.WTPTimeout(1, 1500);
  EXPECT_EQ(rules.QTPDuration(0), 60.0);
  EXPECT_EQ(rules.QTPDuration(1), 1.5);
  EXPECT_EQ(rules.QDuration(), 61.5);
  rules.WTPTimeout(1, R::FreeRun);
  EXPECT_EQ(rules.QTPDuration(1), 4294967.295);
  EXPECT_EQ(rules.QDuration(), 60.0 + 4294967.295);
  EXPECT_THROW(rules.QTPDuration(2), std::out_of_range);
}

TEST(DurationOfAMethod, WithoutTimePeriodsIsNothing) { EXPECT_EQ(R(0.5, Method()).QDuration(), 0.0); }

// ---- Loops -----------------------------------------------------------------------------------

// Two spectra of 1.00165 s (1.001 s; 400 to 100 takes 300 + 650, 200 to 300 takes 100 + 550: 1.00195 and
// 1.00165), and two changes of polarity: 2 * 1.001 + 0.0016 + 2 * 0.5 = 3.0036 s.
TEST(Loops, AreOfTheWholeSequence) {
  R rules = RulesOf("+100-200 -300-400");
  rules.WTPTimeout(0, 3003);
  EXPECT_EQ(rules.QTPNumLoops(0), 1u);
  rules.WTPTimeout(0, 3004);
  EXPECT_EQ(rules.QTPNumLoops(0), 2u);
  rules.WTPTimeout(0, 30035);
  EXPECT_EQ(rules.QTPNumLoops(0), 10u);
  rules.WTPTimeout(0, 30037);
  EXPECT_EQ(rules.QTPNumLoops(0), 11u);
}

// ---- What tunes need -------------------------------------------------------------------------

// A move by d takes d + min(d / 2 + 500, 800) microseconds, truncated.
TEST(DelayOfATune, IsThatOfItsOwnRangeInALoneItem) {
  struct Row {
    const char* tune;
    const char* delay;
  };
  const Row rows[] = {{"+100-200", "650"}, {"+5-3000", "3795"}, {"+100-110", "515"}, {"+100-100", "0"}};
  for (const Row& row : rows) EXPECT_EQ(InitSettleDelaysOf(RulesOf(row.tune)), row.delay) << row.tune;
}

TEST(DelayOfATune, FollowsTheTuneBefore) {
  // 400 to 100: 300 + 650; 200 to 300: 100 + 550.
  EXPECT_EQ(InitSettleDelaysOf(RulesOf("+100-200 +300-400")), "950 650");
  // 60 to 100: 40 + 520; 200 to 1000: 800 + 800; 1200 to 50: 1150 + 800.
  EXPECT_EQ(InitSettleDelaysOf(RulesOf("+100-200 +1000-1200 +50-60")), "560 1600 1950");
  // The other way round: 1200 to 100, 200 to 50, 60 to 1000: 1100 + 800, 150 + 575, 940 + 800.
  EXPECT_EQ(InitSettleDelaysOf(RulesOf("+100-200 +50-60 +1000-1200")), "1900 725 1740");
}

TEST(DelayOfATune, IsThatOfItsOwnTimePeriod) {
  EXPECT_EQ(InitSettleDelaysOf(RulesOf("+100-200 +300-400 | +100-200")), "950 650 650");
}

TEST(DelayOfATune, OfASimIsThatOfItsSpan) {
  Method method = MethodOf("+100-200 +500-500");
  Control& sim = method.Tunes.at(2).ControlData;
  sim.Type = Control::Sim;
  sim.MZHi = 2.0;  // 499 to 501
  // 501 to 100: 401 + 700.5; 200 to 499: 299 + 649.5.
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, method)), "1101 948");
}

// A change by v volts takes (v - 40) * 125 microseconds from 40 to 80 volts, 5000 beyond.
TEST(DelayOfATune, FollowsTheCapillaryExit) {
  Method method = MethodOf("+100-200 +200-300");
  method.Tunes.at(1).ControlData.CapExit.Single = 100;
  method.Tunes.at(2).ControlData.CapExit.Single = 160;
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, method)), "2500 2500");
  method.Tunes.at(2).ControlData.CapExit.Single = -100;
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, method)), "5000 5000");
  method.Tunes.at(2).ControlData.CapExit.Single = 60;
  // 40 volts take nothing: 300 to 100 is 200 + 600, 200 to 200 is no way.
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, method)), "800 0");
}

// From 100 V at m/z 100 to 160 V at 200.
Tune Curved(const std::string& text) {
  Tune tune = TuneOf(text);
  tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
  tune.Q1CalPts = {Q1CalPt(100, L"low"), Q1CalPt(200, L"high")};
  tune.Q1CalPts[0].Fields[TuneField::CapExit] = 100;
  tune.Q1CalPts[1].Fields[TuneField::CapExit] = 160;
  return tune;
}

TEST(DelayOfATune, TakesTheCapillaryExitWhereOneEndsAndTheOtherBegins) {
  Method method = MethodOf("+100-200 +150-160");
  method.Tunes.at(1) = Curved("+100-200");
  method.Tunes.at(2) = Curved("+150-180");
  // At 180: 148 V, to 100 V: 48 V, 1000; 80 m/z, 80 + 540. At 200: 160 V, to 130 V: 30 V; 50 + 525.
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, method)), "1000 575");
  // Alone: 160 to 100 V, 2500; 148 to 130 V; 30 + 515.
  method.TimePeriods[0].Sequence = {{1}};
  method.TimePeriods.emplace_back().Sequence.push_back({2});
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, method)), "2500 545");
}

TEST(DelayOfATune, ThatItemsShareIsThatOfTheLaterOne) {
  Method method = MethodOf("+100-200 +300-400 +1000-1100");
  method.TuneRuns.at(3).TuneId = 1;
  // Tune 1 behind tune 2 in item 2, then behind itself in item 0, which is worked out last.
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, method)), "650 650");
  Method later = MethodOf("+100-200 +300-400 | +100-200");
  later.TuneRuns.at(3).TuneId = 1;
  EXPECT_EQ(InitSettleDelaysOf(R(kSwitchTime, later)), "650 650");
}

TEST(DelayOfATune, DoesNotFollowWhatAnItemMayChangeTo) {
  R rules = RulesOf("+100-200 +300-400");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  rules.MoveSeqItem(0, 0, R::ToBeginning);
  EXPECT_EQ(InitSettleDelaysOf(rules), "950 650 3795");
}

TEST(InitialSettlingDelayOfATimePeriod, TellsOfAChange) {
  R rules = RulesOf("+100-200 +300-400 | +5-50");
  EXPECT_FALSE(rules.CalculateInitialSettlingDelay(0));
  for (const std::uint32_t id : {1u, 2u}) {
    rules.Tunes.at(id).ControlData.InitSettleDelay = 7;
    EXPECT_TRUE(rules.CalculateInitialSettlingDelay(0));
    EXPECT_EQ(InitSettleDelaysOf(rules), "950 650 567");
  }
  rules.Tunes.at(3).ControlData.InitSettleDelay = 7;
  EXPECT_FALSE(rules.CalculateInitialSettlingDelay(0)) << "of another time period";
  EXPECT_TRUE(rules.CalculateInitialSettlingDelay(1));
  EXPECT_FALSE(rules.IsModified());
  EXPECT_THROW(rules.CalculateInitialSettlingDelay(2), std::out_of_range);
}

TEST(InitialSettlingDelayOfATimePeriod, OfNoItemIsNoChange) {
  R rules = RulesOf("+100-200 | +5-50");
  rules.RemoveSeqItem(1, 0);
  EXPECT_FALSE(rules.CalculateInitialSettlingDelay(1));
}

TEST(InitialSettlingDelayOfATimePeriod, BeyondTheLimitIsNotWritten) {
  Method method = MethodOf("+5-10000000");
  method.Tunes.at(1).ControlData.InitSettleDelay = 77;
  R rules(kSwitchTime, method);
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(rules.CalculateInitialSettlingDelay(0));
    EXPECT_EQ(InitSettleDelaysOf(rules), "77");
    EXPECT_EQ(rules.QLastError(), L"");
    EXPECT_FALSE(rules.IsModified());
  }
}

// ---- Changes of polarity in a sequence -------------------------------------------------------

TEST(DelayOfARun, IsTheTimeOfAChangeOfPolarity) {
  EXPECT_EQ(RunDelaysOf(RulesOf("+100-200 -100-200")), "500000 500000");
  EXPECT_EQ(RunDelaysOf(RulesOf("+100-200 -100-200 -5-50")), "500000 500000 0");
  EXPECT_EQ(RunDelaysOf(RulesOf("+100-200 +100-200 -5-50")), "500000 0 500000");
  EXPECT_EQ(RunDelaysOf(RulesOf("-100-200 -100-200 | +5-50")), "0 0 0");
}

TEST(DelayOfARun, IsInWholeMicroseconds) {
  const Method method = MethodOf("+100-200 -100-200");
  struct Row {
    double seconds;
    const char* delays;
  };
  const Row rows[] = {{0.0000014, "1 1"},
                      {0.0000016, "2 2"},
                      {0.0, "0 0"},
                      {-1.0, "0 0"},
                      {std::numeric_limits<double>::quiet_NaN(), "0 0"},
                      {1e9, "4294967295 4294967295"}};
  for (const Row& row : rows) EXPECT_EQ(RunDelaysOf(R(row.seconds, method)), row.delays) << row.seconds;
}

TEST(DelayOfARun, OfOnePolarityIsSetBack) {
  Method method = MethodOf("+100-200 | +5-50 +300-400");
  for (auto& [id, run] : method.TuneRuns) run.SettleDelay = 77;
  const R rules(kSwitchTime, method);
  EXPECT_EQ(RunDelaysOf(rules), "0 0 0");
  EXPECT_TRUE(rules.IsModified());
}

TEST(DelayOfARun, OfARunToChangeToStays) {
  R rules = RulesOf("+100-200 -5-50");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  rules.WTRSettleDelay(0, 0, 1, 77);
  rules.Sort();
  EXPECT_EQ(RunDelaysOf(rules), "500000 500000 77");
}

// ---- Changes of polarity between time periods ------------------------------------------------

TEST(DelayOfATimePeriod, IsTheTimeOfAChangeOfPolarity) {
  struct Row {
    const char* method;
    const char* delays;
  };
  const Row rows[] = {
      {"+100-200 | +5-50", "0 0"},
      {"-100-200 | -5-50", "0 0"},
      {"+100-200 | -5-50", "0 500000"},
      {"-100-200 | +5-50", "0 500000"},
      {"+100-200 | -5-50 | -5-50 | +5-50", "0 500000 0 500000"},
      // A mixed one may end either way.
      {"+100-200 -100-200 | +5-50", "0 500000"},
      {"+100-200 -100-200 | -5-50", "0 500000"},
      {"+100-200 -100-200 +300-400 | +5-50", "0 500000"},
      // The first run of a mixed one waits itself.
      {"+100-200 | +5-50 -100-200", "0 0"},
      {"+100-200 | -5-50 +100-200", "0 0"},
      {"+100-200 -100-200 | +5-50 -100-200", "0 0"},
      // One whose first two and last items are alike does not.
      {"+100-200 | +5-50 -100-200 +300-400", "0 0"},
      {"-100-200 | +5-50 -100-200 +300-400", "0 500000"},
      {"+100-200 -100-200 | +5-50 -100-200 +300-400", "0 500000"},
      {"+100-200 | +5-50 -100-200 +300-400 | +5-50", "0 0 500000"},
      {"+100-200", "0"},
  };
  for (const Row& row : rows) EXPECT_EQ(PeriodDelaysOf(RulesOf(row.method)), row.delays) << row.method;
}

TEST(DelayOfATimePeriod, OfTheFirstStays) {
  R rules = RulesOf("+100-200 | +5-50");
  rules.WTPSettleDelay(0, 77);
  rules.WTPSettleDelay(1, 77);
  rules.Sort();
  EXPECT_EQ(PeriodDelaysOf(rules), "77 0");
}

TEST(DelayOfATimePeriod, MarksTheMethodIfItWasAnother) {
  Method method = MethodOf("+100-200 | +5-50");
  method.TimePeriods[1].SettleDelay = 77;
  EXPECT_TRUE(R(kSwitchTime, method).IsModified());
}

TEST(DelayOfATimePeriod, KnowsMoreOfThemThan65536) {
  Method method = MethodOf("+100-200 | -5-50");
  method.TimePeriods.insert(method.TimePeriods.begin(), 70000, method.TimePeriods[0]);
  EXPECT_EQ(R(kSwitchTime, method).QTPSettleDelay(70001), kSwitch);
}

TEST(DelayOfAnItem, IsKnownBeyondThe65536th) {
  Method method = MethodOf("+100-200 -100-200");
  method.TimePeriods[0].Sequence.assign(70000, {1});
  method.TimePeriods[0].Sequence[66000] = {2};
  const R rules(kSwitchTime, method);
  EXPECT_EQ(rules.QTRSettleDelay(0, 66000, 0), kSwitch);
}

TEST(PolarityOfATimePeriod, IsThatOfItsItems) {
  const R rules = RulesOf("+100-200 +5-50 | -100-200 -5-50 | +100-200 +5-50 -5-50 | -5-50 +100-200");
  const R::TimePeriodPolarity expected[] = {R::AllPositive, R::AllNegative, R::Mixed, R::Mixed};
  for (std::uint32_t tp = 0; tp < 4; ++tp) EXPECT_EQ(rules.QTimePeriodPolarity(tp), expected[tp]) << tp;
  EXPECT_THROW(rules.QTimePeriodPolarity(4), std::out_of_range);
}

// ---- What cannot be worked out ---------------------------------------------------------------

// Whether the delays of the first time period stay, those of the second are worked out, and those between
// time periods stay.
void ExpectDelaysStay(const std::function<void(Method&)>& breakIt, const char* initSettleDelays) {
  Method method = MethodOf("+100-200 -300-400 | +5-50 -50-60 +50-60");
  for (auto& [id, run] : method.TuneRuns) run.SettleDelay = 77;
  for (auto& [id, tune] : method.Tunes) tune.ControlData.InitSettleDelay = 7;
  for (TimePeriod& period : method.TimePeriods) period.SettleDelay = 9;
  breakIt(method);
  const R rules(kSwitchTime, method);
  EXPECT_EQ(InitSettleDelaysOf(rules), initSettleDelays);
  EXPECT_EQ(rules.QTRSettleDelay(1, 0, 0), 0u);
  EXPECT_EQ(rules.QTRSettleDelay(1, 1, 0), kSwitch);
  for (const auto& item : method.TimePeriods[0].Sequence) {
    if (item.empty() || !rules.TuneRuns.contains(item[0])) continue;
    EXPECT_EQ(rules.TuneRuns.at(item[0]).SettleDelay, 77u);
  }
  EXPECT_EQ(PeriodDelaysOf(rules), "9 9");
}

// 60 to 5: 55 + 527.5; 50 to 50: nothing; 60 to 50: 10 + 505.
TEST(Delays, ThatCannotBeWorkedOutStay) {
  ExpectDelaysStay([](Method& m) { m.TimePeriods[0].Sequence[1][0] = 99; }, "7 7 582 0 515");
  ExpectDelaysStay([](Method& m) { m.TimePeriods[0].Sequence[1].clear(); }, "7 7 582 0 515");
  ExpectDelaysStay([](Method& m) { m.TimePeriods[0].Sequence[0].clear(); }, "7 7 582 0 515");
  ExpectDelaysStay([](Method& m) { m.TuneRuns.at(2).TuneId = 99; }, "7 582 0 515");
  ExpectDelaysStay([](Method& m) { m.TimePeriods[0].Sequence.clear(); }, "7 7 582 0 515");
}

TEST(Delays, OfACapillaryExitOfTwoValuesStay) {
  Method method = MethodOf("+100-200 -300-400 | -5-50");
  method.Tunes.at(2) = Curved("-300-400");
  method.Tunes.at(2).Q1CalPts[0].MZ = 200;
  method.Tunes.at(2).Q1CalPts[1].MZ = 200;
  method.Tunes.at(2).ControlData.MZLow = 200;
  method.Tunes.at(2).ControlData.InitSettleDelay = 7;
  R rules(kSwitchTime, method);
  EXPECT_EQ(InitSettleDelaysOf(rules), "3795 7 567");
  EXPECT_EQ(RunDelaysOf(rules), "0 0 0");
  EXPECT_FALSE(rules.CalculateInitialSettlingDelay(0));
  EXPECT_EQ(PeriodDelaysOf(rules), "0 500000") << "polarities are known";
}

TEST(Delays, OfNoTimePeriodAreNothing) { EXPECT_FALSE(R(kSwitchTime, Method()).IsModified()); }

// ---- The time of a change of polarity --------------------------------------------------------

TEST(SwitchTime, IsTakenFromATenthToTwoSeconds) {
  struct Row {
    double seconds;
    bool taken;
  };
  const Row rows[] = {{0.1, true},
                      {2.0, true},
                      {1.0, true},
                      {0.05, false},
                      {0.0999, false},
                      {2.001, false},
                      {3.0, false},
                      {-0.5, false},
                      {std::numeric_limits<double>::quiet_NaN(), false},
                      {std::numeric_limits<double>::infinity(), false}};
  for (const Row& row : rows) {
    R rules = RulesOf("+100-200 -100-200 | +5-50");
    rules.WPolSwitchTime(row.seconds);
    EXPECT_EQ(rules.QPolSwitchTime(), row.taken ? row.seconds : kSwitchTime);
    EXPECT_EQ(rules.IsModified(), row.taken) << row.seconds;
    EXPECT_EQ(rules.QLastError(), L"");
  }
}

TEST(SwitchTime, OfNearlyTheSameValueIsNoChange) {
  R rules = RulesOf("+100-200 -100-200");
  rules.WPolSwitchTime(0.500009);
  EXPECT_EQ(rules.QPolSwitchTime(), 0.5);
  EXPECT_FALSE(rules.IsModified());
  rules.WPolSwitchTime(0.499985);
  EXPECT_EQ(rules.QPolSwitchTime(), 0.499985);
  EXPECT_TRUE(rules.IsModified());
}

TEST(SwitchTime, WorksOutDelays) {
  R rules = RulesOf("+100-200 -100-200 | +5-50");
  rules.WPolSwitchTime(1.25);
  EXPECT_EQ(RunDelaysOf(rules), "1250000 1250000 0");
  EXPECT_EQ(PeriodDelaysOf(rules), "0 1250000");
  rules.WTRSettleDelay(1, 0, 0, 77);
  rules.WPolSwitchTime(3.0);
  EXPECT_EQ(rules.QTRSettleDelay(1, 0, 0), 77u) << "ignored";
}

TEST(SwitchTime, LeavesTunesThatNoRunUses) {
  R rules = RulesOf("+100-200");
  rules.Tunes.emplace(7, TuneOf("+5-50"));
  rules.WPolSwitchTime(1.25);
  EXPECT_EQ(KeysOf(rules.Tunes), "1 7");
}

TEST(SwitchTime, MarksAMethodWithoutAChange) {
  R rules = RulesOf("+100-200");
  rules.WPolSwitchTime(1.25);
  EXPECT_TRUE(rules.IsModified());
}

}  // namespace
