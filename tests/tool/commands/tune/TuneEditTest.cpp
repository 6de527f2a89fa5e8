// Tests: CalibrantEdit.cpp, FieldEdit.cpp, FieldText.cpp, FindUserField.cpp, MZCalEdit.cpp, UserFields.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include <tool/commands/tune/FieldEdit.h>
#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/FindUserField.h>
#include <tool/commands/tune/TuneEdit.h>
#include <tool/frame/CommandLine.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslBL::Control;
using TslBL::DevTuneRules;
using TslBL::IOPoint;
using TslBL::Probes;

DevTuneRules Sim() {
  DevTuneRules rules(Probes::ESI);
  rules.WControlType(Control::Sim);
  rules.ControlData.MZHi = 0.0;
  return rules;
}

TslTool::EditResult Edit(DevTuneRules& rules, const std::string& text) {
  return TslTool::ReadTuneEdit(rules, text)->Apply(rules);
}

// The field's text afterwards, or the refusal.
std::string After(DevTuneRules rules, const std::string& text) {
  const auto edit = TslTool::ReadTuneEdit(rules, text);
  const TslTool::EditResult result = edit->Apply(rules);
  return result.refused ? "refused: " + result.text : edit->Shown(rules);
}

std::string UsageOf(const std::string& edit) {
  DevTuneRules rules(Probes::ESI);
  const DevTuneRules before = rules;
  try {
    Edit(rules, edit);
  } catch (const TslTool::UsageError& e) {
    EXPECT_EQ(rules, before);
    return e.what();
  }
  return "";
}

TEST(TuneEdit, EveryFieldCanBeSet) {
  const DevTuneRules esi(Probes::ESI);
  const DevTuneRules apci(Probes::APCI);
  struct Row {
    const DevTuneRules& rules;
    const char* name;
    const char* value;
  };
  const DevTuneRules sim = Sim();
  const Row rows[] = {
      {esi, "Name", "After venting"},
      {esi, "Comment", "with = and blanks"},
      {esi, "SourceType", "APCI"},
      {esi, "Cylinder", "-3000"},
      {apci, "CoronaVoltage", "4000"},
      {apci, "ControlByCurrent", "off"},
      {apci, "CoronaCurrent", "4.25"},
      {esi, "EndPlate", "-4500"},
      {esi, "CapEnter", "-5000"},
      {esi, "EndPlateTemp", "medium"},
      {esi, "DryGasTemp", "300"},
      {esi, "DryGasFlow", "10.5"},
      {apci, "ApciVapTemp", "325"},
      {esi, "Neb1GasPres", "40"},
      {apci, "ApciAuxGas", "30"},
      {apci, "ApciNebGas", "off"},
      {esi, "Neb2GasOn", "on"},
      {esi, "CalValveOn", "on"},
      {esi, "CalValve2On", "on"},
      {esi, "CalSample1On", "on"},
      {esi, "CalSample2On", "on"},
      {esi, "ControlType", "SIM"},
      {esi, "PolarityType", "negative"},
      {esi, "MZLow", "100.5"},
      {esi, "MZHi", "1000"},
      {sim, "MZ", "500"},
      {sim, "SimWithSpan", "0.4"},
      {esi, "MZStepSize", "0.05"},
      {esi, "InitSettleDelay", "650"},
      {esi, "StepSettleDelay", "20"},
      {esi, "PulseCountDelay", "500"},
      {sim, "PulseCountDelay", "10"},
      {esi, "ScansPerSpec", "4"},
      {esi, "CapExit", "-100"},
      {esi, "Skimmer", "20.5"},
      {esi, "Q0RFAmpl", "500"},
      {esi, "Q0Offset", "-7.5"},
      {esi, "Q0Exit1", "-1"},
      {esi, "Q0Exit2", "-80"},
      {esi, "Q1MZType", "RF only"},
      {esi, "Q1Resolution", "0.125"},
      {esi, "Q1CoarseResolution", "2"},
      {esi, "Q1Offset", "-2"},
      {esi, "Q1IonGuide", "-13"},
      {esi, "Q1PolePolarity", "on"},
      {esi, "HEDynode", "-8000"},
      {esi, "DetectorGain", "-1500"},
      {esi, "SignalThreshold", "12"},
      {esi, "Diameter", "4.61"},
      {esi, "CapExit", "calibrated"},
  };
  std::set<std::string> set = {"Model", "FlowRate"};  // below
  for (const Row& row : rows) {
    EXPECT_NE(TslTool::FindUserField(row.rules, row.name).show(row.rules), row.value) << row.name;
    EXPECT_EQ(After(row.rules, std::string(row.name) + "=" + row.value), row.value) << row.name;
    set.insert(row.name);
  }
  for (const TslTool::FieldGroup& group : TslTool::UserFieldGroups())
    for (const TslTool::UserField& field : group.fields)
      EXPECT_EQ(set.contains(field.name), field.set != nullptr) << field.name;
}

