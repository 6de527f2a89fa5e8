#include <fmt/format.h>
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
using TslTool::Scan;
using TslTool::SpectrumChoice;

std::vector<LoadedSpectrum> LoadAll(const std::string& file, const SpectrumChoice& choice = {}) {
  const auto source = OpenSpectra(file, choice);
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

SpectrumChoice Only(std::uint32_t number) {
  SpectrumChoice choice;
  choice.filter.numbers = {{number, number}};
  return choice;
}

// What is skipped when all of a file is read.
std::string SkippedOf(const std::string& file, const SpectrumChoice& choice = {}) {
  const auto source = OpenSpectra(file, choice);
  while (source->Next()) continue;
  return source->Skipped();
}

TEST(SpectrumSource, TellsLevelAndPolarityOfWhateverItIs) {
  const SmallRun run;
  for (const std::string& file : {run.Path(), std::string()}) {
    const LoadedSpectrum loaded = OpenSpectra(file, Only(1))->Next()();
    EXPECT_EQ(loaded.msLevel, 1) << file;
    EXPECT_EQ(std::abs(loaded.polarity), 1) << file;
  }
  const std::string terms = Term("MS:1000511", "value=\"2\"") + Term(kProfile) + Term("MS:1000129");
  const Values mz = {1, 2, 3};
  const TempFile file(
      "a.mzML",
      MzML(SpectrumOf("scan=1", 3,
                      ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>(mz)), terms)));
  const auto loaded = LoadAll(file.Path());
  ASSERT_EQ(loaded.size(), 1U);
  EXPECT_EQ(loaded[0].msLevel, 2);
  EXPECT_EQ(loaded[0].polarity, -1);
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
  const Values mz = {100, 100.1, 100.20000000000001, 100.35};
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
  const TempFile file("a.txt", "100 1\n100.1 5\n100.2 2\n");
  EXPECT_TRUE(std::isnan(LoadAll(file.Path())[0].rtSeconds));
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

// A profile, centroid data, a point alone, an empty spectrum, and a profile of another level and polarity.
std::string MixedMzML() {
  constexpr const char* kNegative = "MS:1000129";
  const auto arrays = [](const Values& mz, const Values& amplitude) {
    return ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>(amplitude));
  };
  const Values mz = {100, 100.1, 100.2, 100.3};
  return MzML(
      SpectrumOf("scan=1", 4, arrays(mz, {1, 5, 2, 1}), Term(kProfile) + Term("MS:1000511", "value=\"1\"")) +
          SpectrumOf("scan=2", 4, arrays({100, 107.1, 130.2, 131}, {1, 5, 2, 1}), Term(kCentroid)) +
          SpectrumOf("scan=3", 1, arrays({100}, {1}), Term(kProfile)) +
          "<spectrum index=\"3\" id=\"scan=4\" defaultArrayLength=\"0\"></spectrum>" +
          SpectrumOf("scan=5", 4, arrays(mz, {1, 5, 2, 1}),
                     Term(kProfile) + Term("MS:1000511", "value=\"2\"") + Term(kNegative)),
      5);
}

std::vector<std::uint32_t> ScansOf(const std::string& file, const SpectrumChoice& choice = {}) {
  std::vector<std::uint32_t> scans;
  for (const LoadedSpectrum& loaded : LoadAll(file, choice)) scans.push_back(loaded.scan);
  return scans;
}

TEST(SpectrumSource, WhatIsNoProfileIsSkippedAndCountedByReason) {
  const TempFile file("a.mzML", MixedMzML());
  EXPECT_THAT(ScansOf(file.Path()), ElementsAre(1, 5));
  EXPECT_EQ(
      SkippedOf(file.Path()),
      "3 of 5 spectra skipped: 1 marked as centroid (first at scan 2), 2 of less than two points (first at "
      "scan 3)");
  EXPECT_EQ(SkippedOf(file.Path(), Only(1)), "");
}

