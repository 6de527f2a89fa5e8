// Tests: SeriesEdits.cpp, tool/io/EditLines.cpp.
#include <tool/commands/decon/SeriesEdits.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/TempFile.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using TslTool::SeriesEdit;

TslTool::SeriesEditsByScan EditsIn(const std::string& text) {
  return TslTool::ReadSeriesEdits(TempFile("edits.tsv", text).Path());
}

std::string FileFailure(const std::string& text) {
  try {
    EditsIn(text);
  } catch (const TslTool::InputError& e) {
    return e.what();
  }
  return "";
}

std::string OptionFailure(SeriesEdit::Kind kind, const std::string& text) {
  try {
    TslTool::ParseSeriesEdit("--option", kind, text);
  } catch (const TslTool::UsageError& e) {
    return e.what();
  }
  return "";
}

TEST(SeriesEdits, AreReadInTheirOrderForEachScan) {
  const auto edits = EditsIn(
      "scan\tedit\n12 add-series unresolved 893.2 942.8\n7\tremove-series\tUB\n"
      "# a remark\n\n12\tadd-peaks\tRA\t500\n12 remove-peaks UAB 848.1\n");
  EXPECT_THAT(edits.at(12), ElementsAre(SeriesEdit{SeriesEdit::AddSeries, "unresolved", {893.2, 942.8}},
                                        SeriesEdit{SeriesEdit::AddPeaks, "RA", {500.0}},
                                        SeriesEdit{SeriesEdit::RemovePeaks, "UAB", {848.1}}));
  EXPECT_THAT(edits.at(7), ElementsAre(SeriesEdit{SeriesEdit::RemoveSeries, "UB", {}}));
}

TEST(SeriesEdits, OfAnOptionHaveColonAndCommas) {
  const auto parse = [](SeriesEdit::Kind kind, const std::string& text) {
    return TslTool::ParseSeriesEdit("--option", kind, text);
  };
  EXPECT_EQ(parse(SeriesEdit::AddSeries, "resolved:500.5,501"),
            (SeriesEdit{SeriesEdit::AddSeries, "resolved", {500.5, 501.0}}));
  EXPECT_EQ(parse(SeriesEdit::RemoveSeries, "UB"), (SeriesEdit{SeriesEdit::RemoveSeries, "UB", {}}));
  EXPECT_EQ(parse(SeriesEdit::AddPeaks, "UB:7"), (SeriesEdit{SeriesEdit::AddPeaks, "UB", {7.0}}));
}

TEST(SeriesEdits, OfAFileNameTheLineAndTheValueThatIsWrong) {
  EXPECT_THAT(FileFailure("3 remove-series UA\nx remove-series UA\n"),
              EndsWith("/edits.tsv: line 2: \"x\" is no scan number"));
  EXPECT_THAT(FileFailure("3 remove-series\n"), EndsWith("line 1: has no edit and series behind the scan"));
  EXPECT_THAT(FileFailure("3 drop UA\n"),
              EndsWith("line 1: \"drop\" is none of add-series, remove-series, add-peaks and remove-peaks"));
  EXPECT_THAT(FileFailure("3 remove-series 7\n"),
              EndsWith("line 1: \"7\" is no label of a series, such as RA or UB"));
  EXPECT_THAT(FileFailure("3 remove-series UA 7\n"),
              EndsWith("line 1: a series is removed by its label alone"));
  EXPECT_THAT(FileFailure("3 add-peaks UA\n"), EndsWith("line 1: no m/z of a peak is given"));
  EXPECT_THAT(FileFailure("3 add-peaks UA -7\n"), EndsWith("line 1: the m/z -7 is not above 0"));
  EXPECT_THAT(FileFailure("3 add-series UA 7\n"),
              EndsWith("line 1: \"UA\" is neither resolved nor unresolved"));
}

TEST(SeriesEdits, OfAnOptionNameIt) {
  EXPECT_EQ(OptionFailure(SeriesEdit::RemoveSeries, "U"),
            "--option: \"U\" is no label of a series, such as RA or UB");
  EXPECT_EQ(OptionFailure(SeriesEdit::AddPeaks, "UA:"), "--option: no m/z of a peak is given");
  EXPECT_THAT(OptionFailure(SeriesEdit::AddPeaks, "UA:5,,6"), testing::StartsWith("--option: \"\""));
}

}  // namespace
}  // namespace tests
