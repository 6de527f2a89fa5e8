#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/closed/math/baseline/Baseline.h>
#include <cmath>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

constexpr std::uint32_t kPoints = 400;

// A slope with a ripple and a peak.
std::vector<double> Sloping() {
  std::vector<double> y;
  for (const double x : Count(kPoints)) {
    const double d = (x - 200.0) / 6.0;
    y.push_back(20.0 + 0.1 * x + std::fmod(x * 7.0, 5.0) + 800.0 * std::exp(-d * d));
  }
  return y;
}

BaselineParams Automatic(std::uint32_t alg) {
  BaselineParams p;
  p.Alg = static_cast<BaselineParams::Algs>(alg);
  p.SegSize = 60;
  p.Window = 15;
  p.Points = 7;
  p.Width = 2;
  return p;
}

BaselineParams Manual(double value) {
  BaselineParams p;
  p.Auto = false;
  p.ManVal = value;
  return p;
}

TestCurve WithBaseline(const std::string& y, const std::string& baseline) {
  TestCurve curve = CurveOf(y);
  curve.baseline = Values(baseline);
  curve.AddStatus(Curve::STATUS_BASELINE);
  return curve;
}

Outcome Subtract(TestCurve& curve) { return RunCommand(CurveEval::BaselineSubtract(), curve); }

}  // namespace

TEST(BaselineStep, CallsItsAlgorithm) {
  const std::vector<double> y = Sloping();
  std::vector<double> vf(kPoints), adaptive(kPoints), linear(kPoints);
  TslMath::VFBaseline(y.data(), kPoints, 60, vf.data());
  TslMath::APBMorph(y.data(), kPoints, 60, 15, adaptive.data());
  TslMath::LinearFitSDBaseline(y.data(), kPoints, 60, 7, 2, linear.data());
  const std::vector<double>* expected[] = {&vf, &adaptive, &linear};
  for (std::uint32_t alg = 0; alg < 3; ++alg) {
    TestCurve curve = CurveOf(y);
    EXPECT_EQ(RunCommand(Automatic(alg), curve), Success("baseline")) << alg;
    EXPECT_EQ(curve.baseline, *expected[alg]) << alg;
    EXPECT_EQ(curve.yAxis, y) << alg;
  }
  EXPECT_NE(vf, adaptive);
  EXPECT_NE(adaptive, linear);
}

TEST(BaselineStep, IsFlatInManualMode) {
  for (const char* y : {"0 1 5 9 5 1", "-7", "3 3 3"}) {
    TestCurve curve = CurveOf(y);
    EXPECT_EQ(RunCommand(Manual(3.0), curve), Success("baseline"));
    EXPECT_EQ(curve.baseline, std::vector<double>(curve.yAxis.size(), 3.0));
  }
}

TEST(BaselineStep, ReplacesABaselineOfAnotherLength) {
  TestCurve curve = WithBaseline("1 2 3", "9 9 9 9 9");
  RunCommand(Manual(1.0), curve);
  EXPECT_EQ(curve.baseline, Values("1 1 1"));
  curve.baseline = Values("9");
  RunCommand(Automatic(2), curve);
  EXPECT_EQ(curve.baseline.size(), 3u);
}

TEST(BaselineStep, SetsItsStatusAndEntersTheHistory) {
  TestCurve curve = CurveOf("0 1 5 9");
  RunCommand(Manual(3.0), curve);
  EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_BASELINE));
  EXPECT_EQ(curve.evals, (std::vector<CurveEval>{CurveEval(Manual(3.0))}));
}

TEST(BaselineStep, NeedsNoStatusOfTheAxis) {
  TestCurve curve = CurveOf("0 1 5 9");
  curve.status = Curve::STATUS_Y;
  EXPECT_EQ(RunCommand(BaselineParams(), curve), Success("baseline"));
}

TEST(BaselineStep, FailsForAnAlgorithmThatDoesNotExist) {
  TestCurve curve = CurveOf("0 1 5 9");
  EXPECT_EQ(RunCommand(Automatic(3), curve), Failure(L"Unable to baseline."));
  EXPECT_EQ(curve.baseline, Values("0 0 0 0"));
  EXPECT_FALSE(curve.CheckAnyStatus(Curve::STATUS_BASELINE));
  EXPECT_EQ(History(curve), "");
}

TEST(BaselineStep, DoesNotLookAtTheAlgorithmInManualMode) {
  BaselineParams p = Automatic(3);
  p.Auto = false;
  TestCurve curve = CurveOf("0 1 5 9");
  EXPECT_EQ(RunCommand(p, curve), Success("baseline"));
}

TEST(BaselineSubtraction, LeavesWhatStandsAboveTheBaseline) {
  const struct {
    const char *y, *baseline, *left;
  } rows[] = {{"5 9 5", "1 2 3", "4 7 2"},
              {"1 2 3", "1 2 3", "0 0 0"},
              {"1 2 3", "2 2.5 99", "0 0 0"},
              {"-1 -2 3", "-3 -1 -1", "2 0 4"}};
  for (const auto& row : rows) {
    TestCurve curve = WithBaseline(row.y, row.baseline);
    EXPECT_EQ(Subtract(curve), Success("yAxis baseline"));
    EXPECT_EQ(curve.yAxis, Values(row.left)) << row.y;
    EXPECT_EQ(curve.baseline, Values("0 0 0")) << row.y;
  }
}

TEST(BaselineSubtraction, KeepsTheStatusOfTheBaselineAndEntersTheHistory) {
  TestCurve curve = WithBaseline("5 9 5", "1 2 3");
  const std::uint32_t status = curve.status;
  Subtract(curve);
  EXPECT_EQ(curve.status, status);
  EXPECT_EQ(History(curve), "Baseline Subtract");
}

TEST(BaselineSubtraction, ChangesNothingTheSecondTimeAndIsRecorded) {
  TestCurve curve = CurveOf(Sloping());
  RunCommand(Automatic(2), curve);
  Subtract(curve);
  const TestCurve once = curve;
  EXPECT_EQ(Subtract(curve), Success("yAxis baseline"));
  EXPECT_EQ(curve.yAxis, once.yAxis);
  EXPECT_EQ(curve.baseline, once.baseline);
  EXPECT_EQ(History(curve), "Baseline, Baseline Subtract, Baseline Subtract");
  EXPECT_THROW(CompactEval(curve.evals), std::runtime_error);
}

TEST(BaselineSubtraction, LeavesNoNegativeAmplitude) {
  for (std::uint32_t alg = 0; alg < 3; ++alg) {
    TestCurve curve = CurveOf(Sloping());
    RunCommand(Automatic(alg), curve);
    Subtract(curve);
    for (const double y : curve.yAxis) EXPECT_GE(y, 0.0) << alg;
  }
}

TEST(BaselineSubtraction, FailsOnABaselineOfAnotherLength) {
  TestCurve curve = WithBaseline("5 9 5", "1 2");
  const TestCurve before = curve;
  EXPECT_EQ(Subtract(curve), Failure(L"Unable to subtract baseline."));
  EXPECT_TRUE(curve == before);
}
