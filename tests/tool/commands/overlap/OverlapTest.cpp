// Tests: Overlap.cpp, tool/commands/peaks/SharedOptions.cpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/commands/overlap/Doublet.h>
#include <tool/plot/SvgReading.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Overlap : public testing::Test {
 protected:
  Outcome Run(const Arguments& more) const { return On(file_.Path(), more); }
  Outcome OnDemo(const Arguments& more) const { return On(DemoRun::Get().Run(), more); }
  std::string In(const std::string& name) const { return file_.Folder() + "/" + name; }

  TempFile file_{"doublet.txt", TextOf(CountedSpectrum())};

 private:
  static Outcome On(const std::string& input, const Arguments& more) {
    Arguments words = {"overlap", input};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }
};

TEST_F(Overlap, TakesTheDoubletOfATextApart) {
  const Outcome outcome = Run({"--format", "tsv"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  std::vector<Row> fitted;
  for (const Row& row : RowsOf(outcome.out))
    if (!row.at("chi2").empty()) fitted.push_back(row);
  ASSERT_EQ(fitted.size(), 2U) << outcome.out;
  EXPECT_NEAR(std::stod(fitted[0].at("mz")), kLeft.mz, 0.02);
  EXPECT_NEAR(std::stod(fitted[1].at("mz")), kRight.mz, 0.02);
  EXPECT_NEAR(std::stod(fitted[0].at("area")), kLeft.Area(), 0.03 * kLeft.Area());
  EXPECT_THAT(outcome.err, HasSubstr("doublet.txt: 1 group of 2 fitted peaks"));
}

// 1.5 widths from a peak ten times as high there is a dip, but hardly a rise.
TEST_F(Overlap, FindsAPeakThatHardlyRisesBesideAnother) {
  const TempFile file("dip.txt", TextOf(CountedSpectrum({{503.0, 3000.0}, {503.9, 300.0}, kAlone})));
  const Arguments words = {"overlap", file.Path(), "--format", "tsv"};
  EXPECT_THAT(RunTool(words).err, HasSubstr("dip.txt: 1 group of 2 fitted peaks"));
  Arguments rising = words;
  rising.insert(rising.end(), {"--min-rise", "2.5"});
  EXPECT_THAT(RunTool(rising).err, HasSubstr("dip.txt: 0 groups of 0 fitted peaks"));
}

TEST_F(Overlap, HasTheDataPeaksOfPeaks) {
  std::vector<std::string> mz;
  for (const Row& row : RowsOf(OnDemo({"--scan", "5", "--format", "tsv"}).out))
    if (row.at("chi2").empty()) mz.push_back(row.at("mz"));
  std::vector<std::string> peaks;
  for (const Row& row : DemoRun::Get().Peaks({"--scan", "5", "--min-rise", "0"}))
    peaks.push_back(row.at("mz"));
  EXPECT_EQ(mz, peaks);
}

TEST_F(Overlap, LooksWhereItIsToldTo) {
  EXPECT_THAT(Run({"--overlap-range", "506-508"}).err, HasSubstr(": 0 groups of 0 fitted peaks"));
  EXPECT_THAT(Run({"--overlap-range", "500-504"}).err, HasSubstr(": 1 group of 2 fitted peaks"));
}

TEST_F(Overlap, SearchesByEitherMethod) {
  const auto rows = RowsOf(Run({"--format", "tsv", "--method", "hooke"}).out);
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_NEAR(std::stod(rows[1].at("mz")), kLeft.mz, 0.02);
}

TEST_F(Overlap, DrawsAPicture) {
  const Outcome outcome = Run({"--plot", In("plot.svg"), "--view", "501-506", "--quiet"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(IsDocument(ReadFile(In("plot.svg"))));
  EXPECT_THAT(ReadFile(In("plot.svg")), HasSubstr("their sum"));
  EXPECT_EQ(outcome.err, "");
}

TEST_F(Overlap, EditsAGroup) {
  EXPECT_THAT(Run({"--refit-add", "507"}).err, HasSubstr(": 2 groups of 3 fitted peaks"));
  EXPECT_THAT(Run({"--refit-remove", "503.75"}).err, HasSubstr(": 1 group of 1 fitted peak"));
  EXPECT_THAT(Run({"--refit-remove", "503.75", "--refit-remove", "503"}).err, HasSubstr(": 0 groups of 0"));
}

TEST_F(Overlap, ReplaysAFileOfEdits) {
  const TempFile edits("edits.tsv", "scan\tedit\tmz\n1\tremove\t503.75\n1\tadd\t507\n");
  const Outcome replayed = Run({"--format", "tsv", "--edits", edits.Path()});
  EXPECT_EQ(replayed.status, 0) << replayed.err;
  EXPECT_EQ(replayed.out, Run({"--format", "tsv", "--refit-remove", "503.75", "--refit-add", "507"}).out);
}

TEST_F(Overlap, WritesNothingWhereAnEditFails) {
  const Outcome outcome = Run({"--format", "tsv", "--output", In("table.tsv"), "--refit-remove", "600"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(
      outcome.err,
      HasSubstr("doublet.txt: scan 1: m/z 600 cannot be removed: there is no fitted peak; the nearest is "
                "at 503.7"));
  EXPECT_THAT(NamesIn(file_.Folder()), ElementsAre("doublet.txt"));
}

TEST_F(Overlap, EditsOneSpectrumAlone) {
  const Outcome outcome = OnDemo({"--scan", "2-3", "--refit-add", "779.6", "--output", In("table.txt")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("choose one with --scan, or list the edits of each in a file for --edits"));
  EXPECT_THAT(NamesIn(file_.Folder()), ElementsAre("doublet.txt"));
}

TEST_F(Overlap, TellsOfEditsThatNothingCameOf) {
  const TempFile edits("edits.tsv", "9 add 507\n");
  EXPECT_THAT(Run({"--edits", edits.Path()}).err,
              HasSubstr("tslbl: warning: " + file_.Path() + ": scan 9 has edits and was not evaluated\n"));
}

TEST_F(Overlap, RefusesBadEdits) {
  const TempFile edits("edits.tsv", "9 move 507\n");
  const Outcome outcome = Run({"--edits", edits.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("edits.tsv: line 1: \"move\" is neither \"add\" nor \"remove\""));
}

TEST_F(Overlap, RefusesWrongUsage) {
  const TempFile edits("edits.tsv", "");
  const std::vector<Arguments> wrong = {{"--refit-add", "x"},
                                        {"--refit-add", "-3"},
                                        {"--refit-add", "503", "--edits", edits.Path()},
                                        {"--group-peaks", "1"},
                                        {"--scale", "0"},
                                        {"--min-rise", "-1"},
                                        {"--view", "1-2"},
                                        {"--method", "simplex"},
                                        {"--output", file_.Path()},
                                        {"--edits", edits.Path(), "--output", edits.Path()},
                                        {"--resume"},
                                        {"--plot", In("a.svg"), "--plot-dir", In("pictures")}};
  for (const Arguments& words : wrong) EXPECT_EQ(Run(words).status, 2) << words.front();
  EXPECT_THAT(NamesIn(file_.Folder()), ElementsAre("doublet.txt"));
}

TEST_F(Overlap, ResumesATableWhereverItWasCut) {
  const std::string whole = OnDemo({"--format", "tsv"}).out;
  ASSERT_GT(whole.size(), 1000U);
  for (const double fraction : {0.0, 0.1, 0.5, 0.9999}) {
    const auto bytes = static_cast<std::size_t>(fraction * static_cast<double>(whole.size()));
    const TempFile part("overlap.tsv.part", whole.substr(0, bytes));
    const std::string table = part.Folder() + "/overlap.tsv";
    const Outcome outcome = OnDemo({"--format", "tsv", "--output", table, "--resume"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(ReadFile(table) == whole) << fraction;
  }
}

TEST_F(Overlap, RefusesToResumeATableOfPeaks) {
  const TempFile part("overlap.tsv.part", RunTool({"peaks", DemoRun::Get().Run(), "--format", "tsv"}).out);
  const Outcome outcome = OnDemo({"--format", "tsv", "--output", part.Folder() + "/overlap.tsv", "--resume"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("is not the head of a peak table"));
}

TEST_F(Overlap, GivesTheSameOnAnyNumberOfThreads) {
  const std::string one = OnDemo({"--format", "tsv", "--threads", "1"}).out;
  EXPECT_TRUE(OnDemo({"--format", "tsv", "--threads", "4"}).out == one);
}

}  // namespace
}  // namespace tests
