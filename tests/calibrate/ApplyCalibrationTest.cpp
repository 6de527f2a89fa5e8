// Tests: ApplyCalibration.cpp, PutOnAxis.cpp.

#include <gtest/gtest.h>

#include <calibrate/SampleCalibration.h>
#include <tslbl/calibrate/ApplyCalibration.h>
#include <tslbl/curve/Execute.h>
#include <cmath>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

// One m/z further up than the spectrum's own.
const std::vector<MZCalPt> kShifted = {{L"low", 1.0, 0.0}, {L"high", 1001.0, 100000.0}};

Spectrum WithALine() {
  Spectrum s = SpectrumToCalibrate({});
  for (std::size_t i = 0; i < s.yAxis.size(); ++i)
    s.yAxis[i] = 10.0 + static_cast<double>(i * 7919 % 5) +
                 900.0 * std::exp(-0.5 * std::pow((s.xAxis[i] - 150.0) / 0.3, 2.0));
  return s;
}

}  // namespace

TEST(ApplyCalibration, MakesTheAxisAnewAndNothingElse) {
  Spectrum s = SpectrumToCalibrate({{500, 60}});
  Spectrum expected = s;
  for (double& x : expected.xAxis) x += 1.0;
  expected.appliedMZCalPts = kShifted;
  Changed changed(7);
  std::wstring error = L"as it was";
  EXPECT_TRUE(ApplyCalibration(s, kShifted, changed, error));
  for (std::size_t i = 0; i < s.xAxis.size(); ++i) EXPECT_NEAR(s.xAxis[i], expected.xAxis[i], 1e-9);
  expected.xAxis = s.xAxis;
  EXPECT_EQ(s, expected) << "the peak table of a spectrum that was not detected stays";
  EXPECT_EQ(error, L"as it was");
  EXPECT_EQ(changed.value, 7u);
}

TEST(ApplyCalibration, AllThatHangsOnTheAxisCountsAsChanged) {
  Spectrum s = SpectrumToCalibrate({});
  Changed changed;
  std::wstring error;
  EXPECT_TRUE(ApplyCalibration(s, kShifted, changed, error));
  EXPECT_TRUE(changed.yAxis && changed.baseline && changed.noise);
  EXPECT_FALSE(changed.peaks || changed.threshold || changed.overlapPeaks || changed.chargeState);
}

TEST(ApplyCalibration, DetectsPeaksAnewIfTheyWereDetected) {
  Spectrum s = WithALine();
  Changed changed;
  std::wstring error;
  ASSERT_TRUE(ExecutePeakDetect(s, changed, error));
  const std::size_t peaks = s.peaks.size();
  s.peaks.clear();
  changed = Changed();
  EXPECT_TRUE(ApplyCalibration(s, kShifted, changed, error));
  EXPECT_EQ(s.peaks.size(), peaks);
  EXPECT_TRUE(changed.peaks);
}

TEST(ApplyCalibration, TellsIfPeaksCannotBeDetected) {
  Spectrum s = WithALine();
  s.AddStatus(Curve::STATUS_PEAKS);
  s.AddStatus(Curve::STATUS_OPD);
  Changed changed;
  std::wstring error;
  EXPECT_FALSE(ApplyCalibration(s, kShifted, changed, error));
  EXPECT_NE(error, L"");
  EXPECT_TRUE(changed.peaks);
  EXPECT_NEAR(s.xAxis[0], 101.0, 1e-9);
}

TEST(ApplyCalibration, OfTwoPointsAtOneMzThrowsAndChangesNothing) {
  Spectrum s = WithALine();
  const Spectrum before = s;
  Changed changed;
  std::wstring error;
  EXPECT_THROW(ApplyCalibration(s, {{L"", 150, 1}, {L"", 150, 2}}, changed, error), std::runtime_error);
  EXPECT_EQ(s, before);
  EXPECT_FALSE(changed.yAxis);
}
