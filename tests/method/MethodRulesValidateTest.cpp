#include <tslbl/method/MethodRules.h>

#include <functional>
#include <limits>

#include <method/TestMethod.h>
#include <tune/rules/TuneFaults.h>

namespace {

using namespace tests;

using R = MethodRules;

// Two time periods of a minute and a program of the valve; of the four runs one may change to another.
Method ValidMethod() {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  rules.WTRDDType(0, 1, 0, DDInfo::TuneChange);
  DiverterValveMethod valve;
  for (const int start : {0, 600, 1200, 120000})
    valve.AddState(timebase::MSEC(start), DiverterValve(DiverterValve::kToSource));
  rules.WValveMethod(valve);
  return rules;
}

DiverterValveMethod ValveAt(const std::vector<std::int32_t>& starts) {
  DiverterValveMethod valve;
  for (const std::int32_t start : starts)
    valve.AddState(timebase::MSEC(start), DiverterValve(DiverterValve::kToWaste));
  return valve;
}

// What is said about a method, which stays as it is; nothing if it may be run.
std::wstring FaultOf(const Method& method) {
  const R rules(kSwitchTime, method);
  const std::string before = ToBytes(rules);
  const bool modified = rules.IsModified();
  const bool isValid = rules.Validate();
  const std::wstring fault = rules.QLastError();
  EXPECT_EQ(isValid, fault.empty());
  const std::vector<R::Fault> all = rules.QFaults();
  EXPECT_EQ(all.empty() ? L"" : all.front().text, fault);
  EXPECT_EQ(ToBytes(rules), before);
  EXPECT_EQ(rules.IsModified(), modified);
  EXPECT_EQ(rules.QLastError(), L"") << "handed over";
  return fault;
}

TEST(ValidMethod, IsAccepted) {
  EXPECT_EQ(FaultOf(ValidMethod()), L"");
  EXPECT_EQ(FaultOf(R(0.5)), L"");
  EXPECT_EQ(FaultOf(MethodOf("+100-200")), L"") << "a valve without a program";
}

struct MethodFault {
  std::function<void(Method&)> make;
  std::wstring text;
};

void ExpectFaults(const std::vector<MethodFault>& faults) {
  for (const MethodFault& fault : faults) {
    Method method = ValidMethod();
    fault.make(method);
    EXPECT_EQ(FaultOf(method), fault.text);
  }
}

const std::wstring kNoTune = L"Tune id is invalid.";
const std::wstring kNoRun = L"Tune run id is invalid.";

TEST(InvalidMethod, OfATuneNamesIt) {
  ExpectFaults({
      {[](Method& m) { m.TuneRuns.at(2).TuneId = 0, m.Tunes.emplace(0, m.Tunes.at(2)); },
       L"Tune 0 is invalid.  " + kNoTune},
      {[](Method& m) { m.Tunes.at(1).ControlData.MZLow = 4.99; },
       L"Tune 1 is invalid.  Low m/z is out of range.  Valid values are 5.00 to 3000.00."},
      {[](Method& m) { m.Tunes.at(3).Source.EndPlate = 6001; },
       L"Tune 3 is invalid.  Endplate is out of range.  Valid values are -6000.00 to 6000.00."},
      {[](Method& m) { m.Tunes.at(4).MZCalPts.clear(); },
       L"Tune 4 is invalid.  There must be at least two m/z calibration points."},
      {[](Method& m) {
         m.TuneRuns.at(1).TuneId = 4294967295;
         m.Tunes.emplace(4294967295, Tune());
       },
       L"Tune 4294967295 is invalid.  Drying Gas Temp. is out of range.  Valid values are 25.00 to 350.00."},
  });
}

// Every fault that a tune can have, said of the tune of a method. Its own delay the method works out.
TEST(InvalidMethod, HasTheFaultsOfItsTunes) {
  int count = 0;
  for (const Fault& fault : EsiFaults()) {
    Tune tune = DevTuneRules(Probes::ESI);
    fault.make(tune);
    Method method = MethodOf("+5-3000");
    method.Tunes.at(1) = tune;
    R rules(kSwitchTime, method);
    DevTuneRules alone(rules.Tunes.at(1));
    const bool accepted = alone.Validate() == DevTuneRules::NoError;
    EXPECT_EQ(rules.Validate(), accepted) << fault.name;
    if (accepted) continue;
    EXPECT_EQ(rules.QLastError(), L"Tune 1 is invalid.  " + alone.QLastError()) << fault.name;
    ++count;
  }
  EXPECT_GT(count, 30);
}

TEST(InvalidMethod, HasWhatTheCheckOfATuneThrowsForAFault) {
  ExpectFaults({
      {[](Method& m) { m.Tunes.at(1).ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN(); },
       L"Tune 1 is invalid.  Invalid stepMDAC in DevTuneRules.cpp NumPulses"},
      {[](Method& m) {
         Tune& tune = m.Tunes.at(2);
         tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
         tune.Q1CalPts = {Calibrant(50, {{TuneField::CapExit, 1}}), Calibrant(50, {{TuneField::CapExit, 2}})};
       },
       L"Tune 2 is invalid.  Divide by zero error"},
      {[](Method& m) { m.Tunes.at(1).Q1CalPts[0].Fields[static_cast<TuneField::Id>(57)] = 1; },
       L"Tune 1 is invalid.  Field to string map for field id 57 does not exist."},
  });
}

TEST(InvalidMethod, OfATuneRunNamesIt) {
  ExpectFaults({
      {[](Method& m) { m.TuneRuns.emplace(0, m.TuneRuns.at(1)); }, L"Tune run 0 is invalid.  " + kNoRun},
      {[](Method& m) { m.TuneRuns.at(2).TuneId = 99; }, L"Tune run 2 is invalid.  " + kNoTune},
      {[](Method& m) { m.TuneRuns.at(3).TuneId = 0; }, L"Tune run 3 is invalid.  " + kNoTune},
      {[](Method& m) { m.TuneRuns.at(1).Records = 0; },
       L"Tune run 1 is invalid.  There are no records to collect."},
      {[](Method& m) { m.TuneRuns.at(4).Info.StartTrigger = DDInfo::StartTriggerNotDetected; },
       L"Tune run 4 is invalid.  Invalid start trigger."},
      {[](Method& m) { m.TuneRuns.at(1).Info.StartTrigger = DDInfo::TriggerTimeout; },
       L"Tune run 1 is invalid.  Invalid start trigger."},
      // One that no sequence holds, too.
      {[](Method& m) { m.TuneRuns.emplace(9, TuneRun(9, 1)); }, L"Tune run 9 is invalid.  " + kNoTune},
  });
}

TEST(StartTrigger, MayBeAnyThatCanBegin) {
  for (const DDInfo::Triggers trigger :
       {DDInfo::AbsAmplAboveThres, DDInfo::SNAboveThres, DDInfo::TICAboveThres}) {
    Method method = ValidMethod();
    method.TuneRuns.at(1).Info.StartTrigger = trigger;
    EXPECT_EQ(FaultOf(method), L"") << trigger;
  }
}

TEST(InvalidMethod, OfATimePeriodNamesIt) {
  const std::wstring first = L"Time period 0 is invalid.  ";
  const std::wstring second = L"Time period 1 is invalid.  ";
  const std::wstring item = L"contains invalid tune run id.  ";
  ExpectFaults({
      {[](Method& m) { m.TimePeriods.clear(); }, L"The method does not contain any time periods."},
      {[](Method& m) { m.TimePeriods[0].Loops = 0; }, first + L"There are no loops."},
      {[](Method& m) { m.TimePeriods[1].Loops = 0; }, second + L"There are no loops."},
      {[](Method& m) { m.TimePeriods[0].Sequence.clear(); }, first + L"The sequence is empty."},
      {[](Method& m) { m.TimePeriods[1].Sequence.clear(); }, second + L"The sequence is empty."},
      {[](Method& m) { m.TimePeriods[0].Sequence[1].clear(); },
       first + L"Sequence item 1 " + item + L"The sequence item contains no tunes."},
      {[](Method& m) { m.TimePeriods[1].Sequence[0].clear(); },
       second + L"Sequence item 0 " + item + L"The sequence item contains no tunes."},
      {[](Method& m) { m.TimePeriods[0].Sequence[0][0] = 99; }, first + L"Sequence item 0 " + item + kNoRun},
      {[](Method& m) { m.TimePeriods[0].Sequence[1][1] = 99; }, first + L"Sequence item 1 " + item + kNoRun},
      {[](Method& m) {
         m.TimePeriods[1].Sequence[0] = {3, 1, 0};
       },
       second + L"Sequence item 0 " + item + kNoRun},
      {[](Method& m) { m.TimePeriods[0].Sequence[1].pop_back(); },
       first + L"Sequence item 1 " + item + L"The tune to change to is not defined."},
      {[](Method& m) { m.TuneRuns.at(4).Info.Type = DDInfo::TuneChange; },
       first + L"Sequence item 1 " + item + L"The tune to change to is not defined."},
  });
}

TEST(InvalidMethod, OfMoreThan65536TimePeriodsAndItemsNamesThem) {
  Method method = ValidMethod();
  TimePeriod last = method.TimePeriods[1];
  last.Sequence.assign(70000, {3});
  last.Sequence.push_back({99});
  method.TimePeriods.insert(method.TimePeriods.end(), 70000, method.TimePeriods[1]);
  method.TimePeriods.push_back(last);
  const R rules(kSwitchTime, method);
  EXPECT_FALSE(rules.Validate());
  EXPECT_EQ(rules.QLastError(),
            L"Time period 70002 is invalid.  Sequence item 70000 contains invalid tune run id.  " + kNoRun);
}

TEST(TimePeriodOfNoTime, HasNoLoops) {
  R rules = RulesOf("+100-200");
  rules.WTPTimeout(0, 0);
  EXPECT_FALSE(rules.Validate());
  EXPECT_EQ(rules.QLastError(), L"Time period 0 is invalid.  There are no loops.");
}

TEST(SeqItem, MayHoldARunBehindOneThatChangesNothing) {
  Method method = ValidMethod();
  method.TuneRuns.at(2).Info.Type = DDInfo::None;
  EXPECT_EQ(FaultOf(method), L"");
}

TEST(SeqItem, ThatLostItsRunsIsNamed) {
  R rules = RulesOf("+100-200 +5-50");
  rules.RemoveSeqItem(0, 0);
  EXPECT_TRUE(rules.Validate());
  rules.RemoveSeqItem(0, 0);
  EXPECT_FALSE(rules.Validate());
  EXPECT_EQ(rules.QLastError(), L"Time period 0 is invalid.  The sequence is empty.");
}

// ---- The valve -------------------------------------------------------------------------------

const std::wstring kFirstState = L"Start Time of first Diverter Valve Method state must be equal to 0.0.";
const std::wstring kBeyond = L"Diverter state Start Time cannot exceed acquisition method duration.";
const std::wstring kTooNear = L"Diverter Valve Method Start Times must be at least 0.01 minutes apart.";

TEST(ValveProgram, MayChangeEveryHundredthOfAMinute) {
  struct Row {
    std::vector<std::int32_t> starts;
    std::wstring fault;
  };
  const Row rows[] = {
      {{}, L""},
      {{0}, L""},
      {{1}, kFirstState},
      {{-1}, kFirstState},
      {{-1, 0}, kFirstState},
      {{120000}, kFirstState},
      {{0, 600, 1200}, L""},
      {{0, 599}, kTooNear},
      {{0, 600, 1199}, kTooNear},
      {{0, 600, 1200, 1800, 2399}, kTooNear},
      {{0, 119400, 120000}, L""},
      {{0, 119400, 120001}, kBeyond},
      {{0, 120001}, kBeyond},
      {{0, 120001, 120002}, kBeyond},
      {{0, 119900, 120001}, kBeyond},  // both faults: the end counts first
      {{0, 119401, 120000}, kTooNear},
      {{0, 2147483647}, kBeyond},
  };
  for (const Row& row : rows) {
    Method method = ValidMethod();  // two minutes
    method.WValveMethod(ValveAt(row.starts));
    EXPECT_EQ(FaultOf(method), row.fault) << row.starts.size();
  }
}

TEST(ValveProgram, OfAMethodThatRunsFreelyHasAllTimes) {
  Method method = ValidMethod();
  method.TimePeriods[1].Timeout = R::FreeRun;
  method.WValveMethod(ValveAt({0, 2147483047, 2147483647}));
  EXPECT_EQ(FaultOf(method), L"");
  method.WValveMethod(ValveAt({0, 2147483048, 2147483647}));
  EXPECT_EQ(FaultOf(method), kTooNear);
}

TEST(ValveProgram, OfOneStateMayOutlastTheMethod) {
  Method method = ValidMethod();
  for (TimePeriod& period : method.TimePeriods) period.Timeout = 0;
  method.WValveMethod(ValveAt({0}));
  EXPECT_EQ(FaultOf(method), L"");
}

// ---- The order of checks ---------------------------------------------------------------------

TEST(InvalidMethod, HasItsFirstFaultTold) {
  // In the order of checks, the last first; each comes before those that are already there.
  const std::vector<MethodFault> faults = {
      {[](Method& m) { m.WValveMethod(ValveAt({1})); }, kFirstState},
      {[](Method& m) { m.TimePeriods[1].Sequence[0][0] = 99; },
       L"Time period 1 is invalid.  Sequence item 0 contains invalid tune run id.  " + kNoRun},
      {[](Method& m) { m.TimePeriods[0].Sequence[1].clear(); },
       L"Time period 0 is invalid.  Sequence item 1 contains invalid tune run id.  The sequence item "
       L"contains no "
       L"tunes."},
      {[](Method& m) { m.TimePeriods[0].Loops = 0; }, L"Time period 0 is invalid.  There are no loops."},
      {[](Method& m) { m.TuneRuns.at(4).Info.StartTrigger = DDInfo::TriggerTimeout; },
       L"Tune run 4 is invalid.  Invalid start trigger."},
      {[](Method& m) { m.TuneRuns.at(4).Records = 0; },
       L"Tune run 4 is invalid.  There are no records to collect."},
      {[](Method& m) { m.TuneRuns.at(4).TuneId = 99; }, L"Tune run 4 is invalid.  " + kNoTune},
      {[](Method& m) { m.TuneRuns.at(1).Records = 0; },
       L"Tune run 1 is invalid.  There are no records to collect."},
      {[](Method& m) { m.TuneRuns.emplace(0, TuneRun(99, 0)); }, L"Tune run 0 is invalid.  " + kNoRun},
      {[](Method& m) { m.Tunes.at(3).MZCalPts.clear(); },
       L"Tune 3 is invalid.  There must be at least two m/z calibration points."},
      {[](Method& m) { m.Tunes.at(1).MZCalPts.clear(); },
       L"Tune 1 is invalid.  There must be at least two m/z calibration points."},
  };
  Method method = ValidMethod();
  for (const MethodFault& fault : faults) {
    fault.make(method);
    EXPECT_EQ(FaultOf(method), fault.text);
  }
}

TEST(InvalidMethod, WithoutLoopsAndSequenceHasNoLoops) {
  Method method = ValidMethod();
  method.TimePeriods[0].Sequence.clear();
  method.TimePeriods[0].Loops = 0;
  EXPECT_EQ(FaultOf(method), L"Time period 0 is invalid.  There are no loops.");
}

TEST(LastErrorOfAMethod, StaysUntilItIsAskedFor) {
  R rules = RulesOf("+100-200");
  rules.WTPNumLoops(0, 0);
  EXPECT_FALSE(rules.Validate());
  rules.WTPNumLoops(0, 1);
  EXPECT_TRUE(rules.Validate());
  EXPECT_EQ(rules.QLastError(), L"Time period 0 is invalid.  There are no loops.");
  EXPECT_EQ(rules.QLastError(), L"");
}

TEST(LastErrorOfAMethod, IsForgottenWithTheMethod) {
  R rules = RulesOf("+100-200");
  rules.WTPNumLoops(0, 0);
  EXPECT_FALSE(rules.Validate());
  rules = ValidMethod();
  EXPECT_EQ(rules.QLastError(), L"");
}

// ---- The probe -------------------------------------------------------------------------------

TEST(ProbeOfAMethod, MustBeThatOfItsTunes) {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  EXPECT_TRUE(rules.IsProbeCompatible(Probes::ESI));
  EXPECT_EQ(rules.QLastError(), L"");
  EXPECT_FALSE(rules.IsProbeCompatible(Probes::APCI));
  EXPECT_EQ(rules.QLastError(),
            L"Current ion source is APCI and the tune to be loaded is ESI.  They are not compatible.");
  rules.InsertSeqItem(1, Probes::APCI);
  EXPECT_FALSE(rules.IsProbeCompatible(Probes::ESI));
  EXPECT_EQ(rules.QLastError(),
            L"Current ion source is ESI and the tune to be loaded is APCI.  They are not compatible.");
}

TEST(ProbeOfAMethod, MustBeUsable) {
  R rules = RulesOf("+100-200");
  rules.WTPNumLoops(0, 0);
  EXPECT_FALSE(rules.IsProbeCompatible(static_cast<Probes::ProbeTypes>(7)));
  EXPECT_EQ(rules.QLastError(), L"Detected probe [ " + Probes::GetName(static_cast<Probes::ProbeTypes>(7)) +
                                    L" ] cannot be used.");
}

TEST(ProbeOfAMethod, IsAskedForOfAMethodThatMayBeRun) {
  R rules = RulesOf("+100-200");
  rules.WTPNumLoops(0, 0);
  for (const Probes::ProbeTypes probe : {Probes::ESI, Probes::APCI}) {
    EXPECT_FALSE(rules.IsProbeCompatible(probe));
    EXPECT_EQ(rules.QLastError(), L"Time period 0 is invalid.  There are no loops.");
  }
}

TEST(ProbeOfAMethod, IsTheSameKindOfEsi) {
  R rules = RulesOf("+100-200");
  EXPECT_FALSE(rules.IsProbeCompatible(Probes::LowFlowESI));
  EXPECT_EQ(rules.QLastError(), L"Current ion source is " + Probes::GetNameNoId(Probes::LowFlowESI) +
                                    L" and the tune to be loaded is ESI.  They are not compatible.");
}

TEST(FaultsOfAMethod, AreAllThatThereAre) {
  Method method = ValidMethod();
  method.TuneRuns.at(1).Records = 0;
  method.TuneRuns.at(1).Info.StartTrigger = DDInfo::TriggerTimeout;
  method.TimePeriods[0].Loops = 0;
  method.TimePeriods[1].Sequence = {{}, {99}};
  method.ValveMethod = ValveAt({5, 6});
  std::vector<std::wstring> texts;
  for (const R::Fault& fault : R(kSwitchTime, method).QFaults()) texts.push_back(fault.text);
  EXPECT_EQ(
      texts,
      (std::vector<std::wstring>{
          L"Tune run 1 is invalid.  There are no records to collect.",
          L"Tune run 1 is invalid.  Invalid start trigger.",
          L"Time period 0 is invalid.  There are no loops.",
          L"Time period 1 is invalid.  Sequence item 0 contains invalid tune run id.  The sequence item "
          L"contains no tunes.",
          L"Time period 1 is invalid.  Sequence item 1 contains invalid tune run id.  Tune run id is "
          L"invalid.",
          L"Start Time of first Diverter Valve Method state must be equal to 0.0.",
          L"Diverter Valve Method Start Times must be at least 0.01 minutes apart."}));
}

TEST(FaultsOfAMethod, KnowTheirPart) {
  Method method = ValidMethod();
  method.Tunes.at(1).ControlData.MZStepSize = -1.0;
  method.TuneRuns.at(1).Records = 0;
  method.TimePeriods[0].Loops = 0;
  method.ValveMethod = ValveAt({5});
  std::vector<R::Part> parts;
  for (const R::Fault& fault : R(kSwitchTime, method).QFaults())
    if (parts.empty() || parts.back() != fault.part) parts.push_back(fault.part);
  EXPECT_EQ(parts,
            (std::vector<R::Part>{R::Part::Tunes, R::Part::TuneRuns, R::Part::TimePeriods, R::Part::Valve}));
}

}  // namespace
