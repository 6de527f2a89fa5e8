// How near the baselines come to the truth on simulated counts. Each figure is the mean over six spectra, in
// units of the background's noise. `tslbl_tests --gtest_filter='*Accuracy*'` prints the figures with
// --gtest_output=json as the properties mean, rms and worst.
//
// Tests: Baseline.h.
#include <closed/math/baseline/BaselineCheck.h>

using namespace tests;
using namespace TslMath;

namespace {

struct Accuracy {
  SpectrumRecipe recipe;
  double mean;
  double rms;
  double worst;
};

constexpr Background kFlat = Background::Flat;
constexpr int kSpectra = 6;
constexpr std::uint64_t kFirstSeed = 1000;

struct Deviation {
  double mean = 0;
  double rms = 0;
  double worst = 0;
};

void AddDeviation(const SimulatedSpectrum& spectrum, const Samples& found, Deviation& total) {
  double sum = 0;
  double squares = 0;
  double worst = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const double d = (found[i] - spectrum.background[i]) / spectrum.TrueNoise(i);
    sum += d;
    squares += d * d;
    worst = std::max(worst, std::abs(d));
  }
  const double n = static_cast<double>(found.size());
  total.mean += sum / n / kSpectra;
  total.rms += std::sqrt(squares / n) / kSpectra;
  total.worst += worst / kSpectra;
}

Deviation Measure(const Algorithm& algorithm, const SpectrumRecipe& recipe) {
  Deviation total;
  for (int k = 0; k < kSpectra; ++k) {
    const SimulatedSpectrum spectrum = Simulate(recipe, kFirstSeed + static_cast<std::uint64_t>(k));
    AddDeviation(spectrum, algorithm.run(spectrum.y), total);
  }
  return total;
}

class BaselineAccuracy : public testing::TestWithParam<std::tuple<Algorithm, Accuracy>> {};

// Background, counts, peaks per Th; limits of |mean|, rms and worst deviation.
constexpr Accuracy kDemanded[] = {
    {{kFlat, 5, 0}, 0.15, 0.15, 0.8},
    {{kFlat, 5, 0.1}, 0.15, 0.2, 1},
    {{kFlat, 5, 0.2}, 0.15, 0.3, 1.5},
    {{kFlat, 5, 0.3}, 0.15, 0.5, 2.5},
    {{kFlat, 50, 0.3}, 0.2, 0.5, 2.5},
    {{kFlat, 0.2, 0.1}, 0.15, 0.2, 1},
    {{Background::Slope, 0, 0.2}, 0.15, 0.3, 1.5},
    {{Background::Hump, 0, 0.2}, 0.15, 0.3, 1.5},
    {{Background::Hump, 0, 0.5}, 0.3, 0.7, 4.5},
};

TEST_P(BaselineAccuracy, IsWithinTheLimits) {
  const auto& [algorithm, demanded] = GetParam();
  const Deviation found = Measure(algorithm, demanded.recipe);
  RecordProperty("mean", std::to_string(found.mean));
  RecordProperty("rms", std::to_string(found.rms));
  RecordProperty("worst", std::to_string(found.worst));
  EXPECT_LE(std::abs(found.mean), demanded.mean);
  EXPECT_LE(found.rms, demanded.rms);
  EXPECT_LE(found.worst, demanded.worst);
}

std::string NameOfCase(const testing::TestParamInfo<std::tuple<Algorithm, Accuracy>>& info) {
  constexpr const char* kKinds[] = {"Flat", "Slope", "Hump"};
  const auto& [algorithm, accuracy] = info.param;
  const SpectrumRecipe& recipe = accuracy.recipe;
  const std::string level = recipe.background == kFlat ? std::to_string(std::lround(10 * recipe.level)) : "";
  return std::string(algorithm.name) + "_" + kKinds[static_cast<int>(recipe.background)] + level +
         (level.empty() ? "" : "Tenths") + "_" + std::to_string(std::lround(10 * recipe.peaksPerTh)) +
         "PeaksIn10Th";
}

INSTANTIATE_TEST_SUITE_P(SimulatedCounts, BaselineAccuracy,
                         testing::Combine(testing::ValuesIn(kBaselines), testing::ValuesIn(kDemanded)),
                         NameOfCase);

}  // namespace
