// Description, seen through peak detection: sampled curves of known shape against what
// their formulas give. The fitted curve goes through a parabola or a cubic exactly; on a
// Gaussian of ten points at half height it is right to 1e-4 points and 1e-5 of the area.

#include <detect/PeakCurves.h>
#include <cmath>
#include <functional>
#include <numbers>

using namespace TslBL;
using namespace tests;

namespace {

using Shape = std::function<double(double idx)>;

// 100 high, 9 to 10 points wide at 0.
Shape Parabola(double centre) {
  return [centre](double i) { return 100.0 - 4.0 * (i - centre) * (i - centre); };
}
Shape Cubic(double centre) {
  return [centre](double i) {
    const double t = i - centre;
    return 100.0 - 4.0 * t * t + 0.25 * t * t * t;
  };
}
Shape Gaussian(double height, double centre, double sigma) {
  return [=](double i) { return height * std::exp(-0.5 * std::pow((i - centre) / sigma, 2)); };
}

TestCurve Sampled(const Shape& shape, int n) {
  std::vector<double> y;
  for (int i = 0; i < n; ++i) y.push_back(shape(i));
  return PeakCurve(y);
}

TestCurve WithTop(TestCurve curve, double retention) {
  curve.peakDetectParams.RetentionType = PeakDetectParams::CentroidTopPercent;
  curve.peakDetectParams.Retention = retention;
  return curve;
}

TestCurve WithPeakTop(TestCurve curve) {
  curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  return curve;
}

PeakInfo Described(TestCurve curve) {
  EXPECT_TRUE(Detect(curve).ok);
  EXPECT_EQ(curve.peaks.size(), 1u);
  return curve.peaks.empty() ? PeakInfo() : curve.peaks[0];
}

// By Simpson's rule.
double Integral(const Shape& f, double from, double to) {
  constexpr int kPanels = 2000;
  const double h = (to - from) / kPanels;
  double sum = f(from) + f(to);
  for (int k = 1; k < kPanels; ++k) sum += (k % 2 == 1 ? 4.0 : 2.0) * f(from + k * h);
  return sum * h / 3.0;
}

// Where f crosses the level between a point below and a point above it.
double Crossing(const Shape& f, double level, double below, double above) {
  for (int k = 0; k < 200; ++k) (f((below + above) / 2) < level ? below : above) = (below + above) / 2;
  return (below + above) / 2;
}

struct Exact {
  double start, end, centroid, area;
};

// Of the part of the peak above the level. The axis is straight between two points.
Exact ExactPart(const Shape& f, double top, double level, double baseline, double left, double right,
                const std::vector<double>& axis) {
  Exact e{};
  e.start = Crossing(f, level, left, top);
  e.end = Crossing(f, level, right, top);
  e.centroid = Integral([&f](double i) { return i * f(i); }, e.start, e.end) / Integral(f, e.start, e.end);
  for (double i = std::floor(e.start); i < e.end; ++i) {
    const auto k = static_cast<std::size_t>(i);
    e.area += Integral([&f, baseline](double t) { return f(t) - baseline; }, std::max(e.start, i),
                       std::min(e.end, i + 1)) *
              (axis[k + 1] - axis[k]);
  }
  return e;
}

void ExpectPart(const PeakInfo& p, const Shape& f, const Exact& e, double tolerance) {
  EXPECT_NEAR(p.areaStartIdx, e.start, tolerance);
  EXPECT_NEAR(p.areaEndIdx, e.end, tolerance);
  EXPECT_NEAR(p.centroidIdx, e.centroid, tolerance);
  EXPECT_NEAR(p.centroidAmpl, f(e.centroid), tolerance * p.maxAmpl);
  EXPECT_NEAR(p.area, e.area, tolerance * e.area);
}

constexpr double kExact = 1e-9;

}  // namespace

TEST(DescribePeaks, MaximumLiesBetweenThePoints) {
  const PeakInfo p = Described(Sampled(Parabola(5.3), 13));
  EXPECT_NEAR(p.maxIdx, 5.3, kExact);
  EXPECT_NEAR(p.maxAmpl, 100.0, kExact);
  EXPECT_EQ(p.apexIdx, 5u);
  EXPECT_DOUBLE_EQ(p.apexAmpl, 100.0 - 4.0 * 0.3 * 0.3);
}

