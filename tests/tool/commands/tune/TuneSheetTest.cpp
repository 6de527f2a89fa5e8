// Tests: LensCurves.cpp, TuneTiming.cpp.

#include <tool/commands/tune/TuneSheet.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tslbl/tune/rules/DevTuneRules.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;
using TslBL::Control;
using TslBL::DevTuneRules;
using TslBL::IOPoint;
using TslBL::Probes;
using TslBL::Tune;
using TslTool::TuneSheet;

TEST(TuneSheet, HasFieldsWithUnitsAndLimits) {
  const std::string sheet = TuneSheet(DevTuneRules(Probes::ESI));
  for (const char* row :
       {"  Name                Tune Record Name           New Tune\n",
        "  SourceType          Ion Source Type                   ESI\n",
        "  Cylinder            Cylinder Lens                   -3500 V      -6000 to 6000 by 1\n",
        "  DryGasFlow          Drying Gas Flow Rate               12 L/min  2 to 15 by 0.1\n",
        "  PulseCountDelay     Pulse Counting Delay             1000 us     25 to 2000000 by 1\n",
        "  Q0Exit1             Q0 Exit Lens 1                   -0.4 V      -200 to 200 by 0.1\n",
        "  SignalThreshold     Signal Threshold                    0        0 to 255 by 1\n"})
    EXPECT_THAT(sheet, HasSubstr(row));
}

TEST(TuneSheet, HasTheFieldsOfItsProbeAndFunction) {
  DevTuneRules rules(Probes::APCI);
  rules.WControlType(Control::Sim);
  rules.WSimWithSpan(Control::Span0_4);
  const std::string sheet = TuneSheet(rules);
  for (const char* name : {"CoronaVoltage", "ApciAuxGas", "ApciNebGas", "ApciVapTemp", "MZ", "SimWithSpan"})
    EXPECT_THAT(sheet, HasSubstr(std::string("\n  ") + name)) << name;
  for (const char* name : {"Cylinder", "Neb1GasPres", "CalValveOn", "MZLow", "MZHi"})
    EXPECT_THAT(sheet, Not(HasSubstr(std::string("\n  ") + name))) << name;
  EXPECT_THAT(sheet, HasSubstr("us     10 to 2000000 by 1\n")) << "the dwell of a SIM";
}

TEST(TuneSheet, TellsWhatEachLensDoesOverMZ) {
  DevTuneRules rules(Probes::ESI);
  rules.ControlData.CapExit.Type = IOPoint::CalibratedType;
  rules.ControlData.Skimmer.Type = IOPoint::CalibratedType;
  rules.WMZRange(100, 1000);
  const std::string sheet = TuneSheet(rules);
  EXPECT_THAT(sheet, HasSubstr("  m/z                              100       118       322      1000\n"));
  EXPECT_THAT(sheet, HasSubstr("  CapExit, V     calibrated        100       100       120   131.309\n"));
  EXPECT_THAT(sheet, HasSubstr("  Skimmer, V     calibrated         25        25        30   32.8274\n"));
  EXPECT_THAT(sheet, HasSubstr("  Q0Offset, V    single             -8        -8        -8        -8\n"));
}

TEST(TuneSheet, ALensWithoutACurveIsOpen) {
  DevTuneRules rules(Probes::ESI);
  rules.ClearQ1CalPts();
  rules.ControlData.CapExit.Type = IOPoint::CalibratedType;
  EXPECT_THAT(TuneSheet(rules), HasSubstr("  CapExit, V     calibrated          -         -\n"));
}

TEST(TuneSheet, HasTheCalibrations) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.Q1CalPts[0].Fields.erase(TslBL::TuneField::Skimmer);
  const std::string sheet = TuneSheet(tune);
  EXPECT_THAT(sheet, HasSubstr("         m/z   mass DAC  name\n           5        100  Default Low\n"));
  EXPECT_THAT(sheet, HasSubstr("         39          100            -          100 "));
}

TEST(TuneSheet, HasTheTiming) {
  const std::string sheet = TuneSheet(DevTuneRules(Probes::ESI));
  for (const char* row :
       {"  steps of a scan     29951 of 0.1 m/z\n",
        "  a spectrum          29954.795 ms: 1 x (3795 us + 29951 x 1000 us dwell + 29950 x 0 us settling)\n",
        "  scan speed          100 m/z per s\n", "  settling needed     3795 us\n"})
    EXPECT_THAT(sheet, HasSubstr(row));
}

TEST(TuneSheet, TimingThatIsUnknownSaysWhy) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.ControlData.PulseCountDelay = 0;
  EXPECT_THAT(
      TuneSheet(tune),
      HasSubstr("scan speed          unknown: QScanSpeed: settle delay + pulse count equals zero.\n"));
}

TEST(TuneSheet, SettlingAlongAnOpenCurveIsUnknown) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
  tune.ControlData.MZLow = tune.Q1CalPts[1].MZ = tune.Q1CalPts[0].MZ;
  EXPECT_THAT(TuneSheet(tune), HasSubstr("  settling needed     unknown: Divide by zero error\n"));
}

TEST(TuneSheet, ACalibrantAtTheMzOfAnotherHasNoColumnOfItsOwn) {
  DevTuneRules rules(Probes::ESI);
  rules.WMZRange(100, 1000);
  rules.Q1CalPts[2].MZ = rules.Q1CalPts[1].MZ = 118;
  EXPECT_THAT(TuneSheet(rules), HasSubstr("  m/z                              100       118      1000\n"));
}

