// The peak table as it is reported: TranslateCurvePeak and AddCurvePeaks.
#include <gtest/gtest.h>

#include <RecordCheck.h>
#include <curve/TestCurve.h>
#include <cmath>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

// Ten points with an axis that is not equidistant, and two peaks.
TestCurve CurveWithPeaks() {
  TestCurve c = CurveOf("1 3 8 20 9 4 5 12 6 2", "100 101 103 104 105 107 108 109 111 112");
  c.baseline = Values("0 0.5 1 1.5 2 2.5 3 3.5 4 4.5");
  c.noise = Values("2 2 2 4 2 2 2 0.5 2 2");
  c.AddStatus(Curve::STATUS_PEAKS);
  PeakInfo first;
  first.startIdx = 1;
  first.apexIdx = 3;
  first.apexAmpl = 20.0;
  first.endIdx = 5;
  first.maxIdx = 3.25;
  first.maxAmpl = 21.5;
  first.maxBaseline = 1.75;
  first.centroidIdx = 4.5;
  first.centroidAmpl = 16.0;
  first.baselineAmpl = 1.75;
  first.halfHeightLeftIdx = 1.5;
  first.halfHeightRightIdx = 4.25;
  first.areaIntercept = 1.25;
  first.areaStartIdx = 0.5;
  first.areaEndIdx = 5.5;
  first.area = 77.5;
  first.noiseAmpl = 4.5;
  PeakInfo second = first;
  second.maxAmpl = 43.0;
  second.centroidAmpl = 20.0;
  c.peaks = {first, second};
  c.largestAreaIdx = 0;
  c.largestMaxIdx = 1;
  c.largestCentroidIdx = 1;
  return c;
}

CurvePeak First(const TestCurve& curve) { return TranslateCurvePeak(curve, 0); }

std::wstring PeaksXml(const Curve& curve) {
  XMLBuilder builder;
  AddCurvePeaks(curve, builder);
  return builder.QXML();
}

}  // namespace

TEST(TranslateCurvePeak, RefusesAnEmptyTable) {
  try {
    TranslateCurvePeak(TestCurve(), 0);
    FAIL() << "no exception";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "Peak table is empty.");
  }
}

TEST(TranslateCurvePeak, DoesNotReadPastTheTable) {
  EXPECT_THROW(TranslateCurvePeak(CurveWithPeaks(), 2), std::out_of_range);
}

TEST(TranslateCurvePeak, TranslatesEachField) {
  const CurvePeak t = First(CurveWithPeaks());
  EXPECT_EQ(t.CentroidX, 106.0);
  EXPECT_EQ(t.CentroidAmpl, 16.0);
  EXPECT_EQ(t.RelCentroidAmpl, 80.0);
  EXPECT_EQ(t.MaxX, 104.25);
  EXPECT_EQ(t.MaxAmpl, 21.5);
  EXPECT_EQ(t.RelMaxAmpl, 50.0);
  EXPECT_EQ(t.Area, 77.5);
  EXPECT_EQ(t.Width, 105.5 - 102.0);
  EXPECT_EQ(t.Resolution, 106.0 / 3.5);
  EXPECT_EQ(t.Baseline, 1.75);
  EXPECT_EQ(t.Signal2Noise, (16.0 - 2.0) / 2.0);
  EXPECT_EQ(t.Noise, 4.5);
  EXPECT_EQ(t.PkStartX, 101.0);
  EXPECT_EQ(t.PkStartAmpl, 3.0);
  EXPECT_EQ(t.PkEndX, 107.0);
  EXPECT_EQ(t.PkEndAmpl, 4.0);
  EXPECT_EQ(t.PkAreaStartX, 100.5);
  EXPECT_EQ(t.PkAreaEndX, 107.5);
  EXPECT_EQ(t.PkAreaIntercept, 1.25);
}

TEST(TranslateCurvePeak, TakesSignalToNoiseAtTheMaximumIfThePeakUsesIt) {
  TestCurve c = CurveWithPeaks();
  c.peaks[0].useMax = true;
  EXPECT_EQ(First(c).Signal2Noise, (21.5 - 1.5) / 4.0);
}

TEST(TranslateCurvePeak, HasHugeSignalToNoiseWithoutNoise) {
  TestCurve c = CurveWithPeaks();
  c.noise[4] = 0.99e-8;
  EXPECT_EQ(First(c).Signal2Noise, 9e99);
  c.noise[4] = 1e-8;
  EXPECT_DOUBLE_EQ(First(c).Signal2Noise, 14e8);
}

TEST(TranslateCurvePeak, HasNoResolutionWithoutWidth) {
  TestCurve c = CurveWithPeaks();
  c.peaks[0].halfHeightRightIdx = c.peaks[0].halfHeightLeftIdx;
  EXPECT_EQ(First(c).Width, 0.0);
  EXPECT_EQ(First(c).Resolution, 0.0);
  c.peaks[0].halfHeightRightIdx = 0.0;
  EXPECT_EQ(First(c).Width, -2.0);
  EXPECT_EQ(First(c).Resolution, 0.0);
}

TEST(TranslateCurvePeak, DoesNotGuardRelativeValues) {
  TestCurve c = CurveWithPeaks();
  c.peaks[1].maxAmpl = c.peaks[1].centroidAmpl = 0.0;
  EXPECT_TRUE(std::isinf(First(c).RelMaxAmpl));
  EXPECT_TRUE(std::isnan(TranslateCurvePeak(c, 1).RelCentroidAmpl));
}

TEST(TranslateCurvePeak, SurvivesACurveWithoutItsArrays) {
  TestCurve c = CurveWithPeaks();
  c.xAxis.clear();
  c.yAxis.clear();
  c.baseline.clear();
  c.noise.clear();
  c.largestMaxIdx = -1;
  const CurvePeak t = First(c);
  EXPECT_EQ(t.PkEndX, 0.0);
  EXPECT_EQ(t.Signal2Noise, 9e99);
  EXPECT_TRUE(std::isinf(t.RelMaxAmpl));
}

TEST(AddCurvePeaks, WritesNothingForACurveThatWasNotPeakDetected) {
  TestCurve c = CurveWithPeaks();
  c.status = Curve::STATUS_Y | Curve::STATUS_X;
  EXPECT_EQ(PeaksXml(c), L"");
}

TEST(AddCurvePeaks, WritesAnEmptyElementForAnEmptyTable) {
  TestCurve c = CurveWithPeaks();
  c.peaks.clear();
  EXPECT_EQ(PeaksXml(c), L"<Peaks />\n");
}

TEST(AddCurvePeaks, WritesEachPeakInItsOrder) {
  const TestCurve c = CurveWithPeaks();
  XMLBuilder builder;
  builder.StartList(L"Peaks");
  TranslateCurvePeak(c, 0).Serialize(builder);
  TranslateCurvePeak(c, 1).Serialize(builder);
  builder.EndList();
  EXPECT_EQ(PeaksXml(c), builder.QXML());
}

TEST(AddCurvePeaks, WritesElementsThatReadBack) {
  XMLParser parser;
  ASSERT_TRUE(parser.LoadText(PeaksXml(CurveWithPeaks())));
  int count = 0;
  ASSERT_TRUE(parser.StartList(L"Peaks", count));
  ASSERT_EQ(count, 2);
  CurvePeak first, second;
  first.Serialize(parser);
  second.Serialize(parser);
  EXPECT_EQ(first.MaxX, 104.25);
  EXPECT_EQ(first.MaxAmpl, 21.5);
  EXPECT_EQ(second.MaxAmpl, 43.0);
}