TEST(TuneEdit, TheFlowOfASyringeNeedsASyringe) {
  DevTuneRules rules(Probes::ESI);
  rules.SyringeData = {};
  EXPECT_EQ(After(rules, "FlowRate=180"),
            "refused: Syringe Diameter is out of range.  Valid values are 0.46 to 10.30.");
  rules.WSyringeCustom(2.3);
  EXPECT_EQ(After(rules, "FlowRate=180"), "180");
}

TEST(TuneEdit, AModelIsOneOfTheCatalogue) {
  EXPECT_EQ(After(DevTuneRules(Probes::ESI), "Model=Nobody/None"),
            "refused: Invalid syringe model. 'tslbl tune syringes' lists them.");
}

TEST(TuneEdit, NamesAreTakenInAnyCase) { EXPECT_EQ(After(DevTuneRules(Probes::ESI), "mzlow=7"), "7"); }

TEST(TuneEdit, ARefusedValueTellsTheRule) {
  const DevTuneRules esi(Probes::ESI);
  EXPECT_EQ(After(esi, "MZLow=1"), "refused: Low m/z is out of range.  Valid values are 5.00 to 3000.00.");
  EXPECT_EQ(After(esi, "CapExit=401"),
            "refused: Capillary Exit - Single Value is out of range.  Valid values are -400.00 to 400.00.");
  EXPECT_EQ(After(esi, "SimWithSpan=0.4"),
            "refused: Acquisition type must be Sim to set Sim with Span value.");
  EXPECT_EQ(After(Sim(), "MZHi=100"), "refused: Acquisition type must be Scan to set High m/z value.");
  EXPECT_EQ(After(DevTuneRules(Probes::APCI), "ApciAuxGas=5"),
            "refused: APCI Aux Gas Pressure must be 0 or greater than 14");
}

TEST(TuneEdit, ANumberBeyondItsTypeMeetsTheLimitsOfItsField) {
  const DevTuneRules esi(Probes::ESI);
  const std::string refusal =
      "refused: Step Settling Delay is out of range.  Valid values are 0.00 to 4095.00.";
  for (const char* value : {"-1", "4294967296", "1e300"})
    EXPECT_EQ(After(esi, std::string("StepSettleDelay=") + value), refusal);
  EXPECT_EQ(After(esi, "InitSettleDelay=-1"),
            "refused: Initial Settling Delay is out of range.  Valid values are 0.00 to 5000000.00.");
  EXPECT_EQ(After(esi, "HEDynode=-1e12"),
            "refused: High Energy Dynode is out of range.  Valid values are -10000.00 to 10000.00.");
}

TEST(TuneEdit, WholeNumbersMayBeWrittenInAnyWay) {
  EXPECT_EQ(After(DevTuneRules(Probes::ESI), "Cylinder=-1e3"), "-1000");
}

TEST(TuneEdit, AWarningIsToldAndWritten) {
  DevTuneRules rules(Probes::ESI);
  rules.ClearQ1CalPts();
  const TslTool::EditResult result = Edit(rules, "CapExit=calibrated");
  EXPECT_FALSE(result.refused);
  EXPECT_EQ(result.text,
            "Capillary Exit - There must be at least two Q1 step calibration points for this field.");
  EXPECT_EQ(rules.QCapExit().Type, IOPoint::CalibratedType);
}

TEST(TuneEdit, AFieldOfTheOtherProbeIsRefused) {
  EXPECT_EQ(After(DevTuneRules(Probes::ESI), "ApciNebGas=off"),
            "refused: the tune is for a probe of kind ESI, which has no such field");
  EXPECT_EQ(After(DevTuneRules(Probes::APCI), "Cylinder=0"),
            "refused: the tune is for a probe of kind APCI, which has no such field");
}

TEST(TuneEdit, BothEndsOfTheRangeAreSetAtOnce) {
  DevTuneRules rules(Probes::ESI);
  rules.WMZRange(100, 200);
  EXPECT_FALSE(Edit(rules, "MZRange=500-900").refused);
  EXPECT_EQ(rules.QMZLow(), 500.0);
  EXPECT_EQ(rules.QMZHi(), 900.0);
}

