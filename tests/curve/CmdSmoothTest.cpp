// Tests: SmoothPasses.cpp.
#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/closed/math/smooth/Smoothing.h>
#include <cmath>

using namespace TslBL;
using namespace tests;

namespace {

constexpr std::uint32_t kPoints = 40;

std::vector<double> Ragged() {
  std::vector<double> y;
  for (const double x : Count(kPoints)) y.push_back(50.0 + 40.0 * std::sin(x * x));
  return y;
}

SmoothParams OneStep(std::uint32_t alg, double from, std::uint32_t width) {
  SmoothParams p;
  p.Alg = static_cast<SmoothParams::Algs>(alg);
  p.Steps = {{from, width}};
  return p;
}

std::vector<double> Smoothed(const SmoothParams& params, TestCurve curve) {
  EXPECT_EQ(RunCommand(params, curve), Success("yAxis"));
  return curve.yAxis;
}

}  // namespace

TEST(SmoothStep, SetsItsStatusAndEntersTheHistory) {
  TestCurve curve = CurveOf("0 0 9 0 0");
  EXPECT_EQ(RunCommand(OneStep(SmoothParams::Mean, 0.0, 3), curve), Success("yAxis"));
  EXPECT_EQ(curve.yAxis, Values("0 3 3 3 0"));
  EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_SMOOTHED));
  EXPECT_EQ(curve.evals, (std::vector<CurveEval>{CurveEval(OneStep(SmoothParams::Mean, 0.0, 3))}));
}

TEST(SmoothStep, CallsTheFilterOfItsAlgorithmOnItsRange) {
  const std::vector<double> y = Ragged();
  std::vector<double> mean = y, median = y, savitzkyGolay = y, gaussian = y;
  TslMath::SmoothMean(y.data(), kPoints, 10, kPoints, 7, mean.data());
  TslMath::SmoothMedian(y.data(), kPoints, 10, kPoints, 7, median.data());
  TslMath::SmoothSavitzkyGolay(y.data(), kPoints, 10, kPoints, 7, 4, savitzkyGolay.data());
  TslMath::SmoothGaussian(y.data(), kPoints, 10, kPoints, 7, gaussian.data());
  const std::vector<double>* expected[] = {&mean, &median, &savitzkyGolay, &gaussian};
  for (std::uint32_t alg = 0; alg < 4; ++alg) {
    SmoothParams p = OneStep(alg, 10.0, 7);
    p.Order = 4;
    EXPECT_EQ(Smoothed(p, CurveOf(y)), *expected[alg]) << alg;
    EXPECT_NE(y, *expected[alg]) << alg;
  }
}

TEST(SmoothStep, UsesTheWidthOfEachStretchOnTheAmplitudesOfBefore) {
  const std::vector<double> y = Ragged();
  SmoothParams p = OneStep(SmoothParams::Mean, 5.0, 3);
  p.StepTrans = SmoothParams::Staggered;
  p.Steps.push_back({20.0, 9});
  std::vector<double> expected = y;
  TslMath::SmoothMean(y.data(), kPoints, 5, 21, 3, expected.data());
  TslMath::SmoothMean(y.data(), kPoints, 20, kPoints, 9, expected.data());
  EXPECT_EQ(Smoothed(p, CurveOf(y)), expected);
}

TEST(SmoothStep, ReadsThePassBeforeInEachPass) {
  for (std::uint32_t alg = 0; alg < 4; ++alg) {
    std::vector<double> oneByOne = Ragged();
    for (int pass = 0; pass < 3; ++pass) oneByOne = Smoothed(OneStep(alg, 0.0, 5), CurveOf(oneByOne));
    SmoothParams p = OneStep(alg, 0.0, 5);
    p.Passes = 3;
    EXPECT_EQ(Smoothed(p, CurveOf(Ragged())), oneByOne) << alg;
  }
}

TEST(SmoothStep, ClipsNegativeAmplitudes) {
  // The parabola through five points of a spike goes below zero beside it.
  const auto y = Smoothed(OneStep(SmoothParams::SavitzkyGolay, 0.0, 5), CurveOf("0 0 0 0 35 0 0 0 0"));
  EXPECT_EQ(y[2], 0.0);
  EXPECT_NEAR(y[3], 12.0, 1e-12);
  EXPECT_EQ(y[6], 0.0);
}

