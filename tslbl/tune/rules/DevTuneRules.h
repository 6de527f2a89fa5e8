#pragma once
// The rules of the instrument for a tune, and the way to edit one.
//
// Every field of a tune has a query Q... and a writer W... here. A writer checks a value
// against the limits of its field and the rules of the instrument, and changes the tune
// only if the value may stand. Voltages are in volts, delays in microseconds, m/z in m/z.
//
// A value, one thread at a time: even a check keeps its text.
//
// Two calibration points of one m/z leave a curve open between them. What has to know its
// value there throws std::runtime_error "Divide by zero error": Validate and what it
// stands on, CheckCapExitSkimmer, the timing. A field number that names no field, which a
// damaged file may hold, throws VexException from any check of it. Nothing else throws
// unless it says so.

#include <tslbl/Export.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/Tune.h>
#include <tslbl/tune/rules/Rules.h>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace TslBL {

class TSLBL_API DevTuneRules : public Tune, public Rules {
 public:
  using Pairs = std::vector<std::pair<double, double>>;  // m/z, value

  // The default tune of a probe. Its settling delay has been worked out for it, so that it
  // counts as modified.
  explicit DevTuneRules(Probes::ProbeTypes probe);
  // A tune as it is, unchecked and not modified.
  DevTuneRules(const Tune& tune) : Tune(tune) {}
  // Takes another tune, unchecked; nothing of this one stays.
  DevTuneRules& operator=(const Tune& tune);

  // ---- Limits ------------------------------------------------------------------------

  // The limits of a field under a probe; see FieldLimits.h.
  static void QLimits(TuneField::Id field, double& min, double& max, double& step, Probes::ProbeTypes probe);
  // The m/z that the instrument reaches.
  static double QMinMz();
  static double QMaxMz();
  // The limits of the span of a SIM, and the step of its scan, in m/z. The site cannot
  // change them.
  static void QLimitsSimWithSpan(double& min, double& max, double& step);
  static double QSimWithSpanStepSize();
  // The spans that a SIM may have, in m/z, by Control::SimWithSpanTypes.
  static std::span<const double> QSimSpans();
  // The samplings that WSamplesPerMass knows.
  static std::span<const std::int32_t> QSamplings();
  // Of the diameter and the flow rate of a syringe; the site cannot change these either.
  static void QLimitsSyringe(TuneField::Id field, double& min, double& max);
  // The limits of a field in this tune: those under its probe, and for a voltage of an APCI
  // source the side of zero that the sign of the ions leaves to it.
  Limits QLimitsNow(TuneField::Id field) const;
  // A value in units of the instrument: divided by the field's step and rounded, halves
  // away from zero; beyond 32 bits the nearest end. The first form takes the ESI limits.
  static std::int32_t TranslateField(TuneField::Id field, double value);
  static std::int32_t TranslateField(Probes::ProbeTypes probe, TuneField::Id field, double value);

  // ---- Checks --------------------------------------------------------------------------

  // Whether a value lies within limits, both ends included; a NaN passes. A message names
  // the value by `label`, or else by the field. The first form is without a tune and its
  // last error.
  static ErrTypes CheckLimits(Probes::ProbeTypes probe, TuneField::Id field, double value,
                              const std::wstring& label, std::wstring& lastError);
  ErrTypes CheckLimits(TuneField::Id field, double value) const;
  ErrTypes CheckLimits(TuneField::Id field, double value, double low, double high) const;
  // A lens that follows m/z by fewer than two points draws a warning.
  ErrTypes CheckIOPoint(TuneField::Id field, const IOPoint& point) const;
  // Even tenths from none to 2.0 m/z.
  ErrTypes CheckSimSpanRange(double span) const;
  // Two points at least, which rise in both m/z and mass DAC.
  ErrTypes CheckMZCalPts(const std::vector<MZCalPt>& points) const;
  // The capillary exit may stand 370 volts above the skimmer, and below it by any amount.
  ErrTypes CheckCapExitSkimmer() const;
  // Diameter and flow rate.
  ErrTypes CheckSyringe(const Syringe& syringe) const;

  // All of the tune but its syringe; what any check finds, a warning too, is an error.
  // Throws as QDuration does, too.
  ErrTypes Validate() const;
  // All that Validate would find, one after the other, and, as a fault, what it would
  // throw; empty for a tune that it accepts.
  struct Fault {
    TuneField::Id field;
    std::wstring text;
  };
  std::vector<Fault> QFaults() const;
  // Whether the tune is valid and made for this probe.
  ErrTypes IsProbeCompatible(Probes::ProbeTypes probe) const;

