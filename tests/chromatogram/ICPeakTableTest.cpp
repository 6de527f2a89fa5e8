#include <gtest/gtest.h>

#include <chromatogram/SampleChromatogram.h>
#include <tslbl/chromatogram/ICPeakTable.h>
#include <cmath>
#include <limits>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

using Ids = std::vector<std::uint32_t>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Twelve points, and a row from 2 to 8 that is reported at `place`.
ICObj WithPeakAt(double place, bool useMax = false) {
  ICObj obj = ChromatogramOf({0, 1, 2, 3, 5, 9, 9, 4, 2, 1, 0, 0});
  obj.id = 7;
  PeakInfo row;
  row.startIdx = 2;
  row.endIdx = 8;
  row.apexIdx = 5;
  row.useMax = useMax;
  (useMax ? row.maxIdx : row.centroidIdx) = place;
  row.centroidAmpl = 9.0;
  row.maxAmpl = 9.5;
  row.area = 33.0;
  row.halfHeightLeftIdx = 4.0;
  row.halfHeightRightIdx = 6.5;
  row.noiseAmpl = 1.0;
  obj.peaks = {row};
  obj.largestAreaIdx = obj.largestMaxIdx = obj.largestCentroidIdx = 0;
  return obj;
}

Ids UnderPeakAt(double place, std::uint32_t halfWidth) {
  return QSpectrumUnderPeak(WithPeakAt(place), 0, halfWidth);
}

}  // namespace

TEST(QSpectrumUnderPeak, OfNoWidthIsTheSpectrumOfTheApex) {
  EXPECT_EQ(UnderPeakAt(5.0, 0), Ids{105});
  EXPECT_EQ(UnderPeakAt(5.4, 0), Ids{105});
  EXPECT_EQ(UnderPeakAt(5.6, 0), Ids{106});
}

TEST(QSpectrumUnderPeak, HalfWayTakesTheHigherNeighbourAndTheLeftOfEquals) {
  EXPECT_EQ(UnderPeakAt(4.5, 0), Ids{105});
  EXPECT_EQ(UnderPeakAt(5.5, 0), Ids{105});
  EXPECT_EQ(UnderPeakAt(6.5, 0), Ids{106});
  EXPECT_EQ(UnderPeakAt(4.5 - 9e-6, 0), Ids{105}) << "within 1e-5 is half way";
  EXPECT_EQ(UnderPeakAt(4.5 - 2e-5, 0), Ids{104});
  EXPECT_EQ(UnderPeakAt(6.5 + 2e-5, 0), Ids{107});
}

TEST(QSpectrumUnderPeak, HalfWayBehindTheLastPointIsTheLastPoint) {
  ICObj obj = WithPeakAt(11.5);
  obj.peaks[0].endIdx = 11;
  EXPECT_EQ(QSpectrumUnderPeak(obj, 0, 0), Ids{111});
}

TEST(QSpectrumUnderPeak, EndsWithThePeak) {
  EXPECT_EQ(UnderPeakAt(5.0, 2), (Ids{103, 104, 105, 106, 107}));
  EXPECT_EQ(UnderPeakAt(5.0, 3), (Ids{102, 103, 104, 105, 106, 107, 108}));
  EXPECT_EQ(UnderPeakAt(5.0, 4294967295u), (Ids{102, 103, 104, 105, 106, 107, 108}));
  EXPECT_EQ(UnderPeakAt(8.0, 1), (Ids{107, 108}));
}

TEST(QSpectrumUnderPeak, GoesByTheMaximumWhereThatIsReported) {
  EXPECT_EQ(QSpectrumUnderPeak(WithPeakAt(7.0, true), 0, 0), Ids{107});
}

TEST(QSpectrumUnderPeak, OfAnApexBesideItsPeakIsWhatIsLeftOfIt) {
  EXPECT_EQ(UnderPeakAt(10.0, 0), Ids());
  EXPECT_EQ(UnderPeakAt(10.0, 3), (Ids{107, 108}));
  EXPECT_EQ(UnderPeakAt(0.0, 3), (Ids{102, 103}));
}

TEST(QSpectrumUnderPeak, OfAPlaceThatIsNoneIsEmptyOrWithinTheCurve) {
  EXPECT_EQ(UnderPeakAt(kNaN, 1), Ids());
  EXPECT_EQ(UnderPeakAt(1e300, 1), Ids());
  EXPECT_EQ(UnderPeakAt(-1e300, 1), Ids());
  EXPECT_EQ(UnderPeakAt(-0.5, 0), Ids());
}

TEST(QSpectrumUnderPeak, HasAsManyIdsAsTheCurve) {
  ICObj obj = WithPeakAt(5.0);
  obj.sourceListA.resize(5);
  EXPECT_EQ(QSpectrumUnderPeak(obj, 0, 2), (Ids{103, 104}));
  obj.sourceListA.clear();
  EXPECT_EQ(QSpectrumUnderPeak(obj, 0, 2), Ids());
}

