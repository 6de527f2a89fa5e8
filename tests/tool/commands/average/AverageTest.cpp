// The command average, as its user sees it.
// Tests: Average.cpp, AverageFile.cpp, AverageOf.cpp.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <pwiz/data/msdata/MSDataFile.hpp>
#include <string>
#include <vector>

#include <tool/commands/DemoRun.h>
#include <tool/io/IndexedReading.h>
#include <tool/io/MzMLReading.h>
#include <tool/io/RunMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const Values kAxis = {100, 101, 102, 103};

std::string ProfileOf(const std::string& id, const Values& mz, const Values& counts,
                      const std::string& terms) {
  return SpectrumOf(id, mz.size(),
                    ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>(counts)),
                    Term(kProfile) + terms);
}

// A profile of two points each scan at a second.
std::string Profile(int scan, const Values& mz, const Values& counts, int level = 1,
                    const std::string& polarity = "MS:1000130") {
  return ProfileOf(fmt::format("scan={}", scan), mz, counts,
                   Term("MS:1000511", fmt::format("value=\"{}\"", level)) + Term(polarity));
}

// One of a function, as some instruments count their kinds of scans.
std::string OfFunction(int function, const Values& counts, const std::string& more = "") {
  return ProfileOf(fmt::format("function={} process=0 scan=1", function), kAxis, counts,
                   Term("MS:1000511", "value=\"1\"") + more);
}

// The scans of an mzML file in a folder of its own.
class Scans {
 public:
  explicit Scans(const std::vector<std::string>& spectra) {
    std::string all;
    for (const std::string& spectrum : spectra) all += spectrum;
    file_ = std::make_unique<TempFile>("in.mzML", MzML(all, spectra.size()));
  }
  std::string Path() const { return file_->Path(); }
  std::string Beside(const std::string& name) const { return file_->Folder() + "/" + name; }
  Outcome Average(const Arguments& more = {}) const {
    Arguments words = {"average", Path()};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }

 private:
  std::unique_ptr<TempFile> file_;
};

TEST(Average, OfScansOnOneAxisIsTheirMeanPointByPoint) {
  const Scans scans({Profile(1, kAxis, {1, 2, 3, 4}), Profile(2, kAxis, {3, 2, 1, 0.5})});
  const Outcome outcome = scans.Average();
  EXPECT_EQ(outcome.out, "mz\tamplitude\n100\t2\n101\t2\n102\t2\n103\t2.25\n");
  EXPECT_EQ(outcome.err, "tslbl: " + scans.Path() + ": average of 2 spectra\n");
  EXPECT_EQ(scans.Average({"--scan", "2", "-q"}).out, "mz\tamplitude\n100\t3\n101\t2\n102\t1\n103\t0.5\n");
}

TEST(Average, WithoutWhatWasAddedIsWhatWasThere) {
  const Values a = {3, 0, 17, 5}, b = {1000, 2, 0, 0.25};
  Values both;
  for (std::size_t i = 0; i < a.size(); ++i) both.push_back(a[i] + b[i]);
  const Scans scans({Profile(1, kAxis, a), Profile(2, kAxis, both), Profile(3, kAxis, b)});
  const Arguments chosen = {"--scan", "2", "--minus-scan", "3", "-q"};
  EXPECT_EQ(scans.Average(chosen).out, scans.Average({"--scan", "1", "-q"}).out);
}

TEST(Average, ABackgroundMayLeaveAmplitudesBelowZero) {
  const Scans scans({Profile(1, kAxis, {1, 2, 3, 4}), Profile(2, kAxis, {3, 0, 3, 0})});
  EXPECT_EQ(scans.Average({"--scan", "1", "--minus-scan", "2", "-q"}).out,
            "mz\tamplitude\n100\t-2\n101\t2\n102\t0\n103\t4\n");
}

TEST(Average, TellsWhereTheBackgroundDoesNotReach) {
  const Scans scans({Profile(1, kAxis, {1, 2, 3, 4}), Profile(2, {100.5, 101.5, 102.5}, {2, 2, 2})});
  const Outcome outcome = scans.Average({"--scan", "1", "--minus-scan", "2"});
  EXPECT_EQ(outcome.out, "mz\tamplitude\n100\t1\n101\t0\n102\t1\n103\t4\n");
  EXPECT_THAT(outcome.err, HasSubstr("the background does not reach 2 of 4 points, which stay as they are"));
}

TEST(Average, TellsThatAxesDiffer) {
  const Scans scans({Profile(1, kAxis, {2, 2, 2, 2}), Profile(2, {100.5, 101.5, 102.5}, {4, 4, 4})});
  EXPECT_THAT(scans.Average().err, HasSubstr("average of 2 spectra, whose m/z axes differ, on one axis"));
}

