// Tests: DefaultTune.cpp, DevTuneRules.cpp.

#include <ctime>
#include <type_traits>
#include <vector>

#include <tune/rules/Rules.h>
#include "tune/BesideLibrary.h"

namespace {

using namespace tests;

using Fields = std::map<TuneField::Id, double>;

Fields CalibrantFields(const double (&values)[9]) {
  constexpr TuneField::Id kFields[] = {TuneField::CapExit,      TuneField::Skimmer,  TuneField::Q0RFAmpl,
                                       TuneField::Q0Offset,     TuneField::Q0Exit1,  TuneField::Q0Exit2,
                                       TuneField::Q1Resolution, TuneField::Q1Offset, TuneField::Q1IonGuide};
  Fields fields;
  for (std::size_t i = 0; i < std::size(values); ++i) fields[kFields[i]] = values[i];
  return fields;
}

Control NewControl() {
  Control control;
  control.Type = static_cast<Control::Types>(0);
  control.MZLow = 5.0;
  control.MZHi = 3000.0;
  control.MZStepSize = 0.1;
  control.PolarityType = static_cast<PolarityTypes>(0);
  control.InitSettleDelay = 3795;
  control.StepSettleDelay = 0;
  control.PulseCountDelay = 1000;
  control.ScansPerSpec = 1;
  control.CapExit = SingleLens(160.0);
  control.Skimmer = SingleLens(18.0);
  control.Q0RFAmpl = SingleLens(600.0);
  control.Q0Offset = SingleLens(-8.0);
  control.Q0Exit1 = SingleLens(-0.4);
  control.Q0Exit2 = SingleLens(-90.0);
  control.HEDynode = -7000;
  control.DetectorGain = -1400;
  control.SignalThreshold = 0;
  control.Q1MZType = static_cast<Control::Q1MZTypes>(0);
  control.Q1Resolution = SingleLens(0.0);
  control.Q1CoarseResolution = SingleLens(0.0);
  control.Q1Offset = SingleLens(-1.0);
  control.Q1Enter = SingleLens(10.0);
  control.Q1IonGuide = SingleLens(-12.6);
  control.Q1PolePolarity = false;
  return control;
}

IonSource NewSource(Probes::ProbeTypes probe) {
  const bool apci = probe == Probes::APCI;
  IonSource source;
  source.Type = probe;
  source.Cylinder = apci ? 0 : -3500;
  source.EndPlate = apci ? -2000 : -5000;
  source.CapEnter = apci ? -3000 : -6000;
  source.EndPlateTemp = static_cast<IonSource::TempLevels>(0);
  source.DryGasTemp = apci ? 25 : 170;
  source.ApciVapTemp = apci ? 25 : 0;
  source.DryGasFlow = apci ? 5.0 : 12.0;
  source.Neb1GasPres = apci ? 25 : 60;
  source.Neb2GasOn = source.CalValve2On = source.CalSample1On = source.CalSample2On = false;
  source.CalValveOn = apci;
  source.ControlByCurrent = apci;
  source.CoronaCurrent = 0.0;
  return source;
}

std::vector<Q1CalPt> NewCalibrants() {
  struct Row {
    const wchar_t* name;
    double mz;
    double values[9];
  };
  constexpr Row kRows[] = {
      {L"Fragment 2", 39.0, {100.0, 25.0, 100.0, -15.0, -0.4, -90.0, 98.975, 10.0, -8.0}},
      {L"Agilent 1", 118.0, {100.0, 25.0, 500.0, -15.0, -0.4, -90.0, 30.615, -0.5, -12.6}},
      {L"Agilent 2", 322.0, {120.0, 30.0, 800.0, -20.0, -0.4, -90.0, 6.445, -2.5, -13.9}},
      {L"Agilent 5", 1521.0, {140.0, 35.0, 800.0, -25.0, -0.4, -90.0, -7.226, -9.0, -40.5}},
      {L"Agilent 7", 2721.0, {170.0, 45.0, 800.0, -30.0, -0.4, -90.0, -7.836, -10.0, -71.7}},
  };
  std::vector<Q1CalPt> points;
  for (const Row& row : kRows) {
    points.emplace_back(row.mz, row.name);
    points.back().Fields = CalibrantFields(row.values);
  }
  return points;
}

TEST(NewTune, HoldsTheDefaultsOfItsProbe) {
  for (const Probes::ProbeTypes probe : kProbes) {
    SCOPED_TRACE(probe);
    const DevTuneRules rules(probe);
    EXPECT_EQ(ToBytes(rules.ControlData), ToBytes(NewControl()));
    EXPECT_EQ(ToBytes(rules.Source), ToBytes(NewSource(probe)));
    EXPECT_EQ(rules.Q1CalPts, NewCalibrants());
    EXPECT_EQ(rules.Info.Name, L"New Tune");
    EXPECT_EQ(rules.Info.Comment, L"");
  }
}

TEST(NewTune, HoldsALineOverTheMzRange) {
  for (const Probes::ProbeTypes probe : kProbes) {
    const std::vector<MZCalPt> points = DevTuneRules(probe).MZCalPts;
    ASSERT_EQ(points.size(), 2u);
    EXPECT_EQ(points[0].Name, L"Default Low");
    EXPECT_EQ(points[0].MZ, 5.0);
    EXPECT_EQ(points[0].MassDAC, 100.0);
    EXPECT_EQ(points[1].Name, L"Default High");
    EXPECT_EQ(points[1].MZ, 3000.0);
    EXPECT_EQ(points[1].MassDAC, 60000.0);
  }
}

TEST(NewTune, OfAnUnknownProbeIsAnEsiKind) {
  const auto probe = static_cast<Probes::ProbeTypes>(6);
  EXPECT_EQ(ToBytes(DevTuneRules(probe).Source), ToBytes(NewSource(probe)));
}

TEST(NewTune, WasSavedNow) {
  const std::int64_t before = std::time(nullptr);
  const std::int64_t saved = DevTuneRules(Probes::ESI).QLastSaved();
  EXPECT_GE(saved, before);
  EXPECT_LE(saved, std::time(nullptr));
}

// The settling delay is written as any other change.
TEST(NewTune, CountsAsModifiedAndHasNoText) {
  for (const Probes::ProbeTypes probe : kProbes) {
    DevTuneRules rules(probe);
    EXPECT_TRUE(rules.IsModified());
    EXPECT_EQ(LastErrorOf(rules), L"");
  }
}

// ---- Syringe of a new tune ---------------------------------------------------------------

Syringe NewSyringe() { return DevTuneRules(Probes::ESI).SyringeData; }

Syringe FirstSyringe(const wchar_t* maker, const wchar_t* model, double diameter) {
  Syringe syringe;
  syringe.Manufacturer = maker;
  syringe.Model.Name = model;
  syringe.Model.Diameter = diameter;
  return syringe;
}

TEST(NewTuneSyringe, IsTheFirstOfTheCatalogue) {
  const BesideLibrary site("SyringeList.xml",
                           "<Manufacturers>"
                           "<Manufacturer Name=\"Hamilton\"><Models><Model Name=\"1725\" Diameter=\"2.3\"/>"
                           "<Model Name=\"1750\" Diameter=\"3.26\"/></Models></Manufacturer>"
                           "<Manufacturer Name=\"SGE\"><Models><Model Name=\"x\" Diameter=\"1\"/></Models>"
                           "</Manufacturer></Manufacturers>");
  EXPECT_BESIDE_LIBRARY(site, NewSyringe() == FirstSyringe(L"Hamilton", L"1725", 2.3), "");
}

TEST(NewTuneSyringe, OfAManufacturerWithoutModelsHasItsNameOnly) {
  const BesideLibrary site("SyringeList.xml",
                           "<Manufacturers><Manufacturer Name=\"SGE\"/><Manufacturer Name=\"Hamilton\">"
                           "<Models><Model Name=\"1725\" Diameter=\"2.3\"/></Models></Manufacturer>"
                           "</Manufacturers>");
  EXPECT_BESIDE_LIBRARY(site, NewSyringe() == FirstSyringe(L"SGE", L"", 0.0), "");
}

TEST(NewTuneSyringe, WithoutACatalogueIsNone) {
  const BesideLibrary site;
  EXPECT_BESIDE_LIBRARY(site, NewSyringe() == Syringe(), testing::StrEq(""));
}

TEST(NewTuneSyringe, OfACatalogueThatCannotBeReadIsNone) {
  const BesideLibrary site("SyringeList.xml", "<Manufacturers><Manufacturer");
  const auto silent = [] {
    DevTuneRules rules(Probes::APCI);
    return rules.SyringeData == Syringe() && LastErrorOf(rules).empty() && rules.Validate() == kNoError;
  };
  EXPECT_BESIDE_LIBRARY(site, silent(), testing::StrEq(""));
}

// ---- Copies and texts --------------------------------------------------------------------

TEST(DevTuneRules, OfATuneIsThatTuneUnmarked) {
  DevTuneRules rules(SampleTune());
  EXPECT_EQ(TuneBytes(rules), TuneBytes(SampleTune()));
  EXPECT_FALSE(rules.IsModified());
  EXPECT_EQ(LastErrorOf(rules), L"");
}

TEST(DevTuneRules, IsATune) {
  const DevTuneRules rules(SampleTune());
  const Tune& tune = rules;
  EXPECT_EQ(tune, SampleTune());
  static_assert(std::is_convertible_v<const DevTuneRules&, const Tune&>);
}

TEST(DevTuneRules, AssignedATuneForgetsItsMarkAndText) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_EQ(rules.WScansPerSpec(0), kError);
  ASSERT_TRUE(rules.IsModified());
  const Tune tune = SampleTune();
  EXPECT_EQ(&(rules = tune), &rules);
  EXPECT_EQ(TuneBytes(rules), TuneBytes(SampleTune()));
  EXPECT_FALSE(rules.IsModified());
  EXPECT_EQ(LastErrorOf(rules), L"");
}

