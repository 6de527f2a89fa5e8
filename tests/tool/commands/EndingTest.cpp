// How the tool ends when its surroundings do not play along.
//
// Tests: tool/main.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include <fcntl.h>
#include <tool/commands/DemoRun.h>

namespace tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::StartsWith;

TEST(Ending, CtrlCLeavesNothingHalfWritten) {
  const TempFile folder("x", "");
  const std::string pipe = folder.Folder() + "/in.txt";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  Process process(ToolCommand(
      {"peaks", pipe, "-o", folder.Folder() + "/peaks.tsv", "--curve", folder.Folder() + "/curve.tsv"}));
  // A spectrum that never ends.
  const int writer = open(pipe.c_str(), O_WRONLY);
  std::string text;
  for (int i = 0; i < 200000; ++i) text += std::to_string(100 + i) + " 1\n";
  ASSERT_GT(write(writer, text.data(), text.size()), 0);
  ASSERT_TRUE(WaitUntil([&] { return NamesIn(folder.Folder()).size() == 4; }));
  usleep(20000);
  process.Signal(SIGINT);
  const Outcome outcome = process.Wait();
  close(writer);
  EXPECT_EQ(outcome.status, 130);
  EXPECT_EQ(outcome.err, "tslbl: interrupted\n");
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("in.txt", "x"));
}

TEST(Ending, CtrlCLeavesNothingOfAResultThatCannotBeGoneOnWith) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/long.run";
  ASSERT_EQ(RunTool({"simulate", "--output", run, "--scans", "250"}).status, 0);
  for (const char* format : {"json", "xml", "table", "mzml"}) {
    Process process(ToolCommand({"peaks", run, "--format", format, "--smooth", "median:151", "--threads", "1",
                                 "--output", folder.Folder() + "/peaks"}));
    ASSERT_TRUE(WaitUntil([&] { return NamesIn(folder.Folder()).size() == 3; }));
    usleep(50000);
    process.Signal(SIGINT);
    const Outcome outcome = process.Wait();
    EXPECT_EQ(outcome.status, 130) << format;
    EXPECT_EQ(outcome.err, "tslbl: interrupted\n");
    EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("long.run", "x")) << format;
  }
}

TEST(Ending, EachSignalIsWhatTheProcessEndsBy) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const TempFile folder("x", "");
    const std::string pipe = folder.Folder() + "/in.txt";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    Process process(ToolCommand({"peaks", pipe, "-o", folder.Folder() + "/peaks.tsv"}));
    const int writer = open(pipe.c_str(), O_WRONLY);
    // Once this is taken, the rest is waited for.
    const std::string text(200000, '\n');
    ASSERT_GT(write(writer, text.data(), text.size()), 0);
    usleep(100000);
    process.Signal(signal);
    const Outcome outcome = process.Wait();
    close(writer);
    EXPECT_EQ(outcome.status, 128 + signal);
    EXPECT_EQ(outcome.err, "tslbl: interrupted\n");
    EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("in.txt", "x"));
  }
}

TEST(Ending, AReaderThatHasSeenEnoughIsNoError) {
  const TempFile folder("x", "");
  const Outcome outcome = RunShell("cd '" + folder.Folder() +
                                   "' && \"$TSLBL\" peaks --format tsv --sn 0 --curve curve.tsv | head -1");
  EXPECT_EQ(LinesOf(outcome.out).size(), 1U);
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(Ending, AFullOrClosedStandardOutputIsStatus1) {
  for (const char* words : {"peaks --scan 1", "info \"$RUN\"", "--help", "--version", "peaks --show-chain"}) {
    const std::string call = "RUN='" + DemoRun::Get().Run() + "'; \"$TSLBL\" " + words;
    const Outcome full = RunShell(call + " > /dev/full");
    EXPECT_EQ(full.status, 1) << words;
    EXPECT_THAT(full.err, StartsWith("tslbl: standard output"));
    EXPECT_EQ(RunShell(call + " >&-").status, 1) << words;
  }
}

TEST(Ending, NoProgressInAPipe) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/a.run";
  EXPECT_EQ(RunShell("\"$TSLBL\" simulate -o '" + run + "' 2>&1").out, "");
  EXPECT_EQ(RunShell("\"$TSLBL\" peaks --quiet '" + run + "' 2>&1 >/dev/null | cat").out, "");
}

TEST(Ending, ADeviceForTheOutputStaysADevice) {
  EXPECT_EQ(RunTool({"peaks", "--scan", "1", "-o", "/dev/null"}).status, 0);
  struct stat there = {};
  stat("/dev/null", &there);
  EXPECT_TRUE(S_ISCHR(there.st_mode));
}

TEST(Ending, APipeIsAnInputLikeAnother) {
  const TempFile file("a.txt", "100 1\n100.1 500\n100.2 2\n100.3 1\n100.4 1\n");
  const Outcome piped = RunShell("cat '" + file.Path() + "' | \"$TSLBL\" peaks /dev/stdin");
  EXPECT_EQ(piped.status, 0) << piped.err;
  EXPECT_EQ(piped.out, RunTool({"peaks", file.Path()}).out);
}

TEST(Ending, APlaceThatCannotBeWrittenIsToldBeforeTheWork) {
  const TempFile folder("x", "");
  for (const std::string& place : {folder.Folder(), folder.Folder() + "/no/such", std::string("/dev/full")}) {
    const Outcome outcome = RunTool({"peaks", "--scan", "1", "--output", place});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("tslbl: " + place + ": cannot be written: "));
    EXPECT_EQ(RunTool({"peaks", "--scan", "1", "--curve", place}).status, 1);
  }
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

}  // namespace
}  // namespace tests
