// Tests: RampAlgorithmParams.cpp, RampLens.cpp, RampMethod.cpp, RampStep.cpp.

#include <tslbl/tune/ramp/RampMethod.h>

#include "RecordCheck.h"
#include "tune/ramp/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, RampLens) {
  CheckRecord<RampLens>({
      {"Field", [](auto& r) { r.Field = static_cast<TuneField::Id>(4294967295); }},
      {"Start", [](auto& r) { r.Start = 1e-12; }},
      {"End", [](auto& r) { r.End = 1e-12; }},
      {"Step", [](auto& r) { r.Step = 1e-12; }},
  });
}

TEST(AllRecords, RampStep) {
  CheckRecord<RampStep>({
      {"Lenses", [](auto& r) { r.Lenses.resize(1); }},
      {"Lenses.first", [](auto& r) { r.Lenses[0] = SampleRampLens(); }},
      {"Records", [](auto& r) { r.Records = 4294967295; }},
  });
}

TEST(AllRecords, RampAlgorithmParams) {
  CheckRecord<RampAlgorithmParams>({
      {"Type", [](auto& r) { r.Type = 4294967295; }},
      {"Percent", [](auto& r) { r.Percent = 4294967295; }},
  });
}

TEST(AllRecords, RampMethod) {
  CheckRecord<RampMethod>({
      {"BaseTune", [](auto& r) { r.BaseTune.Info.Name = L"name"; }},
      {"Steps", [](auto& r) { r.Steps.resize(1); }},
      {"Steps.first", [](auto& r) { r.Steps[0] = SampleRampStep(); }},
      {"Evals", [](auto& r) { r.Evals.resize(1); }},
      {"Evals.first", [](auto& r) { r.Evals[0] = CurveEval(SmoothParams()); }},
      {"PeakFields", [](auto& r) { r.PeakFields.resize(1); }},
      {"PeakFields.first", [](auto& r) { r.PeakFields[0] = MZPeakField::Width; }},
      {"MZRanges", [](auto& r) { r.MZRanges.resize(1); }},
      {"MZRanges.first", [](auto& r) { r.MZRanges[0].End += 1e-9; }},
      {"RangeEvals", [](auto& r) { r.RangeEvals.resize(1); }},
      {"RangeEvals.first", [](auto& r) { r.RangeEvals[0] = CurveEval(ThresholdParams()); }},
      {"Params", [](auto& r) { r.Params.Percent = 7; }},
  });
}

TEST(Golden, RampLens) { CheckGolden(SampleRampLens(), "RampLens.v1"); }
TEST(Golden, RampStep) { CheckGolden(SampleRampStep(), "RampStep.v1"); }
TEST(Golden, RampAlgorithmParams) { CheckGolden(SampleRampAlgorithmParams(), "RampAlgorithmParams.v1"); }
TEST(Golden, RampMethod) { CheckGolden(SampleRampMethod(), "RampMethod.v1"); }
TEST(RampLens, CutShortIsRefused) { CheckCutShort(SampleRampLens()); }
TEST(RampStep, CutShortIsRefused) { CheckCutShort(SampleRampStep()); }
TEST(RampAlgorithmParams, CutShortIsRefused) { CheckCutShort(SampleRampAlgorithmParams()); }

TEST(RampMethod, CutShortIsRefused) {
  RampMethod method;
  method.Steps = {SampleRampStep()};
  method.MZRanges.resize(1);
  CheckCutShort(method);
}

TEST(RampRecords, OfAnUnknownVersionAreRefused) {
  for (const std::uint32_t version : {0u, 2u}) {
    EXPECT_EQ(ReadFailure<RampLens>(Bytes(version), SampleRampLens()), "Unknown RampLens version.");
    EXPECT_EQ(ReadFailure<RampStep>(Bytes(version), SampleRampStep()), "Unknown RampStep version.");
    EXPECT_EQ(ReadFailure<RampMethod>(Bytes(version), SampleRampMethod()), "Unknown RampMethod version.");
    EXPECT_EQ(ReadFailure<RampAlgorithmParams>(Bytes(version), SampleRampAlgorithmParams()),
              "Unknown RampAlgorithmParams version.");
  }
}

