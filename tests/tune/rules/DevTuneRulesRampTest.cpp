// Tests: DevTuneRulesWriters.cpp.

#include <functional>
#include <limits>
#include <vector>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

using Pairs = DevTuneRules::Pairs;

struct Ramped {
  TuneField::Id field;
  Probes::ProbeTypes probe;
  double found;
  std::function<void(Tune&)> set;  // what the tune then holds
  double bad;
  const wchar_t* text;
};

std::function<void(Tune&)> LensSet(IOPoint Control::*lens, double value) {
  return [=](Tune& t) { (t.ControlData.*lens).Single = value; };
}

// Integers are truncated, lenses keep all but their single value.
const std::vector<Ramped> kRamps = {
    {TuneField::Cylinder, Probes::ESI, -1234.9, [](Tune& t) { t.Source.Cylinder = -1234; }, 6001,
     L"Cylinder Lens is out of range.  Valid values are -6000.00 to 6000.00."},
    {TuneField::EndPlate, Probes::ESI, -1234.9, [](Tune& t) { t.Source.EndPlate = -1234; }, 6001,
     L"Endplate is out of range.  Valid values are -6000.00 to 6000.00."},
    {TuneField::CapEnter, Probes::ESI, 1234.9, [](Tune& t) { t.Source.CapEnter = 1234; }, -6001,
     L"Capillary Entrance is out of range.  Valid values are -6000.00 to 6000.00."},
    {TuneField::DryGasTemp, Probes::ESI, 200.9, [](Tune& t) { t.Source.DryGasTemp = 200; }, 24.9,
     L"Drying Gas Temp. is out of range.  Valid values are 25.00 to 350.00."},
    {TuneField::ApciVapTemp, Probes::APCI, 200.9, [](Tune& t) { t.Source.ApciVapTemp = 200; }, 149.9,
     L"APCI Vaporizer Temperature must be 25 or greater than 149"},
    {TuneField::DryGasFlow, Probes::ESI, 7.25, [](Tune& t) { t.Source.DryGasFlow = 7.25; }, 1.9,
     L"Drying Gas Flow Rate is out of range.  Valid values are 2.00 to 15.00."},
    {TuneField::Neb1GasPres, Probes::ESI, 33.9, [](Tune& t) { t.Source.Neb1GasPres = 33; }, 101.5,
     L"Nebulizer 1 Gas Pressure is out of range.  Valid values are 0.00 to 100.00."},
    {TuneField::CapExit, Probes::ESI, 123.4, LensSet(&Control::CapExit, 123.4), 401,
     L"Capillary Exit - Single Value is out of range.  Valid values are -400.00 to 400.00."},
    {TuneField::Skimmer, Probes::ESI, 12.5, LensSet(&Control::Skimmer, 12.5), 101,
     L"Skimmer - Single Value is out of range.  Valid values are -100.00 to 100.00."},
    {TuneField::Q0RFAmpl, Probes::ESI, 12.5, LensSet(&Control::Q0RFAmpl, 12.5), -1,
     L"Q0 RF Amplitude - Single Value is out of range.  Valid values are 0.00 to 800.00."},
    {TuneField::Q0Offset, Probes::ESI, 12.5, LensSet(&Control::Q0Offset, 12.5), 31,
     L"Q0 Offset - Single Value is out of range.  Valid values are -30.00 to 30.00."},
    {TuneField::Q0Exit1, Probes::ESI, 12.5, LensSet(&Control::Q0Exit1, 12.5), 201,
     L"Q0 Exit Lens 1 - Single Value is out of range.  Valid values are -200.00 to 200.00."},
    {TuneField::Q0Exit2, Probes::ESI, 12.5, LensSet(&Control::Q0Exit2, 12.5), 201,
     L"Q0 Exit Lens 2 - Single Value is out of range.  Valid values are -200.00 to 200.00."},
    {TuneField::HEDynode, Probes::ESI, -99.9, [](Tune& t) { t.ControlData.HEDynode = -99; }, 10001,
     L"High Energy Dynode is out of range.  Valid values are -10000.00 to 10000.00."},
    {TuneField::DetectorGain, Probes::ESI, -99.9, [](Tune& t) { t.ControlData.DetectorGain = -99; }, 1,
     L"Detector Gain is out of range.  Valid values are -3000.00 to 0.00."},
    {TuneField::SignalThreshold, Probes::ESI, 9.9, [](Tune& t) { t.ControlData.SignalThreshold = 9; }, 256,
     L"Signal Threshold is out of range.  Valid values are 0.00 to 255.00."},
    {TuneField::Q1Resolution, Probes::ESI, 1.2345, LensSet(&Control::Q1Resolution, 1.234), 100,
     L"Q1 Resolution - Single Value is out of range.  Valid values are -99.00 to 99.00."},
    {TuneField::Q1CoarseResolution, Probes::ESI, 1.2345, LensSet(&Control::Q1CoarseResolution, 1.234), 100,
     L"Q1 Coarse Resolution - Single Value is out of range.  Valid values are -99.00 to 99.00."},
    {TuneField::Q1Offset, Probes::ESI, 12.5, LensSet(&Control::Q1Offset, 12.5), 91,
     L"Q1 Offset Voltage - Single Value is out of range.  Valid values are -90.00 to 90.00."},
    {TuneField::Q1IonGuide, Probes::ESI, 12.5, LensSet(&Control::Q1IonGuide, 12.5), 101,
     L"Q1 IonGuide - Single Value is out of range.  Valid values are -100.00 to 100.00."},
};

