// The writers. A plain one names its field and the limits of it; one with more in it says
// why the instrument needs that.

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/FieldPlaces.h>
#include <tslbl/tune/FieldTableChecks.h>
#include <tslbl/tune/rules/DefaultTune.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <tslbl/tune/rules/SimSpans.h>
#include <tslbl/tune/rules/TurnVoltages.h>
#include <algorithm>

namespace TslBL {
namespace {

using ErrTypes = DevTuneRules::ErrTypes;

double ThreeDecimals(double value) { return Truncate<std::int32_t>(value * 1000.0) / 1000.0; }

}  // namespace

template <class T>
ErrTypes DevTuneRules::Write(T& stored, const std::type_identity_t<T>& value) {
  Store(stored, value);
  return NoError;
}

// A field without limits takes any value of its type.
template <TuneField::Id field, class T>
ErrTypes DevTuneRules::Write(T value) {
  if constexpr (HasLimits(*FindField(field))) {
    if (CheckLimits(field, static_cast<double>(value)) == Error) return Error;
  }
  return Write<T>(FieldIn<field>(*this), value);
}

template <TuneField::Id field>
ErrTypes DevTuneRules::WriteVoltage(std::int32_t volts) {
  const Limits limits = QLimitsNow(field);
  if (CheckLimits(field, volts, limits.Min, limits.Max) == Error) return Error;
  return Write(FieldIn<field>(*this), volts);
}

template <TuneField::Id field>
ErrTypes DevTuneRules::WriteLens(const IOPoint& point) {
  const ErrTypes result = CheckIOPoint(field, point);
  if (result != Error) Store(FieldIn<field>(*this), point);
  return result;
}

// The setting has a thousandth of a percent for its unit.
template <TuneField::Id field>
ErrTypes DevTuneRules::WriteResolution(const IOPoint& point) {
  const ErrTypes result = WriteLens<field>(point);
  double& single = FieldIn<field>(*this).Single;
  if (result != Error) single = ThreeDecimals(single);
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

ErrTypes DevTuneRules::WCylinder(std::int32_t volts) { return Write<TuneField::Cylinder>(volts); }
ErrTypes DevTuneRules::WEndPlateTemp(IonSource::TempLevels level) {
  return Write<TuneField::EndPlateTemp>(level);
}
ErrTypes DevTuneRules::WDryGasTemp(std::uint32_t degrees) { return Write<TuneField::DryGasTemp>(degrees); }
ErrTypes DevTuneRules::WDryGasFlow(double flow) { return Write<TuneField::DryGasFlow>(flow); }
ErrTypes DevTuneRules::WNeb1GasPres(std::uint32_t pressure) {
  return Write<TuneField::Neb1GasPres>(pressure);
}
ErrTypes DevTuneRules::WCoronaCurrent(double current) { return Write<TuneField::CoronaCurrent>(current); }
ErrTypes DevTuneRules::WNeb2GasOn(bool on) { return Write<TuneField::Neb2GasOn>(on); }
ErrTypes DevTuneRules::WCalValve2On(bool on) { return Write<TuneField::CalValve2On>(on); }
ErrTypes DevTuneRules::WCalSample1On(bool on) { return Write<TuneField::CalSample1On>(on); }
ErrTypes DevTuneRules::WCalSample2On(bool on) { return Write<TuneField::CalSample2On>(on); }
ErrTypes DevTuneRules::WCalValveOn(bool on) { return Write<TuneField::CalValveOn>(on); }
ErrTypes DevTuneRules::WControlByCurrent(bool on) { return Write<TuneField::ControlByCurrent>(on); }

ErrTypes DevTuneRules::WIonSourceType(Probes::ProbeTypes probe) {
  if (CheckLimits(TuneField::SourceType, probe) == Error) return Error;
  if (Source.Type == probe) return NoError;
  Source = DefaultIonSource(probe, ControlData.PolarityType);
  Modified = true;
  return NoError;
}

ErrTypes DevTuneRules::WEndPlate(std::int32_t volts) {
  // Its text is there whatever the sign makes of the value: a site may have moved the limits
  // to one side of zero.
  CheckLimits(TuneField::EndPlate, volts);
  return WriteVoltage<TuneField::EndPlate>(volts);
}

ErrTypes DevTuneRules::WCapEnter(std::int32_t volts) { return WriteVoltage<TuneField::CapEnter>(volts); }

ErrTypes DevTuneRules::WCoronaVoltage(std::int32_t volts) {
  CheckLimits(TuneField::CoronaVoltage, volts);
  return WriteVoltage<TuneField::CoronaVoltage>(volts);
}

// A hot vaporizer needs gas that carries the vapour off.
ErrTypes DevTuneRules::WApciVapTemp(std::uint32_t degrees) {
  constexpr std::uint32_t kLeastAuxGas = 15;
  constexpr std::uint32_t kUsualAuxGas = 25;
  if (CheckLimits(TuneField::ApciVapTemp, degrees) == Error) return Error;
  if (FindField(TuneField::ApciVapTemp)->traits.gap->Holds(degrees)) return Fail(kBadVapTemp);
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

ErrTypes DevTuneRules::WApciAuxGas(std::uint32_t pressure) {
  if (CheckLimits(TuneField::ApciAuxGas, pressure) == Error) return Error;
  if (FindField(TuneField::ApciAuxGas)->traits.gap->Holds(pressure)) return Fail(kBadAuxGas);
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

ErrTypes DevTuneRules::WControlType(Control::Types type) { return Write<TuneField::ControlType>(type); }
ErrTypes DevTuneRules::WMZStepSize(double step) { return Write<TuneField::MZStepSize>(step); }
ErrTypes DevTuneRules::WInitSettleDelay(std::uint32_t delay) {
  return Write<TuneField::InitSettleDelay>(delay);
}
ErrTypes DevTuneRules::WStepSettleDelay(std::uint32_t delay) {
  return Write<TuneField::StepSettleDelay>(delay);
}
ErrTypes DevTuneRules::WPulseCountDelay(std::uint32_t delay) {
  return ControlData.Type == Control::Sim ? Write<TuneField::PulseCountDelaySim>(delay)
                                          : Write<TuneField::PulseCountDelayScan>(delay);
}
ErrTypes DevTuneRules::WScansPerSpec(std::uint32_t scans) { return Write<TuneField::ScansPerSpec>(scans); }

ErrTypes DevTuneRules::WMZRange(double low, double high) {
  if (ControlData.Type != Control::Scan || low > high) return Fail(kHighBelowLow);
  Write<TuneField::MZLow>(low);
  return Write<TuneField::MZHi>(high);
}

ErrTypes DevTuneRules::WMZLow(double mz) {
  if (ControlData.Type == Control::Scan && mz > ControlData.MZHi) return Fail(kHighBelowLow);
  return Write<TuneField::MZLow>(mz);
}

ErrTypes DevTuneRules::WMZHi(double mz) {
  if (ControlData.Type != Control::Scan) return Fail(kHighOfScanOnly);
  if (mz < ControlData.MZLow) return Fail(kHighBelowLow);
  return Write<TuneField::MZHi>(mz);
}

ErrTypes DevTuneRules::WSimWithSpan(Control::SimWithSpanTypes code) {
  if (ControlData.Type != Control::Sim) return Fail(kSpanOfSimOnly);
  if (code > Control::Span2_0) return Fail(kBadSpan);
  return Write(ControlData.MZHi, kSimSpans[code]);
}

ErrTypes DevTuneRules::WSamplesPerMass(double samples) {
  const auto known = QSamplings();
  if (std::ranges::find(known, Truncate<std::int32_t>(samples)) == known.end()) samples = 10.0;
  // Down to a whole number of the instrument's steps of five hundredths.
  const std::int32_t hundredths = Truncate<std::int32_t>(1.0 / samples * 100.0) / 5 * 5;
  return WMZStepSize(hundredths * 0.01);
}

ErrTypes DevTuneRules::WPolarityType(PolarityTypes polarity) {
  if (CheckLimits(TuneField::PolarityType, polarity) == Error) return Error;
  if (ControlData.PolarityType == polarity) return NoError;
  ControlData.PolarityType = polarity;
  TurnVoltages(Source);
  TurnVoltages(ControlData);
  TurnVoltages(Q1CalPts);
  Modified = true;
  return NoError;
}

// ---- Ion path and detector -------------------------------------------------------------

ErrTypes DevTuneRules::WCapExit(const IOPoint& point) { return WriteLens<TuneField::CapExit>(point); }
ErrTypes DevTuneRules::WSkimmer(const IOPoint& point) { return WriteLens<TuneField::Skimmer>(point); }
ErrTypes DevTuneRules::WQ0RFAmpl(const IOPoint& point) { return WriteLens<TuneField::Q0RFAmpl>(point); }
ErrTypes DevTuneRules::WQ0Offset(const IOPoint& point) { return WriteLens<TuneField::Q0Offset>(point); }
ErrTypes DevTuneRules::WQ0Exit1(const IOPoint& point) { return WriteLens<TuneField::Q0Exit1>(point); }
ErrTypes DevTuneRules::WQ0Exit2(const IOPoint& point) { return WriteLens<TuneField::Q0Exit2>(point); }
ErrTypes DevTuneRules::WHEDynode(std::int32_t volts) { return Write<TuneField::HEDynode>(volts); }
ErrTypes DevTuneRules::WDetectorGain(std::int32_t volts) { return Write<TuneField::DetectorGain>(volts); }
ErrTypes DevTuneRules::WSignalThreshold(std::uint32_t threshold) {
  return Write<TuneField::SignalThreshold>(threshold);
}
ErrTypes DevTuneRules::WQ1MZType(Control::Q1MZTypes type) { return Write<TuneField::Q1MZType>(type); }
ErrTypes DevTuneRules::WQ1Resolution(const IOPoint& point) {
  return WriteResolution<TuneField::Q1Resolution>(point);
}
ErrTypes DevTuneRules::WQ1CoarseResolution(const IOPoint& point) {
  return WriteResolution<TuneField::Q1CoarseResolution>(point);
}
ErrTypes DevTuneRules::WQ1Offset(const IOPoint& point) { return WriteLens<TuneField::Q1Offset>(point); }
ErrTypes DevTuneRules::WQ1IonGuide(const IOPoint& point) { return WriteLens<TuneField::Q1IonGuide>(point); }
ErrTypes DevTuneRules::WQ1PolePolarity(bool on) { return Write<TuneField::Q1PolePolarity>(on); }

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
