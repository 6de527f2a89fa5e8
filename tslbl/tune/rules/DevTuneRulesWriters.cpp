// The writers. A plain one names its field and the limits of it; one with more in it says
// why the instrument needs that.

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/rules/DefaultTune.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <tslbl/tune/rules/SimSpans.h>
#include <algorithm>
#include <iterator>

namespace TslBL {
namespace {

using ErrTypes = DevTuneRules::ErrTypes;

// A file may hold the smallest integer, which has no opposite.
std::int32_t Opposite(std::int32_t volts) {
  return static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(volts));
}

void SwitchPolarity(IOPoint& lens) {
  lens.Single *= -1.0;
  lens.Start *= -1.0;
  lens.End *= -1.0;
}

double ThreeDecimals(double value) { return Truncate<std::int32_t>(value * 1000.0) / 1000.0; }

}  // namespace

template <class T>
void DevTuneRules::Store(T& stored, const T& value) {
  if (stored == value) return;
  stored = value;
  Modified = true;
}

template <class T>
ErrTypes DevTuneRules::Write(T& stored, const std::type_identity_t<T>& value) {
  Store(stored, value);
  return NoError;
}

template <class T>
ErrTypes DevTuneRules::Write(TuneField::Id field, T& stored, std::type_identity_t<T> value) {
  if (CheckLimits(field, static_cast<double>(value)) == Error) return Error;
  return Write(stored, value);
}

ErrTypes DevTuneRules::WriteLens(TuneField::Id field, IOPoint& stored, const IOPoint& point) {
  const ErrTypes result = CheckIOPoint(field, point);
  if (result != Error) Store(stored, point);
  return result;
}

// The setting has a thousandth of a percent for its unit.
ErrTypes DevTuneRules::WriteResolution(TuneField::Id field, IOPoint& stored, const IOPoint& point) {
  const ErrTypes result = WriteLens(field, stored, point);
  if (result != Error) stored.Single = ThreeDecimals(stored.Single);
  return result;
}

// ---- Tune record -----------------------------------------------------------------------

ErrTypes DevTuneRules::WName(const std::wstring& name) { return Write(Info.Name, name); }
ErrTypes DevTuneRules::WComment(const std::wstring& comment) { return Write(Info.Comment, comment); }
ErrTypes DevTuneRules::WLastSaved(std::int64_t time) { return Write(Info.LastSave, time); }

ErrTypes DevTuneRules::WLastSavedNow() {
  Info.LastSave = UnixSecondsNow();
  Modified = true;
  return NoError;
}

// ---- Ion source ------------------------------------------------------------------------

ErrTypes DevTuneRules::WCylinder(std::int32_t volts) {
  return Write(TuneField::Cylinder, Source.Cylinder, volts);
}
ErrTypes DevTuneRules::WEndPlateTemp(IonSource::TempLevels level) {
  return Write(TuneField::EndPlateTemp, Source.EndPlateTemp, level);
}
ErrTypes DevTuneRules::WDryGasTemp(std::uint32_t degrees) {
  return Write(TuneField::DryGasTemp, Source.DryGasTemp, degrees);
}
ErrTypes DevTuneRules::WDryGasFlow(double flow) {
  return Write(TuneField::DryGasFlow, Source.DryGasFlow, flow);
}
ErrTypes DevTuneRules::WNeb1GasPres(std::uint32_t pressure) {
  return Write(TuneField::Neb1GasPres, Source.Neb1GasPres, pressure);
}
ErrTypes DevTuneRules::WCoronaCurrent(double current) {
  return Write(TuneField::CoronaCurrent, Source.CoronaCurrent, current);
}
ErrTypes DevTuneRules::WNeb2GasOn(bool on) { return Write(Source.Neb2GasOn, on); }
ErrTypes DevTuneRules::WCalValve2On(bool on) { return Write(Source.CalValve2On, on); }
ErrTypes DevTuneRules::WCalSample1On(bool on) { return Write(Source.CalSample1On, on); }
ErrTypes DevTuneRules::WCalSample2On(bool on) { return Write(Source.CalSample2On, on); }
ErrTypes DevTuneRules::WCalValveOn(bool on) { return Write(Source.CalValveOn, on); }
ErrTypes DevTuneRules::WControlByCurrent(bool on) { return Write(Source.ControlByCurrent, on); }

