// A table that was interrupted is resumed.
//
// Tests: PeakFile.cpp, RestOfTable.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <cmath>

#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string& WholeTable() {
  static const std::string table = RunTool({"peaks", DemoRun::Get().Run(), "--format", "tsv"}).out;
  return table;
}

Outcome Resume(const std::string& path, const Arguments& more = {}) {
  Arguments words = {"peaks", DemoRun::Get().Run(), "--format", "tsv", "--output", path, "--resume"};
  words.insert(words.end(), more.begin(), more.end());
  return RunTool(words);
}

TEST(Resume, EndsWithTheSameTableWhereverItWasCut) {
  for (const double fraction : {0.0, 0.001, 0.1, 0.35, 0.5, 0.77, 0.9999, 1.0}) {
    const auto bytes = static_cast<std::size_t>(fraction * static_cast<double>(WholeTable().size()));
    const TempFile part("peaks.tsv.part", WholeTable().substr(0, bytes));
    const Outcome outcome = Resume(part.Folder() + "/peaks.tsv");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(ReadFile(part.Folder() + "/peaks.tsv") == WholeTable()) << bytes;
    EXPECT_THAT(NamesIn(part.Folder()), ElementsAre("peaks.tsv"));
  }
}

TEST(Resume, BeginsWhereNothingIsThere) {
  const TempFile folder("x", "");
  EXPECT_EQ(Resume(folder.Folder() + "/peaks.tsv").status, 0);
  EXPECT_TRUE(ReadFile(folder.Folder() + "/peaks.tsv") == WholeTable());
}

TEST(Resume, RefusesAPartOfAnotherChainAndLeavesItAlone) {
  const std::string half = WholeTable().substr(0, WholeTable().size() / 2);
  const TempFile part("peaks.tsv.part", half);
  const Outcome outcome = Resume(part.Folder() + "/peaks.tsv", {"--smooth", "off"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("/peaks.tsv.part: scan "));
  EXPECT_THAT(outcome.err, HasSubstr("holds other peaks than this input and chain give"));
  EXPECT_TRUE(ReadFile(part.Path()) == half);
  EXPECT_THAT(NamesIn(part.Folder()), ElementsAre("peaks.tsv.part"));
}

TEST(Resume, RefusesAPartOfOtherScansAndLeavesItAlone) {
  const std::string half = WholeTable().substr(0, WholeTable().size() / 2);
  const TempFile part("peaks.tsv.part", half);
  const Outcome fewer = Resume(part.Folder() + "/peaks.tsv", {"--scan", "2-20"});
  EXPECT_EQ(fewer.status, 1);
  EXPECT_THAT(fewer.err, HasSubstr("/peaks.tsv.part: scan 1: is not asked for; without"));
  EXPECT_TRUE(ReadFile(part.Path()) == half);
}

TEST(Resume, RefusesAPartThatLacksTheFirstScans) {
  const std::string table = RunTool({"peaks", DemoRun::Get().Run(), "--format", "tsv", "--scan", "3-9"}).out;
  const TempFile part("peaks.tsv.part", table);
  const Outcome outcome = Resume(part.Folder() + "/peaks.tsv");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("/peaks.tsv.part: scan 1: is asked for, and missing; without"));
  EXPECT_TRUE(ReadFile(part.Path()) == table);
  EXPECT_EQ(Resume(part.Folder() + "/peaks.tsv", {"--scan", "3-15"}).status, 0);
}

TEST(Resume, ScansWithoutAPeakDoNotShowInATable) {
  // Nothing elutes in the first scans.
  const Arguments strict = {"--threshold", "3e7"};
  Arguments words = {"peaks", DemoRun::Get().Run(), "--format", "tsv"};
  words.insert(words.end(), strict.begin(), strict.end());
  const std::string whole = RunTool(words).out;
  ASSERT_FALSE(LinesOf(whole).at(1).starts_with("1\t"));
  const TempFile part("peaks.tsv.part", whole.substr(0, whole.size() - whole.size() / 4));
  const Outcome outcome = Resume(part.Folder() + "/peaks.tsv", strict);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(ReadFile(part.Folder() + "/peaks.tsv") == whole);
}

