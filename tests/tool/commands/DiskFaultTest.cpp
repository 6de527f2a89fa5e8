// The tool on a disk that is full or cannot be read: status 1, a reason, nothing lost and nothing
// half written.
//
// Tests: tool/frame/Output.cpp, tool/frame/Spool.cpp, tool/io/RunFile.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/commands/DemoRun.h>

namespace tests {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

// Files may not grow above this many blocks of 512 bytes; what the tool says goes to one, too.
Outcome RunOnFullDisk(const std::string& folder, int blocks, const std::string& words) {
  return RunShell("cd '" + folder + "' && RUN='" + DemoRun::Get().Run() + "' && ulimit -f " +
                  std::to_string(blocks) + " && \"$TSLBL\" " + words);
}

TEST(DiskFault, AFullDiskKeepsTheFileThatWasToBeReplaced) {
  for (const char* format : {"tsv", "json", "xml", "table"}) {
    const TempFile old("peaks.out", "what was there");
    const Outcome outcome =
        RunOnFullDisk(old.Folder(), 8, std::string("peaks \"$RUN\" -o peaks.out --format ") + format);
    EXPECT_EQ(outcome.status, 1) << format;
    EXPECT_THAT(outcome.err, AllOf(StartsWith("tslbl: "), HasSubstr("peaks.out: cannot be written: ")))
        << format;
    EXPECT_EQ(ReadFile(old.Path()), "what was there");
    EXPECT_THAT(NamesIn(old.Folder()), ElementsAre("peaks.out"));
  }
}

TEST(DiskFault, AFullDiskForSpectraThatWaitLeavesNothing) {
  const TempFile old("peaks.mzML", "what was there");
  const Outcome outcome = RunOnFullDisk(old.Folder(), 64, "peaks \"$RUN\" -o peaks.mzML --format mzml");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              StartsWith("tslbl: " + old.Folder() + ": a temporary file cannot be written: File too large"));
  EXPECT_EQ(ReadFile(old.Path()), "what was there");
  EXPECT_THAT(NamesIn(old.Folder()), ElementsAre("peaks.mzML"));
}

TEST(DiskFault, AFullDiskForTheCurveLeavesNoPeaksEither) {
  const TempFile folder("x", "");
  const Outcome outcome = RunOnFullDisk(folder.Folder(), 8, "peaks \"$RUN\" -o peaks.tsv --curve curve.tsv");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("curve.tsv: cannot be written: "));
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(DiskFault, AFullDiskForASimulatedRunLeavesNone) {
  for (const int blocks : {1, 8, 64, 512}) {
    const TempFile folder("x", "");
    const Outcome outcome = RunOnFullDisk(folder.Folder(), blocks, "simulate -o a.run --truth truth.tsv");
    EXPECT_EQ(outcome.status, 1) << blocks;
    EXPECT_THAT(outcome.err, StartsWith("tslbl: ")) << blocks;
    EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x")) << blocks;
  }
}

TEST(DiskFault, AFullDiskForAnAverageOrACalibratedRunLeavesNone) {
  for (const int blocks : {1, 8, 32}) {
    for (const char* output : {"a.run", "a.mzML", "a.txt"}) {
      const TempFile folder("x", "");
      const Outcome outcome =
          RunOnFullDisk(folder.Folder(), blocks, std::string("average \"$RUN\" -q -o ") + output);
      EXPECT_EQ(outcome.status, 1) << output << blocks;
      EXPECT_THAT(outcome.err, StartsWith("tslbl: ")) << output << blocks;
      EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x")) << output << blocks;
    }
  }
}

TEST(DiskFault, AReadErrorIsToldWithItsReason) {
  for (const char* words :
       {"peaks /proc/self/mem", "info /proc/self/mem", "peaks --scan 1 --chain /proc/self/mem"}) {
    const Outcome outcome = RunShell(std::string("\"$TSLBL\" ") + words);
    EXPECT_EQ(outcome.status, 1) << words;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, AllOf(StartsWith("tslbl: /proc/self/mem: "), HasSubstr("cannot be read")))
        << words;
  }
}

TEST(DiskFault, AFolderIsNoInput) {
  const TempFile folder("x", "");
  for (const char* words : {"peaks .", "info .", "peaks --scan 1 --chain ."}) {
    const Outcome outcome = RunShell("cd '" + folder.Folder() + "' && \"$TSLBL\" " + words);
    EXPECT_EQ(outcome.status, 1) << words;
    EXPECT_THAT(outcome.err, StartsWith("tslbl: .: ")) << words;
  }
}

}  // namespace
}  // namespace tests
