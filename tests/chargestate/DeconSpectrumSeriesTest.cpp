#include <gtest/gtest.h>

#include <chargestate/SampleSeries.h>

using namespace tests;

namespace {

std::vector<MZPeak> Table(std::size_t rows) { return std::vector<MZPeak>(rows); }

constexpr auto kNoType = static_cast<CSSeries::Types>(3);

}  // namespace

TEST(CSSeriesClear, TakesOutSeriesAndMassCurve) {
  DeconSpectrum s = WithThreeSeries();
  s.MassX = s.MassY = {1.0};
  s.CSSeriesClear();
  EXPECT_TRUE(s.Series.empty() && s.MassX.empty() && s.MassY.empty());
}

TEST(IsSeriesValid, AnUnresolvedSeriesHasTwoPeaks) {
  CSSeriesInfo series;
  series.Series = {kUnresolved, 1};
  EXPECT_FALSE(DeconSpectrum::IsSeriesValid(series));
  series.Peaks = PeaksAt("5m");
  EXPECT_FALSE(DeconSpectrum::IsSeriesValid(series));
  series.Peaks = PeaksAt("5 6");
  EXPECT_TRUE(DeconSpectrum::IsSeriesValid(series));
}

TEST(IsSeriesValid, AResolvedSeriesHasAMonoisotopicPeak) {
  CSSeriesInfo series;
  series.Series = {kResolved, 1};
  series.Peaks = PeaksAt("1 2 3");
  EXPECT_FALSE(DeconSpectrum::IsSeriesValid(series));
  series.Peaks = PeaksAt("1m");
  EXPECT_TRUE(DeconSpectrum::IsSeriesValid(series));
}

TEST(IsSeriesValid, ASeriesOfAnotherTypeIsNot) {
  CSSeriesInfo series;
  series.Peaks = PeaksAt("1m 2m");
  for (const auto type : {CSSeries::None, kNoType}) {
    series.Series.Type = type;
    EXPECT_FALSE(DeconSpectrum::IsSeriesValid(series));
  }
}

TEST(IsSeriesValid, AsksASeriesByKeyOrPosition) {
  DeconSpectrum s = WithThreeSeries();
  s.Series[1].Peaks.clear();
  EXPECT_TRUE(s.IsSeriesValid(CSSeries(kResolved, 2)));
  EXPECT_FALSE(s.IsSeriesValid(CSSeries(kUnresolved, 1)));
  EXPECT_FALSE(s.IsSeriesValid(CSSeries(kResolved, 3)));
  EXPECT_TRUE(s.IsSeriesValid(2u));
  EXPECT_FALSE(s.IsSeriesValid(1u));
  EXPECT_FALSE(s.IsSeriesValid(3u));
}

TEST(CSAddSeries, NumbersEachTypeFrom1) {
  const DeconSpectrum s = WithThreeSeries();
  EXPECT_EQ(Keys(s), "R1 U1 R2");
  EXPECT_EQ(s.Series[1].AvgMass, 2000.0);
  EXPECT_EQ(s.Series[1].StdDev, 0.25);
  EXPECT_EQ(s.Series[1].Peaks, PeaksAt("5 6 6", 2));
}

TEST(CSAddSeries, LeavesOutAResolvedSeriesWithoutAMonoisotopicPeak) {
  DeconSpectrum s;
  s.CSAddSeries(kResolved, 1000.0, 0.5, PeaksAt("1 2 3"));
  EXPECT_TRUE(s.Series.empty());
}

TEST(CSAddSeries, LeavesOutAnUnresolvedSeriesOfOnePeakAndOtherTypes) {
  DeconSpectrum s;
  s.CSAddSeries(kUnresolved, 1000.0, 0.5, PeaksAt("1m"));
  s.CSAddSeries(CSSeries::None, 1000.0, 0.5, PeaksAt("1m 2m"));
  EXPECT_TRUE(s.Series.empty());
}

TEST(CSAddSeries, TakesTheNumberOfTheHighestSeriesAgainOnceThatIsGone) {
  DeconSpectrum s = WithThreeSeries();
  s.CSDeleteSeries({{kResolved, 2}});
  s.CSAddSeries(kResolved, 4000.0, 0.5, PeaksAt("1m"));
  EXPECT_EQ(Keys(s), "R1 U1 R2");
  s.CSDeleteSeries({{kResolved, 1}});
  s.CSAddSeries(kResolved, 4000.0, 0.5, PeaksAt("1m"));
  EXPECT_EQ(Keys(s), "U1 R2 R3");
}

TEST(CSReplaceSeries, GivesASeriesOtherContent) {
  DeconSpectrum s = WithThreeSeries();
  s.CSReplaceSeries({kUnresolved, 1}, 2500.0, 0.75, PeaksAt("7 8"));
  EXPECT_EQ(Keys(s), "R1 U1 R2");
  EXPECT_EQ(s.Series[1].AvgMass, 2500.0);
  EXPECT_EQ(s.Series[1].StdDev, 0.75);
  EXPECT_EQ(s.Series[1].Peaks, PeaksAt("7 8"));
}

TEST(CSReplaceSeries, LeavesTheSeriesIfTheContentIsNotValidOrThereIsNone) {
  DeconSpectrum s = WithThreeSeries();
  const DeconSpectrum before = s;
  s.CSReplaceSeries({kUnresolved, 1}, 2500.0, 0.75, PeaksAt("7"));
  s.CSReplaceSeries({kResolved, 1}, 2500.0, 0.75, PeaksAt("7 8"));
  s.CSReplaceSeries({kResolved, 3}, 2500.0, 0.75, PeaksAt("7m"));
  EXPECT_EQ(s, before);
}