TEST(Resume, IsForATableInAFile) {
  const std::string run = DemoRun::Get().Run();
  EXPECT_EQ(RunTool({"peaks", run, "--resume"}).status, 2);
  EXPECT_EQ(RunTool({"peaks", run, "--resume", "--format", "tsv"}).status, 2);
  EXPECT_EQ(RunTool({"peaks", run, "--resume", "-o", "/tmp/x", "--format", "json"}).status, 2);
  EXPECT_EQ(
      RunTool({"peaks", run, "--resume", "-o", "/tmp/x", "--format", "tsv", "--curve", "/tmp/y"}).status, 2);
}

// A peak at 100.5, on an axis that is long enough to be evaluated.
std::string PeakSpectrum(const std::string& id) {
  Values mz, counts;
  for (int i = 0; i < 200; ++i) {
    mz.push_back(100 + i * 0.005);
    counts.push_back(1000 * std::exp(-(i - 100.0) * (i - 100.0) / 200) + i % 3);
  }
  return PlainSpectrum(id, mz, counts);
}

Outcome ResumeMzML(const std::vector<std::string>& ids, const TempFile& part) {
  std::string spectra;
  for (const std::string& id : ids) spectra += PeakSpectrum(id);
  const TempFile file("a.mzML", MzML(spectra, ids.size()));
  const std::string path = part.Folder() + "/peaks.tsv";
  const std::string whole = RunTool({"peaks", file.Path(), "--format", "tsv", "--quiet"}).out;
  part.Write(whole.substr(0, whole.size() - 20));
  const Outcome outcome =
      RunTool({"peaks", file.Path(), "--format", "tsv", "--output", path, "--resume", "--quiet"});
  if (outcome.status == 0) {
    EXPECT_EQ(ReadFile(path), whole);
  }
  return outcome;
}

TEST(Resume, GoesOnInMzMLWhoseNumbersAscend) {
  const TempFile part("peaks.tsv.part", "");
  EXPECT_EQ(ResumeMzML({"scan=2", "scan=5", "scan=9"}, part).status, 0);
}

TEST(Resume, RefusesNumbersThatDoNotAscend) {
  const struct {
    std::vector<std::string> ids;
    const char* error;
  } table[] = {
      {{"function=1 scan=1", "function=1 scan=2", "function=2 scan=2", "function=2 scan=3"},
       "scan 2: stands behind scan 2 in "},
      {{"function=1 scan=1", "function=1 scan=2", "function=2 scan=1"}, "scan 1: stands behind scan 2 in "}};
  for (const auto& [ids, error] : table) {
    const TempFile part("peaks.tsv.part", "");
    const Outcome outcome = ResumeMzML(ids, part);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("/peaks.tsv.part: " + std::string(error)));
    EXPECT_THAT(outcome.err,
                HasSubstr(", so the numbers do not tell where to go on; without --resume it starts over"));
    EXPECT_THAT(NamesIn(part.Folder()), ElementsAre("peaks.tsv.part"));
  }
}

TEST(Resume, GoesOnAfterCtrlCAndAfterAKilledProcess) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/long.run";
  ASSERT_EQ(RunTool({"simulate", "--output", run, "--scans", "250"}).status, 0);
  const std::string path = folder.Folder() + "/peaks.tsv";
  // A slow way, that it may be caught on.
  const Arguments slow = {"peaks", run, "--format", "tsv", "--smooth", "median:151", "--threads", "1"};
  const std::string whole = RunTool(slow).out;
  Arguments words = slow;
  words.insert(words.end(), {"--output", path});
  for (const int signal : {SIGINT, SIGKILL}) {
    Process process(ToolCommand(words));
    ASSERT_TRUE(WaitUntil([&] { return ReadFile(path + ".part").size() > whole.size() / 5; }));
    process.Signal(signal);
    const Outcome outcome = process.Wait();
    ASSERT_EQ(outcome.status, 128 + signal);
    if (signal == SIGINT) {
      EXPECT_EQ(outcome.err,
                "tslbl: " + path +
                    ".part holds the scans so far; --resume continues with it\ntslbl: interrupted\n");
    }
    EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("long.run", "peaks.tsv.part", "x"));
    EXPECT_TRUE(whole.starts_with(ReadFile(path + ".part")));
    Arguments again = words;
    again.emplace_back("--resume");
    EXPECT_EQ(RunTool(again).status, 0);
    EXPECT_TRUE(ReadFile(path) == whole);
    std::filesystem::remove(path);
  }
}

}  // namespace
}  // namespace tests
