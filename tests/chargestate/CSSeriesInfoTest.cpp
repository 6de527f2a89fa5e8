// Tests: CSSeriesInfo.cpp, CSSeriesPeakInfo.cpp.
#include <tslbl/chargestate/CSSeriesInfo.h>

#include <RecordCheck.h>
#include <chargestate/SampleSeries.h>

using namespace tests;

namespace {

CSSeriesPeakInfo SamplePeakInfo() {
  CSSeriesPeakInfo p;
  p.PeakId = 4;
  p.MZ = 500.25;
  p.Charge = 8;
  p.IsMonoPeak = true;
  p.MonoMass = 3993.94;
  p.MassDev = -0.02;
  return p;
}

CSSeriesInfo SampleSeriesInfo() {
  CSSeriesInfo s;
  s.Series = {kResolved, 3};
  s.AvgMass = 3996.5;
  s.StdDev = 0.25;
  s.Peaks = {SamplePeakInfo(), {}};
  return s;
}

std::string Ids(const CSSeriesInfo& series) {
  std::string ids;
  for (const CSSeriesPeakInfo& peak : series.Peaks) ids += std::to_string(peak.PeakId);
  return ids;
}

CSSeriesInfo WithIds(const std::string& ids) {
  CSSeriesInfo series;
  for (const char id : ids) series.Peaks.emplace_back().PeakId = static_cast<std::uint32_t>(id - '0');
  return series;
}

}  // namespace

TEST(AllRecords, CSSeriesPeakInfo) {
  CheckRecord<CSSeriesPeakInfo>({
      {"PeakId", [](auto& r) { r.PeakId = 1; }},
      {"MZ", [](auto& r) { r.MZ = 1.5; }},
      {"Charge", [](auto& r) { r.Charge = 1; }},
      {"IsMonoPeak", [](auto& r) { r.IsMonoPeak = true; }},
      {"MonoMass", [](auto& r) { r.MonoMass = 1.5; }},
      {"MassDev", [](auto& r) { r.MassDev = 1.5; }},
  });
}
TEST(AllRecords, CSSeriesInfo) {
  CheckRecord<CSSeriesInfo>({
      {"Series", [](auto& r) { r.Series.Id = 1; }},
      {"AvgMass", [](auto& r) { r.AvgMass = 1.5; }},
      {"StdDev", [](auto& r) { r.StdDev = 1.5; }},
      {"Peaks", [](auto& r) { r.Peaks.resize(1); }},
      {"Peaks.MZ", [](auto& r) { r.Peaks[0].MZ = 1.5; }},
  });
}
TEST(Golden, CSSeriesPeakInfo) { CheckGolden(SamplePeakInfo(), "CSSeriesPeakInfo.v1"); }
TEST(Golden, CSSeriesInfo) { CheckGolden(SampleSeriesInfo(), "CSSeriesInfo.v1"); }
TEST(CutShort, CSSeriesPeakInfo) { CheckCutShort(SamplePeakInfo()); }
TEST(CutShort, CSSeriesInfo) { CheckCutShort(SampleSeriesInfo()); }

TEST(CSSeriesPeakInfo, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<CSSeriesPeakInfo>(Bytes(version), SamplePeakInfo()),
              "Unknown Charge State Series Peak Information version.");
}

TEST(CSSeriesInfo, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<CSSeriesInfo>(Bytes(version), SampleSeriesInfo()),
              "Unknown Charge State Series Information version.");
}

TEST(CSSeriesInfo, DoesNotTrustTheCountOfPeaks) {
  EXPECT_EQ(ReadFailure<CSSeriesInfo>(Bytes(1u, CSSeries(), 1.0, 1.0, 0xFFFFFFFFu)),
            "Unknown Charge State Series Peak Information version.");
}

TEST(CSSeriesInfo, IsZeroByDefault) {
  const CSSeriesPeakInfo peak;
  EXPECT_EQ(peak.PeakId, 0u);
  EXPECT_EQ(peak.MZ, 0.0);
  EXPECT_EQ(peak.Charge, 0u);
  EXPECT_FALSE(peak.IsMonoPeak);
  EXPECT_EQ(peak.MonoMass, 0.0);
  EXPECT_EQ(peak.MassDev, 0.0);
  const CSSeriesInfo series;
  EXPECT_EQ(series.Series, CSSeries());
  EXPECT_EQ(series.AvgMass, 0.0);
  EXPECT_EQ(series.StdDev, 0.0);
  EXPECT_TRUE(series.Peaks.empty());
}

TEST(CSSeriesInfo, ComparesWithAKeyByTheKeyAlone) {
  EXPECT_TRUE(SampleSeriesInfo() == CSSeries(kResolved, 3));
  EXPECT_FALSE(SampleSeriesInfo() == CSSeries(kResolved, 4));
  EXPECT_FALSE(SampleSeriesInfo() == CSSeries(kUnresolved, 3));
}

TEST(CSSeriesInfo, ErasesTheFirstPeakOfEachId) {
  const std::pair<std::vector<std::uint32_t>, std::string> rows[] = {
      {{}, "12321"}, {{2}, "1321"}, {{2, 2}, "131"}, {{2, 2, 2}, "131"}, {{3, 1}, "221"}, {{7}, "12321"}};
  for (const auto& [ids, left] : rows) {
    CSSeriesInfo series = WithIds("12321");
    series.ErasePeaks(ids);
    EXPECT_EQ(Ids(series), left);
  }
}