  // ---- Tune record ---------------------------------------------------------------------

  const std::wstring& QName() const { return Info.Name; }
  const std::wstring& QComment() const { return Info.Comment; }
  std::int64_t QLastSaved() const { return Info.LastSave; }  // Unix seconds
  ErrTypes WName(const std::wstring& name);
  ErrTypes WComment(const std::wstring& comment);
  ErrTypes WLastSaved(std::int64_t time);
  ErrTypes WLastSavedNow();

  // ---- Ion source ----------------------------------------------------------------------
  // Under APCI the corona voltage stands in the place of the cylinder, the aux gas in that
  // of the first nebulizer, the nebulizing gas switch in that of the calibration valve.

  Probes::ProbeTypes QIonSourceType() const { return Source.Type; }
  std::int32_t QCylinder() const { return Source.Cylinder; }
  std::int32_t QCoronaVoltage() const { return Source.Cylinder; }
  std::int32_t QEndPlate() const { return Source.EndPlate; }
  std::int32_t QCapEnter() const { return Source.CapEnter; }
  IonSource::TempLevels QEndPlateTemp() const { return Source.EndPlateTemp; }
  std::uint32_t QDryGasTemp() const { return Source.DryGasTemp; }
  std::uint32_t QApciVapTemp() const { return Source.ApciVapTemp; }
  double QDryGasFlow() const { return Source.DryGasFlow; }
  std::uint32_t QNeb1GasPres() const { return Source.Neb1GasPres; }
  std::uint32_t QApciAuxGas() const { return Source.Neb1GasPres; }
  bool QNeb2GasOn() const { return Source.Neb2GasOn; }
  bool QCalValve2On() const { return Source.CalValve2On; }
  bool QCalSample1On() const { return Source.CalSample1On; }
  bool QCalSample2On() const { return Source.CalSample2On; }
  bool QCalValveOn() const { return Source.CalValveOn; }
  bool QApciNebGas() const { return Source.CalValveOn; }
  bool QControlByCurrent() const { return Source.ControlByCurrent; }
  double QCoronaCurrent() const { return Source.CoronaCurrent; }

  // Another probe brings its own source defaults, at the present polarity.
  ErrTypes WIonSourceType(Probes::ProbeTypes probe);
  ErrTypes WCylinder(std::int32_t volts);
  // Of the sign of the ions. A probe without a corona takes 0 alone.
  ErrTypes WCoronaVoltage(std::int32_t volts);
  ErrTypes WEndPlate(std::int32_t volts);
  ErrTypes WCapEnter(std::int32_t volts);
  ErrTypes WEndPlateTemp(IonSource::TempLevels level);
  ErrTypes WDryGasTemp(std::uint32_t degrees);
  // Off at the lowest temperature, or from 150 degrees on; a vaporizer that heats has its
  // gases turned on.
  ErrTypes WApciVapTemp(std::uint32_t degrees);
  ErrTypes WDryGasFlow(double flow);
  ErrTypes WNeb1GasPres(std::uint32_t pressure);
  // None, or 15 and more.
  ErrTypes WApciAuxGas(std::uint32_t pressure);
  ErrTypes WNeb2GasOn(bool on);
  ErrTypes WCalValve2On(bool on);
  ErrTypes WCalSample1On(bool on);
  ErrTypes WCalSample2On(bool on);
  ErrTypes WCalValveOn(bool on);
  // The vaporizer cools down when its gas is turned off.
  ErrTypes WApciNebGas(bool on);
  ErrTypes WControlByCurrent(bool on);
  ErrTypes WCoronaCurrent(double current);

  // ---- Acquisition ---------------------------------------------------------------------

  Control::Types QControlType() const { return ControlData.Type; }
  double QMZLow() const { return ControlData.MZLow; }
  // Of a scan. A SIM, which keeps its span there, may go up to the highest m/z.
  double QMZHi() const;
  // The code of the span; NoSpan also for a number that is none.
  Control::SimWithSpanTypes QSimWithSpan() const;
  double QMZStepSize() const { return ControlData.MZStepSize; }
  // Whole steps in one m/z.
  double QSamplesPerMass() const;
  PolarityTypes QPolarityType() const { return ControlData.PolarityType; }
  std::uint32_t QInitSettleDelay() const { return ControlData.InitSettleDelay; }
  std::uint32_t QStepSettleDelay() const { return ControlData.StepSettleDelay; }
  std::uint32_t QPulseCountDelay() const { return ControlData.PulseCountDelay; }
  std::uint32_t QScansPerSpec() const { return ControlData.ScansPerSpec; }

