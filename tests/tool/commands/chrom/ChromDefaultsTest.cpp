#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include <tool/commands/chrom/ChromDefaults.h>
#include <tool/commands/chrom/SimulatedCurves.h>

namespace tests {
namespace {

using testing::StartsWith;
using TslTool::ChainDefaults;

ChainDefaults DefaultsOf(const TslTool::Chromatogram& curve) {
  return TslTool::DefaultsForCurve(curve.seconds, curve.values);
}

TslTool::Chromatogram Noisy(double sigma, std::size_t points) {
  auto curve = CleanCurve({{0.5 * static_cast<double>(points), 500.0, sigma}}, points, 50.0);
  std::mt19937 random(5);
  AddNoise(curve, 1.0, random);
  return curve;
}

TEST(ChromDefaults, AreThePresetsWhereNoPeakTellsItsWidth) {
  const ChainDefaults defaults = DefaultsOf(CleanCurve({}, 100, 5.0));
  EXPECT_EQ(defaults.smooth, "mean:5");
  EXPECT_EQ(defaults.baseline, "valley:50");
  EXPECT_EQ(defaults.noise, "valley:250");
  EXPECT_EQ(defaults.minWidth, std::nullopt);
}

TEST(ChromDefaults, SmoothOverHalfAWidth) {
  EXPECT_EQ(DefaultsOf(Noisy(17.0, 2000)).smooth, "savgol:21:2");
  EXPECT_EQ(DefaultsOf(Noisy(2.5, 300)).smooth, "savgol:5:2");
  EXPECT_EQ(DefaultsOf(Noisy(1.0, 300)).smooth, "off");
}

TEST(ChromDefaults, SmoothWeakPeaksOverMoreOfTheirWidth) {
  auto curve = CleanCurve({{500.0, 8.0, 17.0}}, 1000, 50.0);
  std::mt19937 random(5);
  AddNoise(curve, 1.0, random);
  EXPECT_EQ(DefaultsOf(curve).smooth, "savgol:33:2");
}

TEST(ChromDefaults, HaveAStraightBaselineOverAStraightBackground) {
  EXPECT_THAT(DefaultsOf(Noisy(5.0, 2000)).baseline, StartsWith("linear:"));
}

TEST(ChromDefaults, HaveAStraightBaselineOnAShortCurve) {
  EXPECT_EQ(DefaultsOf(Noisy(20.0, 500)).baseline, "linear:500");
}

TEST(ChromDefaults, KnowTheLeastWidthInSeconds) {
  auto curve = Noisy(10.0, 1000);
  for (double& seconds : curve.seconds) seconds *= 0.1;
  EXPECT_NEAR(*DefaultsOf(curve).minWidth, 0.4 * 2.35, 0.1);
}

}  // namespace
}  // namespace tests
