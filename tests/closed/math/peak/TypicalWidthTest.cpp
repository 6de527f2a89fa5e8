#include <tslbl/closed/math/peak/TypicalWidth.h>

#include <gtest/gtest.h>

#include <OracleTable.h>
#include <closed/math/SampleArray.h>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <random>

using namespace TslMath;
using namespace tests;

namespace {

constexpr std::size_t kPoints = 20003;

double WidthOf(const Samples& y) { return TypicalPeakWidth(y.data(), Size(y)); }

void AddLine(Samples& y, double centre, double height, double width) {
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double u = (static_cast<double>(i) - centre) / width;
    y[i] += height * std::exp(-4.0 * std::log(2.0) * u * u);
  }
}

// Counts of lines with heights that rise from `least` to `most` over a level background.
Samples Counts(double background, double width, double least, double most, std::uint64_t seed) {
  Samples mean(kPoints, background);
  const int lines = std::min(30, static_cast<int>(kPoints / (8.0 * width)));
  std::mt19937_64 random(seed);
  std::uniform_real_distribution<double> shift(-width, width);
  for (int k = 0; k < lines; ++k) {
    const double height = least * std::pow(most / least, static_cast<double>(k) / lines);
    AddLine(mean, (k + 0.5) * static_cast<double>(kPoints) / lines + shift(random), height, width);
  }
  for (double& value : mean) value = std::poisson_distribution<int>(value)(random);
  return mean;
}

struct Lines {
  int count;
  double height;
  double width;
};

// Without noise and 200 points apart, each a little lower than the one before.
double WidthOfLines(std::initializer_list<Lines> groups) {
  Samples y(20000, 0.0);
  double centre = 100.0;
  for (const Lines& group : groups)
    for (int k = 0; k < group.count; ++k, centre += 200.0)
      AddLine(y, centre, group.height - 0.01 * k, group.width);
  return WidthOf(y);
}

}  // namespace

// `/usr/bin/python3 tests/oracles/typical_width.py`
TEST(TypicalPeakWidth, AgreesWithScipy) {
  const OracleTable samples("typical_width_samples.csv");
  const OracleTable results("typical_width_results.csv");
  for (const std::string& curve : samples.Names())
    EXPECT_NEAR(WidthOf(samples[curve]), results["width"][std::stoul(curve)], 1e-3) << curve;
}

TEST(TypicalPeakWidth, IsThatOfTheThirtyTwoMostProminentLines) {
  EXPECT_NEAR(WidthOfLines({{17, 1000, 8}, {15, 990, 30}, {40, 900, 30}}), 8.0, 0.1);
  EXPECT_NEAR(WidthOfLines({{15, 1000, 8}, {17, 990, 30}, {40, 900, 8}}), 30.0, 0.1);
}

TEST(TypicalPeakWidth, LeavesOutLinesBelowATwentiethOfTheTallest) {
  EXPECT_NEAR(WidthOfLines({{3, 1000, 8}, {25, 40, 30}}), 8.0, 0.1);
  EXPECT_NEAR(WidthOfLines({{3, 1000, 8}, {25, 55, 30}}), 30.0, 0.1);
}

TEST(TypicalPeakWidth, WeighsALineByTheRootOfItsProminence) {
  EXPECT_NEAR(WidthOfLines({{1, 1000, 8}, {3, 100, 30}}), 8.0, 0.1);
  EXPECT_NEAR(WidthOfLines({{1, 1000, 8}, {4, 100, 30}}), 30.0, 0.1);
}

TEST(TypicalPeakWidth, IsThatOfStrongLines) {
  for (const double background : {0.01, 5.0, 100.0})
    for (const double width : {3.0, 4.0, 5.0, 8.0, 12.0, 30.0, 60.0, 100.0})
      EXPECT_NEAR(WidthOf(Counts(background, width, 30, 10000, 1)), width, 0.05 * width) << background;
}

TEST(TypicalPeakWidth, IsThatOfWeakLinesAboutBumpsOfNoise) {
  for (const double width : {5.0, 12.0, 30.0, 100.0})
    EXPECT_NEAR(WidthOf(Counts(0.01, width, 2, 10, 1)), width, 0.25 * width);
}

TEST(TypicalPeakWidth, IsZeroForNoiseAlone) {
  for (const double mean : {0.01, 0.3, 5.0, 100.0})
    for (std::uint64_t seed = 0; seed < 5; ++seed)
      EXPECT_EQ(WidthOf(Counts(mean, 1e9, 1, 1, seed)), 0.0) << mean;
}

TEST(TypicalPeakWidth, OfALineWithoutNoiseIsExactToTheStraightLinesBetweenPoints) {
  Samples y(400, 0.0);
  AddLine(y, 200.0, 1000.0, 10.0);
  EXPECT_NEAR(WidthOf(y), 10.0, 0.05);
}

TEST(TypicalPeakWidth, DoesNotDependOnThePlaceOnALongCurve) {
  Samples y(90000, 0.0);
  AddLine(y, 80000.0, 1000.0, 10.0);
  EXPECT_NEAR(WidthOf(y), 10.0, 0.05);
}

TEST(TypicalPeakWidth, DoesNotSeeAHumpBelowTheLines) {
  Samples y(kPoints, 0.0);
  AddLine(y, 10000.0, 500.0, 6000.0);
  for (int k = 0; k < 20; ++k) AddLine(y, 500.0 + 990.0 * k, 100.0, 8.0);
  EXPECT_NEAR(WidthOf(y), 8.0, 0.4);
}

TEST(TypicalPeakWidth, DoesNotDependOnTheUnit) {
  Samples y = Counts(5, 12, 30, 10000, 2);
  const double width = WidthOf(y);
  for (double& value : y) value = 1e-9 * value - 3.0;
  EXPECT_NEAR(WidthOf(y), width, 1e-3);
}

TEST(TypicalPeakWidth, TakesWhatIsNotFiniteForTheLowestSample) {
  Samples y = Counts(5, 12, 30, 10000, 2);
  y[10] = std::nan("");
  y[5000] = std::numeric_limits<double>::infinity();
  y[15000] = -std::numeric_limits<double>::infinity();
  EXPECT_NEAR(WidthOf(y), 12.0, 0.6);
}

TEST(TypicalPeakWidth, IsZeroWithoutAPeak) {
  EXPECT_EQ(WidthOf({}), 0.0);
  EXPECT_EQ(WidthOf({1.0}), 0.0);
  EXPECT_EQ(WidthOf({1.0, 2.0}), 0.0);
  EXPECT_EQ(WidthOf(Samples(1000, 4.0)), 0.0);
  EXPECT_EQ(WidthOf(Samples(1000, std::nan(""))), 0.0);
  Samples ramp(1000);
  for (std::size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<double>(i);
  EXPECT_EQ(WidthOf(ramp), 0.0);
}
