#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

#include <tool/commands/chrom/ChromPlot.h>
#include <tool/commands/chrom/SimulatedCurves.h>
#include <tool/plot/SvgReading.h>

namespace tests {
namespace {

using testing::HasSubstr;

TslTool::EvaluatedCurve Simulated(std::size_t points = 600) {
  auto curve = CleanCurve({{300.0, 1000.0, 8.0}}, points, 50.0);
  std::mt19937 random(1);
  AddNoise(curve, 1.0, random);
  curve.title = "absorption";
  return Evaluated(curve);
}

TEST(ChromPlot, HasAPanelForEachCurveWithItsTop) {
  const std::string plot = TslTool::ChromPlot({Simulated(), Simulated()}, "in.csv");
  ShowPicture("chrom", plot);
  EXPECT_TRUE(IsDocument(plot));
  EXPECT_EQ(CountOf(plot, "sim: absorption"), 2u);
  EXPECT_EQ(CountOf(plot, ">300.0<"), 2u);
  EXPECT_THAT(plot, HasSubstr("in.csv"));
}

TEST(ChromPlot, ShowsWhatWasIntegrated) {
  EXPECT_EQ(CountOf(TslTool::ChromPlot({Simulated()}, "in.csv"), "#d5e8d6"), 1u);
}

TEST(ChromPlot, HasABoundedSize) {
  EXPECT_LT(TslTool::ChromPlot({Simulated(200000)}, "in.csv").size(), 400000u);
}

}  // namespace
}  // namespace tests
