#include <tool/commands/tune/TuneDifferences.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include <tslbl/tune/rules/DevTuneRules.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TslBL::DevTuneRules;
using TslBL::IOPoint;
using TslBL::Probes;
using TslBL::Tune;
using TslTool::TuneDifferences;

TEST(TuneDifferences, EqualTunesDifferInNothing) {
  const Tune tune = DevTuneRules(Probes::APCI);
  EXPECT_THAT(TuneDifferences(tune, tune), IsEmpty());
}

TEST(TuneDifferences, EachDifferenceIsALine) {
  struct Row {
    std::function<void(Tune&)> change;
    const char* line;
  };
  const Row rows[] = {
      {[](Tune& t) { t.Info.Comment = L"new"; }, "Comment: \"\" -> new"},
      {[](Tune& t) { t.Info.LastSave = 0; }, "LastSave: 2001-09-09 01:46:40Z -> 1970-01-01 00:00:00Z"},
      {[](Tune& t) { t.Source.Cylinder = 3500; }, "Cylinder: -3500 -> 3500"},
      {[](Tune& t) { t.Source.Neb2GasOn = true; }, "Neb2GasOn: off -> on"},
      {[](Tune& t) { t.ControlData.MZHi = 0.1; }, "MZHi: 3000 -> 0.1"},
      {[](Tune& t) { t.ControlData.CapExit.Single = 1.0 / 3.0; }, "CapExit: 160 -> 0.3333333333333333"},
      {[](Tune& t) { t.ControlData.Skimmer.Type = IOPoint::CalibratedType; }, "Skimmer: 18 -> calibrated"},
      {[](Tune& t) { t.ControlData.Q1Enter.Single = 0; }, "Q1Enter: 10 -> 0"},
      {[](Tune& t) { t.ControlData.Q1Offset.StepSize = 2; }, "Q1Offset.StepSize: 0 -> 2"},
      {[](Tune& t) { t.SyringeData.FlowRate = 7; }, "FlowRate: 0 -> 7"},
      {[](Tune& t) { t.MZCalPts[1].MassDAC = 60001; },
       "MZCalPts 2: m/z 3000 DAC 60000 Default High -> m/z 3000 DAC 60001 Default High"},
      {[](Tune& t) { t.MZCalPts.pop_back(); }, "MZCalPts 2: m/z 3000 DAC 60000 Default High -> -"},
      {[](Tune& t) { t.MZCalPts.emplace_back(L"Extra", 3500, 70000); },
       "MZCalPts 3: - -> m/z 3500 DAC 70000 Extra"},
      {[](Tune& t) { t.Q1CalPts[0].Fields[TslBL::TuneField::CapExit] = 5; },
       "Q1CalPts 1 (m/z 39) CapExit: 100 -> 5"},
      {[](Tune& t) { t.Q1CalPts[0].Fields.erase(TslBL::TuneField::CapExit); },
       "Q1CalPts 1 (m/z 39) CapExit: 100 -> -"},
      {[](Tune& t) { t.Q1CalPts[4].MZ = 2722; }, "Q1CalPts 5 (m/z 2721) m/z: 2721 -> 2722"},
      {[](Tune& t) { t.Source.CoronaCurrent = 9; }, "CoronaCurrent (APCI): 0 -> 9"},
      {[](Tune& t) { t.Source.ControlByCurrent = true; }, "ControlByCurrent (APCI): 0 -> 1"},
      {[](Tune& t) { t.Source.ApciVapTemp = 300; }, "ApciVapTemp (APCI): 0 -> 300"},
  };
  Tune before = DevTuneRules(Probes::ESI);
  before.Info.LastSave = 1000000000;
  before.SyringeData = {};
  for (const Row& row : rows) {
    Tune after = before;
    row.change(after);
    EXPECT_THAT(TuneDifferences(before, after), ElementsAre(row.line));
  }
}

TEST(TuneDifferences, AFieldOfOneKindOfTuneIsMissingInTheOther) {
  const Tune esi = DevTuneRules(Probes::ESI);
  Tune apci = esi;
  apci.Source.Type = Probes::APCI;
  EXPECT_THAT(TuneDifferences(esi, apci),
              ElementsAre("SourceType: ESI -> APCI", "Cylinder: -3500 -> -", "CoronaVoltage: - -> -3500",
                          "ControlByCurrent: - -> off", "CoronaCurrent: - -> 0", "ApciVapTemp: - -> 0",
                          "Neb1GasPres: 60 -> -", "ApciAuxGas: - -> 60", "ApciNebGas: - -> off",
                          "CalValveOn: off -> -"));
}

