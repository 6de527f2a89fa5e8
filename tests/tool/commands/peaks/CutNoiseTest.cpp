#include <tool/commands/peaks/CutNoise.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>
#include <cmath>
#include <random>
#include <vector>

namespace tests {
namespace {

using TslTool::CutNoiseOf;
using TslTool::LoadedSpectrum;

constexpr double kDeviation = 7.0;

// What is left of normal noise above so many standard deviations, with a peak in the middle.
std::vector<double> Cut(double threshold) {
  std::mt19937_64 random(1);
  std::normal_distribution noise(0.0, kDeviation);
  std::vector<double> y(50000);
  for (double& value : y) value = noise(random);
  for (std::size_t i = 25000; i < 25010; ++i) y[i] += 1e5;
  for (double& value : y) value = value > threshold * kDeviation ? value : 0.0;
  return y;
}

LoadedSpectrum WithNoise(const std::vector<double>& measured, double noise) {
  LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  loaded.measured = measured;
  loaded.spectrum->noise.assign(measured.size(), noise);
  return loaded;
}

TEST(CutNoise, IsFoundWhereverItWasCut) {
  for (const double threshold : {0.5, 1.0, 1.5, 2.0, 2.5})
    EXPECT_NEAR(CutNoiseOf(Cut(threshold)) / kDeviation, 1.0, 0.15) << threshold;
}

TEST(CutNoise, OfCountsIsNone) {
  for (const double mean : {0.02, 0.5, 1.0, 1.5, 2.0, 2.5, 3.0, 5.0})
    for (const double gain : {1.0, 37.3}) {
      std::vector<double> counts = Shots(mean, 50000, 1);
      for (double& y : counts) y *= gain;
      EXPECT_EQ(CutNoiseOf(counts), 0.0) << mean;
    }
}

TEST(CutNoise, MayBeOfRoundedAmplitudes) {
  std::vector<double> rounded = Cut(1.0);
  for (double& y : rounded) y = std::round(y);
  EXPECT_NEAR(CutNoiseOf(rounded) / kDeviation, 1.0, 0.15);
}

TEST(CutNoise, OfAWholeCurveOrOfHardlyAPointIsNone) {
  EXPECT_EQ(CutNoiseOf(std::vector<double>(5000, 3.0)), 0.0);
  EXPECT_EQ(CutNoiseOf(Cut(3.5)), 0.0);
  EXPECT_EQ(CutNoiseOf({}), 0.0);
}

TEST(CutNoise, RaisesTheNoiseBehindTheFilterAndNeverLowersIt) {
  const std::vector<double> mean(4, 0.25);
  LoadedSpectrum low = WithNoise(Cut(2.0), 0.1);
  RaiseToCutNoise(low, mean);
  EXPECT_NEAR(low.spectrum->noise[100], 0.5 * kDeviation, 0.5);
  LoadedSpectrum high = WithNoise(Cut(2.0), 10.0);
  RaiseToCutNoise(high, mean);
  EXPECT_EQ(high.spectrum->noise[100], 10.0);
}

TEST(CutNoise, LeavesTheNoiseOfARangeAlone) {
  LoadedSpectrum loaded = WithNoise(Cut(2.0), 0.1);
  loaded.spectrum->noiseParams.Auto = false;
  RaiseToCutNoise(loaded, std::vector<double>{1.0});
  EXPECT_EQ(loaded.spectrum->noise[100], 0.1);
}

}  // namespace
}  // namespace tests
