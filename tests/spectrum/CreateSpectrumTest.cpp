#include <gtest/gtest.h>

#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <cmath>
#include <memory>

using namespace TslBL;

namespace {

// DAC = 20 m/z.
const std::vector<MZCalPt> kTunePts = {{L"Default Low", 5.0, 100.0}, {L"Default High", 3000.0, 60000.0}};
// DAC = 10 m/z + 50.
const std::vector<MZCalPt> kOtherPts = {{L"Low", 5.0, 100.0}, {L"High", 1005.0, 10100.0}};
// Everything lies between two points of one m/z.
const std::vector<MZCalPt> kBrokenPts = {{L"A", 100.0, 0.0}, {L"B", 100.0, 60000.0}};

Tune TuneFrom(double low, double step) {
  Tune tune;
  tune.MZCalPts = kTunePts;
  tune.ControlData.MZLow = low;
  tune.ControlData.MZHi = 3000.0;
  tune.ControlData.MZStepSize = step;
  return tune;
}

RawSpectrum RawOf(const std::vector<double>& counts) {
  RawSpectrum raw;
  raw.info.Id = 4;
  raw.info.TimeStamp = 90000;
  raw.info.TuneId = 6;
  raw.info.TIC = 7.5;
  raw.counts = counts;
  return raw;
}

Spectrum Create(const Tune& tune, const RawSpectrum& raw, const std::vector<MZCalPt>* calPts = nullptr) {
  return *std::unique_ptr<Spectrum>(CreateSpectrum(tune, raw, calPts));
}

Spectrum CreateWithStep(double mzStep, double startMZ = 100.0) {
  return *std::unique_ptr<Spectrum>(
      CreateSpectrum(RawOf({1.0, 2.0}), kTunePts, kOtherPts, startMZ, mzStep, {100.0, 101.0, 102.0}));
}

void ExpectAxis(const Spectrum& s, const std::vector<double>& expected) {
  ASSERT_EQ(s.xAxis.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(s.xAxis[i], expected[i], 1e-9) << i;
}

template <class Function>
std::string FailureOf(Function function) {
  try {
    function();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

}  // namespace

TEST(CreateSpectrum, AxisRunsFromTheLowMzInTheTunesSteps) {
  ExpectAxis(Create(TuneFrom(100.0, 0.1), RawOf({1, 2, 3, 4})), {100.0, 100.1, 100.2, 100.3});
}

TEST(CreateSpectrum, KeepsTheCountsAsTheyAre) {
  EXPECT_EQ(Create(TuneFrom(100.0, 0.1), RawOf({1, 0, 3})).yAxis, (std::vector<double>{1, 0, 3}));
}

TEST(CreateSpectrum, TakesTitleIdsTimeAndTicFromTheHeader) {
  const Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({1}));
  EXPECT_EQ(s.name, L"RET (1.500)");
  EXPECT_EQ(s.sourceListA, (std::vector<std::uint32_t>{4}));
  EXPECT_EQ(s.sourceListB, (std::vector<std::uint32_t>{6}));
  EXPECT_EQ(s.tuneId, 6u);
  EXPECT_EQ(s.timeStamp, 90000.0);
  EXPECT_EQ(s.tic, 7.5);
}

TEST(CreateSpectrum, TimeIsUnsigned) {
  RawSpectrum raw = RawOf({1});
  raw.info.TimeStamp = 4000000000;
  EXPECT_EQ(Create(TuneFrom(100.0, 0.1), raw).timeStamp, 4000000000.0);
}

TEST(CreateSpectrum, HasBothAxesAndNoEvaluation) {
  const Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({1}));
  EXPECT_EQ(s.status, Curve::STATUS_X | Curve::STATUS_Y);
  EXPECT_TRUE(s.evals.empty());
  EXPECT_TRUE(s.peaks.empty());
  EXPECT_EQ(s.smoothParams, SmoothParams::DefaultMS());
}

TEST(CreateSpectrum, WithoutCalibrationAppliesTheTunes) {
  const Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({1}));
  EXPECT_EQ(s.tuneMZCalPts, kTunePts);
  EXPECT_EQ(s.appliedMZCalPts, kTunePts);
}

TEST(CreateSpectrum, CalibrationMovesTheAxisAndNotTheDacScale) {
  const Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({1, 2}), &kOtherPts);
  ExpectAxis(s, {195.0, 195.2});
  EXPECT_EQ(s.tuneMZCalPts, kTunePts);
  EXPECT_EQ(s.appliedMZCalPts, kOtherPts);
  EXPECT_EQ(s.startMDAC, 2000.0);
  EXPECT_EQ(s.stepMDAC, 2.0);
}

TEST(CreateSpectrum, FractionOfTheStartIsInTheAxisButNotInTheStoredStart) {
  Spectrum s = Create(TuneFrom(100.02, 0.1), RawOf({1, 2, 3}));  // DAC 2000.4
  ExpectAxis(s, {100.02, 100.12, 100.22});
  EXPECT_EQ(s.startMDAC, 2000.0);
  MZAssign(s);
  ExpectAxis(s, {100.0, 100.1, 100.2});
}

