#include <tool/commands/decon/DeconWriter.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

#include <tool/ToolRun.h>
#include <tool/commands/decon/Proteins.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslTool::LoadedSpectrum;

std::string Written(const std::string& format, const std::vector<const LoadedSpectrum*>& scans) {
  const auto writer = TslTool::MakeDeconWriter(format);
  std::string text = writer->Head();
  for (const LoadedSpectrum* scan : scans)
    text += (scan == scans.front() ? "" : writer->Between()) + writer->PartOf(*scan);
  return text + writer->Tail();
}

TEST(DeconWriter, KnowsItsFormats) {
  EXPECT_THAT(TslTool::DeconFormats(), ElementsAre("table", "tsv", "csv", "json"));
  EXPECT_THROW(TslTool::MakeDeconWriter("xml"), std::logic_error);
}

TEST(DeconWriter, TsvHasTheColumnsThatScriptsRelyOn) {
  const LoadedSpectrum loaded = WithSeries();
  const std::string text = Written("tsv", {&loaded});
  EXPECT_EQ(LinesOf(text).front(),
            "scan\trt_s\tseries\tkind\tmass\tmass_se\tdeviation\tcharge_low\tcharge_high\tpeaks\tintensity");
  const std::vector<Row> rows = RowsOf(text);
  ASSERT_GE(rows.size(), 2U);
  EXPECT_EQ(rows[0].at("scan"), "4");
  EXPECT_EQ(rows[0].at("rt_s"), "2.5");
  EXPECT_EQ(rows[0].at("series"), "UA");
  EXPECT_EQ(rows[0].at("kind"), "unresolved");
  EXPECT_NEAR(std::stod(rows[0].at("mass")), kLarge.mass, 0.1);
  EXPECT_EQ(std::stoi(rows[0].at("peaks")),
            std::stoi(rows[0].at("charge_high")) - std::stoi(rows[0].at("charge_low")) + 1);
}

TEST(DeconWriter, CsvHasTheSameBetweenCommas) {
  const LoadedSpectrum loaded = WithSeries();
  std::string tsv = Written("tsv", {&loaded});
  std::ranges::replace(tsv, '\t', ',');
  EXPECT_EQ(Written("csv", {&loaded}), tsv);
}

TEST(DeconWriter, LeavesWhatIsNotKnownEmpty) {
  LoadedSpectrum loaded = WithSeries(PeptideList());
  loaded.rtSeconds = std::numeric_limits<double>::quiet_NaN();
  const std::vector<Row> rows = RowsOf(Written("tsv", {&loaded}));
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].at("rt_s"), "");
  EXPECT_EQ(rows[0].at("mass_se"), "");
  EXPECT_EQ(rows[0].at("deviation"), "");
  EXPECT_EQ(rows[0].at("kind"), "resolved");
}

TEST(DeconWriter, TableTellsScanPeaksAndSeries) {
  LoadedSpectrum loaded = WithSeries(PeptideList());
  EXPECT_THAT(Written("table", {&loaded}), testing::StartsWith("scan 4, 2.500 s, 4 peaks, 1 series\nseries"));
  EXPECT_THAT(Written("table", {&loaded}), HasSubstr("    RA resolved       1500.7"));
  loaded.spectrum = std::make_unique<TslBL::DeconSpectrum>();
  EXPECT_EQ(Written("table", {&loaded}), "scan 4, 2.500 s, 0 peaks, 0 series\n");
}

TEST(DeconWriter, JsonHasThePeaksOfEachSeries) {
  const LoadedSpectrum first = WithSeries(PeptideList());
  const LoadedSpectrum second = WithSeries(PeptideList());
  const auto scans = nlohmann::json::parse(Written("json", {&first, &second}));
  ASSERT_EQ(scans.size(), 2U);
  const auto& series = scans[0]["series"][0];
  EXPECT_EQ(series["series"], "RA");
  EXPECT_TRUE(series["mass_se"].is_null());
  EXPECT_EQ(series["charge_low"], 2);
  ASSERT_EQ(series["peaks"].size(), 4U);
  EXPECT_EQ(series["peaks"][1]["peak"], 2);
  EXPECT_EQ(series["peaks"][1]["charge"], 2);
  EXPECT_NEAR(series["peaks"][1]["mz"].get<double>(), kPeptide.Mz(1), 1e-9);
  EXPECT_NEAR(series["peaks"][1]["intensity"].get<double>(), 820.0, 1e-9);
}

}  // namespace
}  // namespace tests
