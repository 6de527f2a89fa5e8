#include <tslbl/records/VexException.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/FieldTableChecks.h>
#include <iterator>
#include <limits>
#include <set>
#include <stdexcept>
#include <vector>

#include <tslbl/closed/common/Text.h>

#include <tune/rules/Rules.h>
#include <tune/rules/TuneFaults.h>

namespace {

using namespace tests;

void ExpectInvalid(const Tune& tune, const std::wstring& text) {
  ExpectRefused(
      DevTuneRules(tune), [](DevTuneRules& rules) { return rules.Validate(); }, text);
}
void ExpectValid(const Tune& tune) {
  DevTuneRules rules(tune);
  EXPECT_EQ(rules.Validate(), kNoError) << TslCommon::ToUtf8(LastErrorOf(rules));
  EXPECT_FALSE(rules.IsModified());
  EXPECT_EQ(TuneBytes(rules), TuneBytes(tune));
}

TEST(Validate, AcceptsTheDefaultTunes) {
  for (const Probes::ProbeTypes probe : kProbes) {
    ExpectValid(Unmarked(probe));
    DevTuneRules rules(probe);
    EXPECT_EQ(rules.Validate(), kNoError);
    EXPECT_EQ(LastErrorOf(rules), L"");
  }
}

TEST(Validate, FindsEachFault) {
  for (const auto& [probe, faults] : AllFaults()) {
    for (const Fault& fault : faults) {
      SCOPED_TRACE(fault.name + " of probe " + std::to_string(probe));
      Tune tune = Unmarked(probe);
      fault.make(tune);
      ExpectInvalid(tune, fault.text);
    }
  }
}

// So that a new field gets its fault, too.
TEST(Validate, IsTriedWithAFaultOfEachNumericField) {
  // The first two have tests of their own, the entrance lens is not checked.
  std::set<TuneField::Id> tried = {TuneField::SourceType, TuneField::PulseCountDelaySim, TuneField::Q1Enter};
  for (const auto& [probe, faults] : AllFaults()) {
    for (const Fault& fault : faults) {
      Tune tune = Unmarked(probe);
      fault.make(tune);
      tried.insert(DevTuneRules(tune).QFaults().at(0).field);
    }
  }
  for (const FieldRow& row : kFieldTable) {
    if (IsNumeric(row) && !tried.contains(row.id)) ADD_FAILURE() << "no fault of field " << row.id;
  }
}

TEST(Validate, TellsOfTheFirstFault) {
  for (const auto& [probe, faults] : AllFaults()) {
    for (std::size_t i = 0; i + 1 < faults.size(); ++i) {
      SCOPED_TRACE(faults[i].name + " before " + faults[i + 1].name);
      Tune tune = Unmarked(probe);
      faults[i].make(tune);
      faults[i + 1].make(tune);
      ExpectInvalid(tune, faults[i].text);
    }
  }
}

// A source of an unknown kind has no limits of its own: its voltages and gases must be off.
TEST(Validate, TellsOfTheSourceTypeAfterItsOwnFieldsAndBeforeTheVoltages) {
  Tune tune = Unmarked();
  tune.Source.Type = static_cast<Probes::ProbeTypes>(8);
  ExpectInvalid(tune, L"Cylinder Lens is out of range.  Valid values are 0.00 to 0.00.");
  tune.Source.Cylinder = 0;
  ExpectInvalid(tune, L"Nebulizer 1 Gas Pressure is out of range.  Valid values are 0.00 to 0.00.");
  tune.Source.Neb1GasPres = 0;
  ExpectInvalid(tune, L"Ion Source Type is out of range.  Valid values are 0.00 to 7.00.");
  tune.Source.Type = static_cast<Probes::ProbeTypes>(7);
  ExpectInvalid(tune, L"Endplate is out of range.  Valid values are 0.00 to 0.00.");
}

TEST(Validate, DoesNotAskAnEsiTuneForApciFields) {
  Tune tune = Unmarked();
  tune.Source.CoronaCurrent = 1000;
  tune.Source.ApciVapTemp = 1000;
  ExpectValid(tune);
}

TEST(Validate, AcceptsWhatNoLimitNames) {
  Tune tune = Unmarked();
  tune.ControlData.Q1Enter = LensOf(static_cast<IOPoint::Types>(7), 1e9);
  tune.SyringeData.Model.Diameter = -1;
  tune.SyringeData.FlowRate = 100000;
  ExpectValid(tune);
}

TEST(Validate, AcceptsBothPolarities) {
  for (const Probes::ProbeTypes probe : kProbes) {
    DevTuneRules rules = Unmarked(probe);
    rules.WPolarityType(PolarityNegative);
    ExpectValid(rules);
  }
}

TEST(Validate, AcceptsTheEndsOfTheDistances) {
  Tune tune = Unmarked();
  tune.ControlData.CapExit.Single = 390;
  tune.ControlData.Skimmer.Single = 20;
  tune.Source.EndPlate = -5000;
  tune.Source.CapEnter = -4000;
  tune.Source.Cylinder = 1000;
  ExpectValid(tune);
  tune.ControlData.CapExit.Single = -400;
  tune.Source.CapEnter = -6000;
  ExpectValid(tune);
}

TEST(Validate, MeasuresDistancesOfVoltagesEitherWay) {
  Tune tune = Unmarked();
  tune.Source.EndPlate = 4000;
  tune.Source.CapEnter = 2999;
  tune.Source.Cylinder = 0;
  ExpectInvalid(tune, L"Endplate and capillary entrance can be at most 1000 volts apart.");
  tune.Source.CapEnter = 4000;
  tune.Source.Cylinder = -2001;
  ExpectInvalid(tune, L"Endplate and cylinder can be at most 6000 volts apart.");
}

TEST(Validate, HoldsTheCoronaVoltageAgainstTheEndPlate) {
  Tune tune = Unmarked(Probes::APCI);
  tune.Source.Cylinder = 4000;
  ExpectValid(tune);
  tune.Source.Cylinder = 4001;
  ExpectInvalid(tune, L"Endplate and cylinder can be at most 6000 volts apart.");
}

TEST(Validate, AcceptsALensThatFollowsMz) {
  Tune tune = Unmarked();
  for (IOPoint Control::*lens :
       {&Control::CapExit, &Control::Skimmer, &Control::Q0RFAmpl, &Control::Q0Offset, &Control::Q0Exit1,
        &Control::Q0Exit2, &Control::Q1Resolution, &Control::Q1Offset, &Control::Q1IonGuide})
    tune.ControlData.*lens = LensOf(IOPoint::CalibratedType, 1e9);
  ExpectValid(tune);
}

TEST(Validate, CountsAWarningAsAFailure) {
  const std::pair<IOPoint Control::*, std::wstring> lenses[] = {
      {&Control::CapExit, L"Capillary Exit"},     {&Control::Skimmer, L"Skimmer"},
      {&Control::Q0RFAmpl, L"Q0 RF Amplitude"},   {&Control::Q0Offset, L"Q0 Offset"},
      {&Control::Q0Exit1, L"Q0 Exit Lens 1"},     {&Control::Q0Exit2, L"Q0 Exit Lens 2"},
      {&Control::Q1Resolution, L"Q1 Resolution"}, {&Control::Q1CoarseResolution, L"Q1 Coarse Resolution"},
      {&Control::Q1Offset, L"Q1 Offset Voltage"}, {&Control::Q1IonGuide, L"Q1 IonGuide"},
  };
  for (const auto& [lens, name] : lenses) {
    Tune tune = Unmarked();
    tune.Q1CalPts.resize(1);
    ExpectValid(tune);
    tune.ControlData.*lens = LensOf(IOPoint::CalibratedType);
    ExpectInvalid(tune, TooFewPoints(name));
  }
}

TEST(Validate, CoarseResolutionNeverFollowsMz) {
  Tune tune = Unmarked();
  tune.ControlData.Q1CoarseResolution = LensOf(IOPoint::CalibratedType);
  ExpectInvalid(tune, TooFewPoints(L"Q1 Coarse Resolution"));
}

TEST(Validate, RefusesAnUnknownTypeOfLens) {
  Tune tune = Unmarked();
  tune.ControlData.Q0Exit1 = LensOf(static_cast<IOPoint::Types>(3));
  ExpectInvalid(tune, L"Q0 Exit Lens 1 - IOPoint Type is out of range.  Valid values are 0.00 to 2.00.");
}

TEST(Validate, AcceptsATuneWithoutCalibrants) {
  Tune tune = Unmarked();
  tune.Q1CalPts.clear();
  ExpectValid(tune);
}

TEST(Validate, LooksAtTheMzOfACalibrantBeforeItsFields) {
  Tune tune = Unmarked();
  tune.Q1CalPts[1].MZ = 4.994;
  tune.Q1CalPts[1].Fields[TuneField::CapExit] = 401;
  ExpectInvalid(tune,
                L"Q1 step calibration point at m/z 4.99 is invalid.  m/z is out of range.  Valid values are "
                L"5.00 to 3000.00.");
}

TEST(Validate, LooksAtCalibrantsInTheOrderOfTheList) {
  Tune tune = Unmarked();
  std::swap(tune.Q1CalPts[0], tune.Q1CalPts[4]);
  tune.Q1CalPts[0].Fields[TuneField::Q1IonGuide] = 101;
  tune.Q1CalPts[4].Fields[TuneField::CapExit] = 401;
  ExpectInvalid(tune,
                L"Q1 step calibration point at m/z 2721.00 is invalid.  Q1 IonGuide is out of range.  Valid "
                L"values are -100.00 to 100.00.");
}

TEST(Validate, NeedsAnMzCalibration) {
  Tune tune = Unmarked();
  tune.MZCalPts.clear();
  ExpectInvalid(tune, L"There must be at least two m/z calibration points.");
}

TEST(Validate, EndsWithTheFirstFaultOfACalibrationAndQFaultsDoesNot) {
  Tune tune = Unmarked();
  tune.MZCalPts = {{L"", 4000, 70000}, {L"", 4, -1}, {L"", 2, 3}};
  const std::wstring mz = L" is invalid.  m/z is out of range.  Valid values are 5.00 to 3000.00.";
  const std::wstring dac = L" is invalid.  Mass DAC is out of range.  Valid values are 0.00 to 65535.00.";
  const std::wstring point = L"m/z calibration point ";
  const std::wstring expected[] = {
      point + L"0" + mz,
      point + L"1" + mz,
      point + L"1" + dac,
      point + L"1 is invalid.  m/z and mass DAC values must be greater than previous m/z calibration point.",
      point + L"2" + mz,
      point + L"2" + dac};
  const std::vector<DevTuneRules::Fault> faults = DevTuneRules(tune).QFaults();
  ASSERT_EQ(faults.size(), std::size(expected));
  for (std::size_t i = 0; i < faults.size(); ++i) {
    EXPECT_EQ(faults[i].field, TuneField::MZCalPts);
    EXPECT_EQ(faults[i].text, expected[i]);
  }
  ExpectInvalid(tune, expected[0]);
}

// ---- SIM -------------------------------------------------------------------------------

Tune Sim(double span) {
  Tune tune = Unmarked();
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZLow = 500;
  tune.ControlData.MZHi = span;
  tune.ControlData.PulseCountDelay = 1000;
  return tune;
}

constexpr const wchar_t* kBadSpan =
    L"Sim with Span value must be either No Span, 0.2, 0.4, 0.6, 0.8, or 1.0.";

TEST(ValidateSim, AcceptsTheSpans) {
  for (const double span : {0.0, 0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0}) {
    SCOPED_TRACE(span);
    ExpectValid(Sim(span));
  }
}

TEST(ValidateSim, RefusesOtherSpans) {
  for (const double span : {-0.2, 0.1, 0.3, 1.9, 2.1, 4.9, 100.0, 3000.1}) {
    SCOPED_TRACE(span);
    ExpectInvalid(Sim(span), kBadSpan);
  }
}

TEST(ValidateSim, LooksAtTheSpanAfterTheCentreAndBeforeTheStep) {
  Tune tune = Sim(0.3);
  tune.ControlData.MZStepSize = 0.04;
  ExpectInvalid(tune, kBadSpan);
  tune.ControlData.MZLow = 4;
  ExpectInvalid(tune, L"Low m/z is out of range.  Valid values are 5.00 to 3000.00.");
}

TEST(ValidateSim, MayDwellShorterThanAScan) {
  Tune tune = Sim(0);
  tune.ControlData.InitSettleDelay = 990;
  tune.ControlData.PulseCountDelay = 10;
  ExpectValid(tune);
  tune.ControlData.PulseCountDelay = 9;
  ExpectInvalid(tune, L"Pulse Counting Delay is out of range.  Valid values are 10.00 to 2000000.00.");
}

// ---- The acquisition rate ----------------------------------------------------------------

Tune SimOf(std::uint32_t microseconds) {
  Tune tune = Sim(0);
  tune.ControlData.PulseCountDelay = 10;
  tune.ControlData.InitSettleDelay = microseconds - 10;
  return tune;
}

TEST(ValidateDuration, OfAMillisecondIsAccepted) { ExpectValid(SimOf(1000)); }

TEST(ValidateDuration, BelowAMillisecondIsToldInMilliseconds) {
  ExpectInvalid(SimOf(999), Rate(L"0.999"));
  ExpectInvalid(SimOf(500), Rate(L"0.5"));
  ExpectInvalid(SimOf(10), Rate(L"0.01"));
}

TEST(ValidateDuration, CountsTheScansOfASpectrum) {
  Tune tune = SimOf(250);
  tune.ControlData.ScansPerSpec = 4;
  ExpectValid(tune);
  tune.ControlData.ScansPerSpec = 3;
  ExpectInvalid(tune, Rate(L"0.75"));
}

TEST(ValidateDuration, IsLookedAtBeforeTheScansOfASpectrum) {
  Tune tune = Unmarked();
  tune.ControlData.ScansPerSpec = 0;
  ExpectInvalid(tune, Rate(L"0"));
}

TEST(ValidateDuration, ThatWrapsAroundMayBeTooShort) {
  Tune tune = Sim(0);
  tune.ControlData.PulseCountDelay = 65536;
  tune.ControlData.InitSettleDelay = 65536;
  tune.ControlData.ScansPerSpec = 32768;  // 2 to the 32nd
  ExpectInvalid(tune, Rate(L"0"));
}

template <class Error>
std::string Thrown(const Tune& tune) {
  try {
    DevTuneRules(tune).Validate();
  } catch (const Error& e) {
    return e.what();
  }
  return "nothing";
}

TEST(Validate, ThrowsForAStepThatIsNoNumber) {
  Tune tune = Unmarked();
  tune.ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Thrown<std::runtime_error>(tune), "Invalid stepMDAC in DevTuneRules.cpp NumPulses");
}

