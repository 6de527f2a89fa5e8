// Tests: DevTuneRulesWriters.cpp.

#include <limits>
#include <vector>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

struct Lens {
  const wchar_t* name;
  ErrTypes (DevTuneRules::*write)(const IOPoint&);
  IOPoint Control::*field;
  bool cut;          // to three decimals
  bool followsMz;    // by the default calibrants
  bool hasPolarity;  // turns with the sign of the ions
};

using R = DevTuneRules;
using C = Control;

constexpr Lens kLenses[] = {
    {L"Capillary Exit", &R::WCapExit, &C::CapExit, false, true, true},
    {L"Skimmer", &R::WSkimmer, &C::Skimmer, false, true, true},
    {L"Q0 RF Amplitude", &R::WQ0RFAmpl, &C::Q0RFAmpl, false, true, false},
    {L"Q0 Offset", &R::WQ0Offset, &C::Q0Offset, false, true, true},
    {L"Q0 Exit Lens 1", &R::WQ0Exit1, &C::Q0Exit1, false, true, true},
    {L"Q0 Exit Lens 2", &R::WQ0Exit2, &C::Q0Exit2, false, true, true},
    {L"Q1 Resolution", &R::WQ1Resolution, &C::Q1Resolution, true, true, false},
    {L"Q1 Coarse Resolution", &R::WQ1CoarseResolution, &C::Q1CoarseResolution, true, false, false},
    {L"Q1 Offset Voltage", &R::WQ1Offset, &C::Q1Offset, false, true, true},
    {L"Q1 IonGuide", &R::WQ1IonGuide, &C::Q1IonGuide, false, true, true},
};

TEST(EachLens, TakesAllOfAPoint) {
  const std::vector<void (*)(IOPoint&)> changes = {[](IOPoint& p) { p.Type = IOPoint::FunctionType; },
                                                   [](IOPoint& p) { p.Single = 7; },
                                                   [](IOPoint& p) { p.Calibrated = -7e9; },
                                                   [](IOPoint& p) { p.Start = 7e9; },
                                                   [](IOPoint& p) { p.End = -3; },
                                                   [](IOPoint& p) { p.StepSize = 0.7; }};
  for (const Lens& lens : kLenses) {
    for (const auto change : changes) {
      const DevTuneRules before = Unmarked();
      Tune after = before;
      change(after.ControlData.*lens.field);
      const IOPoint point = after.ControlData.*lens.field;
      ExpectAccepted(
          before, [&](DevTuneRules& r) { return (r.*lens.write)(point); }, after);
    }
  }
}

TEST(EachLens, RefusesAnUnknownType) {
  for (const Lens& lens : kLenses) {
    for (const std::uint32_t type : {3u, 4294967295u}) {
      const IOPoint point = LensOf(static_cast<IOPoint::Types>(type));
      ExpectRefused(
          Unmarked(), [&](DevTuneRules& r) { return (r.*lens.write)(point); },
          lens.name + std::wstring(L" - IOPoint Type is out of range.  Valid values are 0.00 to 2.00."));
    }
  }
}

// With fewer points than a curve needs the value is written all the same.
TEST(EachLens, IsWrittenWithAWarning) {
  for (const Lens& lens : kLenses) {
    SCOPED_TRACE(testing::PrintToString(lens.name));
    DevTuneRules rules = Unmarked();
    rules.Q1CalPts.resize(1);
    Tune after = rules;
    const IOPoint point = SampleIOPoint();
    after.ControlData.*lens.field = point;
    EXPECT_EQ((rules.*lens.write)(point), kWarning);
    EXPECT_EQ(LastErrorOf(rules),
              lens.name +
                  std::wstring(L" - There must be at least two Q1 step calibration points for this field."));
    EXPECT_EQ(TuneBytes(rules), TuneBytes(after));
    EXPECT_TRUE(rules.IsModified());
    rules.ClearModified();
    EXPECT_EQ((rules.*lens.write)(point), kWarning) << "also unchanged";
    EXPECT_FALSE(rules.IsModified());
  }
}

