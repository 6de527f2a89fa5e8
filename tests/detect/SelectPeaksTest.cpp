// Selection, seen through peak detection.

#include <detect/PeakCurves.h>
#include <cmath>
#include <limits>

using namespace TslBL;
using namespace tests;

namespace {

// Parabolas of the given heights, ten points wide at the baseline, one after the other; the
// fitted curve goes through their points exactly at the top.
TestCurve Parabolas(const std::vector<double>& heights) {
  std::vector<double> y = {0.0};
  for (const double height : heights) {
    for (int i = -4; i <= 4; ++i) y.push_back(height * (1.0 - i * i / 25.0));
    y.push_back(0.0);
  }
  TestCurve curve = PeakCurve(y);
  curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  return curve;
}

std::size_t Apex(std::size_t peak) { return 5 + 10 * peak; }

// The heights of the peaks that are left.
std::vector<double> Kept(TestCurve curve) {
  EXPECT_EQ(Detect(curve), Success("peaks"));
  std::vector<double> heights;
  for (const PeakInfo& p : curve.peaks) heights.push_back(p.apexAmpl);
  return heights;
}

// The rows as described, with no limit in use.
std::vector<PeakInfo> Described(TestCurve curve) {
  PeakDetectParams& p = curve.peakDetectParams;
  p.SNInUse = p.ThresholdInUse = p.RelAmplInUse = p.AbsAreaInUse = p.RelAreaInUse = false;
  p.FWHMGTInUse = p.FWHMLTInUse = false;
  EXPECT_TRUE(Detect(curve).ok);
  return curve.peaks;
}

double Next(double value) { return std::nextafter(value, std::numeric_limits<double>::infinity()); }
double Before(double value) { return std::nextafter(value, -std::numeric_limits<double>::infinity()); }

using Heights = std::vector<double>;

}  // namespace

TEST(SelectPeaks, WithoutALimitKeepsAll) {
  EXPECT_EQ(Kept(Parabolas({100, 40, 70})), (Heights{100, 40, 70}));
}

TEST(SelectPeaks, ASignalToNoiseRatioAtTheLimitPasses) {
  TestCurve curve = Parabolas({100, 100});
  curve.peakDetectParams.SNInUse = true;
  curve.peakDetectParams.SN = 4;
  curve.noise[Apex(0)] = 25.0;
  curve.noise[Apex(1)] = Next(25.0);
  TestCurve run = curve;
  ASSERT_TRUE(Detect(run).ok);
  EXPECT_EQ(Spans(run.peaks), "0-5-10");
}

TEST(SelectPeaks, SignalToNoiseCountsFromTheBaselineAtThePoint) {
  TestCurve curve = Parabolas({100});
  curve.peakDetectParams.SNInUse = true;
  curve.noise[Apex(0)] = 20.0;
  curve.baseline[Apex(0)] = 20.0;
  EXPECT_EQ(Kept(curve), Heights{100}) << "(100 - 20) / 20 = 4";
  curve.baseline[Apex(0)] = 20.5;
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, WithoutNoiseTheRatioIsBeyondAnyLimit) {
  TestCurve curve = Parabolas({100});
  curve.peakDetectParams.SNInUse = true;
  curve.peakDetectParams.SN = std::numeric_limits<std::uint32_t>::max();
  curve.noise.assign(curve.noise.size(), 0.0);
  EXPECT_EQ(Kept(curve), Heights{100});
  curve.noise[Apex(0)] = 1e-8;  // counts: 100 / 1e-8 = 1e10
  EXPECT_EQ(Kept(curve), Heights{100});
  curve.noise[Apex(0)] = 1e-7;  // 1e9 < 4294967295
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, TheFractionOfAPositionDoesNotCountForItsNoise) {
  TestCurve curve = PeakCurve("0 1 6 9.5 10 8 3 0");
  curve.peakDetectParams.RetentionType = PeakDetectParams::PeakTop;
  const double position = Described(curve).at(0).maxIdx;
  ASSERT_GT(position, 3.5);
  ASSERT_LT(position, 4.0);
  curve.peakDetectParams.SNInUse = true;
  curve.noise[4] = 1e6;
  EXPECT_EQ(Kept(curve), Heights{10});
  curve.noise[3] = 1e6;
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, AnAmplitudeAtTheThresholdPasses) {
  TestCurve curve = Parabolas({100, 40});
  curve.peakDetectParams.ThresholdInUse = true;
  curve.AddStatus(Curve::STATUS_THRESHOLD);
  curve.thresholdParams.Value = 40.0;
  EXPECT_EQ(Kept(curve), (Heights{100, 40}));
  curve.thresholdParams.Value = Next(40.0);
  EXPECT_EQ(Kept(curve), Heights{100});
}