TEST(TuneEdit, ARangeWithABadEndIsRefused) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_EQ(Edit(rules, "MZRange=1-900").text, "Low m/z is out of range.  Valid values are 5.00 to 3000.00.");
  EXPECT_TRUE(Edit(rules, "MZRange=1-900").refused);
  EXPECT_EQ(Edit(rules, "MZRange=100-9000").text,
            "High m/z is out of range.  Valid values are 5.00 to 3000.00.");
}

TEST(TuneEdit, TheSettlingDelayCanFollowTheTune) {
  DevTuneRules rules(Probes::ESI);
  rules.WMZRange(100, 200);
  EXPECT_FALSE(Edit(rules, "InitSettleDelay=auto").refused);
  EXPECT_EQ(rules.QInitSettleDelay(), 650u);
}

TEST(TuneEdit, SamplesPerMassSetTheStep) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_FALSE(Edit(rules, "SamplesPerMass=20").refused);
  EXPECT_EQ(rules.QMZStepSize(), 0.05);
}

TEST(TuneEdit, ALensIsSetAtACalibrant) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_FALSE(Edit(rules, "capexit@118=95").refused);
  double value = 0.0;
  rules.QQ1CalPtField(118, TslBL::TuneField::CapExit, value);
  EXPECT_EQ(value, 95.0);
  EXPECT_FALSE(Edit(rules, "CapExit@118=none").refused);
  EXPECT_EQ(rules.QQ1CalPtField(118, TslBL::TuneField::CapExit, value), DevTuneRules::Error);
  EXPECT_EQ(Edit(rules, "CapExit@119=95").text,
            "The specified calibrant could not be found. By m/z, there are 39 (Fragment 2), 118 (Agilent 1), "
            "322 (Agilent 2), 1521 (Agilent 5), 2721 (Agilent 7); Calibrant@119=NAME adds one.");
  EXPECT_EQ(Edit(rules, "CapExit@118=500").text,
            "Capillary Exit is out of range.  Valid values are -400.00 to 400.00.");
}

TEST(TuneEdit, ASingleValueKeepsTheRestOfALens) {
  DevTuneRules rules(Probes::ESI);
  rules.ControlData.CapExit.Start = 3.0;
  Edit(rules, "CapExit=calibrated");
  EXPECT_EQ(rules.QCapExit().Single, 160.0);
  EXPECT_EQ(rules.QCapExit().Start, 3.0);
}

TEST(TuneEdit, ShowsWhatItIsAbout) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_EQ(After(rules, "mzrange=100-200"), "100-200");
  EXPECT_EQ(After(rules, "SamplesPerMass=5"), "5");
  EXPECT_EQ(After(rules, "CapExit@118=95"), "95") << "a lens of a single value has a curve that waits";
  EXPECT_EQ(After(rules, "CapExit@118=none"), "none");
  EXPECT_EQ(After(rules, "Calibrant@118=A"), "A");
  EXPECT_EQ(After(rules, "Calibrant@118=none"), "none");
  EXPECT_EQ(After(rules, "MZCal@5=120"), "120");
  EXPECT_EQ(After(rules, "MZCal@5=none"), "none");
  EXPECT_EQ(After(rules, "MZCalName@5=A"), "A");
}

std::string ShownCalibrants(const DevTuneRules& rules) {
  std::string text;
  for (const auto& [mz, name] : rules.QQ1CalPts())
    text += (text.empty() ? "" : ", ") + TslTool::Shown(mz) + " " + TslTool::Shown(name);
  return text;
}

TEST(TuneEdit, CalibrantsAreAddedRenamedMovedAndDeleted) {
  DevTuneRules rules(Probes::ESI);
  for (const char* edit : {"Calibrant@39=none", "Calibrant@1521=none", "Calibrant@2721=none"})
    EXPECT_FALSE(Edit(rules, edit).refused) << edit;
  EXPECT_EQ(ShownCalibrants(rules), "118 Agilent 1, 322 Agilent 2");
  EXPECT_FALSE(Edit(rules, "calibrant@622.5=Agilent 3").refused);
  EXPECT_EQ(ShownCalibrants(rules), "118 Agilent 1, 322 Agilent 2, 622.5 Agilent 3");
  EXPECT_FALSE(Edit(rules, "Calibrant@118=Low").refused);
  EXPECT_FALSE(Edit(rules, "Calibrant@322=@321.5").refused);
  EXPECT_EQ(ShownCalibrants(rules), "118 Low, 321.5 Agilent 2, 622.5 Agilent 3");
  double value = 0.0;
  rules.QQ1CalPtField(321.5, TslBL::TuneField::CapExit, value);
  EXPECT_EQ(value, 120.0) << "a calibrant takes its lenses with it";
}