TEST(DescribePeaks, HalfHeightIsHalfwayBetweenBaselineAndMaximum) {
  TestCurve curve = Sampled(Parabola(5.3), 13);
  PeakInfo p = Described(curve);
  EXPECT_NEAR(p.halfHeightLeftIdx, 5.3 - std::sqrt(12.5), kExact);
  EXPECT_NEAR(p.halfHeightRightIdx, 5.3 + std::sqrt(12.5), kExact);
  curve.baseline.assign(13, 20.0);  // halfway: 60
  p = Described(curve);
  EXPECT_NEAR(p.halfHeightLeftIdx, 5.3 - std::sqrt(10.0), kExact);
  EXPECT_NEAR(p.halfHeightRightIdx, 5.3 + std::sqrt(10.0), kExact);
}

TEST(DescribePeaks, HalfHeightCountsFromTheBaselineAtTheApex) {
  TestCurve curve = Sampled(Parabola(5.3), 13);
  curve.baseline[5] = 20.0;
  const PeakInfo p = Described(curve);
  EXPECT_NEAR(p.halfHeightRightIdx - p.halfHeightLeftIdx, 2.0 * std::sqrt(10.0), kExact);
}

TEST(DescribePeaks, CentroidAndAreaTakeThePercentageCountedFromTheTop) {
  for (const double retention : {1.0, 25.0, 75.0, 99.0}) {
    SCOPED_TRACE(retention);
    const TestCurve curve = WithTop(Sampled(Cubic(5.9), 15), retention);
    const PeakInfo p = Described(curve);
    const double level = 100.0 - retention;
    EXPECT_NEAR(p.areaIntercept, level, kExact);
    ExpectPart(p, Cubic(5.9), ExactPart(Cubic(5.9), 5.9, level, 0.0, 0.0, 13.0, curve.xAxis), 1e-8);
  }
}

TEST(DescribePeaks, ThePercentageIsOfTheHeightAboveTheBaselineAtTheApex) {
  TestCurve curve = WithTop(Sampled(Cubic(5.9), 15), 75.0);
  curve.baseline.assign(15, 10.0);
  const PeakInfo p = Described(curve);
  EXPECT_NEAR(p.areaIntercept, 100.0 - 0.75 * 90.0, kExact);
  ExpectPart(p, Cubic(5.9), ExactPart(Cubic(5.9), 5.9, 32.5, 10.0, 0.0, 13.0, curve.xAxis), 1e-8);
}

TEST(DescribePeaks, AboveNinetyNinePercentTheWholePeakCounts) {
  for (const double retention : {99.001, 99.5, 100.0, 250.0}) {
    TestCurve curve = WithTop(Sampled(Parabola(5.3), 13), retention);
    curve.baseline.assign(13, 4.0);
    EXPECT_EQ(Described(curve).areaIntercept, 4.0) << retention;
  }
}

TEST(DescribePeaks, AHundredPercentIsAsPeakTop) {
  TestCurve curve = Sampled(Cubic(5.9), 15);
  curve.baseline.assign(15, 4.0);
  PeakInfo whole = Described(WithTop(curve, 100.0));
  PeakInfo top = Described(WithPeakTop(curve));
  EXPECT_FALSE(whole.useMax);
  EXPECT_TRUE(top.useMax);
  whole.useMax = top.useMax;
  EXPECT_EQ(Bits(whole), Bits(top));
}

TEST(DescribePeaks, PeakTopTakesTheWholePeakWhateverThePercentage) {
  TestCurve curve = WithPeakTop(Sampled(Cubic(5.9), 15));
  curve.peakDetectParams.Retention = 25.0;
  const PeakInfo p = Described(curve);
  EXPECT_EQ(p.areaIntercept, 0.0);
  ExpectPart(p, Cubic(5.9), ExactPart(Cubic(5.9), 5.9, 0.0, 0.0, 0.0, 13.0, curve.xAxis), 1e-8);
}

TEST(DescribePeaks, NothingOfThePeakHasNoArea) {
  const PeakInfo p = Described(WithTop(Sampled(Parabola(5.3), 13), 0.0));
  EXPECT_EQ(p.area, 0.0);
  EXPECT_NEAR(p.centroidIdx, 5.3, kExact);
}

