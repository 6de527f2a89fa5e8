#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/baseline/RobustLine.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// One segment with the means given.
class Segment {
 public:
  Segment(const Samples& y, const Samples& mean) : y_(Padded(y)), mean_(Padded(mean)), length_(y.size()) {}

  SegmentData Data() const { return {y_.data(), mean_.data(), length_, mean_.data(), length_, 1}; }

 private:
  static Samples Padded(Samples values) {
    values.resize(WholeGroups(values.size()), kNaN);
    return values;
  }

  Samples y_, mean_;
  std::size_t length_;
};

// A normal noise of 2 about 100 + slope * t, on which some points are raised.
Samples NoisyLine(std::size_t n, double slope, std::size_t raised = 0) {
  std::mt19937_64 random(n + raised);
  std::normal_distribution<double> normal(100, 2);
  Samples y(n);
  for (std::size_t i = 0; i < n; ++i)
    y[i] = normal(random) + slope * (static_cast<double>(i) - 0.5 * static_cast<double>(n - 1));
  for (std::size_t k = 0; k < raised; ++k) y[k * n / raised] += 30 + static_cast<double>(k);
  return y;
}

RobustLine Start(double level, double slope, double noise) {
  RobustLine start;
  start.line = {level, slope};
  start.noise = noise;
  return start;
}

RobustLine Grown(const Samples& y, const RejectionRule& rule, const RobustLine& start,
                 Growth growth = Growth::Line) {
  return GrowLine(Segment(y, y).Data(), rule, start, growth);
}

// Standard deviation of a normal distribution cut off at +-width, by a sum.
double CutDeviation(double width) {
  double weights = 0, squares = 0;
  for (int k = -100000; k <= 100000; ++k) {
    const double u = width * (k + (k < 0 ? 0.5 : -0.5)) / 100000;
    if (k == 0) continue;
    weights += std::exp(-0.5 * u * u);
    squares += u * u * std::exp(-0.5 * u * u);
  }
  return std::sqrt(squares / weights);
}

TEST(RejectionRule, CountsZeroAsOneAndAnEvenNumberOfPointsAsTheNextOddOne) {
  EXPECT_EQ(RejectionRule(0, 0, 1000, 1).points, 1U);
  EXPECT_EQ(RejectionRule(0, 0, 1000, 1).width, 1);
  EXPECT_EQ(RejectionRule(4, 3, 1000, 1).points, 5U);
  EXPECT_EQ(RejectionRule(5, 3, 1000, 1).points, 5U);
  EXPECT_EQ(RejectionRule(70001, 3, 100000, 1).points, 70001U);
}

TEST(RejectionRule, AsksForNoMorePointsThanTheCurveHas) {
  EXPECT_EQ(RejectionRule(9, 3, 7, 1).points, 7U);
  EXPECT_EQ(RejectionRule(9, 3, 8, 1).points, 7U);
  EXPECT_EQ(RejectionRule(std::numeric_limits<std::uint32_t>::max(), 3, 1, 1).points, 1U);
}

TEST(RejectionRule, HasHalfAQuantumAsItsLeastNoise) {
  EXPECT_EQ(RejectionRule(5, 3, 1000, 3).noiseFloor, 1.5);
}

TEST(RejectionRule, AsksForEightPointsOrTwiceTheNeighbourhood) {
  EXPECT_EQ(RejectionRule(1, 3, 1000, 1).LeastCount(), 8U);
  EXPECT_EQ(RejectionRule(3, 3, 1000, 1).LeastCount(), 8U);
  EXPECT_EQ(RejectionRule(5, 3, 1000, 1).LeastCount(), 10U);
}

TEST(RejectionRule, UndoesTheCuttingOfTheTails) {
  for (const std::uint32_t width : {1U, 2U, 3U, 5U})
    EXPECT_NEAR(RejectionRule(5, width, 1000, 1).untruncation * CutDeviation(width), 1, 1e-6) << width;
}

// Least squares through all points, in the plainest form.
TEST(GrowLine, IsTheLeastSquaresLineOfAllPointsWithinAWideLimit) {
  for (const std::size_t n : {20U, 251U, 5000U, 270001U}) {
    const Samples y = NoisyLine(n, 0.05);
    long double t1 = 0, t2 = 0, y1 = 0, ty = 0, rr = 0;
    for (std::size_t i = 0; i < n; ++i) {
      const long double t = static_cast<long double>(i) - 0.5L * static_cast<long double>(n - 1);
      t1 += t, t2 += t * t, y1 += y[i], ty += t * y[i];
    }
    const long double slope = (ty - t1 * y1 / n) / (t2 - t1 * t1 / n);
    const long double level = y1 / n - slope * t1 / n;
    for (std::size_t i = 0; i < n; ++i) {
      const long double r =
          y[i] - level - slope * (static_cast<long double>(i) - 0.5L * static_cast<long double>(n - 1));
      rr += r * r;
    }
    const RobustLine fit = Grown(y, RejectionRule(1, 100, n, 0), Start(100, 0, 10));
    EXPECT_NEAR(fit.line.level, static_cast<double>(level), 1e-9);
    EXPECT_NEAR(fit.line.slope, static_cast<double>(slope), 1e-11);
    EXPECT_NEAR(fit.noise, static_cast<double>(std::sqrt(rr / n)), 1e-9);
    EXPECT_EQ(fit.count, n);
  }
}

