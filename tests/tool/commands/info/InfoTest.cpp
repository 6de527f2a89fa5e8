#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Info, DescribesARunAndItsTune) {
  const Outcome outcome = RunTool({"info", DemoRun::Get().Run()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  for (const char* row :
       {"format        run of raw counts\n", "title         Demonstration\n", "spectra       20\n",
        "points        20003 each\n", "m/z           100.0000 to 1100.0000\n",
        "time          0.000 to 76.148 s\n", "kind          profile\n", "peak width    12.4 points\n",
        "tune          1: Demonstration\n", "  probe       ESI\n", "  polarity    Positive\n",
        "  function    scan\n", "  m/z         100 to 1100, step 0.05\n",
        "  dwell       50 us, 4 scans a spectrum\n", "  duration    4007.8 ms a spectrum\n",
        "  calibration 4 points\n"})
    EXPECT_THAT(outcome.out, HasSubstr(row));
}

TEST(Info, DescribesMzMLWithEmptyAndCentroidSpectra) {
  const Values mz = {100, 101};
  const std::string arrays = ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>({5, 7}));
  const TempFile file("a.mzML",
                      MzML(PlainSpectrum("scan=1", {99, 100, 103.5}, {1, 2, 3}) +
                               SpectrumOf("scan=2", 2, arrays, Term(kCentroid)) +
                               "<spectrum index=\"2\" id=\"scan=3\" defaultArrayLength=\"0\"></spectrum>",
                           3));
  const Outcome outcome = RunTool({"info", file.Path()});
  EXPECT_EQ(outcome.status, 0);
  for (const char* row :
       {"format        mzML\n", "spectra       3\n", "empty         1 of them\n", "points        0 to 3\n",
        "m/z           99.0000 to 103.5000\n", "time          120.000 to 120.000 s\n", "highest       7\n",
        "kind          1 profile, 1 centroid, 1 unknown\n", "peak width    unknown\n"})
    EXPECT_THAT(outcome.out, HasSubstr(row));
}

TEST(Info, AFileWithoutSpectraHasNone) {
  const TempFile file("a.mzML", MzML("", 0));
  const Outcome outcome = RunTool({"info", file.Path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, testing::EndsWith("spectra       0\n"));
}

TEST(Info, WhatIsOddIsToldOnStandardError) {
  const TempFile file("a.txt", "100 1\n102 5\n101 2\n103 1\n");
  const Outcome outcome = RunTool({"info", file.Path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, StartsWith("file          " + file.Path()));
  EXPECT_THAT(outcome.err, HasSubstr("tslbl: warning: " + file.Path() + ": m/z does not ascend everywhere"));
}

TEST(Info, WithoutInputItIsWrongUsage) {
  const Outcome outcome = RunTool({"info"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr("INPUT is required"));
}

}  // namespace
}  // namespace tests