TEST(CreateSpectrum, StepIsRoundedToWholeDacUnits) {
  const std::pair<double, double> steps[] = {{0.05, 1.0},  {0.1, 2.0},  {0.07, 1.0},    {0.08, 2.0},
                                             {0.125, 3.0}, {0.02, 0.0}, {-0.125, -3.0}, {-0.07, -1.0},
                                             {-0.02, 0.0}, {0.0, 0.0}};
  for (const auto& [mzStep, step] : steps) EXPECT_EQ(CreateWithStep(mzStep).stepMDAC, step) << mzStep;
}

TEST(CreateSpectrum, RoundedStepAlsoMakesTheAxis) {
  ExpectAxis(Create(TuneFrom(100.0, 0.125), RawOf({1, 2, 3})), {100.0, 100.15, 100.3});
  ExpectAxis(Create(TuneFrom(100.0, -0.1), RawOf({1, 2, 3})), {100.0, 99.9, 99.8});
}

TEST(CreateSpectrum, StoredStartIsTruncatedTowardsZero) {
  EXPECT_EQ(CreateWithStep(0.1, 100.04).startMDAC, 2000.0);    // 2000.8
  EXPECT_EQ(CreateWithStep(0.1, -100.04).startMDAC, -2000.0);  // -2000.8
}

TEST(CreateSpectrum, StoredNumbersBeyond32BitsAreTheNearestEnd) {
  EXPECT_EQ(CreateWithStep(0.1, 1e12).startMDAC, 2147483647.0);
  EXPECT_EQ(CreateWithStep(0.1, -1e12).startMDAC, -2147483648.0);
  EXPECT_EQ(CreateWithStep(0.1, std::nan("")).startMDAC, 0.0);
  EXPECT_EQ(CreateWithStep(1e12).stepMDAC, 2147483647.0);
}

TEST(CreateSpectrum, TakesAFinishedAxisWhateverItsLength) {
  EXPECT_EQ(CreateWithStep(0.1).xAxis, (std::vector<double>{100.0, 101.0, 102.0}));
  EXPECT_EQ(CreateWithStep(0.1).yAxis.size(), 2u);
  EXPECT_EQ(CreateWithStep(0.1).tuneMZCalPts, kTunePts);
  EXPECT_EQ(CreateWithStep(0.1).appliedMZCalPts, kOtherPts);
}

TEST(CreateSpectrum, WithoutCountsHasBothAxesAllTheSame) {
  const Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({}));
  EXPECT_TRUE(s.xAxis.empty());
  EXPECT_EQ(s.status, Curve::STATUS_X | Curve::STATUS_Y);
}

TEST(CreateSpectrum, EmptyCalibrationGivesAnAxisOfZeros) {
  Tune tune = TuneFrom(100.0, 0.1);
  tune.MZCalPts.clear();
  const Spectrum s = Create(tune, RawOf({1, 2, 3}));
  EXPECT_EQ(s.xAxis, (std::vector<double>{0.0, 0.0, 0.0}));
  EXPECT_EQ(s.startMDAC, 0.0);
}

TEST(CreateSpectrum, PassesTheConversionsFailureOn) {
  Tune tune = TuneFrom(100.0, 0.1);
  EXPECT_EQ(FailureOf([&] { Create(tune, RawOf({1}), &kBrokenPts); }), "Divide by zero error");
  tune.MZCalPts = kBrokenPts;
  EXPECT_EQ(FailureOf([&] { Create(tune, RawOf({1}), &kTunePts); }), "Divide by zero error");
}

TEST(CreateSpectrum, ConversionThatIsNotReachedDoesNotFail) {
  EXPECT_EQ(FailureOf([&] { Create(TuneFrom(100.0, 0.1), RawOf({}), &kBrokenPts); }), "");
}

TEST(MZAssign, MakesTheAxisFromTheStoredGridAndCalibration) {
  Spectrum s;
  s.yAxis = {1, 2, 3};
  s.appliedMZCalPts = kOtherPts;
  s.startMDAC = 150.0;
  s.stepMDAC = -10.0;
  MZAssign(s);
  ExpectAxis(s, {10.0, 9.0, 8.0});
  EXPECT_EQ(s.status, Curve::STATUS_X);
}

TEST(MZAssign, ChangesNothingElse) {
  Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({1, 2, 3}));
  s.peaks.resize(2);
  s.baseline = {1.0};
  Spectrum expected = s;
  MZAssign(s);
  expected.xAxis = s.xAxis;
  EXPECT_EQ(s, expected);
}

TEST(MZAssign, FollowsTheNumberOfAmplitudes) {
  Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({1, 2, 3}));
  s.yAxis.resize(5);
  MZAssign(s);
  ExpectAxis(s, {100.0, 100.1, 100.2, 100.3, 100.4});
  s.yAxis.clear();
  MZAssign(s);
  EXPECT_TRUE(s.xAxis.empty());
}

TEST(MZAssign, LeavesTheSpectrumWhenTheConversionFails) {
  Spectrum s = Create(TuneFrom(100.0, 0.1), RawOf({1, 2, 3}));
  s.appliedMZCalPts = kBrokenPts;
  const Spectrum before = s;
  EXPECT_EQ(FailureOf([&] { MZAssign(s); }), "Divide by zero error");
  EXPECT_EQ(s, before);
}
