// Tests: LimitOverrides.cpp.

#include <stdexcept>

#include <tune/rules/Rules.h>
#include "tune/BesideLibrary.h"

// The limits of a site count for the rules of a tune as the built-in ones do. Each test runs in
// a process of its own.

namespace {

using namespace tests;

// Whether the change is refused with this text.
template <class Change>
bool Refused(DevTuneRules rules, Change change, const std::wstring& text) {
  const std::string before = TuneBytes(rules);
  return change(rules) == kError && LastErrorOf(rules) == text && TuneBytes(rules) == before;
}

auto CapExit(double volts) {
  return [=](DevTuneRules& r) { return r.WCapExit(SingleLens(volts)); };
}
constexpr const wchar_t* kBuiltIn =
    L"Capillary Exit - Single Value is out of range.  Valid values are -400.00 to 400.00.";
constexpr const wchar_t* kOfTheSite =
    L"Capillary Exit - Single Value is out of range.  Valid values are -300.00 to 300.00.";

bool HasBuiltInCapExit() {
  return Refused(Unmarked(), CapExit(401), kBuiltIn) && Unmarked().WCapExit(SingleLens(400)) == kNoError;
}

bool HasCapExitOfTheSite() {
  for (const Probes::ProbeTypes probe : kProbes) {
    DevTuneRules rules = Unmarked(probe);
    if (CapExit(300)(rules) != kNoError || CapExit(-300)(rules) != kNoError) return false;
    if (!Refused(rules, CapExit(301), kOfTheSite) || !Refused(rules, CapExit(-301), kOfTheSite)) return false;
  }
  return true;
}

TEST(TuneOverrides, WithoutAFileTheLimitsStand) {
  const BesideLibrary site;
  EXPECT_BESIDE_LIBRARY(site, HasBuiltInCapExit() && Unmarked().Validate() == kNoError, testing::StrEq(""));
}

TEST(TuneOverrides, OfALensCountForEveryProbe) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1");
  EXPECT_BESIDE_LIBRARY(site, HasCapExitOfTheSite(), "");
}

TEST(TuneOverrides, OfALensCountForItsCurve) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1");
  const auto curve = [] {
    Tune bad = Unmarked();
    bad.Q1CalPts[0].Fields[TuneField::CapExit] = 301;
    const std::wstring text = L"Capillary Exit is out of range.  Valid values are -300.00 to 300.00.";
    return Refused(
               Unmarked(), [](DevTuneRules& r) { return r.WQ1CalPtField(39, TuneField::CapExit, 301); },
               text) &&
           Refused(
               DevTuneRules(bad), [](DevTuneRules& r) { return r.Validate(); },
               L"Q1 step calibration point at m/z 39.00 is invalid.  " + text);
  };
  EXPECT_BESIDE_LIBRARY(site, curve(), "");
}

TEST(TuneOverrides, OfEachKindOfBadRowEndTheReading) {
  for (const char* bad : {"23 100 -100 0.1", "23 -50 50 200", "x -50 50 1", "23 -50 fifty 1"}) {
    SCOPED_TRACE(bad);
    const BesideLibrary site("overrides.txt", std::string("22 -300 300 1\n") + bad + "\n24 0 1 1\n");
    const auto rowsBefore = [] {
      DevTuneRules rules = Unmarked();
      return HasCapExitOfTheSite() && rules.WSkimmer(SingleLens(100)) == kNoError &&
             rules.WQ0RFAmpl(SingleLens(800)) == kNoError;
    };
    EXPECT_BESIDE_LIBRARY(site, rowsBefore(), "");
  }
}

TEST(TuneOverrides, OfARowWithoutItsStepAreNone) {
  const BesideLibrary site("overrides.txt", "22 -300 300 1\n23 -50 50");
  EXPECT_BESIDE_LIBRARY(site, HasCapExitOfTheSite() && Unmarked().WSkimmer(SingleLens(100)) == kNoError, "");
}

TEST(TuneOverrides, ABadFirstRowLeavesTheLimits) {
  const BesideLibrary site("overrides.txt", "22 300 -300 1\n22 -300 300 1");
  EXPECT_BESIDE_LIBRARY(site, HasBuiltInCapExit() && Unmarked().Validate() == kNoError, "");
}

