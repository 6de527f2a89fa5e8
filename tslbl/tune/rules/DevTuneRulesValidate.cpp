// One pass over a whole tune. It ends at the first fault, in an order that users know.

#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/records/VexException.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <stdexcept>

namespace TslBL {
namespace {

using ErrTypes = DevTuneRules::ErrTypes;

struct Setting {
  template <class T>
  Setting(TuneField::Id id, T setting) : field(id), value(static_cast<double>(setting)) {}

  TuneField::Id field;
  double value;
};

struct Lens {
  TuneField::Id field;
  const IOPoint& point;
};

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
  bool Hold(std::initializer_list<Setting> settings) {
    return std::ranges::all_of(
        settings, [&](const Setting& s) { return Holds(s.field, rules_.CheckLimits(s.field, s.value)); });
  }
  bool Hold(std::initializer_list<Lens> lenses) {
    return std::ranges::all_of(
        lenses, [&](const Lens& l) { return Holds(l.field, rules_.CheckIOPoint(l.field, l.point)); });
  }

 private:
  const DevTuneRules& rules_;
  std::vector<Fault>* all_;
};

struct DevTuneRules::Step {
  TuneField::Id field;  // of what may be raised
  bool (DevTuneRules::*holds)(Faults& faults) const;
};

std::span<const DevTuneRules::Step> DevTuneRules::Steps() {
  static constexpr Step kSteps[] = {{TuneField::SourceType, &DevTuneRules::SourceHolds},
                                    {TuneField::ControlType, &DevTuneRules::AcquisitionHolds},
                                    {TuneField::MZCalPts, &DevTuneRules::DurationHolds},
                                    {TuneField::ScansPerSpec, &DevTuneRules::IonPathHolds},
                                    {TuneField::CapExit, &DevTuneRules::CapExitHolds},
                                    {TuneField::EndPlate, &DevTuneRules::DistancesHold},
                                    {TuneField::MZCalPts, &DevTuneRules::MZCalibrationHolds},
                                    {TuneField::Q1CalPts, &DevTuneRules::Q1CalibrationHolds}};
  return kSteps;
}

ErrTypes DevTuneRules::Validate() const {
  Faults faults(*this, nullptr);
  for (const Step& step : Steps())
    if (!(this->*step.holds)(faults)) return Error;
  return NoError;
}

std::vector<DevTuneRules::Fault> DevTuneRules::QFaults() const {
  std::vector<Fault> all;
  Faults faults(*this, &all);
  for (const Step& step : Steps()) {
    try {
      (this->*step.holds)(faults);
    } catch (const VexException& e) {
      all.push_back({step.field, e.Message()});
    } catch (const std::runtime_error& e) {
      all.push_back({step.field, TslNarrowToWideStr(e.what())});
    }
  }
  return all;
}

bool DevTuneRules::SourceHolds(Faults& faults) const {
  const IonSource& s = Source;
  if (s.Type != Probes::APCI)
    return faults.Hold({{TuneField::Cylinder, s.Cylinder}, {TuneField::Neb1GasPres, s.Neb1GasPres}});
  return faults.Hold({{TuneField::CoronaVoltage, s.Cylinder},
                      {TuneField::ApciAuxGas, s.Neb1GasPres},
                      {TuneField::CoronaCurrent, s.CoronaCurrent},
                      {TuneField::ApciVapTemp, s.ApciVapTemp}});
}

bool DevTuneRules::AcquisitionHolds(Faults& faults) const {
  const IonSource& s = Source;
  const Control& c = ControlData;
  const bool scans = c.Type == Control::Scan;
  const bool upToLow = faults.Hold({{TuneField::SourceType, s.Type},
                                    {TuneField::EndPlate, s.EndPlate},
                                    {TuneField::CapEnter, s.CapEnter},
                                    {TuneField::EndPlateTemp, s.EndPlateTemp},
                                    {TuneField::DryGasTemp, s.DryGasTemp},
                                    {TuneField::DryGasFlow, s.DryGasFlow},
                                    {TuneField::ControlType, c.Type},
                                    {TuneField::MZLow, c.MZLow}});
  if (!upToLow) return false;
  // What a SIM has there is a span.
  const ErrTypes asMz = CheckLimits(TuneField::MZHi, c.MZHi);
  if (!faults.Holds(TuneField::MZHi, scans ? asMz : CheckSimSpanRange(c.MZHi))) return false;
  return faults.Hold(
      {{TuneField::MZStepSize, c.MZStepSize},
       {TuneField::PolarityType, c.PolarityType},
       {TuneField::InitSettleDelay, c.InitSettleDelay},
       {TuneField::StepSettleDelay, c.StepSettleDelay},
       {scans ? TuneField::PulseCountDelayScan : TuneField::PulseCountDelaySim, c.PulseCountDelay}});
}

bool DevTuneRules::DurationHolds(Faults& faults) const {
  constexpr std::int32_t kShortest = 1000;
  const auto duration = Truncate<std::int32_t>(QDuration(*this));
  if (duration >= kShortest) return true;
  LastError = L"Maximum acquisition rate is 1 ms.\nCurrent options specify " + ToText(duration / 1000.0) +
              L" ms.\nIncrease dwell and delay times, mass range or Scans Per Spectrum.";
  return faults.Holds(TuneField::ScansPerSpec, Error);
}

bool DevTuneRules::IonPathHolds(Faults& faults) const {
  const Control& c = ControlData;
  return faults.Hold({{TuneField::ScansPerSpec, c.ScansPerSpec}}) &&
         faults.Hold({Lens{TuneField::CapExit, c.CapExit},
                      {TuneField::Skimmer, c.Skimmer},
                      {TuneField::Q0RFAmpl, c.Q0RFAmpl},
                      {TuneField::Q0Offset, c.Q0Offset},
                      {TuneField::Q0Exit1, c.Q0Exit1},
                      {TuneField::Q0Exit2, c.Q0Exit2}}) &&
         faults.Hold({{TuneField::HEDynode, c.HEDynode},
                      {TuneField::DetectorGain, c.DetectorGain},
                      {TuneField::SignalThreshold, c.SignalThreshold},
                      {TuneField::Q1MZType, c.Q1MZType}}) &&
         faults.Hold({Lens{TuneField::Q1Resolution, c.Q1Resolution},
                      {TuneField::Q1CoarseResolution, c.Q1CoarseResolution},
                      {TuneField::Q1Offset, c.Q1Offset},
                      {TuneField::Q1IonGuide, c.Q1IonGuide}});
}

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

bool DevTuneRules::MZCalibrationHolds(Faults& faults) const {
  return faults.Holds(TuneField::MZCalPts, CheckMZCalPts(MZCalPts));
}

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