TEST(Validate, ThrowsWhereTheCapillaryExitHasTwoValues) {
  Tune tune = Unmarked();
  tune.ControlData.MZLow = 100;
  tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
  tune.Q1CalPts = {Calibrant(100, {{TuneField::CapExit, 1}}), Calibrant(100, {{TuneField::CapExit, 2}})};
  EXPECT_EQ(Thrown<std::runtime_error>(tune), "Divide by zero error");
}

TEST(Validate, ThrowsForACalibrantOfAFieldThatIsNone) {
  Tune tune = Unmarked();
  tune.Q1CalPts[0].Fields[TuneField::kFieldCount] = 1;
  EXPECT_THROW(DevTuneRules(tune).Validate(), VexException);
}

TEST(Validate, KeepsTheTextOfAFailureBefore) {
  DevTuneRules rules = Unmarked();
  rules.WScansPerSpec(0);
  EXPECT_EQ(rules.Validate(), kNoError);
  EXPECT_EQ(LastErrorOf(rules), L"Scans Per Spectrum is out of range.  Valid values are 1.00 to 65535.00.");
}

// ---- All faults at once --------------------------------------------------------------------

std::vector<std::wstring> AllTexts(const Tune& tune) {
  std::vector<std::wstring> texts;
  for (const DevTuneRules::Fault& fault : DevTuneRules(tune).QFaults()) texts.push_back(fault.text);
  return texts;
}

