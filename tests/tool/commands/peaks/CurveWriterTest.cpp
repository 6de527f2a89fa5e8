#include <gtest/gtest.h>

#include <limits>
#include <string>

#include <tool/ToolRun.h>
#include <tool/commands/peaks/CurveWriter.h>
#include <tool/commands/peaks/Evaluated.h>

namespace tests {
namespace {

using TslTool::LoadedSpectrum;

std::string Written(const LoadedSpectrum& loaded) {
  return TslTool::CurveHead() + TslTool::CurvePart(loaded);
}

TEST(CurveWriter, KeepsEveryDigitOfTheEvaluatedCurves) {
  const LoadedSpectrum loaded = EvaluatedScan(3);
  const auto rows = RowsOf(Written(loaded));
  EXPECT_EQ(ColumnOf(rows, "mz"), loaded.spectrum->xAxis);
  EXPECT_EQ(ColumnOf(rows, "amplitude"), loaded.spectrum->yAxis);
  EXPECT_EQ(ColumnOf(rows, "baseline"), loaded.spectrum->baseline);
  EXPECT_EQ(ColumnOf(rows, "noise"), loaded.spectrum->noise);
  EXPECT_EQ(rows.front().at("scan"), "3");
  EXPECT_EQ(std::stod(rows.front().at("rt_s")), loaded.rtSeconds);
}

TEST(CurveWriter, LeavesEmptyWhatIsNotThere) {
  LoadedSpectrum loaded;
  loaded.scan = 4;
  loaded.rtSeconds = std::numeric_limits<double>::quiet_NaN();
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  loaded.spectrum->xAxis = {100.5};
  loaded.spectrum->yAxis = {7};
  EXPECT_EQ(Written(loaded), "scan\trt_s\tmz\tamplitude\tbaseline\tnoise\n4\t\t100.5\t7\t\t\n");
}

}  // namespace
}  // namespace tests
