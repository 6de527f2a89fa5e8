#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <tool/commands/chrom/SimulatedCurves.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using TslTool::Chromatogram;
using TslTool::EvaluatedCurve;

const SimulatedPeak kPeak = {300.0, 1000.0, 8.0};

Chromatogram OnePeak(double noise = 1.0) {
  Chromatogram curve = CleanCurve({kPeak}, 600, 50.0);
  std::mt19937 random(1);
  if (noise > 0.0) AddNoise(curve, noise, random);
  return curve;
}

TEST(EvaluateCurve, FindsAPeakWithItsPlaceHeightWidthAndArea) {
  const EvaluatedCurve found = Evaluated(OnePeak());
  ASSERT_THAT(found.peaks, SizeIs(1));
  EXPECT_NEAR(found.peaks[0].rtSeconds, kPeak.seconds, 0.2);
  EXPECT_NEAR(found.peaks[0].height, kPeak.height, 0.005 * kPeak.height);
  EXPECT_NEAR(found.peaks[0].area, kPeak.Area(), 0.003 * kPeak.Area());
  EXPECT_NEAR(found.peaks[0].widthSeconds, 2.3548 * kPeak.sigma, 0.4);
  EXPECT_GT(found.peaks[0].signalToNoise, 500.0);
  EXPECT_THAT(found.derived, HasSubstr("points wide"));
}

// Spikes that are too narrow for peaks raise the level to both sides.
TEST(EvaluateCurve, LeavesOutAPeakWithoutAnAreaAboveTheLevelBesideIt) {
  Chromatogram curve = CleanCurve(
      {{150.0, 1000.0, 8.0}, {350.0, 600.0, 1.0}, {400.0, 40.0, 9.0}, {450.0, 600.0, 1.0}}, 600, 50.0);
  std::mt19937 random(1);
  AddNoise(curve, 1.0, random);
  const EvaluatedCurve found = Evaluated(curve, {"--min-width", "20"});
  EXPECT_THAT(found.peaks, IsEmpty());
  EXPECT_EQ(found.leftOut, 1u);
  EXPECT_EQ(Evaluated(CleanCurve({{400.0, 40.0, 9.0}}, 600, 50.0), {"--min-width", "20"}).peaks.size(), 1u);
}

TEST(EvaluateCurve, FindsNothingInNoise) {
  std::mt19937 random(2);
  std::size_t peaks = 0;
  for (int i = 0; i < 20; ++i) {
    Chromatogram curve = CleanCurve({}, 500, 100.0);
    AddNoise(curve, 3.0, random);
    peaks += Evaluated(curve).peaks.size();
  }
  EXPECT_LE(peaks, 2u);
}

TEST(EvaluateCurve, KeepsTheAreaOnUnevenTimes) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> jitter(-0.4, 0.4);
  Chromatogram curve = CleanCurve({}, 600, 50.0);
  for (std::size_t i = 0; i < curve.seconds.size(); ++i) {
    curve.seconds[i] += jitter(random);
    curve.values[i] += kPeak.At(curve.seconds[i]);
  }
  AddNoise(curve, 1.0, random);
  EXPECT_NEAR(Evaluated(curve).peaks.at(0).area, kPeak.Area(), 0.005 * kPeak.Area());
}

TEST(EvaluateCurve, KeepsCurvesBelowZero) {
  Chromatogram curve = OnePeak();
  for (double& value : curve.values) value -= 80.0;
  const EvaluatedCurve found = Evaluated(curve);
  ASSERT_THAT(found.peaks, SizeIs(1));
  EXPECT_NEAR(found.peaks[0].area, kPeak.Area(), 0.003 * kPeak.Area());
  EXPECT_NEAR(found.curve.baseline[100], -30.0, 2.0);
}

TEST(EvaluateCurve, FollowsABackgroundThatBends) {
  const double pi = std::acos(-1.0);
  Chromatogram curve = CleanCurve({{500.0, 400.0, 5.0}, {1500.0, 400.0, 5.0}}, 3000, 60.0);
  for (std::size_t i = 0; i < curve.values.size(); ++i)
    curve.values[i] += 30.0 * std::sin(2.0 * pi * static_cast<double>(i) / 2000.0);
  std::mt19937 random(4);
  AddNoise(curve, 1.0, random);
  const EvaluatedCurve found = Evaluated(curve);
  EXPECT_THAT(found.derived, HasSubstr("--baseline adaptive"));
  std::vector<double> areas;
  for (const auto& peak : found.peaks)
    if (peak.height > 200.0) areas.push_back(peak.area);
  const double area = 400.0 * 5.0 * std::sqrt(2.0 * pi);
  EXPECT_THAT(areas, testing::ElementsAre(testing::DoubleNear(area, 60.0), testing::DoubleNear(area, 60.0)));
}

TEST(EvaluateCurve, IntegratesNothingThatTheChainTakesOff) {
  const EvaluatedCurve subtracted =
      Evaluated(OnePeak(), {"--subtract-baseline"}, TslTool::RealRange{260.0, 340.0});
  EXPECT_NEAR(subtracted.peaks.at(0).area, kPeak.Area(), 0.005 * kPeak.Area());
  Chromatogram spiked = OnePeak();
  spiked.values[280] += 5000.0;
  const EvaluatedCurve filtered = Evaluated(spiked, {"--aerosol"}, TslTool::RealRange{260.0, 340.0});
  EXPECT_NEAR(filtered.peaks.at(0).area, kPeak.Area(), 0.005 * kPeak.Area());
}

TEST(EvaluateCurve, IntegratesWhereTheUserSaysAboveItsBaseline) {
  const EvaluatedCurve found = Evaluated(OnePeak(), {"--baseline", "50"}, TslTool::RealRange{260.0, 340.0});
  ASSERT_THAT(found.peaks, SizeIs(1));
  EXPECT_EQ(found.peaks[0].startSeconds, 260.0);
  EXPECT_EQ(found.peaks[0].endSeconds, 340.0);
  EXPECT_NEAR(found.peaks[0].area, kPeak.Area(), 0.003 * kPeak.Area());
  EXPECT_NEAR(found.peaks[0].rtSeconds, 300.0, 0.2);
}

TEST(EvaluateCurve, IntegratesWhereNoPeakStands) {
  const EvaluatedCurve found = Evaluated(OnePeak(), {"--baseline", "50"}, TslTool::RealRange{100.0, 150.0});
  ASSERT_THAT(found.peaks, SizeIs(1));
  EXPECT_NEAR(found.peaks[0].area, 0.0, 4.0 * found.peaks[0].areaError);
}

TEST(EvaluateCurve, TakesThePresetsWhereNoPeakTellsItsWidth) {
  EXPECT_THAT(
      Evaluated(CleanCurve({}, 50, 3.0)).derived,
      HasSubstr("--smooth mean:5 --baseline valley:50 --noise valley:250 --sn 5 (no peak tells its width)"));
}

TEST(EvaluateCurve, TakesAnotherBaselineWhereNoPeakTellsItsWidth) {
  EXPECT_THAT(Evaluated(CleanCurve({}, 50, 3.0), {"--baseline", "linear", "--noise", "linear"}).derived,
              HasSubstr("--baseline linear:250 --noise linear:250"));
}

TEST(EvaluateCurve, TakesAConstantCurve) { EXPECT_THAT(Evaluated(CleanCurve({}, 2, 0.0)).peaks, IsEmpty()); }

}  // namespace
}  // namespace tests