TEST(TuneOverrides, OfAnEsiFieldDoNotCountForApci) {
  const BesideLibrary site("overrides.txt", "1 -1000 1000 1");
  const auto cylinder = [] {
    const std::wstring text = L"Cylinder Lens is out of range.  Valid values are -1000.00 to 1000.00.";
    const auto write = [](DevTuneRules& r) { return r.WCylinder(1001); };
    return Refused(Unmarked(Probes::ESI), write, text) &&
           Refused(Unmarked(Probes::LowFlowESI), write, text) &&
           Refused(Unmarked(Probes::APCI), write,
                   L"Cylinder Lens is out of range.  Valid values are 0.00 to 0.00.") &&
           Unmarked(Probes::APCI).WCoronaVoltage(6000) == kNoError;
  };
  EXPECT_BESIDE_LIBRARY(site, cylinder(), "");
}

// The default tune knows nothing of the site's limits but the m/z range of its calibration.
TEST(TuneOverrides, MayMakeTheDefaultTuneInvalid) {
  const BesideLibrary site("overrides.txt", "1 -1000 1000 1");
  const auto refused = [] {
    return Refused(
        Unmarked(), [](DevTuneRules& r) { return r.Validate(); },
        L"Cylinder Lens is out of range.  Valid values are -1000.00 to 1000.00.");
  };
  EXPECT_BESIDE_LIBRARY(site, refused(), "");
}

TEST(TuneOverrides, OfTheMzRangeMoveTheDefaultCalibration) {
  const BesideLibrary site("overrides.txt", "11 10 3000 0.1\n12 5 2000 0.5");
  const auto moved = [] {
    const std::vector<MZCalPt> points = {{L"Default Low", 10, 100}, {L"Default High", 2000, 4000}};
    DevTuneRules rules = Unmarked(Probes::APCI);
    const bool range = rules.QMZLow() == 5.0 && rules.QMZHi() == 3000.0;
    rules.WControlType(Control::Sim);
    return rules.QMZCalPts() == points && range && rules.QMZHi() == 2000.0;
  };
  EXPECT_BESIDE_LIBRARY(site, moved(), "");
}

TEST(TuneOverrides, OfMzCountForCalibrations) {
  const BesideLibrary site("overrides.txt", "10 50 2000 0.1\n14 0 1000 1");
  const auto counted = [] {
    const auto points = [](double mz, double dac) {
      return [=](DevTuneRules& r) { return r.CheckMZCalPts({{L"", 60, 10}, {L"", mz, dac}}); };
    };
    const std::wstring mzText = L"m/z is out of range.  Valid values are 50.00 to 2000.00.";
    return Refused(
               Unmarked(), [](DevTuneRules& r) { return r.AddQ1CalPt(49, L""); }, mzText) &&
           Refused(Unmarked(), points(2001, 20), L"m/z calibration point 1 is invalid.  " + mzText) &&
           Refused(
               Unmarked(), points(2000, 1001),
               L"m/z calibration point 1 is invalid.  Mass DAC is out of range.  Valid values are 0.00 to "
               L"1000.00.");
  };
  EXPECT_BESIDE_LIBRARY(site, counted(), "");
}

TEST(TuneOverrides, MayLeaveADefaultTuneWithoutASettlingDelay) {
  const BesideLibrary site("overrides.txt", "16 0 3000 1");
  const auto without = [] {
    DevTuneRules rules(Probes::ESI);
    return rules.QInitSettleDelay() == 0 && !rules.IsModified() &&
           LastErrorOf(rules) ==
               L"Initial Settling Delay is out of range.  Valid values are 0.00 to 3000.00.";
  };
  EXPECT_BESIDE_LIBRARY(site, without(), "");
}

TEST(TuneOverrides, OfAStepMayMakeTheDurationUnknown) {
  const BesideLibrary site("overrides.txt", "13 0.05 2995 0.2");
  const auto thrown = [] {
    DevTuneRules rules = Unmarked();
    rules.WMZStepSize(0.05);
    try {
      rules.Validate();
    } catch (const std::runtime_error& e) {
      return std::string(e.what()) == "Invalid stepMDAC in DevTuneRules.cpp NumPulses";
    }
    return false;
  };
  EXPECT_BESIDE_LIBRARY(site, thrown(), "");
}

