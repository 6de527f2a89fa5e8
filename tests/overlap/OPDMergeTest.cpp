#include <tslbl/overlap/OPDMerge.h>

#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <overlap/OverlapSpectrum.h>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

Spectrum WithFits(const std::string& fits) {
  Spectrum s = SpectrumOfPeaks({{10, 15, 20}, {20, 25, 30}, {60, 65, 70}, {120, 125, 130}});
  s.overlapPeaks = Fits(fits);
  s.SyncOverlapGroups();
  return s;
}

// A part of the spectrum, by default all of it.
OPDParams Part(double low = 5.0, double high = 3000.0) {
  OPDParams params;
  params.FullRange = false;
  params.Ranges = {{true, low, high}};
  return params;
}

// A row that the target lacks.
void InsertRow(Spectrum& s, std::size_t at, double centroid) {
  PeakInfo row = s.peaks.front();
  row.startIdx = static_cast<std::uint32_t>(centroid) - 3;
  row.apexIdx = static_cast<std::uint32_t>(centroid);
  row.endIdx = static_cast<std::uint32_t>(centroid) + 3;
  row.centroidIdx = centroid;
  s.peaks.insert(s.peaks.begin() + static_cast<std::ptrdiff_t>(at), row);
}

std::string Apexes(const Spectrum& s) {
  std::ostringstream out;
  for (const PeakInfo& row : s.peaks) out << row.apexIdx << ' ';
  return out.str();
}

}  // namespace

TEST(OPDMergePeakTable, OfTheFullRangeTakesTheSource) {
  Spectrum target = WithFits("1:0@11");
  const Spectrum source = WithFits("1:2@65");
  OPDMergePeakTable(OPDParams(), target, source);
  EXPECT_EQ(target, source);
}

TEST(OPDMergePeakTable, TakesHistoryAndParametersButNoStatus) {
  Spectrum target = WithFits("");
  Spectrum source = WithFits("");
  source.evals = {CurveEval(OPDParams())};
  source.opdParams.MaxPeaks = 3;
  source.AddStatus(Curve::STATUS_OPD);
  OPDMergePeakTable(Part(), target, source);
  EXPECT_EQ(History(target), "OPD");
  EXPECT_EQ(target.opdParams, source.opdParams);
  EXPECT_FALSE(target.CheckAllStatus(Curve::STATUS_OPD));
}

TEST(OPDMergePeakTable, ClearsTheEnabledRanges) {
  Spectrum target = WithFits("1:0@15 2:2@65 3:3@125");
  OPDParams params = Part(103.0, 103.5);
  params.Ranges.push_back({false, 106.0, 106.5});
  OPDMergePeakTable(params, target, WithFits(""));
  EXPECT_EQ(Text(target.overlapPeaks), "1:3@125");
}

TEST(OPDMergePeakTable, TakesAGroup) {
  Spectrum target = WithFits("1:3@125");
  OPDMergePeakTable(Part(103.0, 103.5), target, WithFits("1:2@63 1:2@67"));
  EXPECT_EQ(Text(target.overlapPeaks), "1:2@63 1:2@67 2:3@125");
  EXPECT_EQ(RowGroups(target), "0 0 1 2");
}

TEST(OPDMergePeakTable, AGroupReplacesAllThatLiesLeftOfItsEnd) {
  Spectrum target = WithFits("1:2@60");
  OPDMergePeakTable(Part(5.0, 6.0), target, WithFits("1:0@14 1:0@16 2:2@63 2:2@67"));
  EXPECT_EQ(Text(target.overlapPeaks), "1:2@63 1:2@67");
}

TEST(OPDMergePeakTable, InsertsRowsThatTheTargetLacks) {
  for (const std::size_t at : {0U, 2U, 4U}) {
    Spectrum target = WithFits("1:3@125");
    Spectrum source = WithFits("");
    const double places[] = {5.0, 0.0, 40.5, 0.0, 160.0};
    InsertRow(source, at, places[at]);
    OPDMergePeakTable(Part(5.0, 6.0), target, source);
    EXPECT_EQ(Apexes(target), Apexes(source));
    EXPECT_EQ(Text(target.overlapPeaks), at == 4 ? "1:3@125" : "1:4@125");
  }
}

TEST(OPDMergePeakTable, InsertsSeveralRows) {
  Spectrum target = WithFits("");
  Spectrum source = WithFits("");
  InsertRow(source, 2, 40);
  InsertRow(source, 3, 50);
  InsertRow(source, 6, 160);
  OPDMergePeakTable(Part(), target, source);
  EXPECT_EQ(Apexes(target), "15 25 40 50 65 125 160 ");
}

TEST(OPDMergePeakTable, FillsAnEmptyTable) {
  Spectrum target = SpectrumOfPeaks({});
  OPDMergePeakTable(Part(), target, WithFits("1:2@63 1:2@67"));
  EXPECT_EQ(Apexes(target), "15 25 65 125 ");
  EXPECT_EQ(Text(target.overlapPeaks), "1:2@63 1:2@67");
}

TEST(OPDMergePeakTable, KeepsItsRowsWhereTheSourceHasNoMore) {
  Spectrum target = WithFits("");
  Spectrum source = WithFits("");
  source.peaks[1].centroidIdx = 26.0;
  OPDMergePeakTable(Part(), target, source);
  EXPECT_EQ(target.peaks[1].centroidIdx, 25.0);
}

TEST(OPDMergePeakTable, RefusesGroupsOnDataPeaksThatTheTargetLacks) {
  Spectrum target = WithFits("");
  Spectrum source = WithFits("");
  source.overlapPeaks = Fits("1:9@63");
  EXPECT_EQ(Thrown<std::logic_error>([&] { OPDMergePeakTable(Part(), target, source); }),
            "Invalid group range.");
}