Tune Before(Probes::ProbeTypes probe) {
  Tune tune = Unmarked(probe);
  tune.Q1CalPts = {Calibrant(100), Calibrant(200)};
  return tune;
}

TEST(Ramp, StoresItsBestValueAndTheCurveOfAFieldThatFollowsMz) {
  for (const Ramped& ramp : kRamps) {
    SCOPED_TRACE(ramp.field);
    DevTuneRules rules(Before(ramp.probe));
    Tune after = rules;
    ramp.set(after);
    if (TuneField::IsFieldSteppable(ramp.field)) after.Q1CalPts[1].Fields[ramp.field] = 1.5;
    EXPECT_EQ(rules.WRampResults(ramp.field, ramp.found, {{200, 1.5}}), kNoError);
    EXPECT_EQ(TuneBytes(rules), TuneBytes(after));
    EXPECT_TRUE(rules.IsModified());
    EXPECT_EQ(LastErrorOf(rules), L"");
  }
}

TEST(Ramp, ThatFoundABadValueStoresNothing) {
  for (const Ramped& ramp : kRamps) {
    SCOPED_TRACE(ramp.field);
    ExpectRefused(
        DevTuneRules(Before(ramp.probe)),
        [&](DevTuneRules& r) {
          return r.WRampResults(ramp.field, ramp.bad, {{200, 1.5}});
        },
        ramp.text);
  }
}

TEST(Ramp, ThatFoundABadCurveStoresItsBestValue) {
  DevTuneRules rules(Before(Probes::ESI));
  Tune after = rules;
  after.ControlData.CapExit.Single = 99;
  EXPECT_EQ(rules.WRampResults(TuneField::CapExit, 99, {{200, 401}}), kError);
  EXPECT_EQ(LastErrorOf(rules), L"Capillary Exit is out of range.  Valid values are -400.00 to 400.00.");
  EXPECT_EQ(TuneBytes(rules), TuneBytes(after));
}

TEST(Ramp, OfAFieldThatCannotFollowMzHasNoCurve) {
  DevTuneRules rules(Before(Probes::ESI));
  EXPECT_EQ(rules.WRampResults(TuneField::DetectorGain, -100, {{1, 1e9}}), kNoError);
  EXPECT_EQ(rules.WRampResults(TuneField::Q1CoarseResolution, 1, {{1, 1e9}}), kNoError);
  EXPECT_EQ(rules.Q1CalPts, Before(Probes::ESI).Q1CalPts);
}