// However fine the site's steps are, a scan has none below five hundredths.
TEST(TuneOverrides, OfAFineStepCountScansByFiveHundredths) {
  const BesideLibrary site("overrides.txt", "13 0.001 2995 0.001");
  const auto pulses = [] {
    DevTuneRules rules = Unmarked();
    return rules.WMZRange(100, 200) == kNoError && rules.WMZStepSize(0.001) == kNoError &&
           DevTuneRules::QNumPulses(rules) == 2000 / 50 + 1;
  };
  EXPECT_BESIDE_LIBRARY(site, pulses(), "");
}

TEST(TuneOverrides, OfTheVaporizerSayWhereItIsOff) {
  const BesideLibrary site("overrides.txt", "6 20.9 400 5");
  const auto off = [] {
    DevTuneRules rules = Unmarked(Probes::APCI);
    const bool cold = rules.WApciNebGas(false) == kNoError && rules.QApciVapTemp() == 20;  // truncated
    return cold && rules.WApciVapTemp(25) == kNoError && rules.QApciNebGas() &&
           rules.WApciVapTemp(400) == kNoError &&
           Refused(
               rules, [](DevTuneRules& r) { return r.WApciVapTemp(20); },
               L"APCI Vaporizer Temp. is out of range.  Valid values are 20.90 to 400.00.");
  };
  EXPECT_BESIDE_LIBRARY(site, off(), "");
}

TEST(TuneOverrides, OfApciVoltagesKeepTheirSides) {
  const BesideLibrary site("overrides.txt", "2 -10 20 1\n54 -30 40 1");
  const auto sides = [] {
    DevTuneRules rules = Unmarked(Probes::APCI);
    const auto plate = [](int volts) { return [=](DevTuneRules& r) { return r.WEndPlate(volts); }; };
    const auto corona = [](int volts) { return [=](DevTuneRules& r) { return r.WCoronaVoltage(volts); }; };
    const bool positive =
        Refused(rules, plate(1), L"Endplate is out of range.  Valid values are -10.00 to 0.00.") &&
        Refused(rules, corona(41), L"Corona Voltage is out of range.  Valid values are 0.00 to 40.00.");
    rules.WPolarityType(PolarityNegative);
    return positive &&
           Refused(rules, plate(21), L"Endplate is out of range.  Valid values are 0.00 to 20.00.") &&
           Refused(rules, corona(-31), L"Corona Voltage is out of range.  Valid values are -30.00 to 0.00.");
  };
  EXPECT_BESIDE_LIBRARY(site, sides(), "");
}

TEST(TuneOverrides, MayAllowOneValueOnly) {
  const BesideLibrary site("overrides.txt", "18 500 500 0\n21 0 1 1");
  const auto one = [] {
    DevTuneRules rules = Unmarked();
    return rules.WPulseCountDelay(500) == kNoError &&
           Refused(
               rules, [](DevTuneRules& r) { return r.WPulseCountDelay(501); },
               L"Pulse Counting Delay is out of range.  Valid values are 500.00 to 500.00.") &&
           Refused(
               rules, [](DevTuneRules& r) { return r.WCapExit(LensOf(IOPoint::FunctionType)); },
               L"Capillary Exit - IOPoint Type is out of range.  Valid values are 0.00 to 1.00.");
  };
  EXPECT_BESIDE_LIBRARY(site, one(), "");
}

TEST(TuneOverrides, BeyondWhatAFieldHoldsDoNoHarm) {
  const BesideLibrary site("overrides.txt", "6 1e300 1e301 1\n11 -1e308 1e308 1e-300\n16 0 1e300 1");
  const auto harmless = [] {
    DevTuneRules rules = Unmarked(Probes::APCI);
    return rules.WApciNebGas(false) == kNoError && rules.WApciVapTemp(25) == kError &&
           rules.WInitSettleDelay(4294967295u) == kNoError;
  };
  EXPECT_BESIDE_LIBRARY(site, harmless(), "");
}

}  // namespace