TEST(QFaults, OfTheDefaultTunesAreNone) {
  for (const Probes::ProbeTypes probe : kProbes) EXPECT_TRUE(AllTexts(Unmarked(probe)).empty());
}

TEST(QFaults, NameTheFirstThatIsFound) {
  for (const auto& [probe, faults] : AllFaults()) {
    for (const Fault& fault : faults) {
      Tune tune = Unmarked(probe);
      fault.make(tune);
      const std::vector<std::wstring> texts = AllTexts(tune);
      ASSERT_FALSE(texts.empty()) << fault.name;
      EXPECT_EQ(texts[0], fault.text);
    }
  }
}

TEST(QFaults, NameTheSecondAfterTheFirst) {
  for (const auto& [probe, faults] : AllFaults()) {
    for (std::size_t i = 0; i + 1 < faults.size(); ++i) {
      SCOPED_TRACE(faults[i].name + " before " + faults[i + 1].name);
      Tune tune = Unmarked(probe);
      faults[i].make(tune);
      faults[i + 1].make(tune);
      const std::vector<std::wstring> texts = AllTexts(tune);
      ASSERT_GE(texts.size(), 2u);
      EXPECT_EQ(texts[0], faults[i].text);
      EXPECT_EQ(texts[1], faults[i + 1].text);
    }
  }
}