TEST(DevTuneRules, AssignedItsOwnTuneStays) {
  DevTuneRules rules(SampleTune());
  rules = static_cast<const Tune&>(rules);
  EXPECT_EQ(TuneBytes(rules), TuneBytes(SampleTune()));
}

TEST(DevTuneRules, CopiedIsOfItsOwn) {
  const DevTuneRules rules(SampleTune());
  DevTuneRules copy = rules;
  copy.WComment(L"the copy's");
  EXPECT_EQ(rules.QComment(), SampleTune().Info.Comment);
  EXPECT_FALSE(rules.IsModified());
}

TEST(DevTuneRules, IsModifiedUntilToldOtherwise) {
  DevTuneRules rules(SampleTune());
  rules.WComment(L"new");
  EXPECT_TRUE(rules.IsModified());
  rules.ClearModified();
  EXPECT_FALSE(rules.IsModified());
  EXPECT_EQ(rules.QComment(), L"new");
}

TEST(LastErrorText, IsHandedOverOnce) {
  DevTuneRules rules = Unmarked();
  rules.WScansPerSpec(0);
  std::wstring text = L"old";
  rules.QLastError(text);
  EXPECT_EQ(text, L"Scans Per Spectrum is out of range.  Valid values are 1.00 to 65535.00.");
  rules.QLastError(text);
  EXPECT_EQ(text, L"");
}

TEST(LastErrorText, IsHandedOverAsAValueToo) {
  DevTuneRules rules = Unmarked();
  rules.WScansPerSpec(0);
  EXPECT_EQ(rules.QLastError(), L"Scans Per Spectrum is out of range.  Valid values are 1.00 to 65535.00.");
  EXPECT_EQ(rules.QLastError(), L"");
}

TEST(LastErrorText, OutlivesASuccess) {
  DevTuneRules rules = Unmarked();
  rules.WScansPerSpec(0);
  EXPECT_EQ(rules.WScansPerSpec(2), kNoError);
  EXPECT_EQ(LastErrorOf(rules), L"Scans Per Spectrum is out of range.  Valid values are 1.00 to 65535.00.");
}

TEST(LastErrorText, IsThatOfTheLastFailure) {
  DevTuneRules rules = Unmarked();
  rules.WScansPerSpec(0);
  rules.WDryGasTemp(0);
  EXPECT_EQ(LastErrorOf(rules), L"Drying Gas Temp. is out of range.  Valid values are 25.00 to 350.00.");
}

}  // namespace
