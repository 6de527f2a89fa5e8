// Tests: Chrom.cpp, ReadCurves.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr double kTop = 100.0;  // s
constexpr double kSigma = 5.0;  // s
constexpr double kHeight = 1000.0;

// Centroid scans 1 s apart with a line at 500.2 that elutes as a Gaussian, and one at 600.1 that stays.
std::string Eluting(std::size_t scans = 200) {
  std::string spectra;
  for (std::size_t i = 0; i < scans; ++i) {
    const double seconds = static_cast<double>(i);
    const double z = (seconds - kTop) / kSigma;
    const double noise = 5.0 + static_cast<double>(i * 7919 % 11) / 5.0;
    const Values amplitude = {noise + kHeight * std::exp(-0.5 * z * z), 20.0};
    spectra += SpectrumOf(
        "scan=" + std::to_string(i + 1), 2,
        ArrayOf(kMz, BytesOf<double>({500.2, 600.1})) + ArrayOf(kIntensity, BytesOf<double>(amplitude)),
        Term("MS:1000511", "value=\"1\"") + Term(kCentroid),
        "value=\"" + std::to_string(seconds) + "\" unitAccession=\"UO:0000010\"");
  }
  return MzML(spectra, scans);
}

class Chrom : public testing::Test {
 public:
  Outcome Run(Arguments more) const {
    Arguments words = {"chrom", file_.Path()};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }

 protected:
  TempFile file_{"eluting.mzML", Eluting()};
};

