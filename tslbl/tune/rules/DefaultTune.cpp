#include <tslbl/tune/rules/DefaultTune.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/tune/FieldLimits.h>
#include <array>
#include <chrono>

namespace TslBL {
namespace {

// Of the fields that can follow m/z, in the order of the calibrants' values.
constexpr std::array kSteppable = {TuneField::CapExit,      TuneField::Skimmer,  TuneField::Q0RFAmpl,
                                   TuneField::Q0Offset,     TuneField::Q0Exit1,  TuneField::Q0Exit2,
                                   TuneField::Q1Resolution, TuneField::Q1Offset, TuneField::Q1IonGuide};

struct Calibrant {
  const wchar_t* name;
  double mz;
  double values[kSteppable.size()];
};
constexpr Calibrant kCalibrants[] = {
    {L"Fragment 2", 39.0, {100.0, 25.0, 100.0, -15.0, -0.4, -90.0, 98.975, 10.0, -8.0}},
    {L"Agilent 1", 118.0, {100.0, 25.0, 500.0, -15.0, -0.4, -90.0, 30.615, -0.5, -12.6}},
    {L"Agilent 2", 322.0, {120.0, 30.0, 800.0, -20.0, -0.4, -90.0, 6.445, -2.5, -13.9}},
    {L"Agilent 5", 1521.0, {140.0, 35.0, 800.0, -25.0, -0.4, -90.0, -7.226, -9.0, -40.5}},
    {L"Agilent 7", 2721.0, {170.0, 45.0, 800.0, -30.0, -0.4, -90.0, -7.836, -10.0, -71.7}},
};

IonSource EsiSource() {
  IonSource source;
  source.Cylinder = -3500;
  source.EndPlate = -5000;
  source.CapEnter = -6000;
  source.DryGasTemp = 170;
  source.ApciVapTemp = 0;
  source.DryGasFlow = 12.0;
  source.Neb1GasPres = 60;
  source.CalValveOn = false;
  source.ControlByCurrent = false;
  return source;
}

IonSource ApciSource() {
  IonSource source;
  source.Cylinder = 0;
  source.EndPlate = -2000;
  source.CapEnter = -3000;
  source.DryGasTemp = 25;
  source.ApciVapTemp = 25;
  source.DryGasFlow = 5.0;
  source.Neb1GasPres = 25;
  source.CalValveOn = true;
  source.ControlByCurrent = true;
  return source;
}

}  // namespace

TuneInfo DefaultTuneInfo() {
  TuneInfo info;
  info.Name = TslLoadString(ModuleHandle(), kNewTune);
  info.LastSave = UnixSecondsNow();
  return info;
}

Control DefaultControl() {
  Control control;
  control.MZLow = 5.0;
  control.MZHi = 3000.0;
  control.MZStepSize = 0.1;
  control.Type = Control::Scan;
  control.PolarityType = PolarityPositive;
  control.StepSettleDelay = 0;
  control.PulseCountDelay = 1000;
  control.ScansPerSpec = 1;
  control.CapExit.Single = 160.0;
  control.Skimmer.Single = 18.0;
  control.Q0RFAmpl.Single = 600.0;
  control.Q0Offset.Single = -8.0;
  control.Q0Exit1.Single = -0.4;
  control.Q0Exit2.Single = -90.0;
  control.HEDynode = -7000;
  control.DetectorGain = -1400;
  control.SignalThreshold = 0;
  control.Q1MZType = Control::RF_DC;
  control.Q1Resolution.Single = 0.0;
  control.Q1CoarseResolution.Single = 0.0;
  control.Q1Offset.Single = -1.0;
  control.Q1Enter.Single = 10.0;
  control.Q1IonGuide.Single = -12.6;
  control.Q1PolePolarity = false;
  return control;
}

IonSource DefaultIonSource(Probes::ProbeTypes probe, PolarityTypes polarity) {
  IonSource source = probe == Probes::APCI ? ApciSource() : EsiSource();
  source.Type = probe;
  source.CoronaCurrent = 0.0;
  if (polarity == PolarityNegative) {
    source.Cylinder = -source.Cylinder;
    source.EndPlate = -source.EndPlate;
    source.CapEnter = -source.CapEnter;
  }
  return source;
}

std::vector<MZCalPt> DefaultMZCalPts() {
  const Limits low = FieldLimits().QLimits(Probes::ESI, TuneField::MZLow);
  const Limits high = FieldLimits().QLimits(Probes::ESI, TuneField::MZHi);
  return {{L"Default Low", low.Min, low.Min / low.Step}, {L"Default High", high.Max, high.Max / high.Step}};
}

std::vector<Q1CalPt> DefaultQ1CalPts() {
  std::vector<Q1CalPt> points;
  for (const Calibrant& calibrant : kCalibrants) {
    Q1CalPt& point = points.emplace_back(calibrant.mz, calibrant.name);
    for (std::size_t i = 0; i < kSteppable.size(); ++i) point.Fields[kSteppable[i]] = calibrant.values[i];
  }
  return points;
}

}  // namespace TslBL