TEST(QFaults, NameTheFieldOfEach) {
  Tune tune = Unmarked(Probes::APCI);
  tune.Source.Neb1GasPres = 61;
  tune.ControlData.Skimmer.Single = 101;
  tune.ControlData.DetectorGain = 1;
  tune.MZCalPts.clear();
  tune.Q1CalPts[0].MZ = 1;
  std::vector<TuneField::Id> fields;
  for (const DevTuneRules::Fault& fault : DevTuneRules(tune).QFaults()) fields.push_back(fault.field);
  EXPECT_EQ(fields,
            (std::vector<TuneField::Id>{TuneField::ApciAuxGas, TuneField::Skimmer, TuneField::DetectorGain,
                                        TuneField::MZCalPts, TuneField::Q1CalPts}));
}

TEST(QFaults, OfACoronaFarFromTheEndPlateNameTheCorona) {
  for (const auto& [probe, field] :
       {std::pair{Probes::APCI, TuneField::CoronaVoltage}, std::pair{Probes::ESI, TuneField::Cylinder}}) {
    Tune tune = DevTuneRules(probe);
    tune.Source.Cylinder = tune.Source.EndPlate > -3000 ? 5000 : 2000;
    const std::vector<DevTuneRules::Fault> faults = DevTuneRules(tune).QFaults();
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults.front().field, field);
  }
}

TEST(QFaults, HoldWhatWouldBeThrown) {
  Tune tune = Unmarked();
  tune.ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN();
  tune.ControlData.DetectorGain = 1;
  tune.Q1CalPts[0].Fields[TuneField::kFieldCount] = 1;
  EXPECT_EQ(AllTexts(tune),
            (std::vector<std::wstring>{L"Invalid stepMDAC in DevTuneRules.cpp NumPulses",
                                       L"Detector Gain is out of range.  Valid values are -3000.00 to 0.00.",
                                       L"Field to string map for field id " +
                                           std::to_wstring(TuneField::kFieldCount) + L" does not exist."}));
}

}  // namespace