TEST_F(Chrom, FindsThePeakOfARange) {
  const Outcome outcome = Run({"--range", "A=500-501", "--format", "tsv"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const std::vector<Row> rows = RowsOf(outcome.out);
  ASSERT_EQ(rows.size(), 3u) << outcome.out;
  const Row& peak = rows[2];
  EXPECT_EQ(peak.at("curve"), "A");
  EXPECT_NEAR(std::stod(peak.at("rt_s")), kTop, 0.1);
  EXPECT_NEAR(std::stod(peak.at("height")), kHeight, 0.01 * kHeight);
  const double area = kHeight * kSigma * std::sqrt(2.0 * std::acos(-1.0));
  EXPECT_NEAR(std::stod(peak.at("area")), area, 0.005 * area);
  EXPECT_NEAR(std::stod(peak.at("width_s")), 2.3548 * kSigma, 0.3);
}

TEST_F(Chrom, HasItsColumnsInTheOrderThatScriptsRelyOn) {
  EXPECT_THAT(Run({"--format", "tsv"}).out,
              StartsWith("curve\tpeak\trt_s\theight\tarea\tarea_se\tstart_s\tend_s\twidth_s\tsn\n"));
}

TEST_F(Chrom, WritesThePointsOfTheCurves) {
  const TempFile points("points.tsv", "");
  ASSERT_EQ(Run({"--range", "A=600-601", "--points", points.Path()}).status, 0);
  const std::vector<std::string> lines = LinesOf(ReadFile(points.Path()));
  ASSERT_EQ(lines.size(), 201u);
  EXPECT_EQ(lines[0], "rt_s\tTIC\tBPC\tA");
  EXPECT_EQ(lines[1], "0\t25\t20\t20");
}

TEST_F(Chrom, IsTheSameForAnyNumberOfThreads) {
  EXPECT_EQ(Run({"--threads", "1", "--format", "tsv"}).out, Run({"--threads", "4", "--format", "tsv"}).out);
}

TEST_F(Chrom, RefusesADefinitionOfNoRange) {
  const Outcome outcome = Run({"--range", "A=1-2", "--curve", "A-B"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("contains an invalid range letter"));
  EXPECT_THAT(outcome.out, IsEmpty());
}

TEST_F(Chrom, WarnsOfARangeWithoutPoints) {
  EXPECT_THAT(Run({"--range", "A=700-701"}).err,
              HasSubstr("no scan has a point in the range A (700 to 701), which lies outside"));
}

TEST_F(Chrom, RefusesToWriteOverItsInput) {
  EXPECT_EQ(Run({"--points", file_.Path()}).status, 2);
  EXPECT_EQ(Run({"--output", file_.Path()}).status, 2);
}

TEST_F(Chrom, LeavesNoFileBehindAFailure) {
  const TempFile folder("x", "");
  EXPECT_EQ(Run({"--output", folder.Folder() + "/out.tsv", "--rt", "1000-2000"}).status, 1);
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST_F(Chrom, DrawsThePicture) {
  const TempFile plot("plot.svg", "");
  ASSERT_EQ(Run({"--range", "A=500-501", "--plot", plot.Path()}).status, 0);
  EXPECT_THAT(ReadFile(plot.Path()), HasSubstr("A: m/z 500 to 501"));
}

TEST_F(Chrom, IntegratesBetweenTimes) {
  const Outcome outcome =
      Run({"--range", "A=600-601", "--integrate", "50-60", "--baseline", "0", "--format", "tsv"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const Row peak = RowsOf(outcome.out).at(2);
  EXPECT_DOUBLE_EQ(std::stod(peak.at("area")), 200.0);
  EXPECT_EQ(peak.at("start_s"), "50");
  EXPECT_THAT(Run({"--integrate", "500-600"}).err,
              HasSubstr("there are no two points from 500 to 600 s to integrate"));
}

TEST_F(Chrom, TellsWhatOtherInputsHave) {
  EXPECT_EQ(Run({"--columns", "1,2"}).status, 2);
  EXPECT_EQ(Run({"--time-unit", "min"}).status, 2);
  EXPECT_THAT(Run({"--stored"}).err, HasSubstr("holds no chromatogram of its own"));
}

std::string Trace() {
  std::string text = "time (min),uv\n";
  for (int i = 0; i < 400; ++i) {
    const double z = (i - 150) / 8.0;
    text += std::to_string(i / 60.0) + "," +
            std::to_string(20.0 + i * 37 % 11 / 10.0 + 500.0 * std::exp(-0.5 * z * z)) + "\n";
  }
  return text;
}

TEST(ChromOfATrace, FindsItsPeaks) {
  const TempFile file("uv.csv", Trace());
  const Outcome outcome = RunTool({"chrom", file.Path(), "--format", "tsv"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  const std::vector<Row> rows = RowsOf(outcome.out);
  ASSERT_EQ(rows.size(), 1u) << outcome.out;
  EXPECT_EQ(rows[0].at("curve"), "uv");
  EXPECT_NEAR(std::stod(rows[0].at("rt_s")), 150.0, 0.2);
  const double area = 500.0 * 8.0 * std::sqrt(2.0 * std::acos(-1.0));
  EXPECT_NEAR(std::stod(rows[0].at("area")), area, 0.01 * area);
}

TEST(ChromOfATrace, PartsPeaksTwoAndAHalfStandardDeviationsApart) {
  std::string text = "time_s\tsignal\n";
  for (int i = 0; i < 2200; ++i) {
    const double t = 0.01 * i;
    const double y =
        100.0 * std::exp(-0.5 * (t - 8.0) * (t - 8.0)) + 70.0 * std::exp(-0.5 * (t - 10.5) * (t - 10.5));
    text += std::to_string(t) + "\t" + std::to_string(y) + "\n";
  }
  const TempFile file("two.txt", text);
  const std::vector<Row> rows = RowsOf(RunTool({"chrom", file.Path(), "--format", "tsv"}).out);
  ASSERT_EQ(rows.size(), 2u);
  const double root = std::sqrt(2.0 * std::acos(-1.0));
  EXPECT_NEAR(std::stod(rows[0].at("area")), 100.0 * root, 1.0 * root);
  EXPECT_NEAR(std::stod(rows[1].at("area")), 70.0 * root, 0.7 * root);
}

TEST(ChromOfATrace, HasNoRangesAndNoScans) {
  const TempFile file("uv.csv", Trace());
  for (const Arguments& more : {Arguments{"--range", "A=1-2"}, {"--scan", "1"}, {"--stored"}, {"--mean"}}) {
    Arguments words = {"chrom", file.Path()};
    words.insert(words.end(), more.begin(), more.end());
    EXPECT_EQ(RunTool(words).status, 2) << more.front();
  }
}

TEST(ChromOfATrace, ComesThroughAPipe) {
  const TempFile file("uv.csv", Trace());
  EXPECT_EQ(RunShell("cat " + file.Path() + " | $TSLBL chrom - --format tsv").out,
            RunTool({"chrom", file.Path(), "--format", "tsv"}).out);
}

TEST(ChromOfATrace, ThatNobodyNamedIsWrongUsageOfChrom) {
  const TempFile file("uv.csv", Trace());
  const Outcome outcome = RunShell("cat " + file.Path() + " | $TSLBL chrom");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("write - to read it, as in 'tslbl chrom -'\n"));
}

TEST(ChromOfStored, AreTakenWhereThereIsNoSpectrum) {
  std::string arrays =
      ArrayOfText(Term(kFloat64) + Term(kPlain) + Term("MS:1000595", "unitAccession=\"UO:0000010\""),
                  Base64(BytesOf<double>({1.0, 2.0, 3.0}))) +
      ArrayOf(kIntensity, BytesOf<double>({1.0, 5.0, 2.0}));
  const TempFile file(
      "a.mzML",
      "<mzML><run id=\"r\"><chromatogramList count=\"1\"><chromatogram index=\"0\" id=\"SRM 1\" "
      "defaultArrayLength=\"3\"><binaryDataArrayList count=\"2\">" +
          arrays + "</binaryDataArrayList></chromatogram></chromatogramList></run></mzML>");
  const Outcome outcome = RunTool({"chrom", file.Path(), "--points", "/dev/stdout", "--output", "/dev/null"});
  EXPECT_EQ(outcome.out, "rt_s\tSRM 1\n1\t1\n2\t5\n3\t2\n");
  EXPECT_THAT(outcome.err, HasSubstr("holds no spectrum; the chromatograms stored in it are taken"));
}

TEST(ChromOfARun, HasTheTotalIonCurrentOfItsScans) {
  const Outcome outcome =
      RunTool({"chrom", DemoRun::Get().Run(), "--points", "/dev/stdout", "--output", "/dev/null"});
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(RowsOf(outcome.out).size(), 20u);
  EXPECT_GT(std::stod(RowsOf(outcome.out)[0].at("TIC")), 0.0);
}

TEST(ChromOfNothing, IsAnError) {
  const TempFile file("none.mzML", MzML("", 0));
  const Outcome outcome = RunTool({"chrom", file.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("holds no spectrum"));
}

}  // namespace
}  // namespace tests
