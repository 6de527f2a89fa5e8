#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include <tool/ToolRun.h>
#include <tool/commands/peaks/Evaluated.h>
#include <tool/commands/peaks/PeakColumns.h>
#include <tool/commands/peaks/PeakWriter.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using TslTool::LoadedSpectrum;
using Peaks = std::vector<TslTool::ReportedPeak>;

// What a format makes of the scans.
std::string Written(const std::string& format, const std::vector<const LoadedSpectrum*>& scans) {
  const auto writer = TslTool::MakePeakWriter(format);
  std::string text = writer->Head();
  for (const LoadedSpectrum* scan : scans) {
    if (scan != scans.front()) text += writer->Between();
    text += writer->Part(*scan, TslTool::ReportedPeaks(*scan));
  }
  return text + writer->Tail();
}

// A scan without a peak, whose file told no time.
LoadedSpectrum Bare() {
  LoadedSpectrum loaded;
  loaded.scan = 9;
  loaded.rtSeconds = std::numeric_limits<double>::quiet_NaN();
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  return loaded;
}

struct PeakWriter : testing::Test {
  const LoadedSpectrum third = EvaluatedScan(3), seventh = EvaluatedScan(7), bare = Bare();
  const std::vector<const LoadedSpectrum*> scans = {&third, &seventh, &bare};
  const Peaks peaks = TslTool::ReportedPeaks(third);
};

TEST_F(PeakWriter, TsvHasOneHeaderWithTheRowsFieldsBehindTheShortNames) {
  const auto lines = LinesOf(Written("tsv", scans));
  EXPECT_THAT(lines.front(),
              StartsWith("scan\trt_s\tpeak\tmz\tamplitude\tarea\twidth\tresolution\tsn\theight\tmz_"
                         "se\tamplitude_se\tarea_se\tcounted\tKind\tCurveId\t"
                         "PeakId\tCentroidX\tCentroidAmpl\tRelCentroidAmpl\tMaxX\t"));
  EXPECT_THAT(lines.front(), testing::EndsWith("\tGroupId\tWidth\tResolution\tid"));
  EXPECT_EQ(CellsOf(lines.front()).size(), 4 + TslTool::PeakColumns().size());
  for (std::size_t i = 1; i < lines.size(); ++i) {
    EXPECT_THAT(lines[i], testing::Not(StartsWith("scan")));
    EXPECT_EQ(CellsOf(lines[i]).size(), 4 + TslTool::PeakColumns().size());
  }
}

TEST_F(PeakWriter, TsvKeepsEveryDigit) {
  const auto rows = RowsOf(Written("tsv", {&third}));
  ASSERT_EQ(rows.size(), peaks.size());
  ASSERT_GT(rows.size(), 5U);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].at("scan"), "3");
    EXPECT_EQ(rows[i].at("peak"), std::to_string(i + 1));
    EXPECT_EQ(std::stod(rows[i].at("mz")), peaks[i].row.Mass);
    EXPECT_EQ(std::stod(rows[i].at("area")), peaks[i].area);
    EXPECT_EQ(std::stod(rows[i].at("rt_s")), third.rtSeconds);
  }
}

TEST_F(PeakWriter, CsvIsTheSameTableBetweenCommas) {
  std::string tsv = Written("tsv", scans);
  std::ranges::replace(tsv, '\t', ',');
  EXPECT_EQ(Written("csv", scans), tsv);
}

TEST(PeakWriterCsv, QuotesANameWithCommasOrQuotes) {
  LoadedSpectrum named = EvaluatedScan(3);
  named.id = "a=1,b=\"x\"";
  const auto lines = LinesOf(Written("csv", {&named}));
  EXPECT_THAT(lines.at(1), testing::EndsWith(",\"a=1,b=\"\"x\"\"\""));
}

TEST_F(PeakWriter, TsvOfASpectrumWithoutPeaksIsItsHeader) {
  EXPECT_EQ(LinesOf(Written("tsv", {&bare})).size(), 1U);
}