  ErrTypes WControlType(Control::Types type);
  // Each end on its own: a bad low end stays as it was, with its text, and the result is
  // that of the high end.
  ErrTypes WMZRange(double low, double high);
  ErrTypes WMZLow(double mz);
  ErrTypes WMZHi(double mz);
  ErrTypes WSimWithSpan(Control::SimWithSpanTypes code);
  ErrTypes WMZStepSize(double step);
  // One of QSamplings; any other number counts as 10.
  ErrTypes WSamplesPerMass(double samples);
  // Turns every voltage that follows the sign of the ions.
  ErrTypes WPolarityType(PolarityTypes polarity);
  ErrTypes WInitSettleDelay(std::uint32_t delay);
  ErrTypes WStepSettleDelay(std::uint32_t delay);
  ErrTypes WPulseCountDelay(std::uint32_t delay);
  ErrTypes WScansPerSpec(std::uint32_t scans);

  // ---- Ion path and detector -----------------------------------------------------------

  const IOPoint& QCapExit() const { return ControlData.CapExit; }
  const IOPoint& QSkimmer() const { return ControlData.Skimmer; }
  const IOPoint& QQ0RFAmpl() const { return ControlData.Q0RFAmpl; }
  const IOPoint& QQ0Offset() const { return ControlData.Q0Offset; }
  const IOPoint& QQ0Exit1() const { return ControlData.Q0Exit1; }
  const IOPoint& QQ0Exit2() const { return ControlData.Q0Exit2; }
  std::int32_t QHEDynode() const { return ControlData.HEDynode; }
  std::int32_t QDetectorGain() const { return ControlData.DetectorGain; }
  std::uint32_t QSignalThreshold() const { return ControlData.SignalThreshold; }
  Control::Q1MZTypes QQ1MZType() const { return ControlData.Q1MZType; }
  const IOPoint& QQ1Resolution() const { return ControlData.Q1Resolution; }
  const IOPoint& QQ1CoarseResolution() const { return ControlData.Q1CoarseResolution; }
  const IOPoint& QQ1Offset() const { return ControlData.Q1Offset; }
  const IOPoint& QQ1Enter() const { return ControlData.Q1Enter; }
  const IOPoint& QQ1IonGuide() const { return ControlData.Q1IonGuide; }
  bool QQ1PolePolarity() const { return ControlData.Q1PolePolarity; }

  ErrTypes WCapExit(const IOPoint& point);
  ErrTypes WSkimmer(const IOPoint& point);
  ErrTypes WQ0RFAmpl(const IOPoint& point);
  ErrTypes WQ0Offset(const IOPoint& point);
  ErrTypes WQ0Exit1(const IOPoint& point);
  ErrTypes WQ0Exit2(const IOPoint& point);
  ErrTypes WHEDynode(std::int32_t volts);
  ErrTypes WDetectorGain(std::int32_t volts);
  ErrTypes WSignalThreshold(std::uint32_t threshold);
  ErrTypes WQ1MZType(Control::Q1MZTypes type);
  // Both keep three decimals of a single value.
  ErrTypes WQ1Resolution(const IOPoint& point);
  ErrTypes WQ1CoarseResolution(const IOPoint& point);
  ErrTypes WQ1Offset(const IOPoint& point);
  // No user sets the entrance lens: whatever is asked for, it stands at 0.
  ErrTypes WQ1Enter(const IOPoint& point);
  ErrTypes WQ1IonGuide(const IOPoint& point);
  ErrTypes WQ1PolePolarity(bool on);

  // ---- m/z calibration -----------------------------------------------------------------

  const std::vector<MZCalPt>& QMZCalPts() const { return MZCalPts; }
  // Kept in the order given. Points that compare equal to the present ones change nothing.
  ErrTypes WMZCalPts(const std::vector<MZCalPt>& points);

  // ---- Q1 step calibration -------------------------------------------------------------
  // A calibrant is found by its m/z, within 1e-6. Changes of the table do not mark the tune
  // as modified. What is done to a field is refused for one that cannot follow m/z.