TEST(SpectrumSource, StrictMakesWhatIsSkippedAnError) {
  const TempFile file("a.mzML", MixedMzML());
  SpectrumChoice choice;
  choice.strict = true;
  try {
    LoadAll(file.Path(), choice);
    FAIL();
  } catch (const TslTool::InputError& error) {
    EXPECT_EQ(error.Place() + ": " + error.Reason(), "scan 2: cannot be evaluated: marked as centroid");
  }
}

TEST(SpectrumSource, LevelPolarityAndListsSelect) {
  const TempFile file("a.mzML", MixedMzML());
  SpectrumChoice level;
  level.filter.msLevel = 2;
  EXPECT_THAT(ScansOf(file.Path(), level), ElementsAre(5));
  SpectrumChoice polarity;
  polarity.filter.polarity = -1;
  EXPECT_THAT(ScansOf(file.Path(), polarity), ElementsAre(5));
  SpectrumChoice list;
  list.filter.numbers = {{5, 9}, {1, 1}};
  EXPECT_THAT(ScansOf(file.Path(), list), ElementsAre(1, 5));
}

TEST(SpectrumSource, OfARunLevelPolarityAndListsSelectToo) {
  const SmallRun run;
  SpectrumChoice choice;
  choice.filter.numbers = {{3, 9}, {1, 1}};
  choice.filter.msLevel = 1;
  choice.filter.polarity = 1;
  EXPECT_THAT(ScansOf(run.Path(), choice), ElementsAre(1, 3));
  choice.filter.polarity = -1;
  EXPECT_THAT(ScansOf(run.Path(), choice), IsEmpty());
  choice.filter = {.msLevel = 2};
  EXPECT_THAT(ScansOf(run.Path(), choice), IsEmpty());
}

TEST(SpectrumSource, WhatTheUserSaysOverrulesMarksAndPoints) {
  const TempFile file("a.mzML", MixedMzML());
  SpectrumChoice choice;
  choice.takenAs = Scan::Profile;
  EXPECT_THAT(ScansOf(file.Path(), choice), ElementsAre(1, 2, 5));
  choice.takenAs = Scan::Centroid;
  EXPECT_THAT(ScansOf(file.Path(), choice), IsEmpty());
  EXPECT_THAT(SkippedOf(file.Path(), choice), HasSubstr("3 taken as centroid (first at scan 1)"));
}

TEST(SpectrumSource, CentroidDataAreKnownByTheirPoints) {
  const TempFile file("a.txt", "100.2 1\n107.1 5\n130.2 2\n131.2 8\n");
  EXPECT_EQ(SkippedOf(file.Path()),
            "1 of 1 spectra skipped: 1 centroid by the spacing of their points (first at scan 1)");
}

TEST(SpectrumSource, AProfileThatIsMarkedAsCentroidIsTakenAndTold) {
  Values mz, amplitude;
  for (int i = 0; i < 60; ++i) {
    mz.push_back(100 + 0.1 * i);
    amplitude.push_back(i % 7);
  }
  const TempFile file("a.mzML", MzML(SpectrumOf("scan=1", 60,
                                                ArrayOf(kMz, BytesOf<double>(mz)) +
                                                    ArrayOf(kIntensity, BytesOf<double>(amplitude)),
                                                Term(kCentroid))));
  const auto source = OpenSpectra(file.Path(), {});
  EXPECT_TRUE(source->Next());
  EXPECT_THAT(source->Warnings(),
              ElementsAre("1 spectrum marked as centroid, taken as profile by the spacing of "
                          "their points (first at scan 1)"));
}

TEST(SpectrumSource, ZerosThatAFileLeavesOutArePutBack) {
  const TempFile file("a.txt", "100 1\n100.1 9\n100.2 1\n103.05 1\n103.15 9\n103.25 1\n");
  const auto loaded = LoadAll(file.Path());
  EXPECT_EQ(loaded[0].spectrum->xAxis.size(), 6U + 28U);
  EXPECT_EQ(loaded[0].spectrum->tic, 22.0);
}

