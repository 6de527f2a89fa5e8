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