TEST(TuneDifferences, ACalibrantOfOneTuneIsMissingInTheOther) {
  const Tune before = DevTuneRules(Probes::ESI);
  Tune after = before;
  after.Q1CalPts.emplace_back(2800, L"Extra").Fields[TslBL::TuneField::Skimmer] = 40;
  EXPECT_THAT(TuneDifferences(before, after),
              ElementsAre("Q1CalPts 6 (m/z 2800) Skimmer: - -> 40", "Q1CalPts 6 (m/z 2800) m/z: - -> 2800",
                          "Q1CalPts 6 (m/z 2800) name: - -> Extra"));
  EXPECT_THAT(TuneDifferences(after, before),
              ElementsAre("Q1CalPts 6 (m/z 2800) Skimmer: 40 -> -", "Q1CalPts 6 (m/z 2800) m/z: 2800 -> -",
                          "Q1CalPts 6 (m/z 2800) name: Extra -> -"));
}

TEST(TuneDifferences, CalibrantsAreHeldAgainstThoseOfTheirMzOrName) {
  const Tune before = DevTuneRules(Probes::ESI);
  DevTuneRules after = before;
  for (auto& point : after.Q1CalPts) point.Fields.clear();
  const Tune bare = after;
  after.DelQ1CalPt(39);
  after.ChangeQ1CalPtMZ(118, 119);
  after.AddQ1CalPt(622, L"New");
  EXPECT_THAT(TuneDifferences(bare, after),
              ElementsAre("Q1CalPts 1 (m/z 39) m/z: 39 -> -", "Q1CalPts 1 (m/z 39) name: Fragment 2 -> -",
                          "Q1CalPts 2 (m/z 118) m/z: 118 -> 119", "Q1CalPts 5 (m/z 622) m/z: - -> 622",
                          "Q1CalPts 5 (m/z 622) name: - -> New"));
}

TEST(TuneDifferences, CalibrationPointsAreHeldAgainstThoseOfTheirMzOrName) {
  const Tune before = DevTuneRules(Probes::ESI);
  Tune after = before;
  after.MZCalPts = {{L"Default High", 2721, 54420}, {L"", 118, 2360}};
  EXPECT_THAT(TuneDifferences(before, after),
              ElementsAre("MZCalPts 1: m/z 5 DAC 100 Default Low -> -",
                          "MZCalPts 2: m/z 3000 DAC 60000 Default High -> m/z 2721 DAC 54420 Default High",
                          "MZCalPts 2: - -> m/z 118 DAC 2360 "));
}

TEST(TuneDifferences, TheSpanOfASimIsOneLine) {
  DevTuneRules one(Probes::ESI);
  one.WControlType(TslBL::Control::Sim);
  DevTuneRules other = one;
  one.WSimWithSpan(TslBL::Control::Span0_4);
  other.WSimWithSpan(TslBL::Control::Span1_0);
  EXPECT_THAT(TuneDifferences(one, other), ElementsAre("SimWithSpan: 0.4 -> 1"));
}

TEST(TuneDifferences, WhatIsInNoLineIsSaid) {
  const Tune before = DevTuneRules(Probes::ESI);
  Tune after = before;
  after.MZCalPts[0].Name = L"Default\x01Low";
  Tune other = before;
  other.MZCalPts[0].Name = L"Default\x02Low";
  EXPECT_THAT(TuneDifferences(after, other),
              ElementsAre("the tunes differ in fields that this list does not show"));
}

TEST(TuneDifferences, FieldsOfACalibrantWithoutATagAreToldByNumber) {
  const Tune before = DevTuneRules(Probes::ESI);
  Tune after = before;
  after.Q1CalPts[0].Fields[TslBL::TuneField::HEDynode] = 1;
  after.Q1CalPts[0].Fields[TslBL::TuneField::SourceType] = 2;
  EXPECT_THAT(TuneDifferences(before, after),
              ElementsAre("Q1CalPts 1 (m/z 39) field 0: - -> 2", "Q1CalPts 1 (m/z 39) field 28: - -> 1"));
}

TEST(TuneDifferences, TheDwellOfAScanAndOfASimIsOneField) {
  DevTuneRules scan(Probes::ESI);
  DevTuneRules sim = scan;
  sim.WControlType(TslBL::Control::Sim);
  sim.ControlData.PulseCountDelay = 20;
  EXPECT_THAT(TuneDifferences(scan, sim),
              testing::IsSupersetOf(
                  {"PulseCountDelay: 1000 -> 20", "MZHi: 3000 -> -", "SimWithSpan: - -> not a span: 3000"}));
}

}  // namespace
}  // namespace tests
