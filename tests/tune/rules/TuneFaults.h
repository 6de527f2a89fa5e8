#pragma once
// Everything that can be wrong with a tune, one fault at a time.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <tune/rules/Rules.h>

namespace tests {

// A way to make a default tune invalid, and what is said about it.
struct Fault {
  std::string name;
  std::function<void(Tune&)> make;
  std::wstring text;
};

inline std::wstring Rate(const std::wstring& milliseconds) {
  return L"Maximum acquisition rate is 1 ms.\nCurrent options specify " + milliseconds +
         L" ms.\nIncrease dwell and delay times, mass range or Scans Per Spectrum.";
}
inline std::wstring TooFewPoints(const std::wstring& field) {
  return field + L" - There must be at least two Q1 step calibration points for this field.";
}

// One pulse, and so many scans that their time wraps around to nothing.
inline void MakeTooShort(Tune& tune) {
  tune.ControlData.MZHi = tune.ControlData.MZLow;
  tune.ControlData.InitSettleDelay = 131072 - tune.ControlData.PulseCountDelay;
  tune.ControlData.ScansPerSpec = 32768;
}

inline std::vector<Fault> SourceFaults(double voltage) {
  return {
      {"EndPlate", [=](Tune& t) { t.Source.EndPlate = static_cast<int>(voltage) + 1; },
       OutOfRange(L"Endplate", -voltage, voltage)},
      {"CapEnter", [=](Tune& t) { t.Source.CapEnter = -static_cast<int>(voltage) - 1; },
       OutOfRange(L"Capillary Entrance", -voltage, voltage)},
      {"EndPlateTemp", [](Tune& t) { t.Source.EndPlateTemp = static_cast<IonSource::TempLevels>(4); },
       L"Endplate Temperature is out of range.  Valid values are 0.00 to 3.00."},
      {"DryGasTemp", [](Tune& t) { t.Source.DryGasTemp = 24; },
       L"Drying Gas Temp. is out of range.  Valid values are 25.00 to 350.00."},
      {"DryGasFlow", [](Tune& t) { t.Source.DryGasFlow = 15.1; },
       L"Drying Gas Flow Rate is out of range.  Valid values are 2.00 to 15.00."},
  };
}

inline std::vector<Fault> AcquisitionFaults() {
  return {
      {"ControlType", [](Tune& t) { t.ControlData.Type = static_cast<Control::Types>(2); },
       L"Acquisition Function is out of range.  Valid values are 0.00 to 1.00."},
      {"MZLow", [](Tune& t) { t.ControlData.MZLow = 4.99; },
       L"Low m/z is out of range.  Valid values are 5.00 to 3000.00."},
      {"MZHi", [](Tune& t) { t.ControlData.MZHi = 3000.01; },
       L"High m/z is out of range.  Valid values are 5.00 to 3000.00."},
      {"MZStepSize", [](Tune& t) { t.ControlData.MZStepSize = 0.04; },
       L"Step Size is out of range.  Valid values are 0.05 to 2995.00."},
      {"PolarityType", [](Tune& t) { t.ControlData.PolarityType = static_cast<PolarityTypes>(2); },
       L"Ion Polarity is out of range.  Valid values are 0.00 to 1.00."},
      {"InitSettleDelay", [](Tune& t) { t.ControlData.InitSettleDelay = 5000001; },
       L"Initial Settling Delay is out of range.  Valid values are 0.00 to 5000000.00."},
      {"StepSettleDelay", [](Tune& t) { t.ControlData.StepSettleDelay = 4096; },
       L"Step Settling Delay is out of range.  Valid values are 0.00 to 4095.00."},
      {"PulseCountDelay", [](Tune& t) { t.ControlData.PulseCountDelay = 24; },
       L"Pulse Counting Delay is out of range.  Valid values are 25.00 to 2000000.00."},
      {"Duration", MakeTooShort, Rate(L"0")},
      {"ScansPerSpec", [](Tune& t) { t.ControlData.ScansPerSpec = 65536; },
       L"Scans Per Spectrum is out of range.  Valid values are 1.00 to 65535.00."},
  };
}

inline std::vector<Fault> IonPathFaults() {
  return {
      {"CapExit", [](Tune& t) { t.ControlData.CapExit.Single = -401; },
       L"Capillary Exit - Single Value is out of range.  Valid values are -400.00 to 400.00."},
      {"Skimmer", [](Tune& t) { t.ControlData.Skimmer.Single = 100.1; },
       L"Skimmer - Single Value is out of range.  Valid values are -100.00 to 100.00."},
      {"Q0RFAmpl", [](Tune& t) { t.ControlData.Q0RFAmpl.Single = -1; },
       L"Q0 RF Amplitude - Single Value is out of range.  Valid values are 0.00 to 800.00."},
      {"Q0Offset", [](Tune& t) { t.ControlData.Q0Offset.Single = 30.1; },
       L"Q0 Offset - Single Value is out of range.  Valid values are -30.00 to 30.00."},
      {"Q0Exit1", [](Tune& t) { t.ControlData.Q0Exit1.Single = 200.1; },
       L"Q0 Exit Lens 1 - Single Value is out of range.  Valid values are -200.00 to 200.00."},
      {"Q0Exit2", [](Tune& t) { t.ControlData.Q0Exit2.Single = -200.1; },
       L"Q0 Exit Lens 2 - Single Value is out of range.  Valid values are -200.00 to 200.00."},
      {"HEDynode", [](Tune& t) { t.ControlData.HEDynode = -10001; },
       L"High Energy Dynode is out of range.  Valid values are -10000.00 to 10000.00."},
      {"DetectorGain", [](Tune& t) { t.ControlData.DetectorGain = 1; },
       L"Detector Gain is out of range.  Valid values are -3000.00 to 0.00."},
      {"SignalThreshold", [](Tune& t) { t.ControlData.SignalThreshold = 256; },
       L"Signal Threshold is out of range.  Valid values are 0.00 to 255.00."},
      {"Q1MZType", [](Tune& t) { t.ControlData.Q1MZType = static_cast<Control::Q1MZTypes>(2); },
       L"Q1 RF/DC or RF Only is out of range.  Valid values are 0.00 to 1.00."},
      {"Q1Resolution", [](Tune& t) { t.ControlData.Q1Resolution.Single = 99.1; },
       L"Q1 Resolution - Single Value is out of range.  Valid values are -99.00 to 99.00."},
      {"Q1CoarseResolution", [](Tune& t) { t.ControlData.Q1CoarseResolution.Single = -99.1; },
       L"Q1 Coarse Resolution - Single Value is out of range.  Valid values are -99.00 to 99.00."},
      {"Q1Offset", [](Tune& t) { t.ControlData.Q1Offset.Single = 90.1; },
       L"Q1 Offset Voltage - Single Value is out of range.  Valid values are -90.00 to 90.00."},
      {"Q1IonGuide", [](Tune& t) { t.ControlData.Q1IonGuide.Single = -100.1; },
       L"Q1 IonGuide - Single Value is out of range.  Valid values are -100.00 to 100.00."},
  };
}

inline std::vector<Fault> DistanceFaults() {
  return {
      {"CapExit to Skimmer",
       [](Tune& t) {
         t.ControlData.CapExit.Single = 400;
         t.ControlData.Skimmer.Single = 20;
       },
       L"Capillary Exit and Skimmer can be at most 370 volts apart."},
      {"EndPlate to CapEnter", [](Tune& t) { t.Source.CapEnter = t.Source.EndPlate + 1001; },
       L"Endplate and capillary entrance can be at most 1000 volts apart."},
      {"Cylinder to EndPlate", [](Tune& t) { t.Source.Cylinder = t.Source.EndPlate + 6001; },
       L"Endplate and cylinder can be at most 6000 volts apart."},
  };
}

inline std::vector<Fault> CalibrationFaults() {
  return {
      {"MZCalPts", [](Tune& t) { t.MZCalPts[1].MassDAC = 100; },
       L"m/z calibration point 1 is invalid.  m/z and mass DAC values must be greater than previous m/z "
       L"calibration point."},
      {"m/z of a calibrant", [](Tune& t) { t.Q1CalPts[0].MZ = 3001; },
       L"Q1 step calibration point at m/z 3001.00 is invalid.  m/z is out of range.  Valid values are 5.00 "
       L"to 3000.00."},
      {"lower field of a calibrant", [](Tune& t) { t.Q1CalPts[1].Fields[TuneField::Q0Offset] = 31; },
       L"Q1 step calibration point at m/z 118.00 is invalid.  Q0 Offset is out of range.  Valid values are "
       L"-30.00 to 30.00."},
      {"higher field of a calibrant", [](Tune& t) { t.Q1CalPts[1].Fields[TuneField::Q1IonGuide] = 101; },
       L"Q1 step calibration point at m/z 118.00 is invalid.  Q1 IonGuide is out of range.  Valid values are "
       L"-100.00 to 100.00."},
      {"a calibrant after it", [](Tune& t) { t.Q1CalPts[2].Fields[TuneField::CapExit] = -401; },
       L"Q1 step calibration point at m/z 322.00 is invalid.  Capillary Exit is out of range.  Valid values "
       L"are -400.00 to 400.00."},
  };
}

inline std::vector<Fault> Joined(const std::vector<std::vector<Fault>>& groups) {
  std::vector<Fault> all;
  for (const auto& group : groups) all.insert(all.end(), group.begin(), group.end());
  return all;
}

// In the order in which they are looked for.
inline std::vector<Fault> EsiFaults() {
  const std::vector<Fault> first = {
      {"Cylinder", [](Tune& t) { t.Source.Cylinder = -6001; },
       L"Cylinder Lens is out of range.  Valid values are -6000.00 to 6000.00."},
      {"Neb1GasPres", [](Tune& t) { t.Source.Neb1GasPres = 101; },
       L"Nebulizer 1 Gas Pressure is out of range.  Valid values are 0.00 to 100.00."}};
  return Joined({first, SourceFaults(6000), AcquisitionFaults(), IonPathFaults(), DistanceFaults(),
                 CalibrationFaults()});
}
inline std::vector<Fault> ApciFaults() {
  const std::vector<Fault> first = {
      {"CoronaVoltage", [](Tune& t) { t.Source.Cylinder = 6001; },
       L"Corona Voltage is out of range.  Valid values are -6000.00 to 6000.00."},
      {"ApciAuxGas", [](Tune& t) { t.Source.Neb1GasPres = 61; },
       L"APCI Aux Gas Pressure is out of range.  Valid values are 0.00 to 60.00."},
      {"CoronaCurrent", [](Tune& t) { t.Source.CoronaCurrent = 20.01; },
       L"Corona Current is out of range.  Valid values are 0.00 to 20.00."},
      {"ApciVapTemp", [](Tune& t) { t.Source.ApciVapTemp = 24; },
       L"APCI Vaporizer Temp. is out of range.  Valid values are 25.00 to 350.00."}};
  return Joined({first, SourceFaults(5000), AcquisitionFaults(), IonPathFaults(), DistanceFaults(),
                 CalibrationFaults()});
}

// Each probe with its faults, in the order in which they are looked for.
inline std::vector<std::pair<Probes::ProbeTypes, std::vector<Fault>>> AllFaults() {
  return {{Probes::ESI, EsiFaults()}, {Probes::LowFlowESI, EsiFaults()}, {Probes::APCI, ApciFaults()}};
}

}  // namespace tests