TEST(QSpectrumUnderPeak, OfATableWithoutThatRowThrows) {
  EXPECT_THROW(QSpectrumUnderPeak(WithPeakAt(5.0), 1, 0), std::out_of_range);
  try {
    QSpectrumUnderPeak(ICObj(), 0, 0);
    FAIL();
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "Peak table is empty.");
  }
}

TEST(TranslateICPeak, GivesEveryValueInTheUnitsOfTheCurve) {
  const ICPeak p = TranslateICPeak(WithPeakAt(5.25), 0);
  const CurvePeak same = TranslateCurvePeak(WithPeakAt(5.25), 0);
  EXPECT_EQ(p.CurveId, 7u);
  EXPECT_EQ(p.PeakId, 0u);
  EXPECT_EQ(p.CentroidX, 15.25);
  EXPECT_EQ(p.Width, 2.5);
  EXPECT_EQ(p.PkStartX, 12.0);
  EXPECT_EQ(p.PkEndX, 18.0);
  for (double PeakValues::*value :
       {&PeakValues::CentroidAmpl, &PeakValues::RelCentroidAmpl, &PeakValues::MaxX, &PeakValues::MaxAmpl,
        &PeakValues::RelMaxAmpl, &PeakValues::Area, &PeakValues::Resolution, &PeakValues::Baseline,
        &PeakValues::Signal2Noise, &PeakValues::Noise, &PeakValues::PkStartAmpl, &PeakValues::PkEndAmpl,
        &PeakValues::PkAreaStartX, &PeakValues::PkAreaEndX, &PeakValues::PkAreaIntercept})
    EXPECT_EQ(p.*value, same.*value);
}

TEST(TranslateICPeak, HasEverySpectrumOfThePeak) {
  for (const double place : {1.0, 2.0, 5.0, 8.0, 9.0})
    EXPECT_EQ(TranslateICPeak(WithPeakAt(place), 0).SpecIds, (Ids{102, 103, 104, 105, 106, 107, 108}))
        << place;
}

TEST(TranslateICPeak, OfATableWithoutThatRowThrows) {
  EXPECT_THROW(TranslateICPeak(ICObj(), 0), std::runtime_error);
  EXPECT_THROW(TranslateICPeak(WithPeakAt(5.0), 1), std::out_of_range);
}

TEST(CreateICPeakTable, HasEachRowInItsOrder) {
  ICObj obj = WithPeakAt(3.0);
  obj.peaks.push_back(obj.peaks[0]);
  obj.peaks[1].centroidIdx = 7.0;
  const std::vector<ICPeak> table = CreateICPeakTable(obj);
  EXPECT_EQ(table, (std::vector<ICPeak>{TranslateICPeak(obj, 0), TranslateICPeak(obj, 1)}));
  EXPECT_EQ(table[1].PeakId, 1u);
  EXPECT_EQ(CreateICPeakTable(ICObj()), std::vector<ICPeak>());
}

namespace {

ICObj ThreePeaks() {
  ICObj obj = ChromatogramOf({0, 2, 4, 2, 0, 0, 5, 9, 5, 0, 0, 3, 6, 3, 0});
  obj.peakDetectParams.SNInUse = false;
  return obj;
}

}  // namespace

TEST(DetectOnePeakOfAChromatogram, AddsThePeakThatItReturns) {
  ICObj obj = ThreePeaks();
  ICPeak peak;
  EXPECT_TRUE(DetectOnePeak(obj, 7, peak));
  ASSERT_EQ(obj.peaks.size(), 1u);
  EXPECT_EQ(peak.PkStartX, 15.0);
  EXPECT_EQ(peak.PkEndX, 19.0);
  EXPECT_EQ(peak.SpecIds, (Ids{105, 106, 107, 108, 109}));
}

TEST(DetectOnePeakOfAChromatogram, InAKnownPeakReturnsItAndLeavesTheTableAlone) {
  ICObj obj = ThreePeaks();
  ICPeak peak;
  ASSERT_TRUE(DetectOnePeak(obj, 7, peak));
  obj.peaks[0].area = 1234.0;
  const ICObj before = obj;
  EXPECT_TRUE(DetectOnePeak(obj, 5, peak));
  EXPECT_EQ(peak.Area, 1234.0);
  EXPECT_EQ(obj, before);
}

TEST(DetectOnePeakOfAChromatogram, WhereThereIsNoneReturnsFalse) {
  ICObj obj = ChromatogramOf(std::vector<double>(15, 1.0));
  ICPeak peak;
  EXPECT_FALSE(DetectOnePeak(obj, 7, peak));
  EXPECT_TRUE(obj.peaks.empty());
}
