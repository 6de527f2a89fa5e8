// The Q1 step calibration of a tune, by calibrant and by field.

#include <tslbl/closed/common/Message.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <tslbl/tune/rules/RampNumbers.h>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <variant>

namespace TslBL {
namespace {

using ErrTypes = DevTuneRules::ErrTypes;

bool IsSameMZ(double a, double b) { return std::abs(a - b) <= 1e-6; }

std::wstring NameOfMZ(double mz) { return FillText(L"MZ %.2f", mz); }

// A field's writer takes a ramp's result, and its own type of it. A lens keeps its type: one
// that follows m/z has a single value that nothing uses.
using R = DevTuneRules;
using RampWriter = std::variant<ErrTypes (R::*)(double), ErrTypes (R::*)(std::int32_t),
                                ErrTypes (R::*)(std::uint32_t), ErrTypes (R::*)(const IOPoint&)>;

struct WriteRamped {
  DevTuneRules& rules;
  TuneField::Id field;
  double value;

  ErrTypes operator()(ErrTypes (R::*write)(double)) const { return (rules.*write)(value); }
  ErrTypes operator()(ErrTypes (R::*write)(std::int32_t)) const { return (rules.*write)(WholeOfRamp(value)); }
  ErrTypes operator()(ErrTypes (R::*write)(std::uint32_t)) const {
    return (rules.*write)(UnsignedOfRamp(value));
  }
  ErrTypes operator()(ErrTypes (R::*write)(const IOPoint&)) const {
    IOPoint lens = rules.ControlData.*FindField(field)->Lens();
    lens.Single = value;
    return (rules.*write)(lens);
  }
};

struct RampRow {
  TuneField::Id field;
  RampWriter write;
};
constexpr RampRow kRampRows[] = {
    {TuneField::Cylinder, &R::WCylinder},         {TuneField::EndPlate, &R::WEndPlate},
    {TuneField::CapEnter, &R::WCapEnter},         {TuneField::DryGasTemp, &R::WDryGasTemp},
    {TuneField::ApciVapTemp, &R::WApciVapTemp},   {TuneField::DryGasFlow, &R::WDryGasFlow},
    {TuneField::Neb1GasPres, &R::WNeb1GasPres},   {TuneField::CapExit, &R::WCapExit},
    {TuneField::Skimmer, &R::WSkimmer},           {TuneField::Q0RFAmpl, &R::WQ0RFAmpl},
    {TuneField::Q0Offset, &R::WQ0Offset},         {TuneField::Q0Exit1, &R::WQ0Exit1},
    {TuneField::Q0Exit2, &R::WQ0Exit2},           {TuneField::HEDynode, &R::WHEDynode},
    {TuneField::DetectorGain, &R::WDetectorGain}, {TuneField::SignalThreshold, &R::WSignalThreshold},
    {TuneField::Q1Resolution, &R::WQ1Resolution}, {TuneField::Q1CoarseResolution, &R::WQ1CoarseResolution},
    {TuneField::Q1Offset, &R::WQ1Offset},         {TuneField::Q1IonGuide, &R::WQ1IonGuide},
};

constexpr const RampRow* FindRampRow(TuneField::Id field) {
  const auto found = std::ranges::find(kRampRows, field, &RampRow::field);
  return found != std::end(kRampRows) ? &*found : nullptr;
}
static_assert(std::ranges::all_of(kFieldTable,
                                  [](const FieldRow& row) {
                                    return row.IsRampable() == (FindRampRow(row.id) != nullptr);
                                  }),
              "What a ramp finds is written by the field's writer.");

}  // namespace

// Leaves its text behind even where the caller hoped to find nothing.
bool DevTuneRules::FindQ1CalPt(double mz, std::size_t& found) const {
  const auto at =
      std::ranges::find_if(Q1CalPts, [mz](const Q1CalPt& point) { return IsSameMZ(point.MZ, mz); });
  if (at == Q1CalPts.end()) {
    Fail(kCalibrantNotFound);
    return false;
  }
  found = static_cast<std::size_t>(at - Q1CalPts.begin());
  return true;
}

ErrTypes DevTuneRules::CheckSteppable(TuneField::Id field) const {
  return TuneField::IsFieldSteppable(field) ? NoError : Fail(kInvalidQ1Field);
}

std::vector<std::pair<double, std::wstring>> DevTuneRules::QQ1CalPts() const {
  std::vector<std::pair<double, std::wstring>> points;
  for (const Q1CalPt& point : Q1CalPts) points.emplace_back(point.MZ, point.Name);
  return points;
}

ErrTypes DevTuneRules::AddQ1CalPt(double mz, const std::wstring& name) {
  if (CheckLimits(TuneField::MZ, mz) == Error) return Error;
  std::size_t found = 0;
  if (FindQ1CalPt(mz, found)) return Fail(kCalibrantExists);
  Q1CalPts.emplace_back(mz, name);
  return NoError;
}

ErrTypes DevTuneRules::DelQ1CalPt(double mz) {
  std::size_t found = 0;
  if (!FindQ1CalPt(mz, found)) return Error;
  Q1CalPts.erase(Q1CalPts.begin() + static_cast<std::ptrdiff_t>(found));
  return NoError;
}

ErrTypes DevTuneRules::QQ1CalPtName(double mz, std::wstring& name) const {
  std::size_t found = 0;
  if (!FindQ1CalPt(mz, found)) return Error;
  name = Q1CalPts[found].Name;
  return NoError;
}

ErrTypes DevTuneRules::WQ1CalPtName(double mz, const std::wstring& name) {
  std::size_t found = 0;
  if (!FindQ1CalPt(mz, found)) return Error;
  Q1CalPts[found].Name = name;
  return NoError;
}

ErrTypes DevTuneRules::ChangeQ1CalPtMZ(double mz, double newMZ) {
  std::size_t moved = 0;
  if (!FindQ1CalPt(mz, moved)) return Error;
  if (IsSameMZ(mz, newMZ)) return NoError;
  if (CheckLimits(TuneField::MZ, newMZ) == Error) return Error;
  std::size_t other = 0;
  if (FindQ1CalPt(newMZ, other)) return Fail(kCalibrantClashes);
  Q1CalPts[moved].MZ = newMZ;
  return NoError;
}

ErrTypes DevTuneRules::QFieldQ1CalPts(TuneField::Id field, Pairs& pairs) const {
  if (CheckSteppable(field) == Error) return Error;
  pairs.clear();
  for (const Q1CalPt& point : Q1CalPts) {
    const auto entry = point.Fields.find(field);
    if (entry != point.Fields.end()) pairs.emplace_back(point.MZ, entry->second);
  }
  return NoError;
}

ErrTypes DevTuneRules::QQ1CalPtField(double mz, TuneField::Id field, double& value) const {
  if (CheckSteppable(field) == Error) return Error;
  std::size_t found = 0;
  if (!FindQ1CalPt(mz, found)) return Error;
  const auto entry = Q1CalPts[found].Fields.find(field);
  if (entry == Q1CalPts[found].Fields.end()) return Fail(kFieldNotDefined);
  value = entry->second;
  return NoError;
}

ErrTypes DevTuneRules::WQ1CalPtField(double mz, TuneField::Id field, double value) {
  if (CheckSteppable(field) == Error || CheckLimits(field, value) == Error) return Error;
  std::size_t found = 0;
  if (!FindQ1CalPt(mz, found)) return Error;
  Q1CalPts[found].Fields[field] = value;
  return NoError;
}

ErrTypes DevTuneRules::RemoveQ1CalPtField(double mz, TuneField::Id field) {
  if (CheckSteppable(field) == Error) return Error;
  std::size_t found = 0;
  if (!FindQ1CalPt(mz, found)) return Error;
  Q1CalPts[found].Fields.erase(field);
  return NoError;
}

ErrTypes DevTuneRules::WFieldQ1CalPts(TuneField::Id field, const Pairs& pairs) {
  if (CheckSteppable(field) == Error) return Error;
  for (const auto& [mz, value] : pairs)
    if (CheckLimits(field, value) == Error) return Error;
  for (const auto& [mz, value] : pairs) {
    std::size_t found = 0;
    if (!FindQ1CalPt(mz, found) && AddQ1CalPt(mz, NameOfMZ(mz)) == Error) return Error;
  }
  for (Q1CalPt& point : Q1CalPts) {
    const auto pair = std::ranges::find_if(pairs, [&](const auto& p) { return IsSameMZ(p.first, point.MZ); });
    if (pair != pairs.end()) {
      point.Fields[field] = pair->second;
    } else {
      point.Fields.erase(field);
    }
  }
  return NoError;
}

ErrTypes DevTuneRules::WRampResults(TuneField::Id field, double value, const Pairs& pairs) {
  const RampRow* row = FindRampRow(field);
  if (row == nullptr) return Fail(kInvalidRampField);
  const ErrTypes written = std::visit(WriteRamped{*this, field, value}, row->write);
  if (written == Error || !TuneField::IsFieldSteppable(field)) return written;
  return WFieldQ1CalPts(field, pairs);
}

}  // namespace TslBL
