#include <gtest/gtest.h>

#include <tool/io/CountStep.h>
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace tests {
namespace {

std::vector<double> Counts(double mean, double unit, double digit = 0.0) {
  std::mt19937_64 random(1);
  std::vector<double> counts(20000);
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const double peak = 1000.0 * std::max(0.0, 1.0 - std::abs(static_cast<double>(i % 1000) / 20.0 - 1.0));
    counts[i] = unit * std::poisson_distribution<int>(mean + peak)(random);
    if (digit > 0.0) counts[i] = digit * std::round(counts[i] / digit);
  }
  return counts;
}

double StepOf(const std::vector<double>& amplitudes) { return TslTool::CountStepOf(amplitudes); }

TEST(CountStep, IsOneOfCounts) {
  for (const double mean : {0.01, 1.0, 50.0, 1000.0})
    EXPECT_DOUBLE_EQ(StepOf(Counts(mean, 1.0)), 1.0) << mean;
}

TEST(CountStep, IsThatOfARateAndOfAnAverage) {
  for (const double unit : {1.0 / 3.0, 1.0 / 7.0, 1.0 / 60.0, 1000.0 / 3.0, 1.6e-19})
    EXPECT_NEAR(StepOf(Counts(2.0, unit)) / unit, 1.0, 1e-6) << unit;
}

TEST(CountStep, IsFoundBehindTheRoundingOfDigits) {
  EXPECT_NEAR(StepOf(Counts(2.0, 1.0 / 3.0, 0.01)), 1.0 / 3.0, 1e-5);
  EXPECT_NEAR(StepOf(Counts(2.0, 1.0 / 7.0, 1e-4)), 1.0 / 7.0, 1e-5);
  EXPECT_NEAR(StepOf(Counts(2.0, 1000.0 / 3.0, 1e-3)), 1000.0 / 3.0, 1e-3);
}

TEST(CountStep, IsFoundBehindSinglePrecision) {
  std::vector<double> counts = Counts(2.0, 1.0 / 3.0);
  for (double& value : counts) value = static_cast<double>(static_cast<float>(value));
  EXPECT_NEAR(StepOf(counts), 1.0 / 3.0, 1e-6);
}

TEST(CountStep, OfPartsThatWereCountedOtherwiseIsNone) {
  for (const double mean : {0.5, 5.0, 500.0})
    for (const double gain : {2.0, 2.5, 3.0, 10.0}) {
      std::vector<double> counts = Counts(mean, 1.0);
      for (std::size_t i = 0; i < counts.size() / 3; ++i) counts[i] *= gain;
      EXPECT_EQ(StepOf(counts), 0.0) << mean << " " << gain;
    }
}

TEST(CountStep, OfAPartWithHardlyAnIonIsThatOfTheOthers) {
  std::vector<double> counts = Counts(5.0, 1.0);
  for (std::size_t i = 0; i < counts.size() / 4; ++i) counts[i] = i % 200 == 0 ? 2.0 : 0.0;
  EXPECT_DOUBLE_EQ(StepOf(counts), 1.0);
}

TEST(CountStep, OfAContinuousAmplitudeIsNone) {
  std::mt19937_64 random(1);
  std::vector<double> analog(5000);
  for (double& value : analog) value = std::normal_distribution(100.0, 5.0)(random);
  EXPECT_EQ(StepOf(analog), 0.0);
}

TEST(CountStep, OfWhatIsBelowZeroOrLevelIsNone) {
  std::vector<double> counts = Counts(2.0, 1.0);
  counts[7] = -1.0;
  EXPECT_EQ(StepOf(counts), 0.0);
  EXPECT_EQ(StepOf(std::vector<double>(100, 0.0)), 0.0);
  EXPECT_EQ(StepOf({}), 0.0);
}

}  // namespace
}  // namespace tests