TEST(Average, OfSeveralLevelsOrOfBothPolaritiesIsRefused) {
  const Scans levels({Profile(1, kAxis, {1, 2, 3, 4}, 1), Profile(2, kAxis, {1, 2, 3, 4}, 2)});
  EXPECT_EQ(levels.Average().status, 1);
  EXPECT_EQ(levels.Average().err,
            "tslbl: " + levels.Path() +
                ": scan 2: is of MS level 2, and scan 1 of level 1: scans of different kinds are "
                "not averaged; --ms-level chooses\n");
  EXPECT_EQ(levels.Average({"--ms-level", "2"}).status, 0);
  const Scans signs({Profile(1, kAxis, {1, 2, 3, 4}), Profile(2, kAxis, {1, 2, 3, 4}, 1, "MS:1000129")});
  EXPECT_THAT(signs.Average().err, HasSubstr("scan 2: is of another polarity than scan 1"));
  EXPECT_EQ(signs.Average({"--polarity", "negative"}).status, 0);
}

TEST(Average, OfSeveralFunctionsIsRefused) {
  const Scans scans({OfFunction(1, {1, 2, 3, 4}), OfFunction(2, {5, 6, 7, 8})});
  EXPECT_EQ(scans.Average().status, 1);
  EXPECT_THAT(scans.Average().err,
              HasSubstr("is of function 2, and scan 1 of function 1: scans of different kinds "
                        "are not averaged; --function chooses"));
  EXPECT_EQ(scans.Average({"--function", "2", "-q"}).out, "mz\tamplitude\n100\t5\n101\t6\n102\t7\n103\t8\n");
}

TEST(Average, LeavesSpectraOfACalibrationOut) {
  const std::string lockMass = OfFunction(3, {9, 9, 9, 9}, Term("MS:1000928"));
  const Scans scans({OfFunction(1, {1, 2, 3, 4}), lockMass});
  EXPECT_EQ(scans.Average().out, "mz\tamplitude\n100\t1\n101\t2\n102\t3\n103\t4\n");
  EXPECT_THAT(scans.Average().err, HasSubstr("of calibration, which are not of the sample, left out"));
  EXPECT_EQ(scans.Average({"--function", "3", "-q"}).out, "mz\tamplitude\n100\t9\n101\t9\n102\t9\n103\t9\n");
}

TEST(Average, OfAFunctionThatThereIsNotNamesThoseThatThereAre) {
  const Scans scans({OfFunction(1, {1, 2, 3, 4}), OfFunction(2, {5, 6, 7, 8})});
  EXPECT_THAT(scans.Average({"--function", "4"}).err,
              HasSubstr("holds no spectrum that was asked for: its functions are 1, 2"));
}

// What each form holds of the demonstration run is evaluated.
TEST(Average, TextMzMLAndRunHaveTheSamePeaksWithTheErrorsOfCounts) {
  const TempFile folder("x", "");
  std::vector<std::vector<Row>> peaks;
  for (const char* name : {"a.txt", "a.mzML", "a.run"}) {
    const std::string file = folder.Folder() + "/" + name;
    ASSERT_EQ(RunTool({"average", DemoRun::Get().Run(), "--rt", "20-60", "-q", "-o", file}).status, 0);
    peaks.push_back(RowsOf(RunTool({"peaks", file, "-q", "--format", "tsv"}).out));
  }
  ASSERT_GT(peaks[0].size(), 10U);
  for (const char* column : {"mz", "amplitude", "area", "sn", "mz_se", "amplitude_se", "area_se", "counted"})
    for (std::size_t i = 0; i < peaks[0].size(); ++i) {
      EXPECT_EQ(peaks[1].at(i).at(column), peaks[0][i].at(column)) << column;
      EXPECT_EQ(peaks[2].at(i).at(column), peaks[0][i].at(column)) << column;
    }
  for (const Row& row : peaks[0]) EXPECT_EQ(row.at("counted"), "true");
}

// One count in the average of n scans is an n-th as high.
TEST(Average, StandardErrorsFallWithTheRootOfTheNumberOfScans) {
  const SmallRun small;
  const std::string run = small.Folder() + "/even.run";
  {
    TslTool::RunWriter writer(run, "Even");
    writer.AddTune(1, DemoTune());
    for (std::uint32_t k = 1; k <= 16; ++k) {
      TslBL::RawSpectrum raw = TslTool::Simulator(1, k).MakeScan(0);
      raw.info.Id = k;
      raw.info.TuneId = 1;
      writer.AddScan(raw);
    }
    writer.Finish();
  }
  const auto errorOf = [&](const char* scans) {
    const std::string file = small.Folder() + "/" + scans + ".txt";
    RunTool({"average", run, "--scan", scans, "-q", "-o", file});
    const std::vector<Row> rows =
        RowsOf(RunTool({"peaks", file, "-q", "--format", "tsv", "--smooth", "savgol:13:2"}).out);
    const auto tallest = std::max_element(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
      return std::stod(a.at("amplitude")) < std::stod(b.at("amplitude"));
    });
    return std::stod(tallest->at("amplitude_se"));
  };
  EXPECT_NEAR(errorOf("1") / errorOf("1-16"), 4.0, 0.6);
}

