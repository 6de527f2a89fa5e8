#include <tslbl/method/MethodRules.h>

#include <functional>
#include <limits>
#include <stdexcept>

#include <method/TestMethod.h>

namespace {

using namespace tests;

using R = MethodRules;

// The ids that a sequence holds, those of all runs, the tunes of these, and the ids of all tunes.
std::string ShapeOf(const Method& method) {
  return SequencesOf(method) + "; " + KeysOf(method.TuneRuns) + "; " + TuneIdsOf(method) + "; " +
         KeysOf(method.Tunes);
}

// Whether it is made and marked, and leaves the method of this shape.
void ExpectEdit(const std::string& method, const std::function<void(R&)>& edit, const std::string& shape) {
  R rules = RulesOf(method);
  edit(rules);
  EXPECT_EQ(ShapeOf(rules), shape) << method;
  EXPECT_TRUE(rules.IsModified()) << method;
}

// ---- Time periods ----------------------------------------------------------------------------

TEST(InsertTimePeriod, AppendsAMinuteWithANewRun) {
  R rules = RulesOf("+100-200 +5-50");
  EXPECT_EQ(rules.InsertTimePeriod(), 1u);
  EXPECT_EQ(ShapeOf(rules), "1 2 | 3; 1 2 3; 1 2 3; 1 2 3");
  EXPECT_TRUE(rules.IsModified());
  EXPECT_TRUE(rules.QTPSave(1));
  EXPECT_EQ(rules.QTPNumLoops(1), 20u);
  EXPECT_EQ(rules.QTPTimeout(1), 60000u);
  EXPECT_EQ(rules.QTPSettleDelay(1), 0u);
  EXPECT_EQ(rules.TuneRuns.at(3), TuneRun(3, 1));
  EXPECT_EQ(rules.InsertTimePeriod(), 2u);
}

TEST(InsertTimePeriod, HasADefaultTuneOfTheMethodsProbe) {
  for (const Probes::ProbeTypes probe : {Probes::ESI, Probes::APCI, Probes::LowFlowESI}) {
    Method method = MethodOf("+100-200 +5-50");
    method.Tunes.at(1).Source.Type = probe;
    R rules(kSwitchTime, method);
    rules.InsertTimePeriod();
    EXPECT_TRUE(IsDefaultTune(rules.QTRTune(1, 0, 0), probe)) << probe;
  }
}

TEST(InsertTimePeriod, OfAProbeHasItsDefaultTune) {
  R rules = RulesOf("+100-200");
  EXPECT_EQ(rules.InsertTimePeriod(Probes::APCI), 1u);
  EXPECT_TRUE(IsDefaultTune(rules.QTRTune(1, 0, 0), Probes::APCI));
  EXPECT_EQ(rules.QTPTimeout(1), 60000u);
  EXPECT_TRUE(rules.IsModified());
}

TEST(InsertTimePeriod, DoesNotWorkOutDelays) {
  R rules = RulesOf("+100-200");
  rules.WTRSettleDelay(0, 0, 0, 77);
  rules.InsertTimePeriod();
  rules.MoveTimePeriod(1, R::ToBeginning);
  EXPECT_EQ(RunDelaysOf(rules), "77 0");
}

TEST(InsertTimePeriod, GoesBeyondWhatTheInstrumentTakes) {
  R rules = RulesOf("+100-200");
  while (rules.QNumTimePeriods() <= R::QMaxTimePeriods()) rules.InsertTimePeriod();
  EXPECT_EQ(rules.QNumTimePeriods(), 31u);
}

TEST(InsertTimePeriod, TakesFreeIds) {
  Method method = MethodOf("+100-200 +5-50 | +300-400");
  R rules(kSwitchTime, method);
  rules.RemoveSeqItem(0, 1);
  EXPECT_EQ(ShapeOf(rules), "1 | 3; 1 3; 1 3; 1 3");
  rules.InsertTimePeriod();
  EXPECT_EQ(ShapeOf(rules), "1 | 3 | 2; 1 2 3; 1 2 3; 1 2 3");
}

TEST(RemoveTimePeriod, TakesItsRunsAndTheirTunes) {
  ExpectEdit(
      "+100-200 +5-50 | +300-400", [](R& r) { r.RemoveTimePeriod(0); }, "3; 3; 3; 3");
  ExpectEdit(
      "+100-200 +5-50 | +300-400", [](R& r) { r.RemoveTimePeriod(1); }, "1 2; 1 2; 1 2; 1 2");
  ExpectEdit(
      "+100-200", [](R& r) { r.RemoveTimePeriod(0); }, "; ; ; ");
}

TEST(RemoveTimePeriod, LeavesATuneThatAnotherRunUses) {
  Method method = MethodOf("+100-200 | +5-50");
  method.TuneRuns.at(2).TuneId = 1;
  R rules(kSwitchTime, method);
  rules.RemoveTimePeriod(0);
  EXPECT_EQ(ShapeOf(rules), "2; 2; 1; 1");
}

TEST(RemoveTimePeriod, WorksOutDelays) {
  R rules = RulesOf("+100-200 | -100-200 | +5-50");
  EXPECT_EQ(PeriodDelaysOf(rules), "0 500000 500000");
  rules.RemoveTimePeriod(1);
  EXPECT_EQ(PeriodDelaysOf(rules), "0 0");
}

TEST(MoveTimePeriod, SwapsItWithItsNeighbor) {
  const std::string method = "+100-200 | +5-50 +50-60 | +300-400";
  const std::string rest = "; 1 2 3 4; 1 2 3 4; 1 2 3 4";
  ExpectEdit(
      method, [](R& r) { r.MoveTimePeriod(0, R::ToEnd); }, "2 3 | 1 | 4" + rest);
  ExpectEdit(
      method, [](R& r) { r.MoveTimePeriod(1, R::ToEnd); }, "1 | 4 | 2 3" + rest);
  ExpectEdit(
      method, [](R& r) { r.MoveTimePeriod(1, R::ToBeginning); }, "2 3 | 1 | 4" + rest);
  ExpectEdit(
      method, [](R& r) { r.MoveTimePeriod(2, R::ToBeginning); }, "1 | 4 | 2 3" + rest);
}

TEST(MoveTimePeriod, BeyondAnEndChangesNothingAndMarks) {
  const std::string shape = "1 | 2; 1 2; 1 2; 1 2";
  ExpectEdit(
      "+100-200 | +5-50", [](R& r) { r.MoveTimePeriod(0, R::ToBeginning); }, shape);
  ExpectEdit(
      "+100-200 | +5-50", [](R& r) { r.MoveTimePeriod(1, R::ToEnd); }, shape);
  ExpectEdit(
      "+100-200", [](R& r) { r.MoveTimePeriod(0, R::ToEnd); }, "1; 1; 1; 1");
}

// ---- Sequence items --------------------------------------------------------------------------

TEST(InsertSeqItem, AppendsANewRun) {
  R rules = RulesOf("+100-200 | +5-50");
  EXPECT_EQ(rules.InsertSeqItem(0), 1u);
  EXPECT_EQ(ShapeOf(rules), "1 3 | 2; 1 2 3; 1 2 3; 1 2 3");
  EXPECT_TRUE(rules.IsModified());
  EXPECT_EQ(rules.TuneRuns.at(3), TuneRun(3, 1));
  EXPECT_EQ(rules.InsertSeqItem(1), 1u);
  EXPECT_EQ(ShapeOf(rules), "1 3 | 2 4; 1 2 3 4; 1 2 3 4; 1 2 3 4");
}

TEST(InsertSeqItem, HasADefaultTuneOfTheMethodsProbe) {
  Method method = MethodOf("+100-200 | +5-50");
  method.Tunes.at(1).Source.Type = Probes::APCI;
  R rules(kSwitchTime, method);
  rules.InsertSeqItem(1);
  EXPECT_EQ(rules.QTRTune(1, 1, 0).Source, DevTuneRules(Probes::APCI).Source);
  EXPECT_EQ(rules.InsertSeqItem(1, Probes::LowFlowESI), 2u);
  EXPECT_EQ(rules.QTRTune(1, 2, 0).Source, DevTuneRules(Probes::LowFlowESI).Source);
}

// 50 to 5: 45 + 522.5; 3000 to 100: 2900 + 800; 200 to 5: 195 + 597.5.
TEST(InsertSeqItem, WorksOutDelays) {
  R rules = RulesOf("+100-200");
  EXPECT_EQ(InitSettleDelaysOf(rules), "650");
  rules.InsertSeqItem(0);
  EXPECT_EQ(InitSettleDelaysOf(rules), "3700 792");
  rules.InsertSeqItem(0, Probes::ESI);
  EXPECT_EQ(InitSettleDelaysOf(rules), "3700 792 3795");
}

TEST(RemoveSeqItem, TakesItsRunsAndTheirTunes) {
  ExpectEdit(
      "+100-200 +5-50 +50-60", [](R& r) { r.RemoveSeqItem(0, 1); }, "1 3; 1 3; 1 3; 1 3");
  ExpectEdit(
      "+100-200 | +5-50", [](R& r) { r.RemoveSeqItem(1, 0); }, "1 | ; 1; 1; 1");
  ExpectEdit(
      "+100-200", [](R& r) { r.RemoveSeqItem(0, 0); }, "; ; ; ");
}

TEST(RemoveSeqItem, TakesAllRunsOfTheItem) {
  R rules = RulesOf("+100-200 +5-50");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  EXPECT_EQ(ShapeOf(rules), "1,3 2; 1 2 3; 1 2 3; 1 2 3");
  rules.RemoveSeqItem(0, 0);
  EXPECT_EQ(ShapeOf(rules), "2; 2; 2; 2");
  EXPECT_EQ(InitSettleDelaysOf(rules), "567");  // 45 + 522.5
}

TEST(RemoveSeqItem, LeavesWhatOtherItemsNameWithoutARun) {
  Method method = MethodOf("+100-200 +5-50");
  method.TimePeriods[0].Sequence.push_back({1});
  R rules(kSwitchTime, method);
  rules.RemoveSeqItem(0, 0);
  EXPECT_EQ(ShapeOf(rules), "2 1; 2; 2; 2");
}

TEST(MoveSeqItem, SwapsItWithItsNeighbor) {
  const std::string method = "+100-200 | +5-50 +50-60 +300-400";
  const std::string rest = "; 1 2 3 4; 1 2 3 4; 1 2 3 4";
  ExpectEdit(
      method, [](R& r) { r.MoveSeqItem(1, 0, R::ToEnd); }, "1 | 3 2 4" + rest);
  ExpectEdit(
      method, [](R& r) { r.MoveSeqItem(1, 1, R::ToEnd); }, "1 | 2 4 3" + rest);
  ExpectEdit(
      method, [](R& r) { r.MoveSeqItem(1, 1, R::ToBeginning); }, "1 | 3 2 4" + rest);
  ExpectEdit(
      method, [](R& r) { r.MoveSeqItem(1, 2, R::ToBeginning); }, "1 | 2 4 3" + rest);
}

TEST(MoveSeqItem, BeyondAnEndChangesNothingAndMarks) {
  const std::string shape = "1 2; 1 2; 1 2; 1 2";
  ExpectEdit(
      "+100-200 +5-50", [](R& r) { r.MoveSeqItem(0, 0, R::ToBeginning); }, shape);
  ExpectEdit(
      "+100-200 +5-50", [](R& r) { r.MoveSeqItem(0, 1, R::ToEnd); }, shape);
}

// Of 100-200, 300-400 and 1000-1100 in the order 1 2 3: 1100 to 100, 200 to 300, 400 to 1000. In the order
// 2 1 3: 400 to 100, 1100 to 300, 200 to 1000.
TEST(MoveSeqItem, WorksOutDelays) {
  R rules = RulesOf("+100-200 +300-400 +1000-1100");
  EXPECT_EQ(InitSettleDelaysOf(rules), "1800 650 1400");
  rules.MoveSeqItem(0, 0, R::ToEnd);
  EXPECT_EQ(InitSettleDelaysOf(rules), "950 1600 1600");
}

TEST(MoveSeqItem, BeyondAnEndWorksOutDelays) {
  R rules = RulesOf("+100-200");
  rules.WTRSettleDelay(0, 0, 0, 77);
  rules.MoveSeqItem(0, 0, R::ToEnd);
  EXPECT_EQ(RunDelaysOf(rules), "0");
}

// ---- Tune runs -------------------------------------------------------------------------------

TEST(AddTuneRun, StandsInNoSequence) {
  R rules = RulesOf("+100-200");
  EXPECT_EQ(rules.AddTuneRun(Probes::APCI), 2u);
  EXPECT_EQ(ShapeOf(rules), "1; 1 2; 1 2; 1 2");
  EXPECT_TRUE(rules.IsModified());
  EXPECT_TRUE(IsDefaultTune(rules.Tunes.at(2), Probes::APCI));
  EXPECT_EQ(rules.TuneRuns.at(2), TuneRun(2, 1));
}

TEST(AddTuneRun, TakesTheFreeIdOfEach) {
  Method method = MethodOf("+100-200 +5-50 +50-60");
  method.TuneRuns.at(3).TuneId = 2;  // tune 3 goes
  R rules(kSwitchTime, method);
  EXPECT_EQ(rules.AddTuneRun(Probes::ESI), 4u);
  EXPECT_EQ(ShapeOf(rules), "1 2 3; 1 2 3 4; 1 2 2 3; 1 2 3");
}

TEST(TuneChange, AppendsARunToChangeTo) {
  R rules = RulesOf("+100-200 +5-50");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  EXPECT_EQ(ShapeOf(rules), "1,3 2; 1 2 3; 1 2 3; 1 2 3");
  EXPECT_EQ(rules.QTRDDType(0, 0, 0), DDInfo::TuneChange);
  EXPECT_EQ(rules.TuneRuns.at(3), TuneRun(3, 1));
  EXPECT_TRUE(IsDefaultTune(rules.QTRTune(0, 0, 1), Probes::ESI));
  EXPECT_TRUE(rules.IsModified());
}

TEST(TuneChange, HasADefaultTuneOfTheMethodsProbe) {
  Method method = MethodOf("+100-200 +5-50");
  method.Tunes.at(1).Source.Type = Probes::APCI;
  R rules(kSwitchTime, method);
  rules.WTRDDType(0, 1, 0, DDInfo::TuneChange);
  EXPECT_TRUE(IsDefaultTune(rules.QTRTune(0, 1, 1), Probes::APCI));
}

TEST(TuneChange, ToAnotherTypeRemovesWhatItChangedTo) {
  R rules = RulesOf("+100-200 +5-50");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  rules.WTRDDType(0, 0, 1, DDInfo::TuneChange);
  EXPECT_EQ(SequencesOf(rules), "1,3,4 2");
  rules.ClearModified();
  R outer = rules;
  outer.WTRDDType(0, 0, 0, DDInfo::None);
  EXPECT_EQ(ShapeOf(outer), "1 2; 1 2; 1 2; 1 2");
  EXPECT_EQ(outer.QTRDDType(0, 0, 0), DDInfo::None);
  EXPECT_TRUE(outer.IsModified());
  R inner = rules;
  inner.WTRDDType(0, 0, 1, DDInfo::PeakPark);
  EXPECT_EQ(ShapeOf(inner), "1,3 2; 1 2 3; 1 2 3; 1 2 3");
  EXPECT_EQ(inner.QTRDDType(0, 0, 1), DDInfo::PeakPark);
  EXPECT_EQ(inner.QTRDDType(0, 0, 0), DDInfo::TuneChange);
}

TEST(TuneChange, AppendsAtTheEndOfTheItem) {
  R rules = RulesOf("+100-200");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  rules.WTRDDType(0, 0, 1, DDInfo::TuneChange);
  rules.TuneRuns.at(1).Info.Type = DDInfo::None;
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  EXPECT_EQ(SequencesOf(rules), "1,2,3,4");
}

// To a change delays are not worked out, back they are.
TEST(TuneChange, WorksOutDelaysOnItsWayBack) {
  R rules = RulesOf("+100-200");
  rules.WTRSettleDelay(0, 0, 0, 77);
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  EXPECT_EQ(RunDelaysOf(rules), "77 0");
  rules.WTRDDType(0, 0, 0, DDInfo::None);
  EXPECT_EQ(RunDelaysOf(rules), "0");
}

TEST(TuneChange, OfARunThatStandsBehindItself) {
  Method method = MethodOf("+100-200 +5-50");
  method.TimePeriods[0].Sequence[0] = {1, 1};
  method.TuneRuns.at(1).Info.Type = DDInfo::TuneChange;
  R rules(kSwitchTime, method);
  rules.WTRDDType(0, 0, 0, DDInfo::None);
  EXPECT_EQ(ShapeOf(rules), "1 2; 2; 2; 2");
}

TEST(TypeOfARun, OtherwiseChangesNoSequence) {
  R rules = RulesOf("+100-200");
  rules.WTRSettleDelay(0, 0, 0, 77);
  for (const DDInfo::Types type : {DDInfo::FractionCollect, DDInfo::PeakPark, DDInfo::None}) {
    rules.ClearModified();
    rules.WTRDDType(0, 0, 0, type);
    EXPECT_EQ(rules.QTRDDType(0, 0, 0), type);
    EXPECT_EQ(ShapeOf(rules), "1; 1; 1; 1");
    EXPECT_EQ(RunDelaysOf(rules), "77");
    EXPECT_TRUE(rules.IsModified());
  }
}

TEST(TypeOfARun, ThatItHasIsNoChange) {
  R rules = RulesOf("+100-200");
  rules.WTRDDType(0, 0, 0, DDInfo::None);
  EXPECT_FALSE(rules.IsModified());
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  rules.ClearModified();
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  EXPECT_EQ(SequencesOf(rules), "1,2");
  EXPECT_FALSE(rules.IsModified());
}

// ---- Order -----------------------------------------------------------------------------------

TEST(Sort, PutsNegativeIonsFirstAndThenLowMasses) {
  ExpectEdit(
      "+500-600 -800-900 -200-300 | +300-400 +100-200", [](R& r) { r.Sort(); },
      "3 2 1 | 5 4; 1 2 3 4 5; 1 2 3 4 5; 1 2 3 4 5");
}

TEST(Sort, KeepsTheOrderOfItemsAlike) {
  ExpectEdit(
      "+100-900 -100-200 +100-200 +50-60 +100-500", [](R& r) { r.Sort(); },
      "2 4 1 3 5; 1 2 3 4 5; 1 2 3 4 5; 1 2 3 4 5");
}

TEST(Sort, GoesByTheLowEndOfASim) {
  Method method = MethodOf("+100-200 +100-200");
  method.Tunes.at(2).ControlData.Type = Control::Sim;
  method.Tunes.at(2).ControlData.MZHi = 2.0;  // 99 to 101
  R rules(kSwitchTime, method);
  rules.Sort();
  EXPECT_EQ(SequencesOf(rules), "2 1");
}

TEST(Sort, PutsAMassThatIsNoNumberLast) {
  Method method = MethodOf("+300-400 +100-200 +200-300");
  method.Tunes.at(1).ControlData.MZLow = std::numeric_limits<double>::quiet_NaN();
  R rules(kSwitchTime, method);
  rules.Sort();
  EXPECT_EQ(SequencesOf(rules), "2 3 1");
}

TEST(Sort, TakesItemsWhole) {
  R rules = RulesOf("+300-400 +100-200");
  rules.WTRDDType(0, 0, 0, DDInfo::TuneChange);
  rules.Sort();
  EXPECT_EQ(SequencesOf(rules), "2 1,3");
}

TEST(Sort, WorksOutDelays) {
  R rules = RulesOf("+100-200 -100-200 +300-400 -300-400");
  EXPECT_EQ(RunDelaysOf(rules), "500000 500000 500000 500000");
  rules.Sort();
  EXPECT_EQ(SequencesOf(rules), "2 4 1 3");
  EXPECT_EQ(RunDelaysOf(rules), "500000 500000 0 0");
}

TEST(Sort, OfASortedMethodMarks) {
  R rules = RulesOf("+100-200");
  rules.Sort();
  EXPECT_TRUE(rules.IsModified());
}

// A file may hold more than the instrument takes.
TEST(Sort, KnowsMoreItemsThan65536) {
  Method method = MethodOf("+100-200 +50-60");
  method.TimePeriods[0].Sequence.assign(70000, {1});
  method.TimePeriods[0].Sequence.push_back({2});
  R rules(kSwitchTime, method);
  rules.Sort();
  EXPECT_EQ(rules.TimePeriods[0].Sequence[0][0], 2u);
  EXPECT_EQ(rules.TimePeriods[0].Sequence[70000][0], 1u);
}

TEST(InsertSeqItem, FindsAnIdBehindMoreThan65536) {
  Method method = MethodOf("+100-200");
  const TuneRun run = method.TuneRuns.at(1);
  for (std::uint32_t id = 1; id <= 70000; ++id) {
    method.TuneRuns.emplace(id, run);
    method.TimePeriods[0].Sequence.push_back({id});
  }
  R rules(kSwitchTime, method);
  rules.InsertSeqItem(0, Probes::ESI);
  EXPECT_EQ(rules.TimePeriods[0].Sequence.back()[0], 70001u);
}

TEST(RemoveSeqItem, TakesMoreRunsThan65536) {
  Method method = MethodOf("+100-200 +50-60");
  method.TimePeriods[0].Sequence[0].assign(70000, 99);
  method.TimePeriods[0].Sequence[0].push_back(1);
  R rules(kSwitchTime, method);
  rules.RemoveSeqItem(0, 0);
  EXPECT_EQ(ShapeOf(rules), "2; 2; 2; 2");
}

// ---- What names nothing ----------------------------------------------------------------------

TEST(StructureOfAMethod, BeyondItsIndexesThrowsAndChangesNothing) {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  rules.WTRSettleDelay(1, 0, 0, 77);
  rules.ClearModified();
  const Method before = rules;
  const std::vector<std::function<void(R&)>> edits = {
      [](R& r) { r.RemoveTimePeriod(2); },
      [](R& r) { r.MoveTimePeriod(2, R::ToBeginning); },
      [](R& r) { r.MoveTimePeriod(0xFFFFFFFF, R::ToEnd); },
      [](R& r) { r.InsertSeqItem(2); },
      [](R& r) { r.InsertSeqItem(2, Probes::ESI); },
      [](R& r) { r.RemoveSeqItem(2, 0); },
      [](R& r) { r.RemoveSeqItem(0, 2); },
      [](R& r) { r.MoveSeqItem(2, 0, R::ToEnd); },
      [](R& r) { r.MoveSeqItem(0, 2, R::ToBeginning); },
      [](R& r) { r.WTRDDType(2, 0, 0, DDInfo::TuneChange); },
      [](R& r) { r.WTRDDType(0, 2, 0, DDInfo::TuneChange); },
      [](R& r) { r.WTRDDType(0, 0, 1, DDInfo::TuneChange); },
  };
  for (std::size_t i = 0; i < edits.size(); ++i) {
    EXPECT_THROW(edits[i](rules), std::out_of_range) << "edit " << i;
    EXPECT_EQ(rules, before) << "edit " << i;
    EXPECT_FALSE(rules.IsModified()) << "edit " << i;
  }
}

TEST(StructureOfAMethod, WhoseFirstRunIsNotThereTakesNewOnesOfAProbeOnly) {
  Method none = MethodOf("+100-200");
  none.TimePeriods.clear();
  Method empty = MethodOf("+100-200");
  empty.TimePeriods[0].Sequence.clear();
  Method emptyItem = MethodOf("+100-200");
  emptyItem.TimePeriods[0].Sequence[0].clear();
  Method noRun = MethodOf("+100-200");
  noRun.TuneRuns.clear();
  Method noTune = MethodOf("+100-200");
  noTune.Tunes.clear();
  for (const Method& method : {none, empty, emptyItem, noRun, noTune}) {
    R rules(kSwitchTime, method);
    const Method before = rules;
    EXPECT_THROW(rules.InsertTimePeriod(), std::out_of_range);
    EXPECT_THROW(rules.InsertSeqItem(0), std::out_of_range);
    EXPECT_THROW(rules.WTRDDType(0, 0, 0, DDInfo::TuneChange), std::out_of_range);
    EXPECT_EQ(rules, before);
    EXPECT_FALSE(rules.IsModified());
    EXPECT_EQ(rules.InsertTimePeriod(Probes::ESI), method.TimePeriods.size());
    const std::uint32_t items = rules.QNumSeqItems(0);
    EXPECT_EQ(rules.InsertSeqItem(0, Probes::ESI), items);
  }
}

TEST(Sort, OfAnIdThatNamesNothingThrowsAndChangesNothing) {
  Method method = MethodOf("+300-400 +100-200 | +5-50");
  method.TimePeriods[1].Sequence.push_back({99});
  R rules(kSwitchTime, method);
  const Method before = rules;
  EXPECT_THROW(rules.Sort(), std::out_of_range);
  EXPECT_EQ(rules, before);
}

}  // namespace
