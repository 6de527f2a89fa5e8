#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <arithmetic/SampleSpectra.h>
#include <curve/SampleCurve.h>
#include <tslbl/arithmetic/PartialSpectrum.h>
#include <tslbl/spectrum/PeakTable.h>
#include <cmath>
#include <stdexcept>
#include <utility>

using namespace TslBL;
using namespace tests;
using testing::ElementsAre;

namespace {

// m/z 100, 101 ... 105, ten DAC steps apart.
Spectrum SixPoints() {
  Spectrum s = StateSpectrumOf(100, 10, {1, 2, 4, 8, 16, 32}, TenthsFrom(0, 1024));
  s.tic = 63;
  return s;
}

std::vector<double> Kept(double low, double high) {
  Spectrum s = SixPoints();
  return MakePartialSpectrum(s, low, high) ? s.yAxis : std::vector<double>();
}

}  // namespace

TEST(MakePartialSpectrumByMz, KeepsThePointsOfTheWindowWithItsEnds) {
  EXPECT_THAT(Kept(101, 103), ElementsAre(2, 4, 8));
  EXPECT_THAT(Kept(100.5, 103.5), ElementsAre(2, 4, 8));
  EXPECT_THAT(Kept(0, 100), ElementsAre(1));
  EXPECT_THAT(Kept(105, 9999), ElementsAre(32));
  EXPECT_THAT(Kept(-INFINITY, INFINITY), ElementsAre(1, 2, 4, 8, 16, 32));
}

TEST(MakePartialSpectrumByMz, WithoutAPointChangesNothing) {
  const std::pair<double, double> windows[] = {
      {103, 101}, {101.2, 101.8}, {0, 99.9}, {105.1, 200}, {NAN, NAN}};
  for (const auto& [low, high] : windows) {
    Spectrum s = SixPoints();
    EXPECT_FALSE(MakePartialSpectrum(s, low, high));
    EXPECT_EQ(s, SixPoints());
  }
  Spectrum empty;
  EXPECT_FALSE(MakePartialSpectrum(empty, 0, 1000));
}

TEST(MakePartialSpectrumByMz, BeginsAnewAndSumsAnewAndLeavesTheRest) {
  Spectrum s = SixPoints();
  s.appliedMZCalPts = TenthsFrom(0, 2000);
  s.tuneMZCalPts = {{L"low", 0, 7}, {L"high", 1024, 10247}};
  s.baseline = s.noise = {1, 1, 1, 1, 1, 1};
  s.peaks = {SamplePeak()};
  Spectrum expected = s;
  expected.xAxis = {101, 102, 103};
  expected.yAxis = {2, 4, 8};
  expected.startMDAC = 1017;
  expected.tic = 14;
  EXPECT_TRUE(MakePartialSpectrum(s, 101, 103));
  EXPECT_EQ(s, expected);
}

TEST(MakePartialSpectrumByMz, DoesNotRoundItsStart) {
  Spectrum s = SixPoints();
  s.tuneMZCalPts = {{L"low", 0, 0.25}, {L"high", 1024, 10240.25}};
  EXPECT_TRUE(MakePartialSpectrum(s, 101, 103));
  EXPECT_EQ(s.startMDAC, 1010.25);
}

TEST(MakePartialSpectrumByMz, OfACalibrationThatDividesByZeroChangesNothing) {
  Spectrum s = SixPoints();
  s.tuneMZCalPts = {{L"", 102, 1}, {L"", 102, 2}};
  const Spectrum before = s;
  EXPECT_THROW(MakePartialSpectrum(s, 102, 103), std::runtime_error);
  EXPECT_EQ(s, before);
}

TEST(MakePartialSpectrumByIndex, CopiesThePointsWithBothEnds) {
  const Spectrum part = MakePartialSpectrum(SixPoints(), 1, 3);
  EXPECT_THAT(part.xAxis, ElementsAre(101, 102, 103));
  EXPECT_THAT(part.yAxis, ElementsAre(2, 4, 8));
  EXPECT_EQ(part.startMDAC, 1010);
  EXPECT_EQ(part.tic, 14);
  EXPECT_EQ(MakePartialSpectrum(SixPoints(), 0, 5).yAxis, SixPoints().yAxis);
  EXPECT_THAT(MakePartialSpectrum(SixPoints(), 5, 5).yAxis, ElementsAre(32));
}

