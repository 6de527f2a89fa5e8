// Tests: LevenbergMarquardt.cpp, HookeJeeves.cpp.
#include <tslbl/closed/math/overlap/LevenbergMarquardt.h>

#include <gtest/gtest.h>

#include <tslbl/closed/math/overlap/HookeJeeves.h>

#include <cmath>

using namespace TslMath;

namespace {

enum class Method { LevenbergMarquardt, HookeJeeves };

PeakSum TwoPeaks(double skew) {
  PeakSum sum;
  sum.heights = {100, 60};
  sum.tops = {30, 41};
  sum.widths = {5, 5};
  sum.skew = skew;
  sum.baseline = 4;
  return sum;
}

struct Fits : testing::TestWithParam<Method> {
  explicit Fits() {
    start.heights = {0.5, 0.5};
    start.tops = {28.5, 42};
    start.widths = {4, 4};
  }

  // Of the curve of the sum, without noise.
  bool Fit(const PeakSum& truth, const FreeTerms& free) {
    std::vector<double> x, y;
    for (int i = 0; i < 70; ++i) {
      x.push_back(i);
      y.push_back(truth.At(i));
    }
    GroupSamples samples(x, y);
    samples.WeighBy(samples.Amplitudes());
    scale = samples.Scale();
    EquationBuilder builder(samples, 2);
    const FitTask task(builder, limits, TermOrder(2, free), {});
    if (GetParam() == Method::HookeJeeves) return HookeJeeves().Fit(task, start, 1e-6);
    FitEquations equations;
    return LevenbergMarquardt().Fit(task, start, equations, 1e-12);
  }

  FitLimits limits{.tops = {28.5, 42}, .reach = 6, .leastWidth = 1, .greatestWidth = 15};
  PeakSum start;
  double scale = 1;
};

INSTANTIATE_TEST_SUITE_P(Methods, Fits, testing::Values(Method::LevenbergMarquardt, Method::HookeJeeves),
                         [](const auto& method) {
                           return method.param == Method::HookeJeeves ? "HookeJeeves" : "LevenbergMarquardt";
                         });

TEST_P(Fits, FindTheSumThatACurveIs) {
  for (const double skew : {0.0, 0.15}) {
    start = PeakSum{{0.5, 0.5}, {28.5, 42}, {4, 4}};
    ASSERT_TRUE(Fit(TwoPeaks(skew), {true, FreeTerms::Widths::Shared, true, true}));
    EXPECT_NEAR(start.tops[0], 30, 1e-4);
    EXPECT_NEAR(start.tops[1], 41, 1e-4);
    EXPECT_NEAR(start.widths[0], 5, 1e-4);
    EXPECT_NEAR(start.heights[1] * scale, 60, 1e-2);
    EXPECT_NEAR(start.skew, skew, 1e-4);
    EXPECT_NEAR(start.baseline * scale, 4, 1e-2);
  }
}

TEST_P(Fits, GiveEachPeakItsOwnWidth) {
  PeakSum truth = TwoPeaks(0);
  truth.widths = {4, 6};
  ASSERT_TRUE(Fit(truth, {true, FreeTerms::Widths::Own, false, true}));
  EXPECT_NEAR(start.widths[0], 4, 1e-3);
  EXPECT_NEAR(start.widths[1], 6, 1e-3);
}

TEST_P(Fits, StayWithinTheLimits) {
  limits.reach = 0.5;
  limits.greatestWidth = 4.5;
  ASSERT_TRUE(Fit(TwoPeaks(0), {}));
  EXPECT_NEAR(start.tops[0], 29, 0.01);
  EXPECT_NEAR(start.widths[0], 4.5, 0.1);
  EXPECT_LE(start.widths[0], 4.5);
}

TEST_P(Fits, LeaveAPeakThatIsNotThereAtZero) {
  PeakSum truth = TwoPeaks(0);
  truth.heights[1] = 0;
  Fit(truth, {});
  EXPECT_NEAR(start.heights[0] * scale, 100, 0.1);
  EXPECT_NEAR(start.heights[1] * scale, 0, 0.1);
}

}  // namespace