TEST(SelectPeaks, RelativeAmplitudeIsAPercentageOfTheTallestPeak) {
  TestCurve curve = Parabolas({40, 100, 50});
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 50.0;
  EXPECT_EQ(Kept(curve), (Heights{100, 50}));
  curve.peakDetectParams.RelAmpl = 50.001;
  EXPECT_EQ(Kept(curve), Heights{100});
  curve.peakDetectParams.RelAmpl = 100.1;
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, ByCentroidTheAmplitudeIsThatOfTheCentroid) {
  // An uneven peak: its centroid is lower than its top.
  TestCurve curve = PeakCurve("0 9 10 7 5 4 3 2 1 0");
  curve.peakDetectParams.Retention = 100.0;
  const PeakInfo row = Described(curve).at(0);
  ASSERT_LT(row.centroidAmpl, 8.0);
  curve.peakDetectParams.ThresholdInUse = true;
  curve.AddStatus(Curve::STATUS_THRESHOLD);
  curve.thresholdParams.Value = row.centroidAmpl;
  EXPECT_EQ(Kept(curve), Heights{10});
  curve.thresholdParams.Value = Next(row.centroidAmpl);
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, ByCentroidTheReferenceIsTheLargestCentroidAmplitude) {
  // The first peak has the higher top, the second the higher centroid.
  TestCurve curve = PeakCurve("0 9 10 7 5 4 3 2 1 0 0 6 8.5 9 8.5 6 0");
  curve.peakDetectParams.Retention = 100.0;
  const std::vector<PeakInfo> rows = Described(curve);
  ASSERT_EQ(rows.size(), 2u);
  ASSERT_GT(rows[0].maxAmpl, rows[1].maxAmpl);
  ASSERT_LT(rows[0].centroidAmpl, rows[1].centroidAmpl);
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 99.9;
  EXPECT_EQ(Kept(curve), Heights{9});
}

TEST(SelectPeaks, AnAreaAtTheLimitPasses) {
  TestCurve curve = Parabolas({100, 40});
  const double area = Described(curve).at(1).area;
  curve.peakDetectParams.AbsAreaInUse = true;
  curve.peakDetectParams.AbsArea = area;
  EXPECT_EQ(Kept(curve), (Heights{100, 40}));
  curve.peakDetectParams.AbsArea = Next(area);
  EXPECT_EQ(Kept(curve), Heights{100});
}

TEST(SelectPeaks, RelativeAreaIsAPercentageOfTheLargestArea) {
  TestCurve curve = Parabolas({40, 100, 51});
  curve.peakDetectParams.RelAreaInUse = true;
  curve.peakDetectParams.RelArea = 50.0;
  EXPECT_EQ(Kept(curve), (Heights{100, 51}));
  curve.peakDetectParams.RelArea = 100.1;
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, AWidthAtEitherLimitPasses) {
  TestCurve curve = Parabolas({100});
  const PeakInfo row = Described(curve).at(0);
  const double width = row.halfHeightRightIdx - row.halfHeightLeftIdx;
  PeakDetectParams& p = curve.peakDetectParams;
  p.FWHMGTInUse = p.FWHMLTInUse = true;
  p.FWHMGT = p.FWHMLT = width;
  EXPECT_EQ(Kept(curve), Heights{100});
  p.FWHMGT = Next(width);
  EXPECT_EQ(Kept(curve), Heights{}) << "too narrow";
  p.FWHMGT = p.FWHMLT = Before(width);
  EXPECT_EQ(Kept(curve), Heights{}) << "too wide";
}

