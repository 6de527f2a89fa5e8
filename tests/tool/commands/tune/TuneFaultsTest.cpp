#include <tool/commands/tune/TuneFaults.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tslbl/tune/rules/DevTuneRules.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TslBL::Control;
using TslBL::DevTuneRules;
using TslBL::IOPoint;
using TslBL::PolarityNegative;
using TslBL::Probes;
using TslBL::Tune;
using TslTool::TuneFaults;

Tune Esi() { return DevTuneRules(Probes::ESI); }
Tune Apci() { return DevTuneRules(Probes::APCI); }

TEST(TuneFaults, TheDefaultTunesHaveNone) {
  for (const Probes::ProbeTypes probe : {Probes::ESI, Probes::APCI, Probes::LowFlowESI}) {
    DevTuneRules rules(probe);
    EXPECT_THAT(TuneFaults(rules), IsEmpty());
    rules.WPolarityType(PolarityNegative);
    EXPECT_THAT(TuneFaults(rules), IsEmpty());
  }
}

TEST(TuneFaults, AllAreToldNotTheFirstAlone) {
  Tune tune = Esi();
  tune.Source.DryGasTemp = 400;
  tune.ControlData.MZLow = 1;
  tune.ControlData.Skimmer.Single = 120;
  tune.Q1CalPts[0].Fields[TslBL::TuneField::CapExit] = 500;
  tune.Q1CalPts[0].Fields[TslBL::TuneField::Skimmer] = 500;
  EXPECT_THAT(
      TuneFaults(tune),
      ElementsAre("DryGasTemp: Drying Gas Temp. is out of range.  Valid values are 25.00 to 350.00.",
                  "MZLow: Low m/z is out of range.  Valid values are 5.00 to 3000.00.",
                  "Skimmer: Skimmer - Single Value is out of range.  Valid values are -100.00 to 100.00.",
                  "Q1CalPts: Q1 step calibration point at m/z 39.00 is invalid.  Capillary Exit is out of "
                  "range.  Valid values are -400.00 to 400.00.",
                  "Q1CalPts: Q1 step calibration point at m/z 39.00 is invalid.  Skimmer is out of range.  "
                  "Valid values are -100.00 to 100.00."));
}

TEST(TuneFaults, SettingsThatNoWriterTakesAreFaults) {
  Tune tune = Apci();
  tune.Source.ApciVapTemp = 100;
  tune.Source.Neb1GasPres = 5;
  tune.Source.Cylinder = -1000;
  EXPECT_THAT(TuneFaults(tune),
              ElementsAre("CoronaVoltage: Corona Voltage is out of range.  Valid values are 0.00 to 6000.00.",
                          "ApciVapTemp: APCI Vaporizer Temperature must be 25 or greater than 149",
                          "ApciAuxGas: APCI Aux Gas Pressure must be 0 or greater than 14"));
}

TEST(TuneFaults, ARangeUpsideDownIsOneFault) {
  Tune tune = Esi();
  tune.ControlData.MZLow = 500;
  tune.ControlData.MZHi = 400;
  tune.ControlData.InitSettleDelay = 5000;
  EXPECT_THAT(TuneFaults(tune), ElementsAre("MZLow: High m/z must be greater than or equal to low m/z."));
}

TEST(TuneFaults, ASpectrumThatIsTooShortIsOne) {
  Tune tune = Esi();
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZHi = 0.0;
  tune.ControlData.InitSettleDelay = 0;
  tune.ControlData.PulseCountDelay = 500;
  EXPECT_THAT(TuneFaults(tune),
              ElementsAre("ScansPerSpec: Maximum acquisition rate is 1 ms. Current options specify 0.5 ms. "
                          "Increase dwell and delay times, mass range or Scans Per Spectrum."));
}

TEST(TuneFaults, TheSpanOfASimIsCheckedAsASpan) {
  Tune tune = Esi();
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZHi = 0.3;
  EXPECT_THAT(
      TuneFaults(tune),
      ElementsAre("SimWithSpan: Sim with Span value must be either No Span, 0.2, 0.4, 0.6, 0.8, or 1.0."));
}

TEST(TuneFaults, WhatStopsAStepIsToldAndTheOthersGoOn) {
  Tune tune = Esi();
  tune.MZCalPts = {{L"a", 100, 2000}, {L"b", 100, 2000}};
  tune.ControlData.MZLow = 100;
  tune.Source.EndPlate = -4000;
  const auto faults = TuneFaults(tune);
  EXPECT_THAT(faults, testing::Contains("MZCalPts: Divide by zero error"));
  EXPECT_THAT(faults, testing::Contains(
                          "EndPlate: Endplate and capillary entrance can be at most 1000 volts apart."));
  EXPECT_THAT(faults,
              testing::Contains(testing::StartsWith("MZCalPts: m/z calibration point 1 is invalid.")));
}