TEST(GrowLine, LeavesOutWhatIsFarFromTheLine) {
  const RobustLine clean = Grown(NoisyLine(1000, 0.02), RejectionRule(1, 3, 1000, 0), Start(100, 0.02, 2));
  const RobustLine fit = Grown(NoisyLine(1000, 0.02, 100), RejectionRule(1, 3, 1000, 0), Start(100, 0.02, 2));
  EXPECT_NEAR(fit.line.level, 100, 0.25);
  EXPECT_NEAR(fit.line.slope, 0.02, 0.001);
  EXPECT_NEAR(fit.noise, 2, 0.2);
  EXPECT_NEAR(static_cast<double>(clean.count) - static_cast<double>(fit.count), 100, 15);
}

TEST(GrowLine, FindsTheLineFromAStartBesideIt) {
  const Samples y = NoisyLine(1000, 0.02);
  for (const double level : {96.0, 98.0, 102.0, 104.0}) {
    const RobustLine fit = Grown(y, RejectionRule(1, 3, 1000, 0), Start(level, 0.02, 4));
    EXPECT_NEAR(fit.line.level, 100, 0.3) << level;
    EXPECT_NEAR(fit.noise, 2, 0.2) << level;
  }
}

TEST(GrowLine, MovesTheLevelAloneForAFixedSlope) {
  const RobustLine fit =
      Grown(NoisyLine(1000, 0), RejectionRule(1, 3, 1000, 0), Start(101, 0.001, 3), Growth::FixedSlope);
  EXPECT_EQ(fit.line.slope, 0.001);
  EXPECT_NEAR(fit.line.level, 100, 0.25);
}

TEST(GrowLine, IsNotBelowTheLeastNoise) {
  const Samples y(100, 7.0);
  EXPECT_EQ(Grown(y, RejectionRule(1, 3, 100, 5), Start(7, 0, 2.5)).noise, 2.5);
}

TEST(GrowLine, LeavesOutPointsWhoseNeighbourhoodIsHigh) {
  const Samples y = NoisyLine(1000, 0);
  Samples mean(1000, 100.0);
  std::fill(mean.begin() + 400, mean.end(), 115.0);  // within 3 standard deviations of no mean of 5 points
  const RobustLine fit =
      GrowLine(Segment(y, mean).Data(), RejectionRule(5, 3, 1000, 0), Start(100, 0, 2), Growth::Line);
  EXPECT_LE(fit.count, 400U);
  EXPECT_GE(fit.count, 390U);
}

// All points are near the start, but none is in a low neighbourhood.
TEST(GrowLine, CountsThePointsOfItsLastSet) {
  const Samples y = NoisyLine(100, 0);
  const Samples mean(100, 200.0);
  const RejectionRule rule(5, 3, 100, 0);
  RobustLine start = Start(100, 0, 2);
  start.count = 77;
  const RobustLine fit = GrowLine(Segment(y, mean).Data(), rule, start, Growth::Line);
  EXPECT_EQ(fit.count, 0U);
  EXPECT_FALSE(IsTrusted(fit, rule, 100));
}

TEST(GrowLine, OfNothingFiniteIsItsStartWithoutAPoint) {
  RobustLine start = Start(3, 0.5, 2);
  start.count = 77;
  for (const double bad : {kNaN, kInfinity}) {
    const RobustLine fit = Grown(Samples(50, bad), RejectionRule(1, 3, 50, 0), start);
    EXPECT_EQ(fit.count, 0U);
    EXPECT_EQ(fit.line.level, 3);
    EXPECT_EQ(fit.noise, 2);
  }
}

TEST(GrowLine, KeepsTheLineBeforeSumsThatOverflow) {
  const Samples y(50, 1e300);
  RobustLine start = Start(0, 0, 1e300);
  start.count = 77;
  const RobustLine fit = Grown(y, RejectionRule(1, 3, 50, 0), start);
  EXPECT_EQ(fit.line.level, 0);
  EXPECT_EQ(fit.count, 0U);
}

TEST(IsTrusted, WantsEnoughPointsAndAnEighthOfTheSegment) {
  const RejectionRule rule(5, 3, 1000, 0);
  RobustLine fit;
  fit.count = 9;
  EXPECT_FALSE(IsTrusted(fit, rule, 20));
  fit.count = 10;
  EXPECT_TRUE(IsTrusted(fit, rule, 20));
  EXPECT_TRUE(IsTrusted(fit, rule, 83));
  EXPECT_FALSE(IsTrusted(fit, rule, 84));
  fit.count = 12000;
  EXPECT_TRUE(IsTrusted(fit, rule, 100000));
  fit.count = 11999;
  EXPECT_FALSE(IsTrusted(fit, rule, 100000));
}

}  // namespace
