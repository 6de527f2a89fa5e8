// One pass over a whole tune. It ends at the first fault, in an order that users know.

#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/records/VexException.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/FieldTableChecks.h>
#include <tslbl/tune/PointTable.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace TslBL {
namespace {

using ErrTypes = DevTuneRules::ErrTypes;

using F = TuneField;

// The fields in the order in which they are checked.
constexpr F::Id kSourceFields[] = {
    // of an ESI probe
    F::Cylinder, F::Neb1GasPres,
    // of an APCI probe
    F::CoronaVoltage, F::ApciAuxGas, F::CoronaCurrent, F::ApciVapTemp};
constexpr F::Id kAcquisitionFields[] = {F::SourceType,
                                        F::EndPlate,
                                        F::CapEnter,
                                        F::EndPlateTemp,
                                        F::DryGasTemp,
                                        F::DryGasFlow,
                                        F::ControlType,
                                        F::MZLow,
                                        F::MZHi,
                                        F::MZStepSize,
                                        F::PolarityType,
                                        F::InitSettleDelay,
                                        F::StepSettleDelay,
                                        F::PulseCountDelayScan,
                                        F::PulseCountDelaySim};
constexpr F::Id kIonPathFields[] = {F::ScansPerSpec,       F::CapExit,         F::Skimmer,   F::Q0RFAmpl,
                                    F::Q0Offset,           F::Q0Exit1,         F::Q0Exit2,   F::HEDynode,
                                    F::DetectorGain,       F::SignalThreshold, F::Q1MZType,  F::Q1Resolution,
                                    F::Q1CoarseResolution, F::Q1Offset,        F::Q1IonGuide};

constexpr std::ptrdiff_t CountChecks(F::Id field) {
  return std::ranges::count(kSourceFields, field) + std::ranges::count(kAcquisitionFields, field) +
         std::ranges::count(kIonPathFields, field);
}
// The entrance lens is not set, and stands where it is.
static_assert(std::ranges::all_of(kFieldTable,
                                  [](const FieldRow& row) {
                                    const bool isChecked = IsNumeric(row) && row.id != TuneField::Q1Enter;
                                    return CountChecks(row.id) == (isChecked ? 1 : 0);
                                  }),
              "A field is not checked, or is checked twice.");

std::int64_t Distance(std::int32_t a, std::int32_t b) { return std::abs(std::int64_t{a} - b); }

}  // namespace

// What a pass finds. It goes on after a fault only if all are wanted.
class DevTuneRules::Faults {
 public:
  Faults(const DevTuneRules& rules, std::vector<Fault>* all) : rules_(rules), all_(all) {}

  // Takes note of a check of `field`, and tells whether to go on. A lens that is asked to
  // follow m/z and cannot must not reach the instrument: a warning counts.
  bool Holds(TuneField::Id field, ErrTypes result) {
    if (result == NoError) return true;
    if (all_ == nullptr) return false;
    all_->push_back({field, rules_.LastError});
    return true;
  }
  bool Hold(std::span<const F::Id> fields) {
    return std::ranges::all_of(fields, [&](F::Id field) { return Holds(field, rules_.CheckStored(field)); });
  }

 private:
  const DevTuneRules& rules_;
  std::vector<Fault>* all_;
};

struct DevTuneRules::Stage {
  TuneField::Id field;  // of what may be raised
  bool (DevTuneRules::*holds)(Faults& faults) const;
};

std::span<const DevTuneRules::Stage> DevTuneRules::Stages() {
  static constexpr Stage kStages[] = {{TuneField::SourceType, &DevTuneRules::SourceHolds},
                                      {TuneField::ControlType, &DevTuneRules::AcquisitionHolds},
                                      {TuneField::MZCalPts, &DevTuneRules::DurationHolds},
                                      {TuneField::ScansPerSpec, &DevTuneRules::IonPathHolds},
                                      {TuneField::CapExit, &DevTuneRules::CapExitHolds},
                                      {TuneField::EndPlate, &DevTuneRules::DistancesHold},
                                      {TuneField::MZCalPts, &DevTuneRules::MZCalibrationHolds},
                                      {TuneField::Q1CalPts, &DevTuneRules::Q1CalibrationHolds}};
  return kStages;
}

ErrTypes DevTuneRules::Validate() const {
  Faults faults(*this, nullptr);
  for (const Stage& stage : Stages())
    if (!(this->*stage.holds)(faults)) return Error;
  return NoError;
}

std::vector<DevTuneRules::Fault> DevTuneRules::QFaults() const {
  std::vector<Fault> all;
  Faults faults(*this, &all);
  for (const Stage& stage : Stages()) {
    try {
      (this->*stage.holds)(faults);
    } catch (const VexException& e) {
      all.push_back({stage.field, e.Message()});
    } catch (const std::runtime_error& e) {
      all.push_back({stage.field, TslNarrowToWideStr(e.what())});
    }
  }
  return all;
}

