// Tests: ChromWriter.cpp, PointsText.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <tool/commands/chrom/ChromWriter.h>
#include <tool/commands/chrom/PointsText.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TslTool::EvaluatedCurve;
using TslTool::PeaksText;

EvaluatedCurve CurveCalled(const std::string& name) {
  EvaluatedCurve curve;
  curve.measured.name = name;
  curve.measured.title = "m/z 500 to 501";
  curve.measured.seconds = {1.0, 2.0, 3.0};
  curve.measured.values = {5.0, 6.5, 7.0};
  curve.peaks = {{2.0, 10.0, 30.5, std::numeric_limits<double>::quiet_NaN(), 1.0, 3.0, 0.5, 12.0}};
  return curve;
}

TEST(ChromWriter, KnowsItsFormats) {
  EXPECT_THAT(TslTool::ChromFormats(), ElementsAre("table", "tsv", "csv", "json"));
}

TEST(ChromWriter, WritesRowsBetweenTabs) {
  EXPECT_EQ(PeaksText("tsv", {CurveCalled("A")}),
            "curve\tpeak\trt_s\theight\tarea\tarea_se\tstart_s\tend_s\twidth_s\tsn\n"
            "A\t1\t2\t10\t30.5\tnan\t1\t3\t0.5\t12\n");
}

TEST(ChromWriter, QuotesNamesWithCommasInCsv) {
  EXPECT_THAT(PeaksText("csv", {CurveCalled("UV, 254 nm")}), HasSubstr("\n\"UV, 254 nm\",1,2,10,"));
}

TEST(ChromWriter, WritesJsonWithNullForWhatIsNotKnown) {
  const auto json = nlohmann::json::parse(PeaksText("json", {CurveCalled("A"), CurveCalled("B")}));
  ASSERT_EQ(json.size(), 2u);
  EXPECT_EQ(json[1]["curve"], "B");
  EXPECT_EQ(json[0]["points"], 3);
  EXPECT_EQ(json[0]["peaks"][0]["area"], 30.5);
  EXPECT_TRUE(json[0]["peaks"][0]["area_se"].is_null());
}

TEST(ChromWriter, WritesATableForReading) {
  const std::string table = PeaksText("table", {CurveCalled("A")});
  EXPECT_THAT(table, HasSubstr("A: m/z 500 to 501, 1 peak\n"));
  EXPECT_THAT(table, HasSubstr("       30.5"));
}

TEST(PointsText, HasATimeAndAColumnForEachCurve) {
  EvaluatedCurve other = CurveCalled("B");
  other.measured.seconds = {2.0, 2.5};
  other.measured.values = {1.0, 2.0};
  EXPECT_EQ(TslTool::PointsText({CurveCalled("A"), other}),
            "rt_s\tA\tB\n1\t5\t\n2\t6.5\t1\n2.5\t\t2\n3\t7\t\n");
}

}  // namespace
}  // namespace tests