TEST(TuneFaults, ASyringeIsCheckedIfThereIsOne) {
  Tune tune = Esi();
  tune.SyringeData.Manufacturer = L"Hamilton";
  tune.SyringeData.Model.Diameter = 20;
  EXPECT_THAT(TuneFaults(tune),
              ElementsAre("Diameter: Syringe Diameter is out of range.  Valid values are 0.46 to 10.30."));
  tune.SyringeData = {};
  EXPECT_THAT(TuneFaults(tune), IsEmpty()) << "a tune may be without";
}

TEST(TuneFaults, EachFaultOfASyringeIsToldOf) {
  Tune tune = Esi();
  tune.SyringeData.Model.Diameter = 20;
  tune.SyringeData.FlowRate = 1000;
  EXPECT_THAT(TuneFaults(tune),
              ElementsAre("Diameter: Syringe Diameter is out of range.  Valid values are 0.46 to 10.30.",
                          "FlowRate: Syringe Flow Rate is out of range.  Valid values are 0.00 to 999.00."));
  tune.SyringeData.Model.Diameter = 2;
  EXPECT_THAT(TuneFaults(tune),
              ElementsAre("FlowRate: Syringe Flow Rate is out of range.  Valid values are 0.00 to 999.00."));
}

TEST(TuneFaults, EachFaultOfEachCalibrationPointIsToldOf) {
  Tune tune = Esi();
  tune.MZCalPts = {{L"", 1, -5}, {L"", 100, 70000}, {L"", 200, 2000}, {L"", 4000, 1}};
  const std::string point = "MZCalPts: m/z calibration point ";
  const std::string mz = " is invalid.  m/z is out of range.  Valid values are 5.00 to 3000.00.";
  const std::string dac = " is invalid.  Mass DAC is out of range.  Valid values are 0.00 to 65535.00.";
  const std::string order =
      " is invalid.  m/z and mass DAC values must be greater than previous m/z calibration point.";
  EXPECT_THAT(TuneFaults(tune), ElementsAre(point + "0" + mz, point + "0" + dac, point + "1" + dac,
                                            point + "2" + order, point + "3" + mz, point + "3" + order));
}

TEST(TuneFaults, EachMzThatCalibrantsShareIsToldOfOnce) {
  Tune tune = Esi();
  tune.ControlData.Skimmer.Type = IOPoint::CalibratedType;
  tune.Q1CalPts[1].MZ = tune.Q1CalPts[0].MZ;
  tune.Q1CalPts[3].MZ = tune.Q1CalPts[4].MZ = tune.Q1CalPts[2].MZ;
  EXPECT_THAT(TuneFaults(tune), ElementsAre("Skimmer: Skimmer has two calibrants at m/z 39",
                                            "Skimmer: Skimmer has two calibrants at m/z 322"));
}

TEST(TuneFaults, WhatIsSaidOfTwoFieldsAlikeIsToldOfBoth) {
  Tune tune = Esi();
  tune.MZCalPts = {{L"a", 100, 2000}, {L"b", 100, 2000}};
  tune.ControlData.MZLow = 100;
  tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
  tune.Q1CalPts[0].MZ = tune.Q1CalPts[1].MZ = 100;
  EXPECT_THAT(TuneFaults(tune),
              testing::IsSupersetOf({"MZCalPts: Divide by zero error", "CapExit: Divide by zero error"}));
}

TEST(TuneFaults, TwoCalibrantsOfOneMzLeaveACurveOpen) {
  Tune tune = Esi();
  tune.ControlData.Skimmer.Type = IOPoint::CalibratedType;
  tune.Q1CalPts[1].MZ = tune.Q1CalPts[0].MZ;
  EXPECT_THAT(TuneFaults(tune), ElementsAre("Skimmer: Skimmer has two calibrants at m/z 39"));
}

TEST(TuneFaults, ACoronaFarFromTheEndPlateIsOfTheCorona) {
  Tune tune = Apci();
  tune.Source.Cylinder = 5000;
  EXPECT_THAT(TuneFaults(tune),
              ElementsAre("CoronaVoltage: Endplate and cylinder can be at most 6000 volts apart."));
}

}  // namespace
}  // namespace tests
