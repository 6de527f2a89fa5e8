#include <tool/commands/peaks/RoundedNoise.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include <fmt/format.h>
#include <tool/TempFile.h>
#include <tool/ToolRun.h>

namespace tests {
namespace {

using TslTool::CoarseStepOf;

constexpr double kStep = 60.0;

// Lines over normal noise about `level` steps, rounded to whole steps of `deviations` standard deviations.
std::vector<double> Rounded(double level, double deviations) {
  std::mt19937_64 random(1);
  std::normal_distribution noise(0.0, kStep / deviations);
  std::vector<double> y(20000);
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double offset = std::remainder(static_cast<double>(i) - 500.0, 1000.0) / 12.0;
    y[i] = kStep * level + noise(random) + 2000.0 * std::exp(-4.0 * std::log(2.0) * offset * offset);
    y[i] = kStep * std::round(y[i] / kStep);
  }
  return y;
}

TEST(RoundedNoise, KnowsStepsThatLeaveTheBackgroundLevel) {
  EXPECT_EQ(CoarseStepOf(Rounded(5.0, 4.0)), kStep);
  EXPECT_EQ(CoarseStepOf(Rounded(5.0, 5.0)), kStep);
  EXPECT_EQ(CoarseStepOf(Rounded(5.0, 2.0)), 0.0);
  EXPECT_EQ(CoarseStepOf(Rounded(5.5, 4.0)), 0.0);
}

TEST(RoundedNoise, IsNotThatOfIonsOnAnEmptyBackground) {
  EXPECT_EQ(CoarseStepOf(Shots(0.02, 50000, 1)), 0.0);
  EXPECT_EQ(CoarseStepOf(std::vector<double>(5000, 3.0)), 0.0);
  EXPECT_EQ(CoarseStepOf({}), 0.0);
}

TEST(RoundedNoise, IsRaisedBehindAFilterAndNeverLowered) {
  const auto noiseFor = [](double noise, const std::vector<double>& filter) {
    TslTool::LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
    loaded.measured = Rounded(5.0, 4.0);
    loaded.spectrum->noise.assign(loaded.measured.size(), noise);
    TslTool::RaiseToRounding(loaded, filter);
    return loaded.spectrum->noise[100];
  };
  const std::vector<double> mean(4, 0.25);
  EXPECT_EQ(noiseFor(1.0, mean), 0.25 * kStep);
  EXPECT_EQ(noiseFor(50.0, mean), 50.0);
  EXPECT_EQ(noiseFor(1.0, {1.0}), 1.0);
}

TEST(RoundedNoise, MakesNoPeaks) {
  for (const double deviations : {3.5, 4.0, 5.0}) {
    std::string text;
    double mz = 100.0;
    for (const double y : Rounded(5.0, deviations)) text += fmt::format("{:.2f} {}\n", mz += 0.05, y);
    const TempFile file("a.txt", text);
    const Outcome outcome = RunTool({"peaks", file.Path(), "--format", "tsv", "--quiet"});
    EXPECT_EQ(LinesOf(outcome.out).size() - 1, 20U) << deviations;
    EXPECT_EQ(outcome.err, "") << deviations;
  }
}

}  // namespace
}  // namespace tests
