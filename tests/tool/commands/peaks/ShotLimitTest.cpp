#include <tool/commands/peaks/ShotLimit.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>
#include <algorithm>
#include <cmath>
#include <vector>

using TslTool::LimitToShots;
using TslTool::LoadedSpectrum;

namespace {

constexpr std::size_t kLag = 40;  // points from line to line
const std::vector<double> kNoFilter = {1.0};
const std::vector<double> kMean(13, 1.0 / 13.0);

// Of the mean filter.
constexpr double kGain = 1.0 / 3.6056;

// Counts of lines 12 points wide and 500 high at every fortieth point, over a background of 9.
std::vector<double> Crowd(std::uint64_t seed) {
  std::vector<double> y = tests::Shots(9.0, 4000, seed);
  for (std::size_t top = 10; top < y.size(); top += kLag)
    tests::AddShotPeak(y, static_cast<double>(top), 500.0, seed + top);
  return y;
}

LoadedSpectrum Found(const std::vector<double>& y, double baseline, double noise) {
  LoadedSpectrum loaded;
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  loaded.spectrum->yAxis = y;
  loaded.measured = y;
  loaded.spectrum->baseline.assign(y.size(), baseline);
  loaded.spectrum->noise.assign(y.size(), noise);
  return loaded;
}

TEST(ShotLimit, LowersTheNoiseToTwiceThatOfTheCountsBetweenLines) {
  LoadedSpectrum loaded = Found(Crowd(1), 60.0, 80.0);
  EXPECT_EQ(LimitToShots(loaded, kMean, 2.0), 4000U);
  for (std::size_t i = 100; i < 3900; ++i) {
    EXPECT_GT(loaded.spectrum->noise[i], 2.0 * 1.5 * kGain) << i;
    EXPECT_LT(loaded.spectrum->noise[i], 2.0 * 5.0 * kGain) << i;
  }
}

TEST(ShotLimit, LowersTheBaselineToTheValleys) {
  LoadedSpectrum loaded = Found(Crowd(1), 60.0, 80.0);
  LimitToShots(loaded, kMean, 2.0);
  for (std::size_t i = 100; i < 3900; ++i) EXPECT_LT(loaded.spectrum->baseline[i], 20.0) << i;
}

TEST(ShotLimit, LeavesABackgroundThatIsSeenAsItWasFound) {
  for (const double mean : {0.01, 0.1, 1.0, 5.0, 50.0}) {
    const double noise = std::sqrt(mean + 1.0);
    LoadedSpectrum loaded = Found(tests::Shots(mean, 20000, 2), mean, noise);
    loaded.countAmpl = 1.0;
    EXPECT_EQ(LimitToShots(loaded, kNoFilter, 2.0), 0U) << mean;
  }
}

void ExpectUntouched(LoadedSpectrum loaded, double limit, const char* what) {
  EXPECT_EQ(LimitToShots(loaded, kNoFilter, limit), 0U) << what;
  EXPECT_EQ(loaded.spectrum->noise.front(), 80.0) << what;
  EXPECT_EQ(loaded.spectrum->baseline.front(), 60.0) << what;
}

TEST(ShotLimit, AsksForCountsAndForANoiseThatWasFoundEverywhere) {
  ExpectUntouched(Found(Crowd(1), 60.0, 80.0), 0.0, "no limit");
  std::vector<double> other = Crowd(1);
  for (std::size_t i = 0; i < other.size(); ++i) other[i] += 0.1 * std::sin(static_cast<double>(i));
  ExpectUntouched(Found(other, 60.0, 80.0), 2.0, "no counts");
  LoadedSpectrum ofARange = Found(Crowd(1), 60.0, 80.0);
  ofARange.spectrum->noiseParams.Auto = false;
  ExpectUntouched(std::move(ofARange), 2.0, "the noise of a range");
  LoadedSpectrum subtracted = Found(Crowd(1), 60.0, 80.0);
  subtracted.spectrum->evals.emplace_back(TslBL::CurveEval::BaselineSubtract{});
  ExpectUntouched(std::move(subtracted), 2.0, "a subtracted baseline");
}

}  // namespace