TEST(TuneSheet, ASpectrumBeyondTheInstrumentsCountIsTold) {
  DevTuneRules rules(Probes::ESI);
  rules.WPulseCountDelay(2000000);
  EXPECT_THAT(
      TuneSheet(rules),
      HasSubstr("  a spectrum          59902003.795 ms, which the instrument counts as 4067428.947 ms: "));
}

TEST(TuneSheet, VoltagesOfAnApciSourceHaveTheLimitsOfTheirSign) {
  DevTuneRules rules(Probes::APCI);
  EXPECT_THAT(TuneSheet(rules), HasSubstr("-2000 V      -5000 to 0 by 1\n"));
  EXPECT_THAT(TuneSheet(rules), HasSubstr("0 V      0 to 6000 by 1\n"));
  rules.WPolarityType(TslBL::PolarityNegative);
  EXPECT_THAT(TuneSheet(rules), HasSubstr("2000 V      0 to 5000 by 1\n"));
  EXPECT_THAT(TuneSheet(rules), HasSubstr("0 V      -6000 to 0 by 1\n"));
}

TEST(TuneSheet, ASyringeHasLimits) {
  const std::string sheet = TuneSheet(DevTuneRules(Probes::ESI));
  EXPECT_THAT(sheet, HasSubstr("mm     0.46 to 10.3\n"));
  EXPECT_THAT(sheet, HasSubstr("0        0 to 999\n"));
}

TEST(TuneSheet, ASpanThatIsNoneSaysWhatItIs) {
  DevTuneRules rules(Probes::ESI);
  rules.WControlType(Control::Sim);
  EXPECT_THAT(TuneSheet(rules), HasSubstr("SIM Span                   not a span: 3000\n"));
}

TEST(TuneSheet, ScanSpeedAgreesWithTheSteps) {
  struct Row {
    double step;
    std::uint32_t dwell;
    const char* text;
  };
  for (const auto& [step, dwell, text] :
       {Row{0.1, 500, "  scan speed          200 m/z per s\n"},
        Row{0.12, 1000,
            "  scan speed          100 m/z per s by its steps; nominally 119 m/z per s, which counts with a "
            "step "
            "of 0.12 m/z; on the mass DAC it is 0.1\n"},
        Row{0.1, 30000,
            "  scan speed          3.33333 m/z per s by its steps; nominally 3 m/z per s, rounded down\n"}}) {
    DevTuneRules rules(Probes::ESI);
    rules.WMZRange(100, 200);
    rules.WMZStepSize(step);
    rules.WPulseCountDelay(dwell);
    EXPECT_THAT(TuneSheet(rules), HasSubstr(text));
    EXPECT_THAT(TuneSheet(rules), HasSubstr("  steps of a scan     1001 of 0.1 m/z\n"));
  }
}

TEST(TuneSheet, StepsFollowTheCalibration) {
  DevTuneRules rules(Probes::ESI);
  rules.WMZRange(100, 200);
  rules.MZCalPts = {{L"", 5, 50}, {L"", 3000, 30000}};
  EXPECT_THAT(TuneSheet(rules), HasSubstr("  steps of a scan     501 of 0.2 m/z\n"));
  EXPECT_THAT(
      TuneSheet(rules),
      HasSubstr("scan speed          200 m/z per s by its steps; nominally 100 m/z per s, which counts "
                "with a step of 0.1 m/z; on the mass DAC it is 0.2\n"));
}

TEST(TuneSheet, ASimHasOneStepAndNoSpeed) {
  DevTuneRules rules(Probes::ESI);
  rules.WControlType(Control::Sim);
  rules.WMZLow(500);
  rules.WSimWithSpan(Control::NoSpan);
  const std::string sheet = TuneSheet(rules);
  EXPECT_THAT(sheet,
              HasSubstr("  MZ                  SIM m/z                           500 m/z    5 to 3000"));
  EXPECT_THAT(sheet, HasSubstr("  steps of a scan     1\n"));
  EXPECT_THAT(sheet, HasSubstr("  scan speed          none: there is one step\n"));
}

TEST(TuneSheet, ASettlingDelayThatIsTooShortIsTold) {
  DevTuneRules rules(Probes::ESI);
  rules.WInitSettleDelay(3794);
  EXPECT_THAT(TuneSheet(rules), HasSubstr("  settling needed     3795 us; 3794 are set\n"));
}

TEST(TuneSheet, LimitsWithAGapAreShownAsSuch) {
  const std::string sheet = TuneSheet(DevTuneRules(Probes::APCI));
  EXPECT_THAT(sheet, HasSubstr(" C      25 (off), or 150 to 350 by 5\n"));
  EXPECT_THAT(sheet, HasSubstr(" psi    0 (off), or 15 to 60 by 5\n"));
}

TEST(TuneSheet, NamesCannotGarbleATerminal) {
  DevTuneRules rules(Probes::ESI);
  rules.WName(L"a\x1b[31m\nb");
  EXPECT_THAT(TuneSheet(rules), HasSubstr("Tune Record Name           a?[31m?b\n"));
}

TEST(TuneSheet, EndsWithWhatTheRulesSay) {
  Tune tune = DevTuneRules(Probes::ESI);
  EXPECT_THAT(TuneSheet(tune), testing::EndsWith("\nThe rules accept it.\n"));
  tune.ControlData.DetectorGain = 1;
  EXPECT_THAT(
      TuneSheet(tune),
      testing::EndsWith("\nThe rules do not accept it:\n  DetectorGain: Detector Gain is out of range.  "
                        "Valid values are -3000.00 to 0.00.\n"));
}

TEST(TuneSheet, OfAnEmptyTuneHoldsTogether) {
  EXPECT_THAT(TuneSheet(Tune()), HasSubstr("The rules do not accept it:"));
}

}  // namespace
}  // namespace tests