TEST(EachLens, ThatCanFollowMzNeedsNoWarningWithTwoPoints) {
  for (const Lens& lens : kLenses) {
    DevTuneRules rules = Unmarked();
    rules.Q1CalPts.resize(2);
    EXPECT_EQ((rules.*lens.write)(SampleIOPoint()), lens.followsMz ? kNoError : kWarning);
    EXPECT_EQ(LastErrorOf(rules).empty(), lens.followsMz);
  }
}

TEST(EachLens, OfACalibrantMustCarryTheField) {
  DevTuneRules rules = Unmarked();
  rules.Q1CalPts = {Calibrant(100, {{TuneField::CapExit, 1}}), Calibrant(200)};
  EXPECT_EQ(rules.WCapExit(SampleIOPoint()), kWarning);
  EXPECT_EQ(LastErrorOf(rules),
            L"Capillary Exit - There must be at least two Q1 step calibration points for this field.");
  EXPECT_EQ(rules.QCapExit(), SampleIOPoint());
}

TEST(Resolutions, KeepThreeDecimals) {
  const std::pair<double, double> rows[] = {{0.5678, 0.567}, {-0.5678, -0.567}, {98.9999, 98.999},
                                            {0.0009, 0.0},   {-0.0009, 0.0},    {12.5, 12.5},
                                            {-99, -99},      {99, 99}};
  for (const Lens& lens : kLenses) {
    if (!lens.cut) continue;
    for (const auto& [given, kept] : rows) {
      DevTuneRules rules = Unmarked();
      EXPECT_EQ((rules.*lens.write)(SingleLens(given)), kNoError);
      EXPECT_EQ((rules.ControlData.*lens.field).Single, kept) << given;
    }
  }
}

TEST(OtherLenses, KeepAllDecimals) {
  for (const Lens& lens : kLenses) {
    if (lens.cut) continue;
    DevTuneRules rules = Unmarked();
    EXPECT_EQ((rules.*lens.write)(SingleLens(0.56789)), kNoError);
    EXPECT_EQ((rules.ControlData.*lens.field).Single, 0.56789);
  }
}

TEST(Resolutions, KeepThreeDecimalsOfALensThatFollowsMz) {
  DevTuneRules rules = Unmarked();
  rules.WQ1Resolution(LensOf(IOPoint::CalibratedType, 1.23456));
  EXPECT_EQ(rules.QQ1Resolution(), LensOf(IOPoint::CalibratedType, 1.234));
}

TEST(Resolutions, KeepAllDecimalsOfOtherNumbers) {
  DevTuneRules rules = Unmarked();
  IOPoint point = SampleIOPoint();
  point.Calibrated = 1.23456;
  rules.WQ1Resolution(point);
  EXPECT_EQ(rules.QQ1Resolution().Calibrated, 1.23456);
}

TEST(Resolutions, ThatAreRefusedAreNotCut) {
  Tune tune = Unmarked();
  tune.ControlData.Q1Resolution.Single = 1.23456;
  ExpectRefused(
      DevTuneRules(tune), [](DevTuneRules& r) { return r.WQ1Resolution(SingleLens(100)); },
      L"Q1 Resolution - Single Value is out of range.  Valid values are -99.00 to 99.00.");
}

TEST(EntranceLens, StandsAtNoughtWhateverIsAskedFor) {
  for (const IOPoint& point : {SampleIOPoint(), SingleLens(1e9), LensOf(static_cast<IOPoint::Types>(9))}) {
    DevTuneRules rules = Unmarked();
    rules.ControlData.Q1Enter = SampleIOPoint();
    Tune after = rules;
    after.ControlData.Q1Enter.Type = IOPoint::SingleType;
    after.ControlData.Q1Enter.Single = 0.0;
    EXPECT_EQ(rules.WQ1Enter(point), kNoError);
    EXPECT_EQ(TuneBytes(rules), TuneBytes(after)) << "the rest of the point stays";
    EXPECT_FALSE(rules.IsModified());
    EXPECT_EQ(LastErrorOf(rules), L"");
  }
}

