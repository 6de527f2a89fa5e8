#include <gtest/gtest.h>

#include <curve/FailingAllocations.h>
#include <curve/TestCurve.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/curve/Execute.h>
#include <cmath>
#include <limits>

using namespace TslBL;
using namespace tests;

namespace {

constexpr std::uint32_t kPoints = 400;

// Ripple of different height left and right, with a gap in the axis between them.
TestCurve Rippled() {
  std::vector<double> x, y;
  for (const double i : Count(kPoints)) {
    x.push_back(i < 200.0 ? i : i + 100.0);
    y.push_back(20.0 + std::fmod(i * i * 7.0, 5.0) * (i < 200.0 ? 1.0 : 6.0));
  }
  return CurveOf(y, x);
}

NoiseParams Automatic(std::uint32_t alg) {
  NoiseParams p;
  p.AlgAuto = static_cast<NoiseParams::AutoAlgs>(alg);
  p.SegSize = 40;
  p.Median = 5;
  p.Points = 7;
  p.Width = 2;
  return p;
}

NoiseParams Manual(double start, double end, NoiseParams::ManAlgs alg = NoiseParams::ManAlgs::PeakToPeak) {
  NoiseParams p;
  p.Auto = false;
  p.AlgMan = alg;
  p.Start = start;
  p.End = end;
  return p;
}

// The one value that manual noise gives to every point.
double ManualNoise(const NoiseParams& params, TestCurve curve) {
  EXPECT_EQ(RunCommand(params, curve), Success("noise"));
  EXPECT_EQ(curve.noise, std::vector<double>(curve.yAxis.size(), curve.noise.at(0)));
  return curve.noise[0];
}

}  // namespace

TEST(NoiseStep, CallsItsAlgorithm) {
  TestCurve in = Rippled();
  double* x = in.xAxis.data();
  double* y = in.yAxis.data();
  std::vector<double> expected[4];
  for (std::vector<double>& values : expected) values.resize(kPoints);
  TslMath::VFNoise(y, kPoints, 40, expected[0].data());
  TslMath::APBNoise(x, y, kPoints, 40, 0, expected[1].data());
  TslMath::APBNoise(x, y, kPoints, 40, 5, expected[2].data());
  TslMath::LinearFitSDNoise(y, kPoints, 40, 7, 2, expected[3].data());
  for (std::uint32_t alg = 0; alg < 4; ++alg) {
    TestCurve curve = Rippled();
    EXPECT_EQ(RunCommand(Automatic(alg), curve), Success("noise")) << alg;
    EXPECT_EQ(curve.noise, expected[alg]) << alg;
    EXPECT_EQ(curve.yAxis, in.yAxis) << alg;
    EXPECT_EQ(curve.xAxis, in.xAxis) << alg;
  }
  EXPECT_NE(expected[0], expected[3]);
  EXPECT_NE(expected[1], expected[2]);
}

TEST(NoiseStep, SetsItsStatusAndEntersTheHistory) {
  TestCurve curve = Rippled();
  RunCommand(Automatic(1), curve);
  EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_NOISE));
  EXPECT_EQ(curve.evals, (std::vector<CurveEval>{CurveEval(Automatic(1))}));
}

TEST(NoiseStep, FailsForAnAlgorithmThatDoesNotExist) {
  TestCurve curve = Rippled();
  EXPECT_EQ(RunCommand(Automatic(4), curve), Failure(L"Unable to noise."));
  EXPECT_FALSE(curve.CheckAnyStatus(Curve::STATUS_NOISE));
  EXPECT_EQ(History(curve), "");
}

TEST(NoiseStep, NeedsAnXForEachPointWhereItReadsX) {
  const struct {
    NoiseParams params;
    bool readsX;
  } rows[] = {{Automatic(0), false}, {Automatic(1), true},       {Automatic(2), true},
              {Automatic(3), false}, {Manual(0.0, 100.0), true}, {Manual(100.0, 0.0), true}};
  for (const auto& [params, readsX] : rows)
    for (const std::size_t points : {kPoints - 1, kPoints + 1, 1U}) {
      TestCurve curve = Rippled();
      curve.xAxis = Count(points);
      const TestCurve before = curve;
      EXPECT_EQ(RunCommand(params, curve), readsX ? Failure(L"Unable to noise.") : Success("noise"));
      EXPECT_EQ(curve.noise.size(), readsX ? before.noise.size() : kPoints);
    }
}

TEST(NoiseStep, GivesTheSameWhateverTheAxisThatItDoesNotRead) {
  for (const std::uint32_t alg : {0U, 3U}) {
    TestCurve paired = Rippled();
    TestCurve single = Rippled();
    single.xAxis = {1.0};
    RunCommand(Automatic(alg), paired);
    RunCommand(Automatic(alg), single);
    EXPECT_EQ(paired.noise, single.noise);
  }
}

TEST(NoiseStep, NeedsAnAxisThoughItDoesNotReadIt) {
  for (const NoiseParams& params : {Automatic(0), Automatic(3), Manual(0.0, 100.0)}) {
    TestCurve curve = Rippled();
    curve.xAxis.clear();
    EXPECT_EQ(RunCommand(params, curve), Failure(L"Unable to noise."));
  }
}

