#include <tool/commands/overlap/OverlapWriter.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include <tool/ToolRun.h>
#include <tool/commands/overlap/Doublet.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslTool::LoadedSpectrum;

std::string Written(const std::string& format, const std::vector<const LoadedSpectrum*>& scans) {
  const auto writer = TslTool::MakeOverlapWriter(format);
  std::string text = writer->Head();
  for (const LoadedSpectrum* scan : scans)
    text += (scan == scans.front() ? "" : writer->Between()) + writer->PartOf(*scan);
  return text + writer->Tail();
}

TEST(OverlapWriter, KnowsItsFormats) {
  EXPECT_THAT(TslTool::OverlapFormats(), ElementsAre("table", "tsv", "csv", "json"));
  EXPECT_THROW(TslTool::MakeOverlapWriter("xml"), std::logic_error);
}

TEST(OverlapWriter, TsvHasTheColumnsThatScriptsRelyOn) {
  const LoadedSpectrum loaded = Deconvolved();
  const std::string text = Written("tsv", {&loaded});
  EXPECT_EQ(LinesOf(text).front(),
            "scan\trt_s\tgroup\tpeak\tmz\tmz_se\tamplitude\tarea\tarea_se\twidth\tchi2");
  const std::vector<Row> rows = RowsOf(text);
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_EQ(rows[0].at("scan"), "3");
  EXPECT_EQ(rows[0].at("rt_s"), "12.5");
  EXPECT_EQ(rows[0].at("group"), "1");
  EXPECT_EQ(rows[0].at("mz_se"), "");
  EXPECT_EQ(rows[0].at("chi2"), "");
  EXPECT_EQ(rows[2].at("peak"), "4");
  EXPECT_NE(rows[2].at("chi2"), "");
  EXPECT_EQ(rows[3].at("group"), "");
  EXPECT_NE(rows[3].at("mz_se"), "");
  EXPECT_EQ(rows[3].at("chi2"), "");
}

TEST(OverlapWriter, CsvHasTheSameBetweenCommas) {
  LoadedSpectrum loaded = Deconvolved();
  std::string tsv = Written("tsv", {&loaded});
  std::ranges::replace(tsv, '\t', ',');
  EXPECT_EQ(Written("csv", {&loaded}), tsv);
}

TEST(OverlapWriter, LeavesATimeThatIsNotKnownEmpty) {
  LoadedSpectrum loaded = Deconvolved();
  loaded.rtSeconds = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(Written("tsv", {&loaded}), HasSubstr("\n3\t\t1\t1\t"));
  EXPECT_THAT(Written("table", {&loaded}), testing::StartsWith("scan 3, 2 peaks, 1 groups of 2 fitted\n"));
}

TEST(OverlapWriter, JsonHasNullForWhatIsNotKnown) {
  const LoadedSpectrum first = Deconvolved();
  const LoadedSpectrum second = Deconvolved();
  const auto scans = nlohmann::json::parse(Written("json", {&first, &second}));
  ASSERT_EQ(scans.size(), 2U);
  const auto& peaks = scans[1]["peaks"];
  ASSERT_EQ(peaks.size(), 4U);
  EXPECT_EQ(peaks[0]["group"], 1);
  EXPECT_EQ(peaks[0]["fitted"], false);
  EXPECT_TRUE(peaks[0]["mz_se"].is_null());
  EXPECT_EQ(peaks[2]["fitted"], true);
  EXPECT_TRUE(peaks[3]["group"].is_null());
  EXPECT_NEAR(peaks[3]["mz"].get<double>(), kAlone.mz, 0.05);
}

TEST(OverlapWriter, TheTableMarksTheGroups) {
  const LoadedSpectrum loaded = Deconvolved();
  const std::vector<std::string> lines = LinesOf(Written("table", {&loaded}));
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines[0], "scan 3, 12.500 s, 2 peaks, 1 groups of 2 fitted");
  EXPECT_THAT(lines[2], testing::StartsWith("    1     1 - "));
  EXPECT_THAT(lines[4], testing::StartsWith("    1     4 + "));
  EXPECT_THAT(lines[5], testing::StartsWith("          2   "));
}

}  // namespace
}  // namespace tests
