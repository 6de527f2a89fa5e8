#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/io/RunMaker.h>
#include <tool/simulate/ProteinText.h>
#include <tool/simulate/Simulator.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Simulate, WritesTheSimulatorsScans) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/a.run";
  ASSERT_EQ(RunTool({"simulate", "-o", run, "--scans", "3", "--seed", "7"}).status, 0);
  const auto scans = ReadRun(run);
  ASSERT_EQ(scans.size(), 3U);
  for (std::uint32_t i = 0; i < 3; ++i) EXPECT_EQ(scans[i], TslTool::Simulator(3, 7).MakeScan(i));
}

TEST(Simulate, SaysNothingAndWritesTwentyScansUnlessTold) {
  const DemoRun& demo = DemoRun::Get();
  EXPECT_EQ(demo.Simulated().status, 0);
  EXPECT_EQ(demo.Simulated().out, "");
  EXPECT_EQ(demo.Simulated().err, "");
  EXPECT_EQ(ReadRun(demo.Run()).size(), 20U);
}

TEST(Simulate, TheTruthIsATableOfTheSimulatorsLines) {
  const auto& truth = DemoRun::Get().Truth();
  const auto lines = TslTool::Simulator().Truth(0);
  ASSERT_GT(truth.size(), lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(truth[i].at("scan"), "1");
    EXPECT_NEAR(std::stod(truth[i].at("mz")), lines[i].mz, 1e-6);
    EXPECT_NEAR(std::stod(truth[i].at("height")), lines[i].height, 1e-5 * lines[i].height);
    EXPECT_EQ(truth[i].at("compound"), lines[i].compound);
    EXPECT_EQ(truth[i].at("charge"), std::to_string(lines[i].charge));
  }
}

TEST(Simulate, WritesARunOfProteinsAsTheInstrumentScansThem) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/a.run", truth = folder.Folder() + "/t.tsv";
  ASSERT_EQ(RunTool({"simulate", "-o", run, "--scans", "2", "--truth", truth, "--mz", "600-1800", "--mz-step",
                     "0.1", "--width", "0.8", "--background", "3", "--protein", "myoglobin=16951.5:10-20:500",
                     "--protein", "lysozyme=14305.1:8-14"})
                .status,
            0);
  const TslTool::Instrument instrument{600.0, 1800.0, 0.1, 0.8};
  const TslTool::Sample sample{{TslTool::ParseProtein("myoglobin=16951.5:10-20:500", instrument),
                                TslTool::ParseProtein("lysozyme=14305.1:8-14", instrument)},
                               3.0};
  const TslTool::Simulator simulator(2, 1, sample, instrument);
  const auto scans = ReadRun(run);
  ASSERT_EQ(scans.size(), 2U);
  for (std::uint32_t i = 0; i < 2; ++i) EXPECT_EQ(scans[i], simulator.MakeScan(i));
  EXPECT_EQ(RowsOf(ReadFile(truth)).size(), 2 * (11U + 7U));
}

TEST(Simulate, LeavesAFileThatIsThereAlone) {
  const TempFile file("a.run", "mine");
  const Outcome outcome = RunTool({"simulate", "-o", file.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tslbl: " + file.Path() + ": exists already\n");
  EXPECT_EQ(ReadFile(file.Path()), "mine");
}

TEST(Simulate, WrongUsageIsStatus2) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/a.run";
  const std::pair<Arguments, const char*> cases[] = {
      {{"simulate"}, "tslbl: --output FILE is required"},
      {{"simulate", "-o", run, "--scans", "0"}, "tslbl: --scans: there must be at least one"},
      {{"simulate", "-o", run, "--scans", "-1"}, "tslbl: --scans: \"-1\" is not a whole number"},
      {{"simulate", "-o", run, "--truth", run}, "tslbl: --truth: "},
      {{"simulate", "-o", run, "--protein", "m=16951.5:1-5"},
       "tslbl: --protein: \"m=16951.5:1-5\": CHARGES: "},
      {{"simulate", "-o", run, "--mz", "1-5"}, "tslbl: --mz: \"1-5\" is not within"},
      {{"simulate", "-o", run, "--width", "0.02"}, "tslbl: --width: a line of 0.02 m/z"}};
  for (const auto& [words, message] : cases) {
    const Outcome outcome = RunTool(words);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_THAT(outcome.err, StartsWith(message));
  }
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(Simulate, APlaceThatIsNotThereIsStatus1) {
  const TempFile folder("x", "");
  EXPECT_EQ(RunTool({"simulate", "-o", "/no/such/a.run"}).status, 1);
  EXPECT_EQ(RunTool({"simulate", "-o", folder.Folder() + "/a.run", "--truth", "/no/such/t.tsv"}).status, 1);
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(Simulate, AFullDiskForTheTruthLeavesNothing) {
  const TempFile folder("x", "");
  const Outcome outcome = RunTool({"simulate", "-o", folder.Folder() + "/a.run", "--truth", "/dev/full"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tslbl: /dev/full: cannot be written: No space left on device\n");
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(Simulate, CtrlCEndsItAndLeavesNothing) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/a.run";
  Process process(
      ToolCommand({"simulate", "-o", run, "--scans", "4000000", "--truth", folder.Folder() + "/truth.tsv"}));
  ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(run + "-wal"); }));
  process.Signal(SIGINT);
  const Outcome outcome = process.Wait();
  EXPECT_EQ(outcome.status, 130);
  EXPECT_EQ(outcome.err, "tslbl: interrupted\n");
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(Simulate, KilledItLeavesARunThatCanBeRead) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/a.run";
  Process process(ToolCommand({"simulate", "-o", run, "--scans", "4000000"}));
  ASSERT_TRUE(WaitUntil([&] {
    std::error_code missing;
    return std::filesystem::file_size(run + "-wal", missing) > 200000 && !missing;
  }));
  process.Signal(SIGKILL);
  process.Wait();
  EXPECT_GE(ReadRun(run).size(), 2U);
  EXPECT_EQ(RunTool({"peaks", run, "--scan", "1"}).status, 0);
}

}  // namespace
}  // namespace tests
