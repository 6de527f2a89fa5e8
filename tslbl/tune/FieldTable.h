#pragma once
// The fields of a tune, a row each, in the order of their numbers: tag in documents, place in
// the record, limits, and what else sets a field apart.
//
// This is the one list of fields. A number without a row, a row out of order, or one that
// lacks what fields of its kind must have, does not compile. The name that a user knows
// stands in the string table (TuneField::FieldToString).

#include <tslbl/Export.h>
#include <tslbl/tune/FieldRow.h>
#include <algorithm>
#include <array>
#include <optional>

namespace TslBL {

// clang-format off
constexpr auto MakeFieldTable() {
  using enum FieldUse;
  using F = TuneField;
  using L = BuiltInLimits;
  using Of = AppliesTo;
  constexpr FieldRow kRows[] = {
      {F::SourceType, L"Source", &IonSource::Type, L::All(0, 7, 1), {.newValue = NewValue(0, 1)}},
      {F::Cylinder, L"Cylinder", &IonSource::Cylinder, L::Esi(-6000, 6000, 1),
       {.use = Ramp, .appliesTo = Of::Esi, .unit = L"V", .followsPolarity = true,
        .newValue = NewValue(-3500, 0)}},
      {F::EndPlate, L"EndPlate", &IonSource::EndPlate, L::Each({-6000, 6000, 1}, {-5000, 5000, 1}),
       {.use = Ramp, .unit = L"V", .followsPolarity = true, .apciSign = ApciSign::AgainstIons,
        .newValue = NewValue(-5000, -2000)}},
      {F::CapEnter, L"CapEnter", &IonSource::CapEnter, L::Each({-6000, 6000, 1}, {-5000, 5000, 1}),
       {.use = Ramp, .unit = L"V", .followsPolarity = true, .apciSign = ApciSign::AgainstIons,
        .newValue = NewValue(-6000, -3000)}},
      {F::EndPlateTemp, L"EndPlateTemp", &IonSource::EndPlateTemp, L::All(0, 3, 1), {.newValue = 0}},
      {F::DryGasTemp, L"DryGasTemp", &IonSource::DryGasTemp, L::All(25, 350, 5),
       {.use = Ramp, .unit = L"C", .newValue = NewValue(170, 25)}},
      // Between off and hot the solvent would condense in the source.
      {F::ApciVapTemp, L"ApciVapTemp", &IonSource::ApciVapTemp, L::Apci(25, 350, 5),
       {.use = Ramp, .appliesTo = Of::Apci, .unit = L"C", .gap = Gap{26, 149}, .newValue = NewValue(0, 25)}},
      {F::DryGasFlow, L"DryGasFlow", &IonSource::DryGasFlow, L::All(2, 15, 0.1),
       {.use = Ramp, .unit = L"L/min", .newValue = NewValue(12, 5)}},
      {F::Neb1GasPres, L"Neb1GasPres", &IonSource::Neb1GasPres, L::Esi(0, 100, 5),
       {.use = Ramp, .appliesTo = Of::Esi, .unit = L"psi", .newValue = NewValue(60, 25)}},
      {F::ControlType, L"Type", &Control::Type, L::All(0, 1, 1), {.newValue = 0}},
      {F::MZ, L"MZ", kNowhere, L::All(5, 3000, 0.05), {.unit = L"m/z"}},
      {F::MZLow, L"MZLow", &Control::MZLow, L::All(5, 3000, 0.05), {.unit = L"m/z", .newValue = 5}},
      {F::MZHi, L"MZHi", &Control::MZHi, L::All(5, 3000, 0.05),
       {.appliesTo = Of::Scan, .unit = L"m/z", .newValue = 3000}},
      {F::MZStepSize, L"MZStepSize", &Control::MZStepSize, L::All(0.05, 2995, 0.05),
       {.unit = L"m/z", .newValue = 0.1}},
      {F::MassDAC, L"MassDAC", kNowhere, L::All(0, 65535, 1)},
      {F::PolarityType, L"PolarityType", &Control::PolarityType, L::All(0, 1, 1), {.newValue = 0}},
      // A new tune's is worked out for its range.
      {F::InitSettleDelay, L"InitSettleDelay", &Control::InitSettleDelay, L::All(0, 5000000, 1),
       {.unit = L"us", .newValue = 0}},
      {F::StepSettleDelay, L"StepSettleDelay", &Control::StepSettleDelay, L::All(0, 4095, 1),
       {.unit = L"us", .newValue = 0}},
      {F::PulseCountDelayScan, L"PulseCountDelaySCAN", &Control::PulseCountDelay, L::All(25, 2000000, 1),
       {.appliesTo = Of::Scan, .unit = L"us", .newValue = 1000}},
      {F::PulseCountDelaySim, L"PulseCountDelaySCAN", &Control::PulseCountDelay, L::All(10, 2000000, 1),
       {.appliesTo = Of::Sim, .unit = L"us"}},
      {F::ScansPerSpec, L"ScansPerSpec", &Control::ScansPerSpec, L::All(1, 65535, 1), {.newValue = 1}},
      {F::IOPointType, L"Type", kNowhere, L::All(0, 2, 1)},
      {F::CapExit, L"CapExit", &Control::CapExit, L::All(-400, 400, 1),
       {.use = RampAndStep, .unit = L"V", .followsPolarity = true, .beyondEnds = BeyondEnds::Level,
        .newValue = 160, .newCurve = NewCurve(100, 100, 120, 140, 170)}},
      {F::Skimmer, L"Skimmer", &Control::Skimmer, L::All(-100, 100, 0.1),
       {.use = RampAndStep, .unit = L"V", .followsPolarity = true, .newValue = 18,
        .newCurve = NewCurve(25, 25, 30, 35, 45)}},
      {F::Q0RFAmpl, L"Q0RFAmpl", &Control::Q0RFAmpl, L::All(0, 800, 5),
       {.use = RampAndStep, .unit = L"V", .beyondEnds = BeyondEnds::Level, .newValue = 600,
        .newCurve = NewCurve(100, 500, 800, 800, 800)}},
      {F::Q0Offset, L"Q0Offset", &Control::Q0Offset, L::All(-30, 30, 0.05),
       {.use = RampAndStep, .unit = L"V", .followsPolarity = true, .beyondEnds = BeyondEnds::Level,
        .newValue = -8, .newCurve = NewCurve(-15, -15, -20, -25, -30)}},
      {F::Q0Exit1, L"Q0Exit1", &Control::Q0Exit1, L::All(-200, 200, 0.1),
       {.use = RampAndStep, .unit = L"V", .followsPolarity = true, .standsOn = F::Q0Offset,
        .newValue = -0.4, .newCurve = NewCurve(-0.4, -0.4, -0.4, -0.4, -0.4)}},
      {F::Q0Exit2, L"Q0Exit2", &Control::Q0Exit2, L::All(-200, 200, 0.1),
       {.use = RampAndStep, .unit = L"V", .followsPolarity = true, .standsOn = F::Q0Offset,
        .newValue = -90, .newCurve = NewCurve(-90, -90, -90, -90, -90)}},
      {F::HEDynode, L"HEDynode", &Control::HEDynode, L::All(-10000, 10000, 10),
       {.use = Ramp, .unit = L"V", .followsPolarity = true, .newValue = -7000}},
      {F::DetectorGain, L"DetectorGain", &Control::DetectorGain, L::All(-3000, 0, 1),
       {.use = Ramp, .unit = L"V", .newValue = -1400}},
      {F::SignalThreshold, L"SignalThreshold", &Control::SignalThreshold, L::All(0, 255, 1),
       {.use = Ramp, .newValue = 0}},
      {F::Q1MZType, L"Q1MZType", &Control::Q1MZType, L::All(0, 1, 1), {.newValue = 0}},
      {F::Q1Resolution, L"Q1Resolution", &Control::Q1Resolution, L::All(-99, 99, 0.001),
       {.use = RampAndStep, .unit = L"%", .newValue = 0,
        .newCurve = NewCurve(98.975, 30.615, 6.445, -7.226, -7.836)}},
      {F::Q1CoarseResolution, L"Q1CoarseResolution", &Control::Q1CoarseResolution, L::All(-99, 99, 0.001),
       {.use = Ramp, .unit = L"%", .newValue = 0}},
      {F::Q1Offset, L"Q1Offset", &Control::Q1Offset, L::All(-90, 90, 0.05),
       {.use = RampAndStep, .unit = L"V", .followsPolarity = true, .beyondEnds = BeyondEnds::Level,
        .standsOn = F::Q0Offset, .newValue = -1, .newCurve = NewCurve(10, -0.5, -2.5, -9, -10)}},
      // The entrance lens is stored, but no user sets it.
      {F::Q1Enter, L"Not Used", &Control::Q1Enter, L::All(0, 0, 0),
       {.unit = L"V", .followsPolarity = true, .newValue = 10}},
      {F::Q1IonGuide, L"Q1IonGuide", &Control::Q1IonGuide, L::All(-100, 100, 0.1),
       {.use = RampAndStep, .unit = L"V", .followsPolarity = true, .standsOn = F::Q1Offset,
        .newValue = -12.6, .newCurve = NewCurve(-8, -12.6, -13.9, -40.5, -71.7)}},
      {F::Neb2GasOn, L"Neb2GasOn", &IonSource::Neb2GasOn, L::None(), {.newValue = 0}},
      {F::CalValve2On, L"CalValve2On", &IonSource::CalValve2On, L::None(), {.newValue = 0}},
      {F::CalSample1On, L"CalSample1On", &IonSource::CalSample1On, L::None(), {.newValue = 0}},
      {F::CalSample2On, L"CalSample2On", &IonSource::CalSample2On, L::None(), {.newValue = 0}},
      {F::CalValveOn, L"CalValveOn", &IonSource::CalValveOn, L::None(),
       {.appliesTo = Of::Esi, .newValue = NewValue(0, 1)}},
      {F::Q1PolePolarity, L"Q1PolePolarity", &Control::Q1PolePolarity, L::None(), {.newValue = 0}},
      {F::Manufacturer, L"Manufacturer", kNowhere, L::None()},
      {F::Model, L"Model", kNowhere, L::None()},
      {F::Diameter, L"Diameter", kNowhere, L::Fixed(0.46, 10.3), {.unit = L"mm"}},
      {F::FlowRate, L"FlowRate", kNowhere, L::Fixed(0, 999)},
      {F::Name, L"Name", kNowhere, L::None()},
      {F::Comment, L"Comment", kNowhere, L::None()},
      {F::LastSave, L"LastSave", kNowhere, L::None()},
      {F::MZCalPts, L"MZCalPts", kNowhere, L::None()},
      {F::Q1CalPts, nullptr, kNowhere, L::None()},
      {F::ControlByCurrent, nullptr, &IonSource::ControlByCurrent, L::None(),
       {.appliesTo = Of::Apci, .newValue = NewValue(0, 1)}},
      {F::CoronaCurrent, nullptr, &IonSource::CoronaCurrent, L::Apci(0, 20, 0.01),
       {.appliesTo = Of::Apci, .unit = L"uA", .newValue = 0}},
      // What follows stands, under an APCI probe, in the place of an ESI field.
      {F::CoronaVoltage, nullptr, &IonSource::Cylinder, L::Apci(-6000, 6000, 1),
       {.appliesTo = Of::Apci, .unit = L"V", .apciSign = ApciSign::OfIons}},
      // Below 15 psi the flow is not steady.
      {F::ApciAuxGas, nullptr, &IonSource::Neb1GasPres, L::Apci(0, 60, 5),
       {.appliesTo = Of::Apci, .unit = L"psi", .gap = Gap{1, 14}}},
      {F::ApciNebGas, nullptr, &IonSource::CalValveOn, L::None(), {.appliesTo = Of::Apci}},
  };
  return std::to_array(kRows);
}
// clang-format on

inline constexpr auto kFieldTable = MakeFieldTable();

// Null for a number that names no field.
constexpr const FieldRow* FindField(TuneField::Id field) {
  return field < kFieldTable.size() ? &kFieldTable[field] : nullptr;
}

// The fields that may follow m/z, in the order of their numbers.
inline constexpr auto kSteppableFields = [] {
  constexpr auto kCount = std::ranges::count_if(kFieldTable, &FieldRow::IsSteppable);
  std::array<TuneField::Id, kCount> fields{};
  auto next = fields.begin();
  for (const FieldRow& row : kFieldTable)
    if (row.IsSteppable()) *next++ = row.id;
  return fields;
}();

// Whether this tune, by its probe and its acquisition function, is one of those.
TSLBL_API bool IsAmong(const Tune& tune, AppliesTo tunes);
// Whether it has the field.
TSLBL_API bool HasField(const Tune& tune, TuneField::Id field);

// The number at the field's place, of a lens its single value; nothing for a field without
// a place.
TSLBL_API std::optional<double> FieldValue(const Tune& tune, TuneField::Id field);

}  // namespace TslBL