TEST(ManualNoise, OfTheWholeCurveNeedsNoXForEachPoint) {
  TestCurve curve = CurveOf("1 3 2 7 109", "1 2");
  curve.status = Curve::STATUS_Y;
  EXPECT_EQ(ManualNoise(Manual(1.0, 3.0), curve), 108.0);
}

TEST(ManualNoise, PeakToPeakPassesOverWhatIsNoNumber) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const std::vector<double> curves[] = {
      {kNaN, 1, 3, 2, 7}, {1, kNaN, 3, 2, 7}, {1, 3, 2, 7, kNaN}, {kNaN, kNaN, 7, kNaN, 1}};
  for (const std::vector<double>& y : curves) EXPECT_EQ(ManualNoise(Manual(4.0, 1.0), CurveOf(y)), 6.0);
}

TEST(ManualNoise, IsNaNWhereThereIsNoNumberToMeasure) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  for (const auto alg : {NoiseParams::ManAlgs::PeakToPeak, NoiseParams::ManAlgs::SixTimesSD}) {
    TestCurve curve = CurveOf(std::vector<double>{1, kNaN, kNaN, 2});
    EXPECT_EQ(RunCommand(Manual(1.0, 3.0, alg), curve), Success("noise"));
    for (const double noise : curve.noise) EXPECT_TRUE(std::isnan(noise));
    EXPECT_EQ(QSignalToNoise(9.0, 1.0, curve.noise[0]), 9e99);
  }
}

TEST(ManualNoise, IsTheSpanOfTheStretchWithoutItsLastPoint) {
  const TestCurve curve = CurveOf("100 1 3 2 7 50 -9");
  const struct {
    double start, end, noise;
  } rows[] = {
      {1.0, 4.0, 2.0},
      {1.0, 5.0, 6.0},
      // The stretch lies within its limits.
      {0.5, 4.5, 2.0},
      {1.5, 5.5, 5.0},
      {-10.0, 100.0, 99.0},
  };
  for (const auto& [start, end, noise] : rows)
    EXPECT_EQ(ManualNoise(Manual(start, end), curve), noise) << start << " to " << end;
}

TEST(ManualNoise, IsZeroForOnePoint) {
  EXPECT_EQ(ManualNoise(Manual(1.0, 2.0), CurveOf("100 1 3 2 7")), 0.0);
  EXPECT_EQ(ManualNoise(Manual(0.0, 0.0), CurveOf("100")), 0.0);
}

TEST(ManualNoise, IsThatOfTheWholeCurveForAnEmptyStretch) {
  const struct {
    double start, end;
  } rows[] = {{4.0, 1.0}, {2.0, 2.0}, {2.25, 2.75}, {0.0, 0.0}, {50.0, 60.0}, {-5.0, -1.0}};
  for (const auto& [start, end] : rows)
    EXPECT_EQ(ManualNoise(Manual(start, end), CurveOf("1 3 2 7 109")), 108.0) << start << " to " << end;
}

TEST(ManualNoise, IsThatOfTheWholeCurveWithoutAnXAxis) {
  TestCurve curve = CurveOf("1 3 2 7 109");
  curve.status = Curve::STATUS_Y;
  EXPECT_EQ(ManualNoise(Manual(1.0, 3.0), curve), 108.0);
}

TEST(ManualNoise, IsSixStandardDeviationsOfTheStretch) {
  const TestCurve curve = CurveOf("100 1 3 2 7 50");
  // Of 1, 3 and 2.
  EXPECT_DOUBLE_EQ(ManualNoise(Manual(1.0, 4.0, NoiseParams::ManAlgs::SixTimesSD), curve), 6.0);
  // Of all six: numpy.std([100, 1, 3, 2, 7, 50], ddof=1) * 6
  EXPECT_NEAR(ManualNoise(Manual(4.0, 1.0, NoiseParams::ManAlgs::SixTimesSD), curve), 242.0140491789681,
              1e-12);
}

TEST(ManualNoise, DoesNotLookAtTheAutomaticAlgorithm) {
  NoiseParams p = Automatic(4);
  p.Auto = false;
  TestCurve curve = Rippled();
  EXPECT_EQ(RunCommand(p, curve), Success("noise"));
}

TEST(ManualNoise, OfZeroGivesAHugeSignalToNoise) {
  TestCurve curve = CurveOf("5 5 5 5");
  RunCommand(Manual(0.0, 3.0), curve);
  EXPECT_EQ(QSignalToNoise(curve.yAxis[2], 0.0, curve.noise[2]), 9e99);
}

TEST(NoiseStep, ReportsItsExceptionsAsAMessage) {
  for (const NoiseParams& params : {Automatic(0), Automatic(3), Manual(0.0, 100.0)}) {
    TestCurve curve = Rippled();
    const FailingAllocations noMemory(kPoints * sizeof(double));
    EXPECT_EQ(RunCommand(params, curve), Failure(L"std::bad_alloc"));
    EXPECT_EQ(History(curve), "");
  }
}

TEST(ExecuteNoise, ReportsItsExceptionsAsAMessage) {
  TestCurve curve = Rippled();
  const FailingAllocations noMemory(kPoints * sizeof(double));
  EXPECT_EQ(RunOn(ExecuteNoise, curve), Failure(L"std::bad_alloc"));
  EXPECT_FALSE(curve.CheckAnyStatus(Curve::STATUS_NOISE));
}