  // m/z and name of every calibrant, in the order of the list, which is not sorted.
  std::vector<std::pair<double, std::wstring>> QQ1CalPts() const;
  void ClearQ1CalPts() { Q1CalPts.clear(); }
  ErrTypes AddQ1CalPt(double mz, const std::wstring& name);
  ErrTypes DelQ1CalPt(double mz);
  ErrTypes QQ1CalPtName(double mz, std::wstring& name) const;
  ErrTypes WQ1CalPtName(double mz, const std::wstring& name);
  ErrTypes ChangeQ1CalPtMZ(double mz, double newMZ);
  // The curve of a field, in the order of the list.
  ErrTypes QFieldQ1CalPts(TuneField::Id field, Pairs& pairs) const;
  // Replaces the curve of a field; m/z without a calibrant get one. A value beyond the
  // limits changes nothing, an m/z beyond them keeps the calibrants that were added before.
  ErrTypes WFieldQ1CalPts(TuneField::Id field, const Pairs& pairs);
  ErrTypes QQ1CalPtField(double mz, TuneField::Id field, double& value) const;
  ErrTypes WQ1CalPtField(double mz, TuneField::Id field, double value);
  ErrTypes RemoveQ1CalPtField(double mz, TuneField::Id field);
  // Stores what a ramp of a field found: its best single value, through the field's writer,
  // and then, for a field that can follow m/z, its curve. A curve that is refused leaves
  // the value written.
  ErrTypes WRampResults(TuneField::Id field, double value, const Pairs& pairs);

  // ---- Syringe -------------------------------------------------------------------------

  // The manufacturer's name of a syringe that stands in no catalogue.
  static std::wstring QCustomSyringeManufacturer();
  const std::wstring& QSyringeManufacturer() const { return SyringeData.Manufacturer; }
  const std::wstring& QSyringeModel() const { return SyringeData.Model.Name; }
  double QSyringeDiameter() const { return SyringeData.Model.Diameter; }  // mm
  std::uint32_t QSyringeFlow() const { return SyringeData.FlowRate; }
  // One of the site's catalogue, which is read anew; its diameter is trusted.
  ErrTypes WSyringeModel(const std::wstring& manufacturer, const std::wstring& model);
  ErrTypes WSyringeCustom(double diameter);
  ErrTypes WSyringeFlow(std::uint32_t flow);

  // ---- Timing --------------------------------------------------------------------------

  // The number of mass steps of one scan: at least 1 for a tune whose mass DAC values rise
  // with m/z. A step below 0.05 m/z counts as 0.05. Throws std::runtime_error if the step
  // is less than one unit of the instrument, or if a site has made that unit 0.
  static std::uint32_t QNumPulses(const Tune& tune);
  // The mass DAC counts of one of these steps. Throws likewise.
  static std::uint32_t QStepDAC(const Tune& tune);
  // The microseconds that a spectrum takes. Counted in 32 bits: a tune beyond them, which
  // the limits of its fields allow, wraps around. Throws as QNumPulses does.
  static double QDuration(const Tune& tune);
  // The same counted without end.
  static double QExactDuration(const Tune& tune);
  // Sets the initial settling delay to what the m/z range and the capillary exit need.
  // Whether another delay is needed than was set; one beyond the limits is not written.
  bool CalculateInitialSettlingDelay();

 private:
  Limits LimitsOf(TuneField::Id field) const;
  template <class T>
  ErrTypes Write(T& stored, const std::type_identity_t<T>& value);
  template <TuneField::Id field, class T>
  ErrTypes Write(T value);
  template <TuneField::Id field>
  ErrTypes WriteVoltage(std::int32_t volts);
  template <TuneField::Id field>
  ErrTypes WriteLens(const IOPoint& point);
  template <TuneField::Id field>
  ErrTypes WriteResolution(const IOPoint& point);
  ErrTypes WriteSyringe(const Syringe& syringe);

  // A pass over the tune, and its stages in their order.
  class Faults;
  struct Stage;
  static std::span<const Stage> Stages();
  ErrTypes CheckStored(TuneField::Id field) const;
  bool SourceHolds(Faults& faults) const;
  bool AcquisitionHolds(Faults& faults) const;
  bool DurationHolds(Faults& faults) const;
  bool IonPathHolds(Faults& faults) const;
  bool CapExitHolds(Faults& faults) const;
  bool DistancesHold(Faults& faults) const;
  bool MZCalibrationHolds(Faults& faults) const;
  bool MZCalPtsHold(const std::vector<MZCalPt>& points, Faults& faults) const;
  bool Q1CalibrationHolds(Faults& faults) const;

  bool FindQ1CalPt(double mz, std::size_t& found) const;
  ErrTypes CheckSteppable(TuneField::Id field) const;
};

}  // namespace TslBL
