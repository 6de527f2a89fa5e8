// Tests: EvaluateSeveral.cpp, Peaks.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

// Three files of which b.mzML is cut, in a folder of their own.
class SomeFiles {
 public:
  SomeFiles() {
    const std::string mzml = MzML(PlainSpectrum("scan=1", {100, 100.1, 100.2, 100.3}, {1, 500, 2, 1}));
    Write("a.txt", "100 1\n100.1 500\n100.2 2\n100.3 1\n");
    Write("b.mzML", mzml.substr(0, mzml.size() / 2));
    Write("c.mzML", mzml);
  }
  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
  }
  std::string Path(const std::string& name) const { return folder_.Folder() + "/" + name; }
  // In their folder, by their names.
  Outcome Peaks(const std::string& words) const {
    return RunShell("cd '" + folder_.Folder() + "' && \"$TSLBL\" peaks " + words);
  }
  std::vector<std::string> Names() const { return NamesIn(folder_.Folder()); }

 private:
  TempFile folder_{"x", ""};
};

TEST(EvaluateSeveral, HaveATableEachAndOneFailureDoesNotEndTheOthers) {
  const SomeFiles files;
  const Outcome outcome = files.Peaks("a.txt b.mzML c.mzML --format tsv --output-dir D");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  const std::vector<std::string> lines = LinesOf(outcome.err);
  ASSERT_EQ(lines.size(), 4U) << outcome.err;
  EXPECT_THAT(lines[0], StartsWith("tslbl: a.txt: --smooth "));
  EXPECT_THAT(lines[1], StartsWith("tslbl: b.mzML: line "));
  EXPECT_THAT(lines[2], StartsWith("tslbl: c.mzML: --smooth "));
  EXPECT_EQ(lines[3], "tslbl: 2 of 3 files evaluated; 1 failed: b.mzML");
  EXPECT_THAT(NamesIn(files.Path("D")), ElementsAre("a.tsv", "c.tsv"));
  for (const char* name : {"a.txt", "c.mzML"})
    EXPECT_EQ(ReadFile(files.Path("D/") + name[0] + ".tsv"),
              files.Peaks(std::string(name) + " --format tsv").out);
}

TEST(EvaluateSeveral, AreTakenFromAListToo) {
  const SomeFiles files;
  files.Write("list", "# inputs\n\nc.mzML\n");
  for (const char* words : {"a.txt --list list --output-dir D", "a.txt --list - --output-dir D < list"}) {
    const Outcome outcome = files.Peaks(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, EndsWith("\ntslbl: 2 of 2 files evaluated\n"));
    EXPECT_THAT(NamesIn(files.Path("D")), ElementsAre("a.txt", "c.txt"));
    std::filesystem::remove_all(files.Path("D"));
  }
  EXPECT_EQ(files.Peaks("--list list --output-dir D -q").err, "");
  EXPECT_EQ(files.Peaks("--list - --output-dir E < /dev/null").err,
            "tslbl: standard input: names no input\n");
}

TEST(EvaluateSeveral, AFailureThatNamesNoFileIsToldWithItsInput) {
  const SomeFiles files;
  const Outcome outcome = files.Peaks("a.txt c.mzML --columns 1,2 --output-dir D -q");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, StartsWith("tslbl: c.mzML: --columns: is for text, and this is mzML"));
  EXPECT_THAT(outcome.err, EndsWith("\ntslbl: 1 of 2 files evaluated; 1 failed: c.mzML\n"));
}