ErrTypes DevTuneRules::CheckStored(TuneField::Id field) const {
  if (field == TuneField::MZHi) {
    // What a SIM has there is a span.
    const ErrTypes asMz = CheckLimits(field, ControlData.MZHi);
    return ControlData.Type == Control::Scan ? asMz : CheckSimSpanRange(ControlData.MZHi);
  }
  const FieldRow& row = *FindField(field);
  if (!IsAmong(*this, row.traits.appliesTo)) return NoError;
  if (const auto lens = row.Lens()) return CheckIOPoint(field, ControlData.*lens);
  return CheckLimits(field, *FieldValue(*this, field));
}

bool DevTuneRules::SourceHolds(Faults& faults) const { return faults.Hold(kSourceFields); }
bool DevTuneRules::AcquisitionHolds(Faults& faults) const { return faults.Hold(kAcquisitionFields); }

bool DevTuneRules::DurationHolds(Faults& faults) const {
  constexpr std::int32_t kShortest = 1000;
  const auto duration = Truncate<std::int32_t>(QDuration(*this));
  if (duration >= kShortest) return true;
  LastError = L"Maximum acquisition rate is 1 ms.\nCurrent options specify " + ToText(duration / 1000.0) +
              L" ms.\nIncrease dwell and delay times, mass range or Scans Per Spectrum.";
  return faults.Holds(TuneField::ScansPerSpec, Error);
}

bool DevTuneRules::IonPathHolds(Faults& faults) const { return faults.Hold(kIonPathFields); }

bool DevTuneRules::CapExitHolds(Faults& faults) const {
  return faults.Holds(TuneField::CapExit, CheckCapExitSkimmer());
}

bool DevTuneRules::DistancesHold(Faults& faults) const {
  constexpr std::int64_t kFarthestEndPlate = 1000;
  constexpr std::int64_t kFarthestCylinder = 6000;
  const TuneField::Id cylinder = Source.Type == Probes::APCI ? TuneField::CoronaVoltage : TuneField::Cylinder;
  const bool near = Distance(Source.EndPlate, Source.CapEnter) <= kFarthestEndPlate;
  if (!near && !faults.Holds(TuneField::EndPlate, Fail(kEndPlateFarFromCapEnter))) return false;
  return Distance(Source.Cylinder, Source.EndPlate) <= kFarthestCylinder ||
         faults.Holds(cylinder, Fail(kCylinderFarFromEndPlate));
}

bool DevTuneRules::MZCalPtsHold(const std::vector<MZCalPt>& points, Faults& faults) const {
  if (points.size() < 2) return faults.Holds(TuneField::MZCalPts, Fail(kTooFewMZCalPts));
  PointTable sorted;
  for (const MZCalPt& point : points) sorted.emplace_back(point.MZ, point.MassDAC);
  SortByAbscissa(sorted);
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const auto holds = [&](ErrTypes result) {
      if (result == NoError) return true;
      LastError = FillMessage(kBadMZCalPt, i, LastError);
      return faults.Holds(TuneField::MZCalPts, Error);
    };
    const auto& [mz, massDAC] = sorted[i];
    if (!holds(CheckLimits(TuneField::MZ, mz)) || !holds(CheckLimits(TuneField::MassDAC, massDAC)))
      return false;
    const bool rises = i == 0 || (sorted[i - 1].first < mz && sorted[i - 1].second < massDAC);
    if (!rises && !holds(Fail(kMZCalPtsNotRising))) return false;
  }
  return true;
}

ErrTypes DevTuneRules::CheckMZCalPts(const std::vector<MZCalPt>& points) const {
  Faults first(*this, nullptr);
  return MZCalPtsHold(points, first) ? NoError : Error;
}

bool DevTuneRules::MZCalibrationHolds(Faults& faults) const { return MZCalPtsHold(MZCalPts, faults); }

bool DevTuneRules::Q1CalibrationHolds(Faults& faults) const {
  const auto holds = [&](const Q1CalPt& point, TuneField::Id field, double value) {
    if (CheckLimits(field, value) == NoError) return true;
    LastError = FillMessage(kBadQ1CalPt, point.MZ, LastError);
    return faults.Holds(TuneField::Q1CalPts, Error);
  };
  return std::ranges::all_of(Q1CalPts, [&](const Q1CalPt& point) {
    return holds(point, TuneField::MZ, point.MZ) &&
           std::ranges::all_of(point.Fields, [&](const auto& f) { return holds(point, f.first, f.second); });
  });
}

ErrTypes DevTuneRules::IsProbeCompatible(Probes::ProbeTypes probe) const {
  if (!Probes::IsUsable(probe)) {
    LastError = FillText(L"Source type [%s] does not match tune", Probes::GetName(probe));
    return Error;
  }
  if (Validate() == Error) return Error;
  if (Source.Type == probe) return NoError;
  LastError = FillText(L"Tune ion source does not match probe [ %s ].", Probes::GetName(probe));
  return Error;
}

}  // namespace TslBL
