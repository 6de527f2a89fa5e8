#include <gtest/gtest.h>

#include <limits>
#include <random>

#include <tool/chain/Lift.h>
#include <tslbl/spectrum/Spectrum.h>

namespace tests {
namespace {

using TslTool::LiftOf;

std::vector<double> Noise(double mean) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> noise(mean, 10.0);
  std::vector<double> y(20000);
  for (double& value : y) value = noise(random);
  return y;
}

TEST(Lift, BringsNoiseAboveZero) {
  for (const double mean : {0.0, 15.0, -80.0}) {
    const std::vector<double> y = Noise(mean);
    const double lift = LiftOf(y);
    EXPECT_GT(*std::ranges::min_element(y) + lift, 0.0) << mean;
    EXPECT_LT(lift, 70.0 - mean) << mean;
  }
}

TEST(Lift, OfAmplitudesThatAreHardlyBelowZeroIsNone) {
  EXPECT_EQ(LiftOf({}), 0.0);
  EXPECT_EQ(LiftOf(std::vector<double>(1000, 0.0)), 0.0);
  EXPECT_EQ(LiftOf(Noise(60.0)), 0.0);
  std::vector<double> y(1000, 5.0);
  std::fill_n(y.begin(), 9, -1.0);
  EXPECT_EQ(LiftOf(y), 0.0);
}

TEST(Lift, AStrayValueDoesNotCount) {
  std::vector<double> y = Noise(0.0);
  y[77] = -1e30;
  EXPECT_LT(LiftOf(y), 70.0);
}

TEST(Lift, IsTakenOffEachLevelAgain) {
  TslBL::Spectrum s;
  s.yAxis = {110, 120};
  s.baseline = {101, 102};
  s.noise = {3, 4};
  TslBL::PeakInfo peak;
  peak.apexAmpl = peak.maxAmpl = peak.centroidAmpl = 120;
  peak.maxBaseline = peak.baselineAmpl = peak.areaIntercept = 101;
  peak.area = 50;
  peak.noiseAmpl = 3;
  s.peaks = {peak};
  TslTool::Lower(s, 100.0);
  EXPECT_EQ(s.yAxis, (std::vector<double>{10, 20}));
  EXPECT_EQ(s.baseline, (std::vector<double>{1, 2}));
  EXPECT_EQ(s.noise, (std::vector<double>{3, 4}));
  for (const double level : {s.peaks[0].apexAmpl, s.peaks[0].maxAmpl, s.peaks[0].centroidAmpl})
    EXPECT_EQ(level, 20.0);
  for (const double level : {s.peaks[0].maxBaseline, s.peaks[0].baselineAmpl, s.peaks[0].areaIntercept})
    EXPECT_EQ(level, 1.0);
  EXPECT_EQ(s.peaks[0].area, 50.0);
  EXPECT_EQ(s.peaks[0].noiseAmpl, 3.0);
}

}  // namespace
}  // namespace tests