TEST(Average, ARunHoldsTheSumOfTheCounts) {
  const DemoRun& demo = DemoRun::Get();
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/sum.run";
  ASSERT_EQ(RunTool({"average", demo.Run(), "--scan", "3-5", "-q", "-o", file}).status, 0);
  TslTool::ScanFilter filter;
  filter.numbers = {{3, 5}};
  const auto parts = ReadRun(demo.Run(), filter);
  const auto sum = ReadRun(file);
  ASSERT_EQ(sum.size(), 1U);
  ASSERT_EQ(parts.size(), 3U);
  for (std::size_t i = 0; i < sum[0].counts.size(); ++i)
    EXPECT_EQ(sum[0].counts[i], parts[0].counts[i] + parts[1].counts[i] + parts[2].counts[i]);
}

TEST(Average, SaysWhatCannotBeARun) {
  const Scans scans({Profile(1, kAxis, {1, 2, 3, 4})});
  const Outcome foreign = scans.Average({"-o", scans.Beside("a.run")});
  EXPECT_EQ(foreign.status, 1);
  EXPECT_THAT(foreign.err, HasSubstr("a run holds the counts of one tune, and this is no run"));
  const SmallRun small;
  const std::string out = small.Folder() + "/a.run";
  const Outcome lengths = RunTool({"average", small.Path(), "-o", out});
  EXPECT_EQ(lengths.status, 1);
  EXPECT_THAT(lengths.err, HasSubstr("these scans are of several tunes or lengths"));
  const Outcome background = RunTool({"average", small.Path(), "--minus", "1-2", "-o", out});
  EXPECT_EQ(background.status, 2);
  EXPECT_THAT(NamesIn(small.Folder()), Not(testing::Contains("a.run")));
}

TEST(Average, AnMzMLFileHasOneProfileThatSaysWhatItIsOf) {
  const Scans scans({Profile(1, kAxis, {1, 2, 3, 4}), Profile(2, kAxis, {3, 2, 1, 0})});
  const std::string file = scans.Beside("out.mzML");
  ASSERT_EQ(scans.Average({"--scan", "1-2", "-o", file}).status, 0);
  const std::string text = ReadFile(file);
  EXPECT_THAT(text, HasSubstr("accession=\"MS:1000575\" name=\"mean of spectra\""));
  EXPECT_THAT(text, HasSubstr("<userParam name=\"spectra averaged\" value=\"2\" />"));
  EXPECT_THAT(text, HasSubstr("<userParam name=\"chosen by\" value=\"--scan 1-2\" />"));
  EXPECT_EQ(ChecksumOf(text), SumUpToChecksum(text));
  const pwiz::msdata::MSDataFile data(file);
  ASSERT_EQ(data.run.spectrumListPtr->size(), 1U);
  const auto spectrum = data.run.spectrumListPtr->spectrum(0, true);
  EXPECT_TRUE(spectrum->hasCVParam(pwiz::cv::MS_profile_spectrum));
  EXPECT_TRUE(spectrum->scanList.hasCVParam(pwiz::cv::MS_mean_of_spectra));
  EXPECT_EQ(std::vector<double>(spectrum->getIntensityArray()->data), (Values{2, 2, 2, 2}));
}

TEST(Average, WhatIsWrongIsToldAndNothingIsWritten) {
  const Scans scans({Profile(1, kAxis, {1, 2, 3, 4})});
  const std::string out = scans.Beside("out.txt");
  const struct {
    Arguments words;
    int status;
    const char* text;
  } table[] = {
      {{"average"}, 2, "INPUT is required"},
      {{"average", scans.Path(), "-o", scans.Path()}, 2, "is the input"},
      {{"average", scans.Path(), "--format", "run"}, 2, "a run is written to an --output FILE only"},
      {{"average", scans.Path(), "--rt", "x", "-o", out}, 2, "--rt"},
      {{"average", scans.Path(), "--scan", "7", "-o", out}, 1, "its only scan is 1"},
      {{"average", scans.Path(), "--minus-scan", "7", "-o", out}, 1, "its only scan is 1"},
      {{"average", scans.Beside("none"), "-o", out}, 1, "does not exist"},
      {{"average", DemoRun::Get().Run(), "--columns", "1,2", "-o", out}, 2, "--columns: is for text"},
  };
  for (const auto& row : table) {
    const Outcome outcome = RunTool(row.words);
    EXPECT_EQ(outcome.status, row.status) << row.text;
    EXPECT_THAT(outcome.err, HasSubstr(row.text));
  }
  EXPECT_THAT(NamesIn(scans.Beside("")), ElementsAre("in.mzML"));
}

TEST(Average, StandardInputIsReadOnceOnly) {
  const Scans scans({Profile(1, kAxis, {1, 2, 3, 4})});
  const std::string pipe = "cat '" + scans.Path() + "' | \"$TSLBL\" average - ";
  EXPECT_EQ(RunShell(pipe + "-q").out, scans.Average({"-q"}).out);
  const Outcome twice = RunShell(pipe + "--minus-scan 1");
  EXPECT_EQ(twice.status, 2);
  EXPECT_THAT(twice.err, HasSubstr("the input is read twice"));
}

}  // namespace
}  // namespace tests