TEST_F(PeakWriter, JsonIsOneListOfSpectra) {
  const auto json = nlohmann::json::parse(Written("json", scans));
  ASSERT_EQ(json.size(), 3U);
  EXPECT_EQ(json[0]["scan"], 3);
  EXPECT_EQ(json[0]["rt_s"].get<double>(), third.rtSeconds);
  ASSERT_EQ(json[0]["peaks"].size(), peaks.size());
  for (std::size_t i = 0; i < peaks.size(); ++i) {
    EXPECT_EQ(json[0]["peaks"][i]["peak"], i + 1);
    EXPECT_EQ(json[0]["peaks"][i]["mz"].get<double>(), peaks[i].row.Mass);
    EXPECT_EQ(json[0]["peaks"][i]["IsOverlapped"], false);
  }
  EXPECT_TRUE(json[2]["rt_s"].is_null());
  EXPECT_TRUE(json[2]["peaks"].empty());
}

TEST_F(PeakWriter, JsonOfNothingIsAnEmptyList) {
  EXPECT_EQ(nlohmann::json::parse(Written("json", {})).size(), 0U);
}

TEST_F(PeakWriter, XmlHasAScanElementForEachSpectrum) {
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(Written("xml", scans).c_str()));
  const pugi::xml_node root = document.child("Scans");
  std::vector<std::string> numbers;
  for (const pugi::xml_node scan : root.children("Scan"))
    numbers.emplace_back(scan.attribute("Number").value());
  EXPECT_THAT(numbers, ElementsAre("3", "7", "9"));
  EXPECT_EQ(root.first_child().attribute("RetentionTime").as_double(), third.rtSeconds);
  EXPECT_FALSE(root.last_child().attribute("RetentionTime"));
}

TEST_F(PeakWriter, XmlHoldsTheLibrarysElementForEachPeak) {
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(Written("xml", {&third}).c_str()));
  EXPECT_EQ(document.select_nodes("/Scans/Scan//Peak").size(), peaks.size());
}

TEST_F(PeakWriter, TheTableIsForReading) {
  const auto lines = LinesOf(Written("table", scans));
  EXPECT_EQ(lines[0], fmt::format("scan 3, {:.3f} s, {} peaks", third.rtSeconds, peaks.size()));
  EXPECT_THAT(lines[1], HasSubstr("m/z"));
  EXPECT_THAT(lines[2], HasSubstr(fmt::format("{:.4f}", peaks[0].row.Mass)));
  EXPECT_EQ(lines[2 + peaks.size()], "");
  EXPECT_EQ(lines.back(), "scan 9, 0 peaks");
}

// As where several functions of an instrument count from 1.
constexpr const char* kId = "function=2 scan=3\t\x1b[31m\u00b5";

TEST_F(PeakWriter, TheIdStandsLastInTsvWithoutCharactersThatGarble) {
  LoadedSpectrum named = EvaluatedScan(3);
  named.id = kId;
  for (const Row& row : RowsOf(Written("tsv", {&named})))
    EXPECT_EQ(row.at("id"), "function=2 scan=3\\t\\x1b[31m\u00b5");
  for (const Row& row : RowsOf(Written("tsv", {&third}))) EXPECT_EQ(row.at("id"), "");
}

TEST_F(PeakWriter, TheIdStandsInJsonAsItIs) {
  LoadedSpectrum named = Bare();
  named.id = kId;
  const auto json = nlohmann::json::parse(Written("json", {&named, &third}));
  EXPECT_EQ(json[0]["id"], kId);
  EXPECT_EQ(json[1]["id"], "");
}

TEST_F(PeakWriter, TheTableShowsAnIdThatSaysMoreThanTheNumber) {
  const std::pair<const char*, const char*> table[] = {
      {"", "scan 9, 0 peaks\n"},
      {"scan=9", "scan 9, 0 peaks\n"},
      {"scan=10", "scan 9 (scan=10), 0 peaks\n"},
      {"function=2 process=0 scan=9", "scan 9 (function=2 process=0 scan=9), 0 peaks\n"},
      {"a\x1b", "scan 9 (a\\x1b), 0 peaks\n"}};
  for (const auto& [id, line] : table) {
    LoadedSpectrum named = Bare();
    named.id = id;
    EXPECT_EQ(Written("table", {&named}), line);
  }
}

TEST(PeakFormats, AreTableTsvCsvJsonXmlAndMzML) {
  EXPECT_THAT(TslTool::PeakFormats(), ElementsAre("table", "tsv", "csv", "json", "xml", "mzml"));
}

TEST(PeakFormats, AnotherOneIsAMistakeOfTheProgram) {
  EXPECT_THROW(TslTool::MakePeakWriter("none"), std::logic_error);
}

}  // namespace
}  // namespace tests
