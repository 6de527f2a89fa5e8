// The Q1 step calibration of a tune, by calibrant and by field.

#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace TslBL {
namespace {

using ErrTypes = DevTuneRules::ErrTypes;

bool IsSameMZ(double a, double b) { return std::abs(a - b) <= 1e-6; }

std::wstring NameOfMZ(double mz) { return FillText(L"MZ %.2f", mz); }

// A ramp without a result, or below zero where nothing is, must be refused by the limits:
// no such number may turn into a good one.
std::int32_t Whole(double value) {
  return std::isnan(value) ? std::numeric_limits<std::int32_t>::min() : Truncate<std::int32_t>(value);
}
std::uint32_t Unsigned(double value) {
  return value > -1.0 ? Truncate<std::uint32_t>(value) : std::numeric_limits<std::uint32_t>::max();
}

IOPoint WithSingle(IOPoint point, double value) {
  point.Single = value;
  return point;
}

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
  if (!TuneField::IsFieldRampable(field)) return Fail(kInvalidRampField);
  const ErrTypes written = WriteRamped(field, value);
  if (written == Error || !TuneField::IsFieldSteppable(field)) return written;
  return WFieldQ1CalPts(field, pairs);
}

// A lens keeps its type: one that follows m/z has a single value that nothing uses.
ErrTypes DevTuneRules::WriteRamped(TuneField::Id field, double value) {
  const Control& c = ControlData;
  switch (field) {
    case TuneField::Cylinder:
      return WCylinder(Whole(value));
    case TuneField::EndPlate:
      return WEndPlate(Whole(value));
    case TuneField::CapEnter:
      return WCapEnter(Whole(value));
    case TuneField::DryGasTemp:
      return WDryGasTemp(Unsigned(value));
    case TuneField::ApciVapTemp:
      return WApciVapTemp(Unsigned(value));
    case TuneField::DryGasFlow:
      return WDryGasFlow(value);
    case TuneField::Neb1GasPres:
      return WNeb1GasPres(Unsigned(value));
    case TuneField::CapExit:
      return WCapExit(WithSingle(c.CapExit, value));
    case TuneField::Skimmer:
      return WSkimmer(WithSingle(c.Skimmer, value));
    case TuneField::Q0RFAmpl:
      return WQ0RFAmpl(WithSingle(c.Q0RFAmpl, value));
    case TuneField::Q0Offset:
      return WQ0Offset(WithSingle(c.Q0Offset, value));
    case TuneField::Q0Exit1:
      return WQ0Exit1(WithSingle(c.Q0Exit1, value));
    case TuneField::Q0Exit2:
      return WQ0Exit2(WithSingle(c.Q0Exit2, value));
    case TuneField::HEDynode:
      return WHEDynode(Whole(value));
    case TuneField::DetectorGain:
      return WDetectorGain(Whole(value));
    case TuneField::SignalThreshold:
      return WSignalThreshold(Unsigned(value));
    case TuneField::Q1Resolution:
      return WQ1Resolution(WithSingle(c.Q1Resolution, value));
    case TuneField::Q1CoarseResolution:
      return WQ1CoarseResolution(WithSingle(c.Q1CoarseResolution, value));
    case TuneField::Q1Offset:
      return WQ1Offset(WithSingle(c.Q1Offset, value));
    case TuneField::Q1IonGuide:
      return WQ1IonGuide(WithSingle(c.Q1IonGuide, value));
    default:
      throw std::runtime_error("Unknown ramp tune field");
  }
}

}  // namespace TslBL