TEST(Ramp, KeepsTheTypeOfTheLens) {
  Tune tune = Before(Probes::ESI);
  tune.ControlData.CapExit = SampleIOPoint();
  for (Q1CalPt& point : tune.Q1CalPts) point.Fields[TuneField::CapExit] = 1;
  DevTuneRules rules(tune);
  EXPECT_EQ(rules.WRampResults(TuneField::CapExit, 77, {{100, 10}, {200, 20}}), kNoError);
  IOPoint after = SampleIOPoint();
  after.Single = 77;
  EXPECT_EQ(rules.QCapExit(), after);
  EXPECT_EQ(rules.Q1CalPts[0].Fields[TuneField::CapExit], 10.0);
  EXPECT_EQ(rules.Q1CalPts[1].Fields[TuneField::CapExit], 20.0);
}

// Before the ramp the lens had no curve; the warning about that does not stop it.
TEST(Ramp, GivesALensWithoutACurveItsFirst) {
  Tune tune = Before(Probes::ESI);
  tune.ControlData.CapExit = LensOf(IOPoint::CalibratedType, 50);
  DevTuneRules rules(tune);
  EXPECT_EQ(rules.WRampResults(TuneField::CapExit, 77, {{100, 10}, {200, 20}}), kNoError);
  EXPECT_EQ(rules.Q1CalPts[1].Fields[TuneField::CapExit], 20.0);
}

TEST(Ramp, ReturnsTheWarningOfALensThatCannotFollowMz) {
  Tune tune = Before(Probes::ESI);
  tune.ControlData.Q1CoarseResolution = LensOf(IOPoint::CalibratedType);
  DevTuneRules rules(tune);
  EXPECT_EQ(rules.WRampResults(TuneField::Q1CoarseResolution, 1, {}), kWarning);
  EXPECT_EQ(LastErrorOf(rules),
            L"Q1 Coarse Resolution - There must be at least two Q1 step calibration points for this field.");
  EXPECT_EQ(rules.QQ1CoarseResolution().Single, 1.0);
}

TEST(Ramp, FollowsThePolarityOfAnApciSource) {
  ExpectRefused(
      Unmarked(Probes::APCI), [](DevTuneRules& r) { return r.WRampResults(TuneField::EndPlate, 100, {}); },
      L"Endplate is out of range.  Valid values are -5000.00 to 0.00.");
}

TEST(Ramp, BelowNoughtIsNotTakenForALargeNumber) {
  for (const double found : {-1.0, -5.5, -4294967296.0 + 100, -1e300})
    ExpectRefused(
        Unmarked(), [=](DevTuneRules& r) { return r.WRampResults(TuneField::SignalThreshold, found, {}); },
        L"Signal Threshold is out of range.  Valid values are 0.00 to 255.00.");
}

TEST(Ramp, WithoutAResultIsNoWholeNumber) {
  for (const Ramped& ramp : kRamps) {
    if (TuneField::IsFieldSteppable(ramp.field) || ramp.field == TuneField::Q1CoarseResolution ||
        ramp.field == TuneField::DryGasFlow)
      continue;
    SCOPED_TRACE(ramp.field);
    const DevTuneRules before(Before(ramp.probe));
    DevTuneRules rules = before;
    EXPECT_EQ(rules.WRampResults(ramp.field, std::numeric_limits<double>::quiet_NaN(), {}), kError);
    EXPECT_NE(LastErrorOf(rules), L"");
    EXPECT_EQ(TuneBytes(rules), TuneBytes(before));
  }
}

TEST(Ramp, IsOfRampableFieldsOnly) {
  for (std::uint32_t id = 0; id <= TuneField::kFieldCount; ++id) {
    bool rampable = false;
    for (const Ramped& ramp : kRamps) rampable = rampable || ramp.field == id;
    if (rampable) continue;
    ExpectRefused(
        Unmarked(),
        [=](DevTuneRules& r) {
          return r.WRampResults(static_cast<TuneField::Id>(id), 1, {{100, 1}});
        },
        L"Invalid ramp field.");
  }
}

}  // namespace