TEST(RampStep, WithAHugeCountIsRefused) {
  EXPECT_EQ(ReadFailure<RampStep>(Bytes(1u, 4294967295u)), "Unknown RampLens version.");
}

TEST(RampLens, IsOfNoFieldThatCanBeRampedAtFirst) {
  EXPECT_EQ(RampLens().Field, TuneField::PolarityType);
  EXPECT_FALSE(TuneField::IsFieldRampable(RampLens().Field));
}

TEST(RampAlgorithmParams, ChoosesResolutionWithinAPercentOfTheAmplitudeAtFirst) {
  EXPECT_EQ(RampAlgorithmParams().Type, 3u);
  EXPECT_EQ(RampAlgorithmParams().Percent, 1u);
}

RampStep StepOf(std::initializer_list<TuneField::Id> fields) {
  RampStep step;
  for (const TuneField::Id field : fields) step.Lenses.emplace_back().Field = field;
  return step;
}

TEST(RampStep, MixesNoLensesThatFollowMZWithOthers) {
  EXPECT_TRUE(StepOf({}).IsSameStepType());
  EXPECT_TRUE(StepOf({TuneField::Cylinder}).IsSameStepType());
  EXPECT_TRUE(StepOf({TuneField::Skimmer, TuneField::Q0Offset}).IsSameStepType());
  EXPECT_TRUE(StepOf({TuneField::Cylinder, TuneField::EndPlate}).IsSameStepType());
  EXPECT_FALSE(StepOf({TuneField::Skimmer, TuneField::Cylinder}).IsSameStepType());
  EXPECT_FALSE(StepOf({TuneField::Cylinder, TuneField::Skimmer}).IsSameStepType());
  EXPECT_FALSE(StepOf({TuneField::Skimmer, TuneField::Q0Offset, TuneField::Cylinder}).IsSameStepType());
}

// Numbers below 0 where a tune holds whole numbers without a sign are read as the large ones that they are.
TEST(QRampLensValue, IsThatOfTheFieldInTheTune) {
  Tune tune;
  IonSource& source = tune.Source;
  Control& control = tune.ControlData;
  source.Cylinder = -1;
  source.EndPlate = -2;
  source.CapEnter = -3;
  source.DryGasTemp = 4000000005;
  source.ApciVapTemp = 4000000006;
  source.DryGasFlow = 7.5;
  source.Neb1GasPres = 4000000008;
  control.CapExit = SingleLens(22.5);
  control.Skimmer = SingleLens(23.5);
  control.Q0RFAmpl = SingleLens(24.5);
  control.Q0Offset = SingleLens(25.5);
  control.Q0Exit1 = SingleLens(26.5);
  control.Q0Exit2 = SingleLens(27.5);
  control.HEDynode = -28;
  control.DetectorGain = -29;
  control.SignalThreshold = 4000000030;
  control.Q1Resolution = SingleLens(32.5);
  control.Q1CoarseResolution = SingleLens(33.5);
  control.Q1Offset = SingleLens(34.5);
  control.Q1Enter = SingleLens(35.5);
  control.Q1IonGuide = SingleLens(36.5);
  const std::pair<std::uint32_t, double> kValues[] = {
      {1, -1},    {2, -2},          {3, -3},    {5, 4000000005}, {6, 4000000006}, {7, 7.5},   {8, 4000000008},
      {22, 22.5}, {23, 23.5},       {24, 24.5}, {25, 25.5},      {26, 26.5},      {27, 27.5}, {28, -28},
      {29, -29},  {30, 4000000030}, {32, 32.5}, {33, 33.5},      {34, 34.5},      {35, 0.0},  {36, 36.5}};
  for (const auto& [field, value] : kValues)
    EXPECT_EQ(QRampLensValue(tune, static_cast<TuneField::Id>(field)), value) << field;
}

TEST(QRampLensValue, RefusesWhatIsNoFieldOfARamp) {
  for (const std::uint32_t field : {0u, 4u, 9u, 10u, 15u, 20u, 21u, 31u, 37u, 52u, 54u, 57u, 4294967295u}) {
    try {
      QRampLensValue(Tune(), static_cast<TuneField::Id>(field));
      ADD_FAILURE() << field;
    } catch (const std::runtime_error& e) {
      EXPECT_STREQ(e.what(), "Unknown ramp tune field");
    }
  }
}

}  // namespace
