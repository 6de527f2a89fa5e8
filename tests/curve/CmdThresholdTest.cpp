#include <gtest/gtest.h>

#include <curve/TestCurve.h>

using namespace TslBL;
using namespace tests;

namespace {

ThresholdParams At(double value) {
  ThresholdParams p;
  p.Value = value;
  return p;
}

TestCurve WithThreshold(const std::string& y, double value) {
  TestCurve curve = CurveOf(y);
  EXPECT_EQ(RunCommand(At(value), curve), Success("threshold"));
  return curve;
}

Outcome Subtract(TestCurve& curve) { return RunCommand(CurveEval::ThresholdSubtract(), curve); }

}  // namespace

TEST(ThresholdStep, ChangesNoAmplitude) {
  const TestCurve curve = WithThreshold("-1 0 5 9", 5.0);
  EXPECT_EQ(curve.yAxis, Values("-1 0 5 9"));
  EXPECT_EQ(curve.thresholdParams, At(5.0));
}

TEST(ThresholdStep, SetsItsStatusAndEntersTheHistory) {
  const TestCurve curve = WithThreshold("-1 0 5 9", 5.0);
  EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_THRESHOLD));
  EXPECT_EQ(curve.evals, (std::vector<CurveEval>{CurveEval(At(5.0))}));
}

TEST(ThresholdStep, SucceedsOnAnEmptyCurve) {
  TestCurve curve;
  EXPECT_EQ(RunCommand(At(5.0), curve), Success("threshold"));
  EXPECT_EQ(curve.status, Curve::STATUS_THRESHOLD);
}

TEST(ThresholdSubtraction, LeavesWhatStandsAboveTheThreshold) {
  const struct {
    const char* y;
    double threshold;
    const char* left;
  } rows[] = {{"-1 0 5 9 5.5", 5.0, "0 0 0 4 0.5"},
              {"-1 0 5 9", 0.0, "0 0 5 9"},
              {"-3 -2 0 9", -2.0, "0 0 2 11"},
              {"1 2", 3.0, "0 0"}};
  for (const auto& [y, threshold, left] : rows) {
    TestCurve curve = WithThreshold(y, threshold);
    EXPECT_EQ(Subtract(curve), Success("yAxis threshold"));
    EXPECT_EQ(curve.yAxis, Values(left)) << y;
  }
}

TEST(ThresholdSubtraction, LeavesAThresholdOfZeroAndItsStatus) {
  TestCurve curve = WithThreshold("1 5 9", 5.0);
  const std::uint32_t status = curve.status;
  Subtract(curve);
  EXPECT_EQ(curve.thresholdParams.Value, 0.0);
  EXPECT_EQ(curve.status, status);
}

TEST(ThresholdSubtraction, EntersTheHistoryBehindTheThresholdAsItWas) {
  TestCurve curve = WithThreshold("1 5 9", 5.0);
  Subtract(curve);
  EXPECT_EQ(curve.evals,
            (std::vector<CurveEval>{CurveEval(At(5.0)), CurveEval(CurveEval::ThresholdSubtract())}));
}

TEST(ThresholdSubtraction, OnlyClipsTheSecondTime) {
  TestCurve curve = WithThreshold("1 5 9", 5.0);
  Subtract(curve);
  curve.yAxis.push_back(-2.0);
  EXPECT_EQ(Subtract(curve), Success("yAxis threshold"));
  EXPECT_EQ(curve.yAxis, Values("0 0 4 0"));
  EXPECT_EQ(History(curve), "Threshold, Threshold Subtract, Threshold Subtract");
}

TEST(ThresholdSubtraction, FailsWithoutAThreshold) {
  TestCurve curve = CurveOf("1 5 9");
  const TestCurve before = curve;
  EXPECT_EQ(Subtract(curve), Failure(L"Unable to subtract threshold."));
  EXPECT_TRUE(curve == before);
}