ErrTypes DevTuneRules::WIonSourceType(Probes::ProbeTypes probe) {
  if (CheckLimits(TuneField::SourceType, probe) == Error) return Error;
  if (Source.Type == probe) return NoError;
  Source = DefaultIonSource(probe, ControlData.PolarityType);
  Modified = true;
  return NoError;
}

// The end plate of an APCI source draws the ions on: it cannot take their sign.
ErrTypes DevTuneRules::WEndPlate(std::int32_t volts) {
  // Its text is there whatever the sign makes of the value: a site may have moved the limits
  // to one side of zero.
  const ErrTypes within = CheckLimits(TuneField::EndPlate, volts);
  const ErrTypes result = Source.Type == Probes::APCI ? CheckAttracts(TuneField::EndPlate, volts) : within;
  return result == Error ? Error : Write(Source.EndPlate, volts);
}

ErrTypes DevTuneRules::WCapEnter(std::int32_t volts) {
  const ErrTypes result = Source.Type == Probes::APCI ? CheckAttracts(TuneField::CapEnter, volts)
                                                      : CheckLimits(TuneField::CapEnter, volts);
  return result == Error ? Error : Write(Source.CapEnter, volts);
}

// The needle makes the ions: it has their sign.
ErrTypes DevTuneRules::WCoronaVoltage(std::int32_t volts) {
  constexpr TuneField::Id kField = TuneField::CoronaVoltage;
  CheckLimits(kField, volts);
  const Limits limits = LimitsOf(kField);
  const bool positive = ControlData.PolarityType == PolarityPositive;
  const ErrTypes result =
      positive ? CheckLimits(kField, volts, 0.0, limits.Max) : CheckLimits(kField, volts, limits.Min, 0.0);
  return result == Error ? Error : Write(Source.Cylinder, volts);
}

ErrTypes DevTuneRules::CheckAttracts(TuneField::Id field, std::int32_t volts) const {
  const Limits limits = LimitsOf(field);
  return ControlData.PolarityType == PolarityPositive ? CheckLimits(field, volts, limits.Min, 0.0)
                                                      : CheckLimits(field, volts, 0.0, limits.Max);
}

// Lukewarm it would only wet the source; and hot it needs gas to carry the vapour off.
ErrTypes DevTuneRules::WApciVapTemp(std::uint32_t degrees) {
  constexpr std::uint32_t kLeastAuxGas = 15;
  constexpr std::uint32_t kUsualAuxGas = 25;
  if (CheckLimits(TuneField::ApciVapTemp, degrees) == Error) return Error;
  if (degrees > 25 && degrees < 150) return Fail(kBadVapTemp);
  if (Source.ApciVapTemp == degrees) return NoError;
  Source.ApciVapTemp = degrees;
  Modified = true;
  const bool heats = degrees > LimitsOf(TuneField::ApciVapTemp).Min;
  if (heats) {
    Source.CalValveOn = true;
    if (Source.Neb1GasPres < kLeastAuxGas) Source.Neb1GasPres = kUsualAuxGas;
  }
  return NoError;
}

// A little of it does not flow evenly.
ErrTypes DevTuneRules::WApciAuxGas(std::uint32_t pressure) {
  if (CheckLimits(TuneField::ApciAuxGas, pressure) == Error) return Error;
  if (pressure > 0 && pressure < 15) return Fail(kBadAuxGas);
  return Write(Source.Neb1GasPres, pressure);
}