TEST(SelectPeaks, EachWidthLimitStandsAlone) {
  TestCurve curve = Parabolas({100});  // about seven points wide at half height
  curve.peakDetectParams.FWHMGTInUse = true;
  curve.peakDetectParams.FWHMGT = 2.0;
  curve.peakDetectParams.FWHMLT = 3.0;
  EXPECT_EQ(Kept(curve), Heights{100});
  curve.peakDetectParams.FWHMGTInUse = false;
  curve.peakDetectParams.FWHMLTInUse = true;
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, WidthLimitsThatExcludeEachOtherKeepNothing) {
  TestCurve curve = Parabolas({100, 40});
  curve.peakDetectParams.FWHMGTInUse = curve.peakDetectParams.FWHMLTInUse = true;
  curve.peakDetectParams.FWHMGT = 7.5;
  curve.peakDetectParams.FWHMLT = 6.5;
  EXPECT_EQ(Kept(curve), Heights{});
}

TEST(SelectPeaks, WidthsAreInUnitsOfTheXAxis) {
  TestCurve curve = Parabolas({100, 100});
  // Behind the first peak the points lie ten times as far apart.
  for (std::size_t i = 11; i < curve.xAxis.size(); ++i) curve.xAxis[i] = curve.xAxis[i - 1] + 10.0;
  curve.peakDetectParams.FWHMGTInUse = true;
  curve.peakDetectParams.FWHMGT = 20.0;
  TestCurve run = curve;
  ASSERT_TRUE(Detect(run).ok);
  EXPECT_EQ(Spans(run.peaks), "10-15-20");
}

TEST(SelectPeaks, RelativeLimitsReferToTheLargestPeakEvenIfThatOneFails) {
  TestCurve curve = Parabolas({100, 40, 60});
  curve.peakDetectParams.SNInUse = true;
  curve.noise[Apex(0)] = 1000.0;
  EXPECT_EQ(Kept(curve), (Heights{40, 60}));
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 50.0;
  EXPECT_EQ(Kept(curve), Heights{60});
  curve.peakDetectParams.RelAmplInUse = false;
  curve.peakDetectParams.RelAreaInUse = true;
  curve.peakDetectParams.RelArea = 50.0;
  EXPECT_EQ(Kept(curve), Heights{60});
}

TEST(SelectPeaks, WhereAllFailTheTableIsEmptyAndTheStepASuccess) {
  TestCurve curve = Parabolas({100, 40});
  curve.peakDetectParams.AbsAreaInUse = true;
  curve.peakDetectParams.AbsArea = 1e9;
  EXPECT_EQ(Detect(curve), Success("peaks"));
  EXPECT_TRUE(curve.peaks.empty());
  EXPECT_EQ(curve.largestAreaIdx, -1);
  EXPECT_EQ(curve.largestMaxIdx, -1);
  EXPECT_EQ(curve.largestCentroidIdx, -1);
  EXPECT_TRUE(curve.CheckAllStatus(Curve::STATUS_PEAKS));
}

TEST(SelectPeaks, TheLargestPeaksAreThoseThatAreLeft) {
  TestCurve curve = Parabolas({100, 40, 60});
  curve.peakDetectParams.SNInUse = true;
  curve.noise[Apex(0)] = 1000.0;
  ASSERT_TRUE(Detect(curve).ok);
  EXPECT_EQ(curve.largestAreaIdx, 1);
  EXPECT_EQ(curve.largestMaxIdx, 1);
  EXPECT_EQ(curve.largestCentroidIdx, 1);
}

TEST(SelectPeaks, OfEqualPeaksTheFirstIsTheLargest) {
  TestCurve curve = Parabolas({40, 70, 70, 70});
  ASSERT_TRUE(Detect(curve).ok);
  ASSERT_EQ(curve.peaks[1].area, curve.peaks[3].area);
  EXPECT_EQ(curve.largestAreaIdx, 1);
  EXPECT_EQ(curve.largestMaxIdx, 1);
  EXPECT_EQ(curve.largestCentroidIdx, 1);
}

TEST(SelectPeaks, KeepsTheOrderOfTheApexes) {
  TestCurve curve = Parabolas({30, 100, 20, 60, 10, 90});
  curve.peakDetectParams.FindFeatureAlgorithm = PeakDetectParams::Sorted;
  curve.peakDetectParams.RelAmplInUse = true;
  curve.peakDetectParams.RelAmpl = 25.0;
  EXPECT_EQ(Kept(curve), (Heights{30, 100, 60, 90}));
}
