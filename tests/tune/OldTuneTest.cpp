#include <tslbl/tune/OldTune.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

// The files Tune.v1 and Tune.v2 are written by tests/oracles/old_tune_records.py.

namespace {

using namespace tests;

using Fields = std::map<TuneField::Id, double>;

// (units - 8192) / 81.92 for 12288 units.
constexpr double kHalf = 50.0;

// What both files hold besides lens voltages, read as it stands.
Tune StoredTune() {
  Tune tune;
  tune.Info.Name = L"Old";
  tune.Info.Comment = L"Kept";
  tune.Info.LastSave = 1000000000;
  tune.Source = SampleIonSource(Probes::APCI);
  tune.Source.ControlByCurrent = true;
  tune.Source.CoronaCurrent = 1.0;
  tune.ControlData = SampleControl();
  tune.ControlData.CapExit = IOPoint();
  tune.ControlData.CapExit.Type = IOPoint::CalibratedType;
  tune.ControlData.CapExit.Calibrated = 0.125;  // stored as a function with this step
  tune.ControlData.CapExit.StepSize = 0.125;
  tune.SyringeData.Manufacturer = L"Hamilton";
  tune.SyringeData.Model.Name = L"1725";
  tune.SyringeData.Model.Diameter = 5.0;
  tune.SyringeData.FlowRate = 180;
  tune.MZCalPts = {{L"Low", 5, 100}, {L"High", 3000, 60000}};
  tune.Q1CalPts = {Q1CalPt(100, L"P1"), Q1CalPt(1000, L"P2")};
  return tune;
}

void ExpectNear(const Tune& read, Tune expected) {
  const auto near = [](double& a, double b) {
    EXPECT_DOUBLE_EQ(a, b);
    a = b;
  };
  near(expected.ControlData.Q1Resolution.Single, read.ControlData.Q1Resolution.Single);
  near(expected.ControlData.Q1CoarseResolution.Single, read.ControlData.Q1CoarseResolution.Single);
  EXPECT_TRUE(read == expected);
  for (std::size_t i = 0; i < expected.Q1CalPts.size(); ++i)
    EXPECT_EQ(read.Q1CalPts.at(i).Fields, expected.Q1CalPts[i].Fields) << i;
}

TEST(Golden, TuneOfVersion2HasResolutionsInUnits) {
  Tune expected = StoredTune();
  expected.ControlData.Q1Resolution.Single = 0.0;                                              // 8192 units
  expected.ControlData.Q1CoarseResolution.Single = kHalf;                                      // 12288 units
  expected.Q1CalPts[0].Fields = {{TuneField::CapExit, 150}, {TuneField::Q1Resolution, -100}};  // 0 units
  expected.Q1CalPts[1].Fields = {{TuneField::Skimmer, 20}};
  ExpectNear(FromBytes<Tune>(GoldenBytes("Tune.v2"), SampleTune()), expected);
}

TEST(Golden, TuneOfVersion1HasAbsoluteVoltages) {
  Tune expected = StoredTune();
  Control& control = expected.ControlData;
  control.Skimmer.Single = 20;
  control.Q0Offset.Single = 12 - 20;
  control.Q0Exit1.Single = 10 - 12;
  control.Q0Exit2.Single = -60 - 12;
  control.Q1Offset.Single = 8 - 12;
  control.Q1IonGuide.Single = -4 + 4 - 12;
  control.Q1Resolution.Single = 0.0;
  control.Q1CoarseResolution.Single = kHalf;
  // At 100 the skimmer is 20, Q0Offset 12, Q0Exit1 11, Q0Exit2 -50, Q1Offset 8, Q1IonGuide -6.
  expected.Q1CalPts[0].Fields = {
      {TuneField::CapExit, 150},      {TuneField::Skimmer, 20},
      {TuneField::Q0Offset, 12 - 20}, {TuneField::Q0Exit1, 11 - 12},
      {TuneField::Q0Exit2, -50 - 12}, {TuneField::Q1Resolution, -100},
      {TuneField::Q1Offset, 8 - 12},  {TuneField::Q1IonGuide, -6 - 8 - 12},
  };
  // At 1000 Q0Offset is 14, and the other curves go on from their one point.
  expected.Q1CalPts[1].Fields = {
      {TuneField::Q0Offset, 14 - 20}, {TuneField::Q0Exit1, 11 - 14},        {TuneField::Q0Exit2, -50 - 14},
      {TuneField::Q1Offset, 8 - 14},  {TuneField::Q1IonGuide, -6 - 8 - 14},
  };
  ExpectNear(FromBytes<Tune>(GoldenBytes("Tune.v1"), SampleTune()), expected);
}

Q1CalPt Point(double mz, const Fields& fields) {
  Q1CalPt point(mz, L"");
  point.Fields = fields;
  return point;
}

Tune Absolute() {
  Tune tune;
  tune.ControlData.Skimmer.Single = 20;
  tune.ControlData.Q0Offset.Single = 12;
  tune.ControlData.Q0Exit1.Single = 10;
  tune.ControlData.Q0Exit2.Single = -60;
  tune.ControlData.Q1Offset.Single = 8;
  tune.ControlData.Q1IonGuide.Single = -4;
  return tune;
}

TEST(TuneOfVersion1, AFieldWithoutACurveCountsAsItsRelativeValue) {
  Tune tune = Absolute();
  tune.Q1CalPts = {Point(100, {{TuneField::Skimmer, 18}})};
  ConvertFromVersion1(tune);
  // Relative by then: Q0Offset -8, Q0Exit1 -2, Q0Exit2 -72, Q1Offset -4, Q1IonGuide -12.
  EXPECT_EQ(tune.Q1CalPts.at(0).Fields, (Fields{{TuneField::Skimmer, 18},
                                                {TuneField::Q0Offset, -8 - 18},
                                                {TuneField::Q0Exit1, -2 + 8},
                                                {TuneField::Q0Exit2, -72 + 8},
                                                {TuneField::Q1Offset, -4 + 8},
                                                {TuneField::Q1IonGuide, -12 + 4 + 8}}));
}

TEST(TuneOfVersion1, ASkimmerWithoutACurveCountsAsNull) {
  Tune tune = Absolute();
  tune.Q1CalPts = {Point(100, {{TuneField::Q0Offset, 12}})};
  ConvertFromVersion1(tune);
  EXPECT_EQ(tune.Q1CalPts.at(0).Fields.at(TuneField::Q0Offset), 12.0);
}

TEST(TuneOfVersion1, CurvesAreThoseOfTheStoredPoints) {
  Tune tune = Absolute();
  tune.Q1CalPts = {Point(200, {{TuneField::Q0Offset, 20}}), Point(150, {{TuneField::Skimmer, 1}}),
                   Point(100, {{TuneField::Q0Offset, 10}})};
  ConvertFromVersion1(tune);
  EXPECT_EQ(tune.Q1CalPts.at(0).Fields.at(TuneField::Q0Offset), 20.0 - 1.0);
  EXPECT_EQ(tune.Q1CalPts.at(1).Fields.at(TuneField::Q0Offset), 15.0 - 1.0);
  EXPECT_EQ(tune.Q1CalPts.at(2).Fields.at(TuneField::Q0Offset), 10.0 - 1.0);
}

TEST(TuneOfVersion1, FormerFieldsLeaveThePoints) {
  Tune tune;
  tune.Q1CalPts = {Point(100, {{TuneField::Q1Enter, 1}, {TuneField::Q1CoarseResolution, 2}})};
  ConvertFromVersion1(tune);
  EXPECT_FALSE(tune.Q1CalPts[0].Fields.contains(TuneField::Q1Enter));
  EXPECT_FALSE(tune.Q1CalPts[0].Fields.contains(TuneField::Q1CoarseResolution));
}

TEST(TuneOfVersion1, WithTwoPointsOfOneMzIsRefused) {
  Tune tune = SampleTune();
  tune.Q1CalPts = {Point(100, {{TuneField::Q0Offset, 1}}), Point(100, {{TuneField::Q0Offset, 2}})};
  std::string bytes = ToBytes(tune);
  bytes[0] = 1;
  EXPECT_EQ(ReadFailure<Tune>(bytes, SampleTune()), "Divide by zero error");
}

TEST(TuneOfVersion2, APointWithoutAResolutionGetsNone) {
  Tune tune;
  tune.Q1CalPts = {Point(100, {{TuneField::CapExit, 1}})};
  ConvertFromVersion2(tune);
  EXPECT_EQ(tune.Q1CalPts[0].Fields, (Fields{{TuneField::CapExit, 1}}));
}

TEST(TuneOfVersion2, KeepsTheEntranceLens) {
  Tune tune = SampleTune();
  ConvertFromVersion2(tune);
  EXPECT_EQ(tune.ControlData.Q1Enter, SampleControl().Q1Enter);
}

}  // namespace
