#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tool/TempFile.h>
#include <tool/commands/info/RunScans.h>
#include <tool/simulate/Simulator.h>

#include <functional>
#include <string>

namespace tests {
namespace {

// The only scan of a run whose tune was changed, and the warnings.
std::pair<TslTool::Scan, std::vector<std::string>> ScanWith(const std::function<void(TslBL::Tune&)>& change) {
  TslBL::Tune tune = TslTool::Simulator(1).Tune();
  change(tune);
  const TempFile folder("x", "");
  TslTool::RunWriter writer(folder.Folder() + "/a.run", "");
  writer.AddTune(1, tune);
  TslBL::RawSpectrum raw;
  raw.info.Id = 1;
  raw.info.TuneId = 1;
  raw.info.TimeStamp = 2500;
  raw.counts = {1, 0, 3};
  writer.AddScan(raw);
  writer.Finish();
  TslTool::RunScans scans(folder.Folder() + "/a.run");
  std::pair<TslTool::Scan, std::vector<std::string>> result;
  scans.Next(result.first);
  result.second = scans.Warnings();
  return result;
}

TEST(RunScans, GiveCountsOnTheCalibratedAxis) {
  const auto [scan, warnings] = ScanWith([](TslBL::Tune&) {});
  EXPECT_EQ(scan.number, 1U);
  EXPECT_EQ(scan.rtSeconds, 2.5);
  EXPECT_EQ(scan.msLevel, 1);
  EXPECT_EQ(scan.polarity, 1);
  EXPECT_EQ(scan.representation, TslTool::Scan::Profile);
  EXPECT_THAT(scan.amplitude, testing::ElementsAre(1, 0, 3));
  EXPECT_EQ(scan.mz.front(), 100);
  EXPECT_NEAR(scan.mz.back(), 100.1, 0.001);
  EXPECT_THAT(warnings, testing::IsEmpty());
}

TEST(RunScans, TheTuneTellsThePolarity) {
  const auto [scan, warnings] =
      ScanWith([](TslBL::Tune& t) { t.ControlData.PolarityType = TslCommon::PolarityNegative; });
  EXPECT_EQ(scan.polarity, -1);
}

TEST(RunScans, WithoutACalibrationTheMassRangeCountsAndIsTold) {
  const auto [scan, warnings] = ScanWith([](TslBL::Tune& t) { t.MZCalPts.clear(); });
  EXPECT_THAT(scan.mz, testing::ElementsAre(100, 600, 1100));
  EXPECT_THAT(warnings,
              testing::ElementsAre("1 spectrum whose calibration gives no ascending m/z, told by the mass "
                                   "range of the tune (first at scan 1)"));
}

}  // namespace
}  // namespace tests
