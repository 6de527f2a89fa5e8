#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <tool/frame/InputError.h>
#include <tool/io/MzMLMaker.h>
#include <tool/io/RunMaker.h>
#include <tool/io/SpectrumSource.h>
#include <tool/simulate/Simulator.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TslTool::LoadedSpectrum;
using TslTool::OpenSpectra;
using TslTool::ScanFilter;

std::vector<LoadedSpectrum> LoadAll(const std::string& file, const ScanFilter& filter = {}) {
  const auto source = OpenSpectra(file, filter);
  std::vector<LoadedSpectrum> all;
  while (const auto load = source->Next()) all.push_back(load());
  return all;
}

std::string ErrorOf(const std::string& file) {
  try {
    LoadAll(file);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

ScanFilter Only(std::uint32_t number) {
  ScanFilter filter;
  filter.firstNumber = filter.lastNumber = number;
  return filter;
}

// 50 us in each of 4 scans make 5000 counts a second of one count.
TEST(SpectrumSource, ARunsCountsBecomeCountRates) {
  const SmallRun run;
  const auto loaded = LoadAll(run.Path());
  ASSERT_EQ(loaded.size(), 3U);
  EXPECT_THAT(loaded[0].spectrum->yAxis, ElementsAre(5000, 10000, 15000));
  EXPECT_EQ(loaded[0].spectrum->tic, 30000);
  EXPECT_EQ(loaded[1].scan, 2U);
  EXPECT_EQ(loaded[1].rtSeconds, 2.0);
  EXPECT_EQ(loaded[1].spectrum->timeStamp, 2000);
  EXPECT_EQ(loaded[1].spectrum->tuneId, 1U);
}

// The demonstration's calibration is straight up to 322.0481 = 6439.6 steps of the mass DAC.
TEST(SpectrumSource, ARunsAxisFollowsTheTunesCalibration) {
  const SmallRun run;
  const auto loaded = LoadAll(run.Path());
  ASSERT_EQ(loaded.size(), 3U);
  const std::vector<double>& x = loaded[1].spectrum->xAxis;
  ASSERT_EQ(x.size(), 300U);
  const double mzPerDac = (322.0481 - 5.0) / (6439.6 - 100.0);
  for (std::size_t i = 0; i < x.size(); ++i)
    EXPECT_NEAR(x[i], 100.0 + static_cast<double>(i) * mzPerDac, 1e-9);
}

TEST(SpectrumSource, ARunTellsItsCountFormatAndSpacing) {
  const SmallRun run;
  const auto all = OpenSpectra(run.Path(), {});
  EXPECT_EQ(all->Count(), 3U);
  EXPECT_EQ(all->Format(), "run of raw counts");
  EXPECT_EQ(all->MzStep(), 0.05);
  EXPECT_EQ(OpenSpectra(run.Path(), Only(2))->Count(), std::nullopt);
}

TEST(SpectrumSource, AForeignProfileKeepsItsArraysExactly) {
  const Values mz = {100, 100.1, 100.30000000000001, 101};
  const Values amplitude = {0.1, 7, 1e-300, -3};
  const TempFile file("a.mzML", MzML(PlainSpectrum("scan=17", mz, amplitude)));
  const auto loaded = LoadAll(file.Path());
  ASSERT_EQ(loaded.size(), 1U);
  EXPECT_EQ(loaded[0].spectrum->xAxis, mz);
  EXPECT_EQ(loaded[0].spectrum->yAxis, amplitude);
  EXPECT_EQ(loaded[0].scan, 17U);
  EXPECT_EQ(loaded[0].rtSeconds, 120.0);
  EXPECT_EQ(OpenSpectra(file.Path(), {})->MzStep(), std::nullopt);
}

TEST(SpectrumSource, TextWithoutATimeHasNone) {
  const TempFile file("a.txt", "100 1\n101 5\n102 2\n");
  EXPECT_TRUE(std::isnan(LoadAll(file.Path())[0].rtSeconds));
}

TEST(SpectrumSource, ASpectrumOfOnePointIsASpectrum) {
  const TempFile file("a.txt", "100 1\n");
  EXPECT_THAT(LoadAll(file.Path())[0].spectrum->xAxis, ElementsAre(100));
}

TEST(SpectrumSource, WithoutInputItIsTheDemonstration) {
  const auto loaded = LoadAll("", Only(4));
  ASSERT_EQ(loaded.size(), 1U);
  EXPECT_EQ(loaded[0].scan, 4U);
  EXPECT_EQ(loaded[0].spectrum->yAxis[7], TslTool::Simulator().MakeScan(3).counts[7] * 5000);
  EXPECT_EQ(OpenSpectra("", {})->Count(), 20U);
}

TEST(SpectrumSource, TheDemonstrationIsTheRunThatSimulateWrites) {
  const TempFile folder("x", "");
  const TslTool::Simulator simulator;
  TslTool::RunWriter writer(folder.Folder() + "/demo.run", "");
  writer.AddTune(1, simulator.Tune());
  for (std::uint32_t i = 0; i < 2; ++i) writer.AddScan(simulator.MakeScan(i));
  writer.Finish();
  const auto written = LoadAll(folder.Folder() + "/demo.run");
  EXPECT_EQ(*written[1].spectrum, *LoadAll("", Only(2))[0].spectrum);
}

TEST(SpectrumSource, CentroidDataAreRefused) {
  const TempFile file("a.mzML", MzML(SpectrumOf("scan=5", 1,
                                                ArrayOf(kMz, BytesOf<double>({100})) +
                                                    ArrayOf(kIntensity, BytesOf<double>({1})),
                                                Term(kCentroid))));
  EXPECT_EQ(ErrorOf(file.Path()), "scan 5: holds centroid data; peak detection needs a profile");
}

TEST(SpectrumSource, AScanWithoutPointsIsRefused) {
  const TempFile file("a.mzML",
                      MzML("<spectrum index=\"0\" id=\"scan=5\" defaultArrayLength=\"0\"></spectrum>"));
  EXPECT_EQ(ErrorOf(file.Path()), "scan 5: holds no points");
  const TempFile folder("x", "");
  TslTool::RunWriter writer(folder.Folder() + "/a.run", "");
  writer.AddTune(1, TslTool::Simulator(1).Tune());
  writer.AddScan(RawScan(1, {}));
  writer.Finish();
  EXPECT_EQ(ErrorOf(folder.Folder() + "/a.run"), "scan 1: holds no points");
}

// The error of a run whose tune was changed.
std::string ErrorWith(const std::function<void(TslBL::Tune&)>& change) {
  TslBL::Tune tune = TslTool::Simulator(1).Tune();
  change(tune);
  const TempFile folder("x", "");
  TslTool::RunWriter writer(folder.Folder() + "/a.run", "");
  writer.AddTune(1, tune);
  writer.AddScan(RawScan(1, {1, 2, 3}));
  writer.Finish();
  return ErrorOf(folder.Folder() + "/a.run");
}

TEST(SpectrumSource, ACalibrationThatGivesNoAxisIsRefused) {
  EXPECT_EQ(ErrorWith([](TslBL::Tune& t) { t.MZCalPts.clear(); }),
            "scan 1: tune 1: its calibration gives no ascending m/z");
  EXPECT_EQ(ErrorWith([](TslBL::Tune& t) {
              t.MZCalPts = {{L"a", 100, 50}, {L"b", 100, 90}};
            }),
            "scan 1: tune 1: Divide by zero error");
}

TEST(SpectrumSource, ADamagedTuneNamesScanAndTune) {
  const double nan = std::nan("");
  EXPECT_THAT(ErrorWith([&](TslBL::Tune& t) { t.ControlData.MZLow = nan; }), HasSubstr("scan 1: tune 1: "));
  EXPECT_THAT(ErrorWith([&](TslBL::Tune& t) { t.ControlData.MZStepSize = 0.0; }),
              HasSubstr("scan 1: tune 1: "));
}

TEST(SpectrumSource, AFileThatIsMissingIsRefused) {
  EXPECT_THROW(OpenSpectra("/no/such/file", {}), TslTool::InputError);
}

}  // namespace
}  // namespace tests