TEST(EvaluateSeveral, WhatIsWrongForAllIsToldOnceAndBeforeAnyWork) {
  const SomeFiles files;
  std::filesystem::create_directory(files.Path("sub"));
  std::filesystem::copy_file(files.Path("a.txt"), files.Path("sub/a.txt"));
  const std::pair<std::string, std::string> cases[] = {
      {"a.txt c.mzML", "several inputs have a table each: name a folder for them with --output-dir"},
      {"a.txt c.mzML -o t", "several inputs have a table each: name a folder for them with --output-dir"},
      {"--list a.txt", "several inputs have a table each: name a folder for them with --output-dir"},
      {"a.txt --output-dir D -o t", "--output and --output-dir exclude each other"},
      {"a.txt --output-dir D --curve t", "--curve and --output-dir exclude each other"},
      {"a.txt --output-dir D --show-chain", "--show-chain and --output-dir exclude each other"},
      {"--output-dir D", "--output-dir: INPUT is missing"},
      {"a.txt c.mzML --output-dir D --resume", "--resume: only tables of --format tsv can be resumed"},
      {"a.txt - --output-dir D", "standard input has no name for its table; evaluate it alone"},
      {"a.txt sub/a.txt --output-dir D",
       "a.txt and sub/a.txt would have one table, D/a.txt; evaluate them into two folders"},
      {"a.txt c.mzML --output-dir .", "--output-dir: ./a.txt would be written over a.txt, which is read"},
      {"a.txt c.mzML --output-dir D --smooth boxcar",
       "--smooth: \"boxcar\": it is not one of auto, mean, median, gaussian, savgol, off"}};
  const std::vector<std::string> before = files.Names();
  for (const auto& [words, message] : cases) {
    const Outcome outcome = files.Peaks(words);
    EXPECT_EQ(outcome.status, 2) << words;
    EXPECT_THAT(outcome.err, StartsWith("tslbl: " + message)) << words;
    EXPECT_EQ(LinesOf(outcome.err).size(), 1U);
    EXPECT_EQ(files.Names(), before) << words;
  }
}

TEST(EvaluateSeveral, APlaceThatIsNoFolderIsToldBeforeTheWork) {
  const SomeFiles files;
  const Outcome outcome = files.Peaks("a.txt c.mzML --output-dir b.mzML");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, StartsWith("tslbl: b.mzML: cannot be made a folder: "));
}

TEST(EvaluateSeveral, ResumeLeavesWholeTablesAloneAndGoesOnWithTheOthers) {
  const SomeFiles files;
  const std::string run = DemoRun::Get().Run();
  const std::string words = "a.txt '" + run + "' c.mzML --format tsv --output-dir D -q";
  ASSERT_EQ(files.Peaks(words).status, 0);
  const std::string whole = ReadFile(files.Path("D/demo.tsv")), other = ReadFile(files.Path("D/c.tsv"));
  const std::string head = whole.substr(0, whole.find('\n') + 1);
  // One is whole, one was cut and one is no table yet.
  files.Write("D/a.tsv", head);
  std::filesystem::remove(files.Path("D/demo.tsv"));
  files.Write("D/demo.tsv.part", whole.substr(0, whole.size() / 2));
  files.Write("D/c.tsv", "");
  const Outcome outcome = files.Peaks(words.substr(0, words.size() - 3) + " --resume");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.err, EndsWith("\ntslbl: 3 of 3 files evaluated, 1 of them earlier\n"));
  EXPECT_EQ(ReadFile(files.Path("D/a.tsv")), head);
  EXPECT_TRUE(ReadFile(files.Path("D/demo.tsv")) == whole);
  EXPECT_EQ(ReadFile(files.Path("D/c.tsv")), other);
  EXPECT_THAT(NamesIn(files.Path("D")), ElementsAre("a.tsv", "c.tsv", "demo.tsv"));
}

TEST(EvaluateSeveral, CtrlCEndsThemAll) {
  const SomeFiles files;
  const std::string run = files.Path("long.run"), folder = files.Path("D");
  ASSERT_EQ(RunTool({"simulate", "--output", run, "--scans", "250"}).status, 0);
  Process process(ToolCommand({"peaks", run, files.Path("a.txt"), "--format", "tsv", "--smooth", "median:151",
                               "--threads", "1", "--output-dir", folder}));
  ASSERT_TRUE(WaitUntil([&] { return ReadFile(folder + "/long.tsv.part").size() > 10000; }));
  process.Signal(SIGINT);
  const Outcome outcome = process.Wait();
  EXPECT_EQ(outcome.status, 130);
  EXPECT_EQ(outcome.err, "tslbl: " + folder +
                             "/long.tsv.part holds the scans so far; --resume continues with it\n"
                             "tslbl: interrupted\n");
  EXPECT_THAT(NamesIn(folder), ElementsAre("long.tsv.part"));
}

}  // namespace
}  // namespace tests