TEST(MakePartialSpectrumByIndex, CopiesTheArraysThatTheStatusTellsOf) {
  Spectrum s = SixPoints();
  s.baseline = {1, 2, 3, 4, 5, 6};
  s.noise = {6, 5, 4, 3, 2, 1};
  const auto part = [&](std::uint32_t status) {
    s.status = status;
    return MakePartialSpectrum(std::as_const(s), 2, 3);
  };
  EXPECT_THAT(part(Curve::STATUS_BASELINE).baseline, ElementsAre(3, 4));
  EXPECT_THAT(part(Curve::STATUS_NOISE).noise, ElementsAre(4, 3));
  const Spectrum bare = part(0);
  for (const auto* values : {&bare.xAxis, &bare.yAxis, &bare.baseline, &bare.noise})
    EXPECT_THAT(*values, ElementsAre());
  EXPECT_EQ(bare.startMDAC, 0.0);
  EXPECT_EQ(bare.tic, 0.0);
  EXPECT_EQ(part(Curve::STATUS_Y | Curve::STATUS_SMOOTHED).status, Curve::STATUS_Y | Curve::STATUS_SMOOTHED);
}

TEST(MakePartialSpectrumByIndex, HasParametersAndTablesOfTheWhole) {
  Spectrum s = SixPoints();
  const auto x = s.xAxis;
  const auto y = s.yAxis;
  FillCurve(s);
  s.xAxis = x;
  s.yAxis = y;
  s.status = Curve::STATUS_X | Curve::STATUS_Y | Curve::STATUS_PEAKS;
  s.opdParams.MaxPeaks = 22;
  s.overlapPeaks.resize(1);
  s.tuneId = 4;
  s.timeStamp = 5;
  Spectrum expected = s;
  expected.id = 0;
  expected.name.clear();
  expected.evals.clear();
  expected.annotations.clear();
  expected.baseline.clear();
  expected.noise.clear();
  expected.stepMDAC = 0.0;
  expected.startMDAC = 1020;
  expected.xAxis = {102, 103};
  expected.yAxis = {4, 8};
  expected.tic = 12;
  EXPECT_EQ(MakePartialSpectrum(std::as_const(s), 2, 3), expected);
}

TEST(MakePartialSpectrumByIndex, BeginsByTheCalibrationOfTheTuneUnrounded) {
  Spectrum s = SixPoints();
  s.tuneMZCalPts = {{L"low", 0, 0.25}, {L"high", 1024, 10240.25}};
  EXPECT_EQ(MakePartialSpectrum(std::as_const(s), 1, 3).startMDAC, 1010.25);
}

TEST(MakePartialSpectrumByIndex, OfASpectrumWithoutAmplitudesHasItsAxis) {
  Spectrum s = SixPoints();
  s.status = Curve::STATUS_X;
  s.yAxis.clear();
  EXPECT_THAT(MakePartialSpectrum(std::as_const(s), 1, 2).xAxis, ElementsAre(101, 102));
}

TEST(MakePartialSpectrumByIndex, ItsPeaksAreThoseOfThePointsOfTheWhole) {
  Spectrum s = SixPoints();
  PeakInfo row;
  row.startIdx = 3;
  row.apexIdx = 4;
  row.centroidIdx = 4.0;
  row.endIdx = 5;
  s.peaks = {row};
  const Spectrum part = MakePartialSpectrum(std::as_const(s), 3, 5);
  EXPECT_EQ(TranslateMZPeak(s, 0).CentroidX, 104.0);
  EXPECT_EQ(TranslateMZPeak(part, 0).CentroidX, 105.0) << "beyond the part, whose end is taken";
}

TEST(MakePartialSpectrumByIndex, OfPointsThatAreNotThereThrows) {
  const std::pair<std::uint32_t, std::uint32_t> windows[] = {{3, 2}, {0, 6}, {6, 6}, {0, 4294967295u}};
  for (const auto& [first, last] : windows)
    EXPECT_THROW(MakePartialSpectrum(SixPoints(), first, last), std::out_of_range);
  EXPECT_THROW(MakePartialSpectrum(Spectrum(), 0, 0), std::out_of_range);
}