ErrTypes DevTuneRules::WApciNebGas(bool on) {
  if (Source.CalValveOn == on) return NoError;
  Source.CalValveOn = on;
  if (!on) Source.ApciVapTemp = Truncate<std::uint32_t>(LimitsOf(TuneField::ApciVapTemp).Min);
  Modified = true;
  return NoError;
}

// ---- Acquisition -----------------------------------------------------------------------

ErrTypes DevTuneRules::WControlType(Control::Types type) {
  return Write(TuneField::ControlType, ControlData.Type, type);
}
ErrTypes DevTuneRules::WMZStepSize(double step) {
  return Write(TuneField::MZStepSize, ControlData.MZStepSize, step);
}
ErrTypes DevTuneRules::WInitSettleDelay(std::uint32_t delay) {
  return Write(TuneField::InitSettleDelay, ControlData.InitSettleDelay, delay);
}
ErrTypes DevTuneRules::WStepSettleDelay(std::uint32_t delay) {
  return Write(TuneField::StepSettleDelay, ControlData.StepSettleDelay, delay);
}
ErrTypes DevTuneRules::WPulseCountDelay(std::uint32_t delay) {
  const bool isSim = ControlData.Type == Control::Sim;
  return Write(isSim ? TuneField::PulseCountDelaySim : TuneField::PulseCountDelayScan,
               ControlData.PulseCountDelay, delay);
}
ErrTypes DevTuneRules::WScansPerSpec(std::uint32_t scans) {
  return Write(TuneField::ScansPerSpec, ControlData.ScansPerSpec, scans);
}

ErrTypes DevTuneRules::WMZRange(double low, double high) {
  if (ControlData.Type != Control::Scan || low > high) return Fail(kHighBelowLow);
  Write(TuneField::MZLow, ControlData.MZLow, low);
  return Write(TuneField::MZHi, ControlData.MZHi, high);
}

ErrTypes DevTuneRules::WMZLow(double mz) {
  if (ControlData.Type == Control::Scan && mz > ControlData.MZHi) return Fail(kHighBelowLow);
  return Write(TuneField::MZLow, ControlData.MZLow, mz);
}

ErrTypes DevTuneRules::WMZHi(double mz) {
  if (ControlData.Type != Control::Scan) return Fail(kHighOfScanOnly);
  if (mz < ControlData.MZLow) return Fail(kHighBelowLow);
  return Write(TuneField::MZHi, ControlData.MZHi, mz);
}

ErrTypes DevTuneRules::WSimWithSpan(Control::SimWithSpanTypes code) {
  if (ControlData.Type != Control::Sim) return Fail(kSpanOfSimOnly);
  if (code > Control::Span2_0) return Fail(kBadSpan);
  return Write(ControlData.MZHi, kSimSpans[code]);
}

ErrTypes DevTuneRules::WSamplesPerMass(double samples) {
  constexpr std::int32_t kOffered[] = {20, 10, 6, 5, 4};
  if (std::ranges::find(kOffered, Truncate<std::int32_t>(samples)) == std::end(kOffered)) samples = 10.0;
  // Down to a whole number of the instrument's steps of five hundredths.
  const std::int32_t hundredths = Truncate<std::int32_t>(1.0 / samples * 100.0) / 5 * 5;
  return WMZStepSize(hundredths * 0.01);
}

ErrTypes DevTuneRules::WPolarityType(PolarityTypes polarity) {
  if (CheckLimits(TuneField::PolarityType, polarity) == Error) return Error;
  if (ControlData.PolarityType == polarity) return NoError;
  ControlData.PolarityType = polarity;
  for (std::int32_t* volts : {&Source.Cylinder, &Source.EndPlate, &Source.CapEnter, &ControlData.HEDynode})
    *volts = Opposite(*volts);
  Control& c = ControlData;
  for (IOPoint* lens :
       {&c.CapExit, &c.Skimmer, &c.Q0Offset, &c.Q0Exit1, &c.Q0Exit2, &c.Q1Offset, &c.Q1Enter, &c.Q1IonGuide})
    SwitchPolarity(*lens);
  SwitchPolarityQ1CalPts();
  Modified = true;
  return NoError;
}