TEST(TuneEdit, ACalibrantThatCannotBeIsToldOf) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_EQ(Edit(rules, "Calibrant@4=A").text, "m/z is out of range.  Valid values are 5.00 to 3000.00.");
  EXPECT_EQ(Edit(rules, "Calibrant@118=@3001").text,
            "m/z is out of range.  Valid values are 5.00 to 3000.00.");
  EXPECT_EQ(Edit(rules, "Calibrant@118=@322").text,
            "There is already a calibrant with that name. At m/z 322 stands Agilent 2.");
  rules.ClearQ1CalPts();
  for (const char* edit : {"Calibrant@118=@119", "Calibrant@118=none", "CapExit@118=3", "CapExit@118=none"}) {
    const TslTool::EditResult result = Edit(rules, edit);
    EXPECT_TRUE(result.refused) << edit;
    EXPECT_EQ(
        result.text,
        "The specified calibrant could not be found. By m/z, there are none; Calibrant@118=NAME adds one.")
        << edit;
  }
}

std::string ShownCalibration(const DevTuneRules& rules) {
  std::string text;
  for (const TslBL::MZCalPt& point : rules.QMZCalPts())
    text += (text.empty() ? "" : ", ") + TslTool::Shown(point.MZ) + " " + TslTool::Shown(point.MassDAC) +
            " " + TslTool::Shown(point.Name);
  return text;
}

TEST(TuneEdit, CalibrationPointsAreAddedSetRenamedMovedAndDeleted) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_FALSE(Edit(rules, "MZCal@118=2361.5").refused);
  EXPECT_EQ(ShownCalibration(rules), "5 100 Default Low, 3000 60000 Default High, 118 2361.5 MZ 118.00");
  EXPECT_FALSE(Edit(rules, "MZCal@5=101").refused);
  EXPECT_FALSE(Edit(rules, "MZCalName@118=Low").refused);
  EXPECT_FALSE(Edit(rules, "MZCal@3000=@2999").refused);
  EXPECT_EQ(ShownCalibration(rules), "5 101 Default Low, 2999 60000 Default High, 118 2361.5 Low");
  EXPECT_FALSE(Edit(rules, "mzcal@5=None").refused);
  EXPECT_EQ(ShownCalibration(rules), "2999 60000 Default High, 118 2361.5 Low");
}

TEST(TuneEdit, ACalibrationPointThatCannotBeIsToldOf) {
  struct Row {
    const char* edit;
    const char* reason;
  };
  const std::string before = ShownCalibration(DevTuneRules(Probes::ESI));
  for (const auto& [edit, reason] :
       {Row{"MZCal@4=5", "m/z is out of range.  Valid values are 5.00 to 3000.00."},
        Row{"MZCal@5=-1", "Mass DAC is out of range.  Valid values are 0.00 to 65535.00."},
        Row{"MZCal@118=65536", "Mass DAC is out of range.  Valid values are 0.00 to 65535.00."},
        Row{"MZCal@5=@3001", "m/z is out of range.  Valid values are 5.00 to 3000.00."},
        Row{"MZCal@5=@3000", "there is a calibration point at m/z 3000"},
        Row{"MZCal@7=@8", "there is no such calibration point; there are m/z 5 DAC 100, m/z 3000 DAC 60000"},
        Row{"MZCal@7=none",
            "there is no such calibration point; there are m/z 5 DAC 100, m/z 3000 DAC 60000"},
        Row{"MZCalName@7=A",
            "there is no such calibration point; there are m/z 5 DAC 100, m/z 3000 DAC 60000"}}) {
    DevTuneRules rules(Probes::ESI);
    const TslTool::EditResult result = Edit(rules, edit);
    EXPECT_TRUE(result.refused) << edit;
    EXPECT_EQ(result.text, reason) << edit;
    EXPECT_EQ(ShownCalibration(rules), before) << edit;
  }
}

TEST(TuneEdit, ALensOfASingleValueDoesNotFollowItsCalibrants) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_EQ(TslTool::ReadTuneEdit(rules, "CapExit@118=95")->Idle(rules),
            "CapExit stands at 160 for every m/z; CapExit=calibrated lets it follow the calibrants");
  EXPECT_EQ(TslTool::ReadTuneEdit(rules, "CapExit@118=none")->Idle(rules), "");
  rules.ControlData.CapExit.Type = IOPoint::CalibratedType;
  EXPECT_EQ(TslTool::ReadTuneEdit(rules, "CapExit@118=95")->Idle(rules), "");
}

