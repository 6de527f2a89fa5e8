// How near the noises come to the truth on simulated counts: found / true noise over six spectra, raw and
// after the smoothing of a new method, a mean of 5 points. `tslbl_tests --gtest_filter='*Accuracy*'` prints
// the figures with --gtest_output=json as the properties low, middle and high: the 10th, 50th and 90th
// percentile of the points.
//
// Tests: Noise.h.
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <tuple>

#include <closed/math/baseline/BaselineCheck.h>

using namespace tests;
using namespace TslMath;

namespace {

constexpr int kSpectra = 6;
constexpr std::uint64_t kFirstSeed = 3000;

// Smoothed neighbours agree with each other, so that a segment has fewer independent points to judge by.
double Tolerance(std::uint32_t meanWidth) { return meanWidth > 1 ? 0.2 : 0.15; }

struct Condition {
  SpectrumRecipe recipe;
  std::uint32_t meanWidth;  // of the smoothing; 1 is none
};

constexpr Condition kConditions[] = {
    {{Background::Flat, 5, 0}, 1},    {{Background::Flat, 5, 0.1}, 1},  {{Background::Flat, 5, 0.2}, 1},
    {{Background::Flat, 20, 0.2}, 1}, {{Background::Slope, 0, 0.2}, 1}, {{Background::Hump, 0, 0.2}, 1},
    {{Background::Flat, 5, 0}, 5},    {{Background::Flat, 5, 0.1}, 5},  {{Background::Flat, 20, 0.1}, 5},
};

Samples Smoothed(const Samples& y, std::uint32_t width) {
  Samples smooth(y.size());
  SmoothMean(y.data(), Size(y), 0, Size(y), width, smooth.data());
  return smooth;
}

// The mean of independent counts has their noise divided by the root of its width.
Samples Ratios(const Algorithm& algorithm, const Condition& condition) {
  Samples ratios;
  for (int k = 0; k < kSpectra; ++k) {
    const SimulatedSpectrum spectrum = Simulate(condition.recipe, kFirstSeed + static_cast<std::uint64_t>(k));
    const Samples noise = algorithm.run(Smoothed(spectrum.y, condition.meanWidth));
    for (std::size_t i = 0; i < noise.size(); ++i) {
      ratios.push_back(noise[i] / spectrum.TrueNoise(i) * std::sqrt(condition.meanWidth));
    }
  }
  std::sort(ratios.begin(), ratios.end());
  return ratios;
}

class NoiseAccuracy : public testing::TestWithParam<std::tuple<Algorithm, Condition>> {};

TEST_P(NoiseAccuracy, IsWithinTheLimitsForEightPointsInTen) {
  const auto& [algorithm, condition] = GetParam();
  const Samples ratios = Ratios(algorithm, condition);
  const double low = ratios[ratios.size() / 10];
  const double middle = ratios[ratios.size() / 2];
  const double high = ratios[ratios.size() - ratios.size() / 10];
  RecordProperty("low", std::to_string(low));
  RecordProperty("middle", std::to_string(middle));
  RecordProperty("high", std::to_string(high));
  EXPECT_GE(low, 1 - Tolerance(condition.meanWidth));
  EXPECT_LE(high, 1 + Tolerance(condition.meanWidth));
}

std::string NameOfCase(const testing::TestParamInfo<std::tuple<Algorithm, Condition>>& info) {
  constexpr const char* kKinds[] = {"Flat", "Slope", "Hump"};
  const auto& [algorithm, condition] = info.param;
  const SpectrumRecipe& recipe = condition.recipe;
  const bool flat = recipe.background == Background::Flat;
  return std::string(algorithm.name) + "_" + kKinds[static_cast<int>(recipe.background)] +
         (flat ? std::to_string(std::lround(recipe.level)) : "") + "_" +
         std::to_string(std::lround(10 * recipe.peaksPerTh)) + "PeaksIn10Th" +
         (condition.meanWidth > 1 ? "_Smoothed" : "");
}

INSTANTIATE_TEST_SUITE_P(SimulatedCounts, NoiseAccuracy,
                         testing::Combine(testing::ValuesIn(kNoises), testing::ValuesIn(kConditions)),
                         NameOfCase);

}  // namespace