// ---- Polarity ------------------------------------------------------------------------------

IOPoint Turned(IOPoint lens) {
  lens.Single *= -1.0;
  lens.Start *= -1.0;
  lens.End *= -1.0;
  return lens;
}

// Every number of its own, whether it turns or not.
Tune Numbered() {
  Tune tune = SampleTune();
  tune.ControlData.PolarityType = PolarityPositive;
  double number = 1;
  for (const Lens& lens : kLenses) {
    tune.ControlData.*lens.field = SampleIOPoint();
    (tune.ControlData.*lens.field).Single = number++;
  }
  tune.ControlData.Q1Enter = SampleIOPoint();
  Q1CalPt full(300, L"full");
  for (const auto field :
       {TuneField::CapExit, TuneField::Skimmer, TuneField::Q0RFAmpl, TuneField::Q0Offset, TuneField::Q0Exit1,
        TuneField::Q0Exit2, TuneField::Q1Resolution, TuneField::Q1CoarseResolution, TuneField::Q1Offset,
        TuneField::Q1Enter, TuneField::Q1IonGuide})
    full.Fields[field] = number++;
  tune.Q1CalPts.push_back(full);
  return tune;
}

Tune NumberedForNegativeIons() {
  Tune tune = Numbered();
  tune.ControlData.PolarityType = PolarityNegative;
  for (std::int32_t* volts :
       {&tune.Source.Cylinder, &tune.Source.EndPlate, &tune.Source.CapEnter, &tune.ControlData.HEDynode})
    *volts = -*volts;
  for (const Lens& lens : kLenses)
    if (lens.hasPolarity) tune.ControlData.*lens.field = Turned(tune.ControlData.*lens.field);
  tune.ControlData.Q1Enter = Turned(tune.ControlData.Q1Enter);
  for (Q1CalPt& point : tune.Q1CalPts)
    for (auto& [field, value] : point.Fields)
      for (const auto turning :
           {TuneField::CapExit, TuneField::Skimmer, TuneField::Q0Offset, TuneField::Q0Exit1,
            TuneField::Q0Exit2, TuneField::Q1Offset, TuneField::Q1IonGuide})
        if (field == turning) value *= -1.0;
  return tune;
}

TEST(Polarity, TurnsWhatFollowsTheSignOfTheIons) {
  ExpectAccepted(
      DevTuneRules(Numbered()), [](DevTuneRules& r) { return r.WPolarityType(PolarityNegative); },
      NumberedForNegativeIons());
}

TEST(Polarity, TurnsBack) {
  ExpectAccepted(
      DevTuneRules(NumberedForNegativeIons()),
      [](DevTuneRules& r) { return r.WPolarityType(PolarityPositive); }, Numbered());
}

TEST(Polarity, ThatIsTheSameTurnsNothing) {
  ExpectAccepted(
      DevTuneRules(Numbered()), [](DevTuneRules& r) { return r.WPolarityType(PolarityPositive); },
      Numbered());
}

TEST(Polarity, IsOneOfTwo) {
  ExpectRefused(
      DevTuneRules(Numbered()),
      [](DevTuneRules& r) { return r.WPolarityType(static_cast<PolarityTypes>(2)); },
      L"Ion Polarity is out of range.  Valid values are 0.00 to 1.00.");
}

TEST(Polarity, OfExtremeVoltagesDoesNoHarm) {
  DevTuneRules rules = Unmarked();
  rules.Source.Cylinder = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(rules.WPolarityType(PolarityNegative), kNoError);
  EXPECT_EQ(rules.WPolarityType(PolarityPositive), kNoError);
  EXPECT_EQ(rules.QEndPlate(), -5000);
}

}  // namespace
