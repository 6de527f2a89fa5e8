#include <tool/commands/results/RunGrowth.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/io/RunMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TslTool::RunGrowth;
using TslTool::RunWriter;

TEST(RunGrowth, TellsOfScansThatCameSince) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.run";
  RunWriter writer(file, "");
  writer.AddTune(1, DemoTune());
  writer.AddScan(SmallRun::Scans()[0]);
  const RunGrowth growth(file);
  writer.AddScan(SmallRun::Scans()[1]);
  EXPECT_THAT(
      growth.Warnings(),
      ElementsAre("the run grew from 1 to 2 scans while it was read: its chromatograms and its spectra may "
                  "end at different ones; write the document again when it has ended"));
}

TEST(RunGrowth, IsNoneOfARunThatHasEnded) {
  const SmallRun run;
  EXPECT_THAT(RunGrowth(run.Path()).Warnings(), IsEmpty());
}

TEST(RunGrowth, IsNoneOfTheDemonstrationRun) { EXPECT_THAT(RunGrowth("").Warnings(), IsEmpty()); }

}  // namespace
}  // namespace tests