TEST(DescribePeaks, BaselineIsInterpolatedAtTheCentroid) {
  TestCurve curve = Sampled(Parabola(5.3), 13);
  for (std::size_t i = 0; i < 13; ++i) curve.baseline[i] = 1.0 + 0.5 * static_cast<double>(i);
  const PeakInfo p = Described(curve);
  EXPECT_NEAR(p.baselineAmpl, 3.65, kExact);
  EXPECT_EQ(p.maxBaseline, p.baselineAmpl);
}

// A skewed peak has its centroid beside its maximum.
TEST(DescribePeaks, BaselineOnASlopeIsThatAtTheCentroidOfASkewedPeak) {
  TestCurve curve = WithTop(Sampled(Cubic(5.9), 15), 99.0);
  for (std::size_t i = 0; i < 15; ++i) curve.baseline[i] = 0.5 * static_cast<double>(i);
  for (const auto type : {PeakDetectParams::CentroidTopPercent, PeakDetectParams::PeakTop}) {
    curve.peakDetectParams.RetentionType = type;
    const PeakInfo p = Described(curve);
    ASSERT_GT(std::abs(p.centroidIdx - p.maxIdx), 0.05);
    EXPECT_NEAR(p.baselineAmpl, 0.5 * p.centroidIdx, kExact);
    EXPECT_EQ(p.maxBaseline, p.baselineAmpl);
  }
}

TEST(DescribePeaks, NearAPointTheBaselineIsThatOfThePoint) {
  for (const auto& [centre, expected] : {std::pair{6.0, 7.0},
                                         {6.009, 7.0},
                                         {5.991, 7.0},
                                         {6.02, 7.0 - 0.02 * 7.0},
                                         {5.98, 7.0 - 0.02 * 7.0}}) {
    TestCurve curve = Sampled(Parabola(centre), 13);
    curve.baseline[6] = 7.0;
    EXPECT_NEAR(Described(curve).baselineAmpl, expected, kExact) << centre;
  }
}

TEST(DescribePeaks, TheAreaStandsOnTheBaselineAtTheCentroid) {
  TestCurve curve = WithTop(Sampled(Parabola(5.3), 13), 75.0);
  curve.baseline[6] = 10.0;  // 3 at 5.3; the level is counted from 0, at the apex 5
  const PeakInfo p = Described(curve);
  EXPECT_NEAR(p.areaIntercept, 25.0, kExact);
  const double half = std::sqrt(75.0 / 4.0);
  EXPECT_NEAR(p.area, 2.0 * (97.0 * half - 4.0 * half * half * half / 3.0), 1e-8);
}

TEST(DescribePeaks, NoiseIsThatOfThePointBelowThePosition) {
  TestCurve curve = WithTop(Sampled(Cubic(5.9), 15), 99.0);
  curve.noise = Count(15);
  const PeakInfo p = Described(curve);
  ASSERT_GT(p.centroidIdx, 6.0);
  EXPECT_EQ(p.noiseAmpl, 6.0) << "at the centroid";
  EXPECT_EQ(Described(WithPeakTop(curve)).noiseAmpl, 5.0) << "at the maximum";
}

TEST(DescribePeaks, TheXAxisScalesTheAreaAndNothingElse) {
  TestCurve curve = Sampled(Cubic(5.9), 15);
  const PeakInfo byIndex = Described(curve);
  for (double& x : curve.xAxis) x = 400.5 + 0.05 * x;
  PeakInfo p = Described(curve);
  EXPECT_NEAR(p.area, 0.05 * byIndex.area, 1e-9);
  p.area = byIndex.area;
  EXPECT_EQ(Bits(p), Bits(byIndex));
}

TEST(DescribePeaks, TheXAxisMayBeUneven) {
  TestCurve curve = WithTop(Sampled(Cubic(5.9), 15), 60.0);
  for (double& x : curve.xAxis) x = 100.0 + 0.3 * x + 0.07 * x * x;
  ExpectPart(Described(curve), Cubic(5.9), ExactPart(Cubic(5.9), 5.9, 40.0, 0.0, 0.0, 13.0, curve.xAxis),
             1e-8);
}

