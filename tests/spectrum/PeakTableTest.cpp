#include <gtest/gtest.h>

#include <detect/PeakCurves.h>
#include <spectrum/SampleSpectrum.h>
#include <tslbl/detect/FindOnePeak.h>
#include <tslbl/spectrum/PeakTable.h>
#include <cmath>
#include <limits>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

// Twenty points, y = 10 i, two data peaks: the second one is the tallest.
Spectrum TwoPeaks() {
  std::vector<double> y;
  for (int i = 0; i < 20; ++i) y.push_back(10.0 * i);
  Spectrum s = SpectrumOf(y);
  s.id = 7;
  s.AddStatus(Curve::STATUS_PEAKS);
  s.peaks.resize(2);
  PeakInfo& p = s.peaks[0];
  p.startIdx = 2;
  p.apexIdx = 4;
  p.apexAmpl = 40.0;
  p.endIdx = 6;
  p.maxIdx = 4.25;
  p.maxAmpl = 42.0;
  p.centroidIdx = 4.5;
  p.centroidAmpl = 41.0;
  p.baselineAmpl = p.maxBaseline = 1.25;
  p.halfHeightLeftIdx = 3.5;
  p.halfHeightRightIdx = 5.5;
  p.areaIntercept = 1.5;
  p.areaStartIdx = 2.75;
  p.areaEndIdx = 5.75;
  p.area = 90.0;
  p.noiseAmpl = 2.5;
  s.peaks[1] = p;
  s.peaks[1].startIdx = 10;
  s.peaks[1].apexIdx = 12;
  s.peaks[1].endIdx = 14;
  s.peaks[1].maxAmpl = 84.0;
  s.peaks[1].centroidAmpl = 164.0;
  s.largestAreaIdx = 0;
  s.largestMaxIdx = 1;
  s.largestCentroidIdx = 1;
  return s;
}

// The same with two overlap peaks on the second data peak.
Spectrum WithFits() {
  Spectrum s = TwoPeaks();
  OverlapPeakInfo fit;
  fit.DataPeakId = 1;
  fit.Position = 11.5;
  fit.Height = 80.0;
  fit.Baseline = 2.0;
  fit.FWHM = 2.0;
  std::vector<OverlapPeakInfo> group = {fit, fit};
  group[1].Position = 13.0;
  s.WOverlapPeakGroup(group);
  return s;
}