TEST(SmoothStep, ClipsAfterTheLastPassOnly) {
  SmoothParams p = OneStep(SmoothParams::Mean, 0.0, 3);
  p.Passes = 2;
  EXPECT_EQ(Smoothed(p, CurveOf("0 -9 0 9 0")), Values("0 0 0 1 0"));
}

TEST(SmoothStep, WithoutStepsOnlyClips) {
  SmoothParams p;
  p.Steps.clear();
  p.Passes = 0xFFFFFFFF;
  TestCurve curve = CurveOf("1 -2 3 -0.5 5");
  EXPECT_EQ(RunCommand(p, curve), Success("yAxis"));
  EXPECT_EQ(curve.yAxis, Values("1 0 3 0 5"));
  EXPECT_EQ(History(curve), "Smooth");
  EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_SMOOTHED));
}

TEST(SmoothStep, EndsOnceAPassChangesNothing) {
  SmoothParams p = OneStep(SmoothParams::Median, 0.0, 3);
  p.Passes = 0xFFFFFFFF;
  EXPECT_EQ(Smoothed(p, CurveOf("0 0 9 0 5 5 6 6 0")), Values("0 0 0 5 5 5 6 6 0"));
}

TEST(SmoothStep, WithAStepAboveTheAxisSmoothsNothing) {
  EXPECT_EQ(Smoothed(OneStep(SmoothParams::Mean, 4.5, 3), CurveOf("0 0 9 0 0")), Values("0 0 9 0 0"));
}

TEST(SmoothStep, WithoutPassesSmoothsNothing) {
  SmoothParams p = OneStep(SmoothParams::Mean, 0.0, 3);
  p.Passes = 0;
  EXPECT_EQ(Smoothed(p, CurveOf("0 -1 9 0 0")), Values("0 0 9 0 0"));
}

TEST(SmoothStep, KeepsTheOrderOfTheUsersSteps) {
  SmoothParams p;
  p.Steps = {{30.0, 9}, {10.0, 3}, {20.0, 5}};
  TestCurve curve = CurveOf(Ragged());
  RunCommand(p, curve);
  EXPECT_EQ(curve.smoothParams, p);
  EXPECT_EQ(curve.evals.back(), CurveEval(p));
}

TEST(SmoothStep, FailsForAnAlgorithmThatDoesNotExist) {
  TestCurve curve = CurveOf("1 -2 9 0 0");
  EXPECT_EQ(RunCommand(OneStep(4, 0.0, 3), curve), Failure(L"Unable to smooth."));
  EXPECT_EQ(curve.yAxis, Values("1 -2 9 0 0"));
  EXPECT_EQ(History(curve), "");
  EXPECT_FALSE(curve.CheckAnyStatus(Curve::STATUS_SMOOTHED));
}

TEST(SmoothStep, DoesNotMissAnAlgorithmThatItDoesNotNeed) {
  EXPECT_EQ(Smoothed(OneStep(4, 4.5, 3), CurveOf("1 -2 9 0 0")), Values("1 0 9 0 0"));
}

TEST(SmoothStep, SurvivesRangesThatReachPastTheEnd) {
  // As many pieces as points between the steps.
  SmoothParams p;
  p.Steps = {{0.0, 5}, {3.0, 13}};
  for (std::uint32_t alg = 0; alg < 4; ++alg) {
    p.Alg = static_cast<SmoothParams::Algs>(alg);
    EXPECT_EQ(Smoothed(p, CurveOf("1 2 3 4 5")).size(), 5u);
  }
}

TEST(SmoothStep, SurvivesAnyWidth) {
  for (std::uint32_t alg = 0; alg < 4; ++alg)
    for (const std::uint32_t width : {0u, 1u, 2u, 100u, 0xFFFFFFFFu})
      EXPECT_EQ(Smoothed(OneStep(alg, 0.0, width), CurveOf("1 1 1 1 1")).size(), 5u) << alg << ' ' << width;
}
