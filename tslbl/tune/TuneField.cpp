#include <tslbl/tune/TuneField.h>

#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/VexException.h>
#include <algorithm>
#include <boost/bimap.hpp>
#include <cstddef>
#include <iterator>

namespace TslBL {
namespace {

enum Uses : unsigned { Fixed = 0, Ramp = 1, RampAndStep = 3 };

struct Row {
  TuneField::Id field;
  const wchar_t* tag;  // null for a field without a tag
  Uses uses;
};

constexpr Row kFields[] = {
    {TuneField::SourceType, L"Source", Fixed},
    {TuneField::Cylinder, L"Cylinder", Ramp},
    {TuneField::EndPlate, L"EndPlate", Ramp},
    {TuneField::CapEnter, L"CapEnter", Ramp},
    {TuneField::EndPlateTemp, L"EndPlateTemp", Fixed},
    {TuneField::DryGasTemp, L"DryGasTemp", Ramp},
    {TuneField::ApciVapTemp, L"ApciVapTemp", Ramp},
    {TuneField::DryGasFlow, L"DryGasFlow", Ramp},
    {TuneField::Neb1GasPres, L"Neb1GasPres", Ramp},
    {TuneField::ControlType, L"Type", Fixed},
    {TuneField::MZ, L"MZ", Fixed},
    {TuneField::MZLow, L"MZLow", Fixed},
    {TuneField::MZHi, L"MZHi", Fixed},
    {TuneField::MZStepSize, L"MZStepSize", Fixed},
    {TuneField::MassDAC, L"MassDAC", Fixed},
    {TuneField::PolarityType, L"PolarityType", Fixed},
    {TuneField::InitSettleDelay, L"InitSettleDelay", Fixed},
    {TuneField::StepSettleDelay, L"StepSettleDelay", Fixed},
    {TuneField::PulseCountDelayScan, L"PulseCountDelaySCAN", Fixed},
    {TuneField::PulseCountDelaySim, L"PulseCountDelaySCAN", Fixed},
    {TuneField::ScansPerSpec, L"ScansPerSpec", Fixed},
    {TuneField::IOPointType, L"Type", Fixed},
    {TuneField::CapExit, L"CapExit", RampAndStep},
    {TuneField::Skimmer, L"Skimmer", RampAndStep},
    {TuneField::Q0RFAmpl, L"Q0RFAmpl", RampAndStep},
    {TuneField::Q0Offset, L"Q0Offset", RampAndStep},
    {TuneField::Q0Exit1, L"Q0Exit1", RampAndStep},
    {TuneField::Q0Exit2, L"Q0Exit2", RampAndStep},
    {TuneField::HEDynode, L"HEDynode", Ramp},
    {TuneField::DetectorGain, L"DetectorGain", Ramp},
    {TuneField::SignalThreshold, L"SignalThreshold", Ramp},
    {TuneField::Q1MZType, L"Q1MZType", Fixed},
    {TuneField::Q1Resolution, L"Q1Resolution", RampAndStep},
    {TuneField::Q1CoarseResolution, L"Q1CoarseResolution", Ramp},
    {TuneField::Q1Offset, L"Q1Offset", RampAndStep},
    // The entrance lens is stored, but no user sets it.
    {TuneField::Q1Enter, L"Not Used", Fixed},
    {TuneField::Q1IonGuide, L"Q1IonGuide", RampAndStep},
    {TuneField::Neb2GasOn, L"Neb2GasOn", Fixed},
    {TuneField::CalValve2On, L"CalValve2On", Fixed},
    {TuneField::CalSample1On, L"CalSample1On", Fixed},
    {TuneField::CalSample2On, L"CalSample2On", Fixed},
    {TuneField::CalValveOn, L"CalValveOn", Fixed},
    {TuneField::Q1PolePolarity, L"Q1PolePolarity", Fixed},
    {TuneField::Manufacturer, L"Manufacturer", Fixed},
    {TuneField::Model, L"Model", Fixed},
    {TuneField::Diameter, L"Diameter", Fixed},
    {TuneField::FlowRate, L"FlowRate", Fixed},
    {TuneField::Name, L"Name", Fixed},
    {TuneField::Comment, L"Comment", Fixed},
    {TuneField::LastSave, L"LastSave", Fixed},
    {TuneField::MZCalPts, L"MZCalPts", Fixed},
    {TuneField::Q1CalPts, nullptr, Fixed},
    {TuneField::ControlByCurrent, nullptr, Fixed},
    {TuneField::CoronaCurrent, nullptr, Fixed},
    {TuneField::CoronaVoltage, nullptr, Fixed},
    {TuneField::ApciAuxGas, nullptr, Fixed},
    {TuneField::ApciNebGas, nullptr, Fixed},
};

constexpr bool NumbersAreIndexes() {
  for (std::size_t i = 0; i < std::size(kFields); ++i)
    if (kFields[i].field != i) return false;
  return true;
}
static_assert(NumbersAreIndexes(), "A field's row is found by its number.");

const Row* Find(TuneField::Id field) { return field < std::size(kFields) ? &kFields[field] : nullptr; }

bool Serves(TuneField::Id field, Uses use) {
  const Row* row = Find(field);
  return row != nullptr && (row->uses & use) == use;
}

using PointTags = boost::bimap<TuneField::Id, std::wstring>;

// The fields that may follow m/z, and the coarse resolution, which once could.
const PointTags& Tags() {
  static const PointTags tags = [] {
    PointTags made;
    for (const Row& row : kFields) {
      if (row.uses == RampAndStep || row.field == TuneField::Q1CoarseResolution)
        made.insert({row.field, row.tag});
    }
    return made;
  }();
  return tags;
}

}  // namespace

bool TuneField::IsField(Id field) { return Find(field) != nullptr; }

std::wstring TuneField::FieldToString(Id field) {
  if (!IsField(field)) {
    throw VexException(L"Field to string map for field id " + ToText(std::uint32_t{field}) +
                       L" does not exist.");
  }
  return TslLoadString(ModuleHandle(), kFieldNameBase + field);
}

std::wstring TuneField::FieldToXmlTag(Id field) {
  const Row* row = Find(field);
  return row != nullptr && row->tag != nullptr ? row->tag : L"Unknown";
}

bool TuneField::IsFieldRampable(Id field) { return Serves(field, Ramp); }
bool TuneField::IsFieldSteppable(Id field) { return Serves(field, RampAndStep); }

std::wstring TuneField::FieldToPointTag(Id field) {
  const auto found = Tags().left.find(field);
  return found != Tags().left.end() ? found->second : L"Unknown";
}

TuneField::Id TuneField::PointTagToField(const std::wstring& tag) {
  const auto found = Tags().right.find(tag);
  return found != Tags().right.end() ? found->second : SourceType;
}

}  // namespace TslBL
