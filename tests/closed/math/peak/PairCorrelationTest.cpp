#include <tslbl/closed/math/peak/PairCorrelation.h>

#include <gtest/gtest.h>

#include <closed/math/SampleArray.h>
#include <cmath>
#include <random>

using tests::Samples;
using TslMath::PairCorrelation;

namespace {

constexpr std::size_t kPoints = 20003;

double WidthOf(const Samples& y) {
  PairCorrelation pairs;
  pairs.Add(y.data(), tests::Size(y));
  return pairs.Width();
}

double Gaussian(double distance, double width) {
  const double u = distance / width;
  return std::exp(-4.0 * std::log(2.0) * u * u);
}

struct Show {
  double width;  // points
  double counts;
  int lines;
  double background;  // counts a point
};

Samples CountsOf(const Show& show, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  Samples y(kPoints);
  const double apart = static_cast<double>(kPoints) / (show.lines + 1);
  const double height = show.counts / (show.width * 1.0645);
  for (std::size_t i = 0; i < kPoints; ++i) {
    const double at = static_cast<double>(i);
    const double line = std::clamp(std::round(at / apart), 1.0, static_cast<double>(show.lines));
    const double mean =
        show.background + height * Gaussian(at - (line + 0.1 * std::sin(line)) * apart, show.width);
    y[i] = static_cast<double>(std::poisson_distribution<int>(mean)(random));
  }
  return y;
}

TEST(PairCorrelation, TellsTheWidthOfLinesThatAreTooWeakEach) {
  const Show shows[] = {
      {3, 40, 20, 0.1}, {12, 40, 20, 0.001}, {12, 40, 20, 0.1}, {60, 60, 20, 0.1}, {12, 100, 20, 1}};
  for (const Show& show : shows)
    for (std::uint64_t seed = 1; seed <= 4; ++seed)
      EXPECT_NEAR(WidthOf(CountsOf(show, seed)), show.width, 0.12 * show.width)
          << show.background << ", " << seed;
}

TEST(PairCorrelation, TellsNothingOfBackgroundAlone) {
  for (const double background : {0.001, 0.1, 1.0, 10.0})
    for (std::uint64_t seed = 1; seed <= 8; ++seed)
      EXPECT_EQ(WidthOf(CountsOf({12, 0, 20, background}, seed)), 0.0) << background << ", seed " << seed;
}

TEST(PairCorrelation, TellsNothingOfABackgroundThatChangesSlowly) {
  std::mt19937_64 random(5);
  Samples y(kPoints);
  for (std::size_t i = 0; i < kPoints; ++i)
    y[i] = std::poisson_distribution<int>(0.2 + 20.0 * std::exp(-static_cast<double>(i) / 4000.0))(random);
  EXPECT_EQ(WidthOf(y), 0.0);
}

TEST(PairCorrelation, TellsNothingOfSinglePointsThatStandOut) {
  Samples y = CountsOf({12, 0, 20, 0.1}, 3);
  for (std::size_t i = 500; i < kPoints; i += 1000) y[i] += 50.0;
  EXPECT_EQ(WidthOf(y), 0.0);
}

TEST(PairCorrelation, OfSeveralCurvesTellsWhatNoneTellsAlone) {
  PairCorrelation pairs;
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    const Samples y = CountsOf({12, 40, 2, 1}, seed);
    EXPECT_EQ(WidthOf(y), 0.0) << seed;
    pairs.Add(y.data(), tests::Size(y));
  }
  EXPECT_NEAR(pairs.Width(), 12.0, 2.4);
}

TEST(PairCorrelation, IsTheSameOfMultiples) {
  Samples y = CountsOf({12, 40, 20, 0.1}, 1);
  const double width = WidthOf(y);
  for (double& value : y) value *= 0.125;
  EXPECT_EQ(WidthOf(y), width);
}

TEST(PairCorrelation, OfShortCurvesTellsNothing) {
  Samples y = CountsOf({12, 4000, 20, 0.1}, 1);
  y.resize(2047);
  EXPECT_EQ(WidthOf(y), 0.0);
  EXPECT_EQ(WidthOf({}), 0.0);
}

// 13.0842 points: tests/oracles/pair_correlation.py, within the 3 percent from one width to the next.
TEST(PairCorrelation, IsTheFitOfSciPy) {
  Samples y(8000);
  for (std::size_t i = 0; i < y.size(); ++i) {
    y[i] = i * 7919 % 97 == 0 ? 1.0 : 0.0;
    for (int line = 0; line < 12; ++line) {
      const double centre = 300.0 + 620.0 * line + std::fmod(3.7 * line * line, 11.0);
      y[i] += std::floor((1.0 + line % 4) * Gaussian(static_cast<double>(i) - centre, 14.0) + 0.5);
    }
  }
  EXPECT_NEAR(WidthOf(y), 13.0842, 0.03 * 13.0842);
}

}  // namespace