TEST(TuneEdit, TheMzOfASimIsCalledSo) {
  DevTuneRules sim = Sim();
  EXPECT_EQ(After(sim, "MZ=500"), "500");
  EXPECT_EQ(After(sim, "MZRange=100-200"),
            "refused: the tune is a SIM, which has no range; MZ sets its m/z and SimWithSpan its span");
  EXPECT_EQ(
      After(DevTuneRules(Probes::ESI), "MZ=500"),
      "refused: the tune is a scan, which has no such field; MZLow, MZHi or MZRange set what it covers");
}

TEST(TuneEdit, ASettlingDelayThatTheLimitsRefuseIsNoSuccess) {
  DevTuneRules rules(Probes::ESI);
  rules.ControlData.CapExit.Type = IOPoint::CalibratedType;
  rules.ControlData.MZLow = 39;
  rules.Q1CalPts[1].MZ = 39;
  EXPECT_EQ(After(rules, "InitSettleDelay=auto"),
            "refused: the capillary exit has no value at an end of the range: Divide by zero error");
}

TEST(TuneEdit, HasItsFormsInTheHelp) {
  EXPECT_EQ(TslTool::CombinedForms(), "MZRange=LOW-HIGH SamplesPerMass=20|10|6|5|4");
}

TEST(TuneEdit, WhatIsNoChangeIsWrongUsage) {
  struct Row {
    const char* edit;
    const char* message;
  };
  for (const auto& [edit, message] :
       {Row{"MZLow", "\"MZLow\" is not FIELD=VALUE"},
        Row{"=5", "\"=5\" is not FIELD=VALUE"},
        Row{"MZLow=", "MZLow: \"\" is not a number"},
        Row{"MZLow=5,5", "MZLow: \"5,5\" is not a number"},
        Row{"MZLow=nan", "MZLow: \"nan\" is not a finite number"},
        Row{"Cylinder=1.5", "Cylinder: \"1.5\" is not a whole number"},
        Row{"SamplesPerMass=7", "SamplesPerMass: \"7\" is not one of 20, 10, 6, 5, 4"},
        Row{"Name=\xff", "Name: the text is not UTF-8"},
        Row{"Neb2GasOn=yes", "Neb2GasOn: \"yes\" is not one of on, off"},
        Row{"PolarityType=up", "PolarityType: \"up\" is not one of positive, negative"},
        Row{"SourceType=MALDI", "SourceType: \"MALDI\" is not one of ESI, APCI, low-flow ESI"},
        Row{"CapExit=cal", "CapExit: \"cal\" is not a number"},
        Row{"LastSave=5", "LastSave cannot be set"},
        Row{"Q1Enter=5", "Q1Enter cannot be set"},
        Row{"Nonsense=5", "there is no field \"Nonsense\"; 'tslbl tune set --help' lists them"},
        Row{"Syringe.FlowRate=5", "there is no field \"Syringe.FlowRate\"; is FlowRate meant?"},
        Row{"MZL=5", "there is no field \"MZL\"; is MZ or MZLow meant?"},
        Row{"HEDynode@118=5", "\"HEDynode\" is no lens that can follow m/z"},
        Row{"CapExit@x=5", "CapExit@x: \"x\" is not a number"},
        Row{"MZRange=900-500", "MZRange: \"900-500\" ends before it begins"},
        Row{"MZRange=100", "MZRange: \"100\" is not LOW-HIGH"},
        Row{"Calibrant=A", "Calibrant: the m/z is missing, as in Calibrant@118"},
        Row{"MZCal=5", "MZCal: the m/z is missing, as in MZCal@118"},
        Row{"Calibrant@118=", "Calibrant@118: the name is empty"},
        Row{"Calibrant@118=@x", "Calibrant@118: \"x\" is not a number"},
        Row{"MZCal@118=x", "MZCal@118: \"x\" is not a number"},
        Row{"Calibrant@118=\xff", "Calibrant@118: the text is not UTF-8"},
        Row{"Model=1725", "Model: \"1725\" is not MAKE/MODEL; 'tslbl tune syringes' lists the catalogue"}}) {
    EXPECT_THAT(UsageOf(edit), HasSubstr(message));
  }
}

}  // namespace
}  // namespace tests