void DevTuneRules::SwitchPolarityQ1CalPts() {
  constexpr TuneField::Id kSigned[] = {TuneField::CapExit,   TuneField::Skimmer, TuneField::Q0Offset,
                                       TuneField::Q0Exit1,   TuneField::Q0Exit2, TuneField::Q1Offset,
                                       TuneField::Q1IonGuide};
  for (Q1CalPt& point : Q1CalPts)
    for (auto& [field, value] : point.Fields)
      if (std::ranges::find(kSigned, field) != std::end(kSigned)) value *= -1.0;
}

// ---- Ion path and detector -------------------------------------------------------------

ErrTypes DevTuneRules::WCapExit(const IOPoint& point) {
  return WriteLens(TuneField::CapExit, ControlData.CapExit, point);
}
ErrTypes DevTuneRules::WSkimmer(const IOPoint& point) {
  return WriteLens(TuneField::Skimmer, ControlData.Skimmer, point);
}
ErrTypes DevTuneRules::WQ0RFAmpl(const IOPoint& point) {
  return WriteLens(TuneField::Q0RFAmpl, ControlData.Q0RFAmpl, point);
}
ErrTypes DevTuneRules::WQ0Offset(const IOPoint& point) {
  return WriteLens(TuneField::Q0Offset, ControlData.Q0Offset, point);
}
ErrTypes DevTuneRules::WQ0Exit1(const IOPoint& point) {
  return WriteLens(TuneField::Q0Exit1, ControlData.Q0Exit1, point);
}
ErrTypes DevTuneRules::WQ0Exit2(const IOPoint& point) {
  return WriteLens(TuneField::Q0Exit2, ControlData.Q0Exit2, point);
}
ErrTypes DevTuneRules::WHEDynode(std::int32_t volts) {
  return Write(TuneField::HEDynode, ControlData.HEDynode, volts);
}
ErrTypes DevTuneRules::WDetectorGain(std::int32_t volts) {
  return Write(TuneField::DetectorGain, ControlData.DetectorGain, volts);
}
ErrTypes DevTuneRules::WSignalThreshold(std::uint32_t threshold) {
  return Write(TuneField::SignalThreshold, ControlData.SignalThreshold, threshold);
}
ErrTypes DevTuneRules::WQ1MZType(Control::Q1MZTypes type) {
  return Write(TuneField::Q1MZType, ControlData.Q1MZType, type);
}
ErrTypes DevTuneRules::WQ1Resolution(const IOPoint& point) {
  return WriteResolution(TuneField::Q1Resolution, ControlData.Q1Resolution, point);
}
ErrTypes DevTuneRules::WQ1CoarseResolution(const IOPoint& point) {
  return WriteResolution(TuneField::Q1CoarseResolution, ControlData.Q1CoarseResolution, point);
}
ErrTypes DevTuneRules::WQ1Offset(const IOPoint& point) {
  return WriteLens(TuneField::Q1Offset, ControlData.Q1Offset, point);
}
ErrTypes DevTuneRules::WQ1IonGuide(const IOPoint& point) {
  return WriteLens(TuneField::Q1IonGuide, ControlData.Q1IonGuide, point);
}
ErrTypes DevTuneRules::WQ1PolePolarity(bool on) { return Write(ControlData.Q1PolePolarity, on); }

ErrTypes DevTuneRules::WQ1Enter(const IOPoint&) {
  ControlData.Q1Enter.Type = IOPoint::SingleType;
  ControlData.Q1Enter.Single = 0.0;
  return NoError;
}

// ---- m/z calibration -------------------------------------------------------------------

ErrTypes DevTuneRules::WMZCalPts(const std::vector<MZCalPt>& points) {
  return CheckMZCalPts(points) == Error ? Error : Write(MZCalPts, points);
}

}  // namespace TslBL
