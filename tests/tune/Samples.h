#pragma once
// Tune records with a value of its own in every field.

#include <tslbl/tune/Tune.h>

namespace tests {

using namespace TslBL;

inline TuneInfo SampleTuneInfo() {
  TuneInfo info;
  info.Name = L"Sp\u00E4t";
  info.Comment = L"After venting";
  info.LastSave = 1234567890123;
  return info;
}

inline IonSource SampleIonSource(Probes::ProbeTypes type = Probes::LowFlowESI) {
  IonSource source;
  source.Type = type;
  source.Cylinder = -4000;
  source.EndPlate = -3500;
  source.CapEnter = -4500;
  source.EndPlateTemp = IonSource::Medium;
  source.DryGasTemp = 300;
  source.ApciVapTemp = 325;
  source.DryGasFlow = 10.5;
  source.Neb1GasPres = 60;
  source.Neb2GasOn = true;
  source.CalValve2On = false;
  source.CalSample1On = true;
  source.CalSample2On = false;
  source.CalValveOn = true;
  source.ControlByCurrent = false;
  source.CoronaCurrent = 4.25;
  return source;
}

inline IOPoint SingleLens(double value) {
  IOPoint lens;
  lens.Single = value;
  return lens;
}

inline IOPoint SampleIOPoint() {
  IOPoint lens;
  lens.Type = IOPoint::CalibratedType;
  lens.Single = 1.5;
  lens.Calibrated = -2.25;
  lens.Start = 3.0;
  lens.End = 4.0;
  lens.StepSize = 0.125;
  return lens;
}

inline Control SampleControl() {
  Control control;
  control.Type = Control::Sim;
  control.MZLow = 500.5;
  control.MZHi = 0.4;
  control.MZStepSize = 0.1;
  control.PolarityType = PolarityNegative;
  control.InitSettleDelay = 650;
  control.StepSettleDelay = 20;
  control.PulseCountDelay = 1000;
  control.ScansPerSpec = 3;
  control.CapExit = SampleIOPoint();
  control.Skimmer = SingleLens(18);
  control.Q0RFAmpl = SingleLens(600);
  control.Q0Offset = SingleLens(-8);
  control.Q0Exit1 = SingleLens(-0.4);
  control.Q0Exit2 = SingleLens(-90);
  control.HEDynode = -7000;
  control.DetectorGain = -1400;
  control.SignalThreshold = 12;
  control.Q1MZType = Control::RF_Only;
  control.Q1Resolution = SingleLens(0.5);
  control.Q1CoarseResolution = SingleLens(0.75);
  control.Q1Offset = SingleLens(-1);
  control.Q1Enter = SingleLens(10);
  control.Q1IonGuide = SingleLens(-12.6);
  control.Q1PolePolarity = true;
  return control;
}

inline SyringeModel SampleSyringeModel() {
  SyringeModel model;
  model.Name = L"1725";
  model.Diameter = 2.3;
  return model;
}

inline Syringe SampleSyringe() {
  Syringe syringe;
  syringe.Manufacturer = L"Hamilton";
  syringe.Model = SampleSyringeModel();
  syringe.FlowRate = 180;
  return syringe;
}

inline Q1CalPt SampleQ1CalPt() {
  Q1CalPt point(118.5, L"Low");
  point.Fields = {{TuneField::CapExit, 120.0}, {TuneField::Skimmer, 17.5}, {TuneField::Q1IonGuide, -9.25}};
  return point;
}

inline Tune SampleTune(Probes::ProbeTypes probe = Probes::LowFlowESI) {
  Tune tune;
  tune.Info = SampleTuneInfo();
  tune.Source = SampleIonSource(probe);
  tune.ControlData = SampleControl();
  tune.SyringeData = SampleSyringe();
  tune.MZCalPts = {{L"Default Low", 5, 100}, {L"Default High", 3000, 60000}};
  tune.Q1CalPts = {SampleQ1CalPt(), Q1CalPt(2721.9, L"High")};
  return tune;
}

}  // namespace tests