template <class Function>
std::string FailureOf(Function function) {
  try {
    function();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

Spectrum OneGaussian() {
  std::vector<double> y;
  for (int i = 0; i < 400; ++i)
    y.push_back(1000.0 * std::exp(-0.5 * std::pow((i - 200.25) / 6.0, 2)) + 5.0 + i % 3);
  Spectrum s = SpectrumOf(y);
  s.baseline.assign(y.size(), 6.0);
  s.noise.assign(y.size(), 1.0);
  s.AddStatus(Curve::STATUS_BASELINE);
  s.AddStatus(Curve::STATUS_NOISE);
  return s;
}

// Peaks of 4, 9 and 6 with their apexes at 2, 7 and 12, ready for detection.
Spectrum ThreePeaks() {
  const std::vector<double> y = Values("0 2 4 2 0 0 5 9 5 0 0 3 6 3 0");
  Spectrum s;
  s.xAxis = Count(y.size());
  s.yAxis = y;
  s.baseline.assign(y.size(), 0.0);
  s.noise.assign(y.size(), 1.0);
  for (const auto bit : {Curve::STATUS_Y, Curve::STATUS_X, Curve::STATUS_BASELINE, Curve::STATUS_NOISE})
    s.AddStatus(bit);
  return s;
}

TEST(DetectOnePeak, InAKnownPeakReturnsItAndLeavesTheTableAlone) {
  Spectrum s = ThreePeaks();
  ASSERT_EQ(FindOnePeak(s, 7), 0);
  s.peaks[0].area = 1234.0;
  const auto before = Bits(s);
  MZPeak peak;
  EXPECT_TRUE(DetectOnePeak(s, 5, peak));
  EXPECT_EQ(peak.Area, 1234.0);
  EXPECT_EQ(Bits(s), before);
}

TEST(DetectOnePeak, ElsewhereAddsThePeakThatItReturns) {
  Spectrum s = ThreePeaks();
  ASSERT_EQ(FindOnePeak(s, 7), 0);
  MZPeak peak;
  EXPECT_TRUE(DetectOnePeak(s, 12, peak));
  EXPECT_EQ(Spans(s.peaks), "5-7-9 10-12-14");
  EXPECT_EQ(peak.PkStartX, 10.0);
  EXPECT_EQ(peak.PkEndX, 14.0);
}

TEST(DetectOnePeak, WhereThereIsNoneReturnsFalse) {
  Spectrum s = ThreePeaks();
  s.yAxis = Count(s.yAxis.size());
  MZPeak peak;
  EXPECT_FALSE(DetectOnePeak(s, 7, peak));
  EXPECT_TRUE(s.peaks.empty());
}
}  // namespace

TEST(TranslateMZPeak, GivesEveryValueInMz) {
  const MZPeak p = TranslateMZPeak(TwoPeaks(), 0);
  EXPECT_EQ(p.Kind, MZPeak::DataPeak);
  EXPECT_EQ(p.CurveId, 7u);
  EXPECT_EQ(p.PeakId, 0u);
  EXPECT_EQ(p.CentroidX, 104.5);
  EXPECT_EQ(p.CentroidAmpl, 41.0);
  EXPECT_EQ(p.RelCentroidAmpl, 25.0);
  EXPECT_EQ(p.MaxX, 104.25);
  EXPECT_EQ(p.MaxAmpl, 42.0);
  EXPECT_EQ(p.RelMaxAmpl, 50.0);
  EXPECT_EQ(p.Area, 90.0);
  EXPECT_EQ(p.Width, 2.0);
  EXPECT_EQ(p.Resolution, 52.25);
  EXPECT_EQ(p.Baseline, 1.25);
  EXPECT_EQ(p.Signal2Noise, 20.0);
  EXPECT_EQ(p.Noise, 2.5);
  EXPECT_EQ(p.PkStartX, 102.0);
  EXPECT_EQ(p.PkStartAmpl, 20.0);
  EXPECT_EQ(p.PkEndX, 106.0);
  EXPECT_EQ(p.PkEndAmpl, 60.0);
  EXPECT_EQ(p.PkAreaStartX, 102.75);
  EXPECT_EQ(p.PkAreaEndX, 105.75);
  EXPECT_EQ(p.PkAreaIntercept, 1.5);
  EXPECT_EQ(p.CSSeriesRef, CSSeries());
  EXPECT_EQ(p.CSCharge, 0);
}

TEST(TranslateMZPeak, IsReportedAtItsCentroidOrItsMaximum) {
  Spectrum s = TwoPeaks();
  EXPECT_EQ(TranslateMZPeak(s, 0).Mass, 104.5);
  EXPECT_EQ(TranslateMZPeak(s, 0).Ampl, 41.0);
  s.peaks[0].useMax = true;
  EXPECT_EQ(TranslateMZPeak(s, 0).Mass, 104.25);
  EXPECT_EQ(TranslateMZPeak(s, 0).Ampl, 42.0);
}

TEST(TranslateMZPeak, TellsItsOverlapGroup) {
  const Spectrum s = WithFits();
  EXPECT_FALSE(TranslateMZPeak(s, 0).IsOverlapped);
  EXPECT_EQ(TranslateMZPeak(s, 0).GroupId, 0u);
  EXPECT_TRUE(TranslateMZPeak(s, 1).IsOverlapped);
  EXPECT_EQ(TranslateMZPeak(s, 1).GroupId, 1u);
}

TEST(TranslateMZPeak, RefusesAnEmptyTable) {
  EXPECT_EQ(FailureOf([] { TranslateMZPeak(SpectrumOf({1, 2, 3}), 0); }), "Peak table is empty.");
}

TEST(TranslateMZPeak, RefusesARowBeyondTheTable) {
  EXPECT_THROW(TranslateMZPeak(TwoPeaks(), 2), std::out_of_range);
}

// A Gaussian of height 80 and full width 2 at half maximum has the area
// 80 * 2 * sqrt(pi / (4 ln 2)) = 170.314723 and the standard deviation 2 / 2.354820 = 0.849322.
TEST(TranslateMZOverlapPeak, GivesEveryValueInMz) {
  const MZPeak p = TranslateMZOverlapPeak(WithFits(), 0);
  EXPECT_EQ(p.Kind, MZPeak::OverlapPeak);
  EXPECT_EQ(p.CurveId, 7u);
  EXPECT_EQ(p.PeakId, 2u);
  for (const double x : {p.CentroidX, p.MaxX, p.Mass}) EXPECT_EQ(x, 111.5);
  for (const double ampl : {p.CentroidAmpl, p.MaxAmpl, p.Ampl}) EXPECT_EQ(ampl, 82.0);
  for (const double percent : {p.RelCentroidAmpl, p.RelMaxAmpl}) EXPECT_EQ(percent, 50.0);
  EXPECT_NEAR(p.Area, 170.314723, 1e-6);
  EXPECT_NEAR(p.Width, 2.0, 1e-12);
  EXPECT_NEAR(p.Resolution, 55.75, 1e-9);
  EXPECT_EQ(p.Baseline, 2.0);
  EXPECT_EQ(p.Noise, 2.0);
  EXPECT_EQ(p.Signal2Noise, 39.5);
  for (const double start : {p.PkStartX, p.PkAreaStartX}) EXPECT_NEAR(start, 111.5 - 3 * 0.849322, 1e-5);
  for (const double end : {p.PkEndX, p.PkAreaEndX}) EXPECT_NEAR(end, 111.5 + 3 * 0.849322, 1e-5);
  EXPECT_EQ(p.PkStartAmpl, 90.0);  // at 108.952, rounded up to 109
  EXPECT_EQ(p.PkEndAmpl, 140.0);   // at 114.048, rounded down to 114
  EXPECT_EQ(p.PkAreaIntercept, 2.0);
  EXPECT_FALSE(p.IsOverlapped);
  EXPECT_EQ(p.GroupId, 1u);
}

TEST(TranslateMZOverlapPeak, TakesBaselineAndNoiseBelowItsPosition) {
  Spectrum s = WithFits();
  s.noise[11] = 4.0;
  s.baseline[11] = 40.0;
  EXPECT_EQ(TranslateMZOverlapPeak(s, 0).Noise, 4.0);
  EXPECT_EQ(TranslateMZOverlapPeak(s, 0).Signal2Noise, 10.0);
  s.noise[11] = 0.0;
  EXPECT_EQ(TranslateMZOverlapPeak(s, 0).Signal2Noise, 9e99);
}

TEST(TranslateMZOverlapPeak, OfNoWidthHasNoResolution) {
  Spectrum s = WithFits();
  s.overlapPeaks[0].FWHM = 0.0;
  const MZPeak p = TranslateMZOverlapPeak(s, 0);
  EXPECT_EQ(p.Width, 0.0);
  EXPECT_EQ(p.Resolution, 0.0);
  EXPECT_EQ(p.Area, 0.0);
}

TEST(TranslateMZOverlapPeak, RefusesAnEmptyTable) {
  EXPECT_EQ(FailureOf([] { TranslateMZOverlapPeak(TwoPeaks(), 0); }), "Overlap peak table is empty.");
}

TEST(TranslateMZOverlapPeak, RefusesAnIndexOutOfRange) {
  for (const std::uint32_t opd : {2u, 0xFFFFFFFFu})
    EXPECT_EQ(FailureOf([&] { TranslateMZOverlapPeak(WithFits(), opd); }),
              "Out of range overlap peak index.");
}

TEST(TranslateMZOverlapPeak, SurvivesASpectrumThatLostItsArrays) {
  Spectrum s = WithFits();
  s.baseline.clear();
  s.noise.clear();
  s.peaks.clear();
  for (const double position : {-1.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    s.overlapPeaks[0].Position = position;
    EXPECT_EQ(TranslateMZOverlapPeak(s, 0).Signal2Noise, 9e99);
    EXPECT_EQ(TranslateMZOverlapPeak(s, 0).RelMaxAmpl, std::numeric_limits<double>::infinity());
  }
}

TEST(CreateMZPeakTable, HoldsDataPeaksAndThenOverlapPeaks) {
  const Spectrum s = WithFits();
  const std::vector<MZPeak> table = CreateMZPeakTable(s);
  const std::vector<MZPeak> expected = {TranslateMZPeak(s, 0), TranslateMZPeak(s, 1),
                                        TranslateMZOverlapPeak(s, 0), TranslateMZOverlapPeak(s, 1)};
  EXPECT_EQ(table, expected);
}

TEST(CreateMZPeakTable, PlaceOfARowIsItsSpectrumPeakId) {
  const std::vector<MZPeak> table = CreateMZPeakTable(WithFits());
  for (std::uint32_t i = 0; i < table.size(); ++i) EXPECT_EQ(table[i].PeakId, i);
}

TEST(CreateMZPeakTable, KeepsDataPeaksThatAreOverlapped) {
  EXPECT_TRUE(CreateMZPeakTable(WithFits())[1].IsOverlapped);
}

TEST(CreateMZPeakTable, WithoutOverlapPeaksDoesNotFail) {
  EXPECT_EQ(CreateMZPeakTable(TwoPeaks()).size(), 2u);
  EXPECT_TRUE(CreateMZPeakTable(SpectrumOf({1, 2, 3})).empty());
}

TEST(QPeakAttrByCurveIdx, GivesTheDataPeakAtAPoint) {
  const Spectrum s = WithFits();
  MZPeak p;
  EXPECT_TRUE(QPeakAttrByCurveIdx(s, 6, p));
  EXPECT_EQ(p, TranslateMZPeak(s, 0));
}

TEST(QPeakAttrByCurveIdx, GivesTheFirstOverlapPeakOfAnOverlappedDataPeak) {
  const Spectrum s = WithFits();
  MZPeak p;
  EXPECT_TRUE(QPeakAttrByCurveIdx(s, 14, p));
  EXPECT_EQ(p, TranslateMZOverlapPeak(s, 0));
}

TEST(QPeakAttrByCurveIdx, IsFalseBetweenPeaks) {
  MZPeak p;
  EXPECT_FALSE(QPeakAttrByCurveIdx(WithFits(), 8, p));
  EXPECT_FALSE(QPeakAttrByCurveIdx(SpectrumOf({1, 2, 3}), 1, p));
}

TEST(QPeakAttrByCurveIdx, IsFalseIfAMarkedDataPeakHasNoOverlapPeak) {
  Spectrum s = WithFits();
  s.overlapPeaks.clear();
  MZPeak p;
  EXPECT_FALSE(QPeakAttrByCurveIdx(s, 12, p));
}

TEST(DetectOnePeak, OnAKnownPeakGivesItAndLeavesTheTableAlone) {
  Spectrum s = WithFits();
  const Spectrum before = s;
  MZPeak p;
  EXPECT_TRUE(DetectOnePeak(s, 12, p));
  EXPECT_EQ(p, TranslateMZPeak(s, 1)) << "overlap peaks are not looked at";
  EXPECT_EQ(s, before);
}

TEST(DetectOnePeak, OnAnUnknownPeakAddsItToTheTable) {
  Spectrum s = OneGaussian();
  MZPeak p;
  ASSERT_TRUE(DetectOnePeak(s, 200, p));
  ASSERT_EQ(s.peaks.size(), 1u);
  EXPECT_EQ(p, TranslateMZPeak(s, 0));
  EXPECT_NEAR(p.Mass, 300.25, 0.1);
  EXPECT_EQ(s.largestCentroidIdx, 0);
}

TEST(DetectOnePeak, IsFalseWhereNothingRises) {
  Spectrum s = SpectrumOf(std::vector<double>(400, 5.0));
  MZPeak p;
  EXPECT_FALSE(DetectOnePeak(s, 200, p));
  EXPECT_TRUE(s.peaks.empty());
}

TEST(DetectOnePeak, IsFalseBeyondTheCurve) {
  Spectrum s = OneGaussian();
  MZPeak p;
  for (const std::uint32_t point : {400u, 0xFFFFFFFFu}) EXPECT_FALSE(DetectOnePeak(s, point, p)) << point;
  Spectrum empty;
  EXPECT_FALSE(DetectOnePeak(empty, 0, p));
}

TEST(DetectOnePeak, InsertsARowWhereItBelongs) {
  Spectrum s = OneGaussian();
  PeakInfo left;
  left.startIdx = 10;
  left.apexIdx = 15;
  left.endIdx = 20;
  s.peaks = {left};
  s.largestAreaIdx = s.largestMaxIdx = s.largestCentroidIdx = 0;
  MZPeak p;
  ASSERT_TRUE(DetectOnePeak(s, 201, p));
  EXPECT_EQ(p.PeakId, 1u);
  EXPECT_EQ(s.peaks[0], left);
}
