#include <tslbl/curve/PeakArea.h>

#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <cmath>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

// A table of one peak between two points.
TestCurve WithPeak(TestCurve curve, std::uint32_t start, std::uint32_t end) {
  PeakInfo peak;
  peak.startIdx = start;
  peak.endIdx = end;
  curve.peaks.push_back(peak);
  return curve;
}

}  // namespace

TEST(WholePeakArea, IsWhatLiesBetweenTheLimits) {
  EXPECT_EQ(QWholePeakArea(WithPeak(CurveOf("9 0 2 4 2 0 9"), 1, 5), 0), 8.0);
}

TEST(WholePeakArea, CountsFromTheBaseline) {
  TestCurve curve = WithPeak(CurveOf("9 1 3 5 3 1 9"), 1, 5);
  curve.baseline = Values("1 1 1 1 1 1 1");
  EXPECT_EQ(QWholePeakArea(curve, 0), 8.0);
}

TEST(WholePeakArea, FollowsAnUnevenAxis) {
  TestCurve curve = WithPeak(CurveOf("0 4 0"), 0, 2);
  curve.xAxis = Values("10 11 13");
  EXPECT_EQ(QWholePeakArea(curve, 0), 2.0 + 4.0);
}

TEST(WholePeakArea, OfASinglePointIsZero) {
  EXPECT_EQ(QWholePeakArea(WithPeak(CurveOf("0 4 0"), 1, 1), 0), 0.0);
}

TEST(WholePeakArea, OfAGaussianIsItsIntegral) {
  TestCurve curve = CurveOf("");
  for (int i = 0; i < 101; ++i) {
    curve.xAxis.push_back(0.05 * i);
    curve.yAxis.push_back(1000.0 * std::exp(-0.5 * std::pow((i - 50) / 5.0, 2)));
  }
  EXPECT_NEAR(QWholePeakArea(WithPeak(curve, 0, 100), 0), 1000.0 * 0.25 * std::sqrt(2.0 * M_PI), 1e-6);
}

TEST(WholePeakArea, IsZeroForLimitsThatAreNotOnTheCurve) {
  EXPECT_EQ(QWholePeakArea(WithPeak(CurveOf("0 4 0"), 0, 3), 0), 0.0);
}

TEST(WholePeakArea, NeedsARowOfTheTable) {
  EXPECT_THROW(QWholePeakArea(WithPeak(CurveOf("0 4 0"), 0, 2), 1), std::out_of_range);
}
