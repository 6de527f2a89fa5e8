#include <tslbl/tune/FieldTable.h>

#include <gtest/gtest.h>

#include <tslbl/closed/common/StringTable.h>
#include <tslbl/tune/FieldTableChecks.h>
#include <functional>
#include <set>
#include <vector>

#include "tune/Samples.h"

namespace {

using namespace TslBL;
using namespace tests;
using Id = TuneField::Id;

// ---- What may not be in the table ----------------------------------------------------------

using Table = std::vector<FieldRow>;

Table TheTable() { return {kFieldTable.begin(), kFieldTable.end()}; }

struct Slip {
  const char* name;
  bool (*holds)(FieldRows rows);
  std::function<void(Table&)> make;
};
const Slip kSlips[] = {
    {"a row missing", RowsStandAtTheirNumbers, [](Table& t) { t.erase(t.begin() + 20); }},
    {"two rows swapped", RowsStandAtTheirNumbers, [](Table& t) { std::swap(t[3], t[4]); }},
    {"a row twice", RowsStandAtTheirNumbers, [](Table& t) { t.insert(t.begin(), t[0]); }},
    {"a number without limits", NumbersHaveLimits,
     [](Table& t) { t[TuneField::HEDynode].limits = BuiltInLimits::None(); }},
    {"a lens without limits", NumbersHaveLimits,
     [](Table& t) { t[TuneField::CapExit].limits = BuiltInLimits::None(); }},
    {"limits under one of two probes", NumbersHaveLimits,
     [](Table& t) { t[TuneField::EndPlate].limits = BuiltInLimits::Esi(0, 1, 1); }},
    {"limits under the other probe", NumbersHaveLimits,
     [](Table& t) { t[TuneField::ApciVapTemp].limits = BuiltInLimits::Esi(0, 1, 1); }},
    {"a switch for a ramp", RampedFieldsAreNumbers,
     [](Table& t) { t[TuneField::Neb2GasOn].traits.use = FieldUse::Ramp; }},
    {"a ramp without a place", RampedFieldsAreNumbers,
     [](Table& t) { t[TuneField::MZ].traits.use = FieldUse::Ramp; }},
    {"a number that follows m/z", SteppableFieldsAreLensesWithACurve,
     [](Table& t) { t[TuneField::HEDynode].traits.use = FieldUse::RampAndStep; }},
    {"no points in a new tune", SteppableFieldsAreLensesWithACurve,
     [](Table& t) { t[TuneField::Skimmer].traits.newCurve.reset(); }},
    {"points that nothing follows", SteppableFieldsAreLensesWithACurve,
     [](Table& t) { t[TuneField::Q1Enter].traits.newCurve = NewCurve(1, 2, 3, 4, 5); }},
    {"no value in a new tune", EachPlaceHasOneNewValue,
     [](Table& t) { t[TuneField::Q1PolePolarity].traits.newValue.reset(); }},
    {"two values for one place", EachPlaceHasOneNewValue,
     [](Table& t) { t[TuneField::CoronaVoltage].traits.newValue = 0; }},
    {"a value for no place", EachPlaceHasOneNewValue,
     [](Table& t) { t[TuneField::Diameter].traits.newValue = 1; }},
    {"a place that turns twice", EachVoltageTurnsOnce,
     [](Table& t) { t[TuneField::CoronaVoltage].traits.followsPolarity = true; }},
    {"a delay that turns", EachVoltageTurnsOnce,
     [](Table& t) { t[TuneField::StepSettleDelay].traits.followsPolarity = true; }},
    {"a lens on no lens", LensesStandOnLenses,
     [](Table& t) { t[TuneField::Q1Offset].traits.standsOn = TuneField::EndPlate; }},
    {"a lens on itself", LensesStandOnLenses,
     [](Table& t) { t[TuneField::Q1Offset].traits.standsOn = TuneField::Q1Offset; }},
};

TEST(FieldTable, ASlipInItIsFound) {
  for (const Slip& slip : kSlips) {
    Table table = TheTable();
    EXPECT_TRUE(slip.holds(table)) << slip.name;
    slip.make(table);
    EXPECT_FALSE(slip.holds(table)) << slip.name;
  }
}

// ---- What is in it -------------------------------------------------------------------------

TEST(FieldTable, EachFieldHasANameThatUsersKnow) {
  for (const FieldRow& row : kFieldTable) EXPECT_NE(TuneField::FieldToString(row.id), L"") << row.id;
  EXPECT_EQ(TslLoadString(ModuleHandle(), kFieldNameBase + TuneField::kFieldCount), L"");
}

TEST(FieldTable, NineFieldsMayFollowMz) {
  const std::vector<Id> fields(kSteppableFields.begin(), kSteppableFields.end());
  EXPECT_EQ(fields, (std::vector<Id>{TuneField::CapExit, TuneField::Skimmer, TuneField::Q0RFAmpl,
                                     TuneField::Q0Offset, TuneField::Q0Exit1, TuneField::Q0Exit2,
                                     TuneField::Q1Resolution, TuneField::Q1Offset, TuneField::Q1IonGuide}));
}

TEST(FieldTable, ElevenFieldsAreLenses) {
  std::set<Id> lenses;
  for (const FieldRow& row : kFieldTable)
    if (row.Lens() != nullptr) lenses.insert(row.id);
  std::set<Id> expected(kSteppableFields.begin(), kSteppableFields.end());
  expected.insert({TuneField::Q1CoarseResolution, TuneField::Q1Enter});
  EXPECT_EQ(lenses, expected);
}

struct UnitRow {
  Id field;
  const wchar_t* unit;
};

TEST(FieldTable, FieldsHaveUnits) {
  for (const auto& [field, unit] :
       {UnitRow{TuneField::Cylinder, L"V"}, UnitRow{TuneField::DryGasTemp, L"C"},
        UnitRow{TuneField::DryGasFlow, L"L/min"}, UnitRow{TuneField::MZ, L"m/z"},
        UnitRow{TuneField::Q1Resolution, L"%"}, UnitRow{TuneField::ScansPerSpec, L""},
        UnitRow{TuneField::CoronaCurrent, L"uA"}, UnitRow{TuneField::Diameter, L"mm"},
        UnitRow{TuneField::PulseCountDelaySim, L"us"}})
    EXPECT_STREQ(FindField(field)->traits.unit, unit) << field;
}

// ---- Of a tune -----------------------------------------------------------------------------

Tune Of(Probes::ProbeTypes probe, Control::Types type = Control::Scan) {
  Tune tune;
  tune.Source.Type = probe;
  tune.ControlData.Type = type;
  return tune;
}

TEST(FieldTable, WhatTurnsWithThePolarityIsInVolts) {
  for (const FieldRow& row : kFieldTable) {
    if (!row.traits.followsPolarity) continue;
    EXPECT_STREQ(row.traits.unit, L"V") << row.id;
  }
}

TEST(HasField, GoesByTheProbe) {
  for (const Id field : {TuneField::Cylinder, TuneField::Neb1GasPres, TuneField::CalValveOn}) {
    EXPECT_TRUE(HasField(Of(Probes::ESI), field)) << field;
    EXPECT_TRUE(HasField(Of(Probes::LowFlowESI), field)) << field;
    EXPECT_FALSE(HasField(Of(Probes::APCI), field)) << field;
  }
  for (const Id field : {TuneField::ApciVapTemp, TuneField::ControlByCurrent, TuneField::CoronaCurrent,
                         TuneField::CoronaVoltage, TuneField::ApciAuxGas, TuneField::ApciNebGas}) {
    EXPECT_FALSE(HasField(Of(Probes::ESI), field)) << field;
    EXPECT_TRUE(HasField(Of(Probes::APCI), field)) << field;
  }
}

TEST(HasField, GoesByTheAcquisitionFunction) {
  const Tune scan = Of(Probes::ESI);
  const Tune sim = Of(Probes::ESI, Control::Sim);
  EXPECT_TRUE(HasField(scan, TuneField::MZHi) && HasField(scan, TuneField::PulseCountDelayScan));
  EXPECT_FALSE(HasField(scan, TuneField::PulseCountDelaySim));
  EXPECT_TRUE(HasField(sim, TuneField::PulseCountDelaySim));
  EXPECT_FALSE(HasField(sim, TuneField::MZHi) || HasField(sim, TuneField::PulseCountDelayScan));
}

TEST(HasField, IsFalseForANumberWithoutAField) {
  EXPECT_FALSE(HasField(Tune(), TuneField::kFieldCount));
  EXPECT_FALSE(HasField(Tune(), static_cast<Id>(4294967295u)));
}

TEST(FieldValue, IsWhatStandsAtThePlace) {
  Tune tune = Of(Probes::APCI, Control::Sim);
  tune.Source.Cylinder = -5;
  tune.Source.DryGasFlow = 2.5;
  tune.Source.CalValveOn = true;
  tune.ControlData.Skimmer = SampleIOPoint();
  tune.ControlData.PulseCountDelay = 4000000000u;
  EXPECT_EQ(FieldValue(tune, TuneField::SourceType), 1.0);
  EXPECT_EQ(FieldValue(tune, TuneField::ControlType), 1.0);
  EXPECT_EQ(FieldValue(tune, TuneField::Cylinder), -5.0);
  EXPECT_EQ(FieldValue(tune, TuneField::CoronaVoltage), -5.0);
  EXPECT_EQ(FieldValue(tune, TuneField::DryGasFlow), 2.5);
  EXPECT_EQ(FieldValue(tune, TuneField::ApciNebGas), 1.0);
  EXPECT_EQ(FieldValue(tune, TuneField::Skimmer), SampleIOPoint().Single);
  EXPECT_EQ(FieldValue(tune, TuneField::PulseCountDelayScan), 4000000000.0);
}

TEST(FieldValue, OfAFieldWithoutAPlaceIsNone) {
  for (const Id field : {TuneField::MZ, TuneField::IOPointType, TuneField::Model, TuneField::Name,
                         TuneField::Q1CalPts, TuneField::kFieldCount})
    EXPECT_EQ(FieldValue(Tune(), field), std::nullopt) << field;
}

// Where a probe or an acquisition function gives a place another name.
TEST(FieldTable, FourPlacesHoldTwoFieldsEach) {
  std::set<Id> sharing;
  for (const FieldRow& row : kFieldTable)
    for (const FieldRow& other : kFieldTable)
      if (row.id != other.id && row.place != kNowhere && row.place == other.place) sharing.insert(row.id);
  EXPECT_EQ(sharing, (std::set<Id>{TuneField::Cylinder, TuneField::CoronaVoltage, TuneField::Neb1GasPres,
                                   TuneField::ApciAuxGas, TuneField::CalValveOn, TuneField::ApciNebGas,
                                   TuneField::PulseCountDelayScan, TuneField::PulseCountDelaySim}));
}

}  // namespace