TEST(CSDeleteSeries, KeepsTheOrderOfTheRest) {
  DeconSpectrum s = WithThreeSeries();
  s.CSDeleteSeries({{kUnresolved, 1}, {kUnresolved, 9}, {kUnresolved, 1}});
  EXPECT_EQ(Keys(s), "R1 R2");
  s.CSDeleteSeries({{kResolved, 2}, {kResolved, 1}});
  EXPECT_EQ(Keys(s), "");
}

TEST(QCSSeries, CopiesASeriesOut) {
  const DeconSpectrum s = WithThreeSeries();
  CSSeriesInfo info;
  EXPECT_TRUE(s.QCSSeriesInfo({kUnresolved, 1}, info));
  EXPECT_EQ(info, s.Series[1]);
  EXPECT_TRUE(s.QCSSeriesInfo(2u, info));
  EXPECT_EQ(info, s.Series[2]);
  EXPECT_FALSE(s.QCSSeriesInfo({kUnresolved, 2}, info));
  EXPECT_FALSE(s.QCSSeriesInfo(3u, info));
  EXPECT_EQ(info, s.Series[2]);
}

TEST(QCSSeries, GivesThePeaksOfASeries) {
  const DeconSpectrum s = WithThreeSeries();
  EXPECT_EQ(s.QCSSeriesPeakInfoArray({kUnresolved, 1}), PeaksAt("5 6 6", 2));
  EXPECT_TRUE(s.QCSSeriesPeakInfoArray({kUnresolved, 2}).empty());
}

TEST(QCSSeries, GivesTheIdsOfThePeaksOfACharge) {
  const DeconSpectrum s = WithThreeSeries();
  EXPECT_EQ(s.QCSSeriesChargePeakIds({kUnresolved, 1}, 6), (std::vector<std::uint32_t>{3, 4}));
  EXPECT_TRUE(s.QCSSeriesChargePeakIds({kUnresolved, 1}, 7).empty());
  EXPECT_TRUE(s.QCSSeriesChargePeakIds({kUnresolved, 2}, 6).empty());
}

TEST(QCSSeries, GivesThePlaceOfASeries) {
  DeconSpectrum s = WithThreeSeries();
  s.Series.emplace_back().Series = {CSSeries::None, 1};
  std::uint32_t index = 77;
  EXPECT_FALSE(s.QCSSeriesIndex({CSSeries::None, 1}, index));
  EXPECT_FALSE(s.QCSSeriesIndex({kNoType, 1}, index));
  EXPECT_FALSE(s.QCSSeriesIndex({kResolved, 3}, index));
  EXPECT_EQ(index, 77u);
  EXPECT_TRUE(s.QCSSeriesIndex({kResolved, 2}, index));
  EXPECT_EQ(index, 2u);
}

TEST(CSAddSeriesInfoToPeakTable, TellsOfEachRowWhatTheFirstSeriesWithItsPeakSays) {
  DeconSpectrum s = WithThreeSeries();
  s.AddStatus(Curve::STATUS_CSDECON);
  s.Series[1].Peaks[1].PeakId = 1;  // also in the first series
  s.Series[0].Peaks[1].MonoMass = 998.5;
  s.Series[0].Peaks[1].MassDev = -0.25;
  std::vector<MZPeak> table = Table(8);
  table[1].Mass = 500.5;
  s.CSAddSeriesInfoToPeakTable(table);
  EXPECT_EQ(table[1].CSSeriesRef, CSSeries(kResolved, 1));
  EXPECT_EQ(table[1].CSValue1, 998.5);
  EXPECT_EQ(table[1].CSValue2, 1000.0);
  EXPECT_EQ(table[1].CSValue3, -0.25);
  EXPECT_EQ(table[1].CSCharge, 2);
  EXPECT_EQ(table[1].Mass, 500.5);
  EXPECT_EQ(table[4].CSSeriesRef, CSSeries(kUnresolved, 1));
  EXPECT_EQ(table[5].CSSeriesRef, CSSeries(kResolved, 2));
  EXPECT_EQ(table[3], MZPeak());
  EXPECT_EQ(table[7], MZPeak());
}

TEST(CSAddSeriesInfoToPeakTable, TakesTheFirstPeakOfASeriesThatHasARowTwice) {
  DeconSpectrum s;
  s.AddStatus(Curve::STATUS_CSDECON);
  s.CSAddSeries(kUnresolved, 1000.0, 0.5, PeaksAt("5 6"));
  s.Series[0].Peaks[1].PeakId = 0;
  std::vector<MZPeak> table = Table(1);
  s.CSAddSeriesInfoToPeakTable(table);
  EXPECT_EQ(table[0].CSCharge, 5);
}

TEST(CSAddSeriesInfoToPeakTable, CountsRowsByTheirPlaces) {
  DeconSpectrum s = WithThreeSeries();
  s.AddStatus(Curve::STATUS_CSDECON);
  std::vector<MZPeak> table = Table(1);
  table[0].PeakId = 3;
  s.CSAddSeriesInfoToPeakTable(table);
  EXPECT_EQ(table[0].CSSeriesRef, CSSeries(kResolved, 1));
}

TEST(CSAddSeriesInfoToPeakTable, LeavesTheTableOfASpectrumThatHasNotBeenDeconvolved) {
  std::vector<MZPeak> table = Table(8);
  WithThreeSeries().CSAddSeriesInfoToPeakTable(table);
  EXPECT_EQ(table, Table(8));
  DeconSpectrum none;
  none.AddStatus(Curve::STATUS_CSDECON);
  none.CSAddSeriesInfoToPeakTable(table);
  EXPECT_EQ(table, Table(8));
}