TEST(SpectrumSource, RoundedAxesAreEvenedOutAndTold) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += fmt::format("{:.1f} {}\n", 100.0 + 0.135 * i, 20 + i % 7);
  const TempFile file("a.txt", text);
  const auto source = OpenSpectra(file.Path(), {});
  const auto loaded = source->Next()();
  ASSERT_EQ(loaded.spectrum->xAxis.size(), 1000U);
  for (std::size_t i = 0; i < 1000; ++i)
    EXPECT_NEAR(loaded.spectrum->xAxis[i], 100.0 + 0.135 * static_cast<double>(i), 0.02);
  EXPECT_THAT(source->Notes(),
              ElementsAre("m/z of 1 spectrum rounded to too few decimals for the steps; evened out"));
}

TEST(SpectrumSource, HowManyProfilesGotZerosIsTold) {
  const TempFile file(
      "a.mzML", MzML(PlainSpectrum("scan=1", {100, 100.1, 100.2, 103, 103.1, 103.2}, {1, 9, 1, 1, 9, 1}) +
                     PlainSpectrum("scan=2", {100, 100.1, 100.2}, {1, 9, 1})));
  const auto source = OpenSpectra(file.Path(), {});
  while (const auto load = source->Next()) load();
  EXPECT_THAT(source->Notes(), ElementsAre("points left out of 1 spectrum taken for zeros"));
}

TEST(SpectrumSource, ARunsScanWithoutPointsIsSkipped) {
  const TempFile folder("x", "");
  TslTool::RunWriter writer(folder.Folder() + "/a.run", "");
  writer.AddTune(1, TslTool::Simulator(1).Tune());
  writer.AddScan(RawScan(1, {}));
  writer.Finish();
  EXPECT_EQ(SkippedOf(folder.Folder() + "/a.run"),
            "1 of 1 spectra skipped: 1 of less than two points (first at scan 1)");
}

TEST(SpectrumSource, ARunIsNeverCentroid) {
  SpectrumChoice choice;
  choice.takenAs = Scan::Centroid;
  EXPECT_THROW(OpenSpectra(SmallRun().Path(), choice), TslTool::InputError);
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

// A command that works on peaks takes centroid data for them.
TEST(SpectrumSource, HandsOutCentroidDataAsPeaksIfThatIsWanted) {
  const TempFile file("list.txt", "500.5 10\n600.25 20\n611.5 5\n700 7\n");
  EXPECT_THAT(SkippedOf(file.Path()), HasSubstr("centroid by the spacing of their points"));
  SpectrumChoice choice;
  choice.withPeakLists = true;
  const std::vector<LoadedSpectrum> loaded = LoadAll(file.Path(), choice);
  ASSERT_EQ(loaded.size(), 1U);
  EXPECT_TRUE(loaded[0].isPeakList);
  EXPECT_EQ(loaded[0].spectrum->QNumPeaks(), 4U);
  choice.takenAs = Scan::Profile;
  EXPECT_FALSE(LoadAll(file.Path(), choice)[0].isPeakList);
}

TEST(SpectrumSource, CountsPeaksThatAListHasWithoutIntensity) {
  const TempFile file("list.txt", "500.5 10\n600.25 0\n611.5 -5\n700 7\n");
  SpectrumChoice choice;
  choice.withPeakLists = true;
  choice.takenAs = Scan::Centroid;
  const auto source = OpenSpectra(file.Path(), choice);
  EXPECT_EQ(source->Next()().spectrum->QNumPeaks(), 2U);
  EXPECT_THAT(source->Warnings(),
              testing::Contains("2 peaks left out of lists of peaks, the intensity not being above 0"));
}

TEST(SpectrumSource, SkipsAnEmptySpectrumThoughAllAreTakenAsPeaks) {
  const TempFile file("mixed.mzML", MixedMzML());
  SpectrumChoice choice;
  choice.withPeakLists = true;
  choice.takenAs = Scan::Centroid;
  EXPECT_THAT(ScansOf(file.Path(), choice), ElementsAre(1, 2, 3, 5));
  EXPECT_THAT(SkippedOf(file.Path(), choice), HasSubstr("of less than two points"));
}

}  // namespace
}  // namespace tests