TEST(DescribePeaks, AGaussianHasItsWidthAtHalfHeight) {
  const double sigma = 10.0 / std::sqrt(8.0 * std::numbers::ln2);
  for (const double centre : {50.0, 50.1, 50.37, 50.5, 50.99}) {
    SCOPED_TRACE(centre);
    const PeakInfo p = Described(Sampled(Gaussian(1000.0, centre, sigma), 101));
    EXPECT_NEAR(p.maxIdx, centre, 0.003);
    EXPECT_NEAR(p.maxAmpl, 1000.0, 0.1);
    EXPECT_NEAR(p.halfHeightRightIdx - p.halfHeightLeftIdx, 10.0, 3e-3);
  }
}

TEST(DescribePeaks, AGaussianHasItsCentroidInTheMiddleAndItsAreaBetweenTheCrossings) {
  const double sigma = 10.0 / std::sqrt(8.0 * std::numbers::ln2);
  for (const double centre : {50.0, 50.37, 50.5}) {
    for (const double retention : {25.0, 75.0, 95.0}) {
      SCOPED_TRACE(testing::Message() << "centre " << centre << ", top " << retention << " %");
      const PeakInfo p = Described(WithTop(Sampled(Gaussian(1000.0, centre, sigma), 101), retention));
      // The part above the fraction q of the height reaches z = sqrt(-2 ln q) sigmas far.
      const double z = std::sqrt(-2.0 * std::log(1.0 - retention / 100.0));
      EXPECT_NEAR(p.areaStartIdx, centre - z * sigma, 2e-3);
      EXPECT_NEAR(p.areaEndIdx, centre + z * sigma, 2e-3);
      EXPECT_NEAR(p.centroidIdx, centre, 1e-3);
      const double area = 1000.0 * sigma * std::sqrt(2.0 * std::numbers::pi) * std::erf(z / std::sqrt(2.0));
      EXPECT_NEAR(p.area, area, 3e-4 * area);
    }
  }
}

TEST(DescribePeaks, AWholeGaussianHasItsWholeArea) {
  const double sigma = 10.0 / std::sqrt(8.0 * std::numbers::ln2);
  const PeakInfo p = Described(WithPeakTop(Sampled(Gaussian(1000.0, 50.37, sigma), 101)));
  const double area = 1000.0 * sigma * std::sqrt(2.0 * std::numbers::pi);
  EXPECT_NEAR(p.area, area, 1e-5 * area);
}

TEST(DescribePeaks, WidthInXUnitsIsThatOfTheGaussianOnAFractionalAxis) {
  const double sigma = 10.0 / std::sqrt(8.0 * std::numbers::ln2);
  TestCurve curve = Sampled(Gaussian(1000.0, 50.37, sigma), 101);
  for (double& x : curve.xAxis) x = 499.75 + 0.07 * x;
  ASSERT_TRUE(Detect(curve).ok);
  const CurvePeak t = TranslateCurvePeak(curve, 0);
  EXPECT_NEAR(t.CentroidX, 499.75 + 0.07 * 50.37, 1e-4);
  EXPECT_NEAR(t.Width, 0.7, 3e-4);
  EXPECT_DOUBLE_EQ(t.Resolution, t.CentroidX / t.Width);
}

TEST(DescribePeaks, AFeatureOfTwoPointsIsDropped) {
  EXPECT_EQ(SpansFound(PeakCurve("9 5 0 0 0 4 0")), "0-0-2 4-5-6");
  EXPECT_EQ(SpansFound(PeakCurve("9 0 0 0 0 4 0")), "4-5-6");
  TestCurve curve = PeakCurve("9 0 0 0 0 4 0");
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(curve.largestAreaIdx, 0);
  EXPECT_EQ(curve.largestMaxIdx, 0);
}

TEST(DescribePeaks, WhereEveryFeatureIsDroppedTheTableIsEmpty) {
  TestCurve curve = PeakCurve("9 0 0 0 0");
  EXPECT_EQ(Detect(curve), Success("peaks"));
  EXPECT_TRUE(curve.peaks.empty());
  EXPECT_EQ(curve.largestMaxIdx, -1);
}

TEST(DescribePeaks, OverlapGroupsStartAsNone) {
  EXPECT_EQ(Described(Sampled(Parabola(5.3), 13)).overlapGroup, NoOverlapGroupId);
}
