// Tests: Info.cpp, InfoTable.cpp, InfoWriter.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>
#include <tool/io/RunMaker.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Info, DescribesARunAndItsTune) {
  const Outcome outcome = RunTool({"info", DemoRun::Get().Run()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  for (const char* row : {"format        run of raw counts\n",
                          "title         Demonstration\n",
                          "spectra       20\n",
                          "points        20003 each\n",
                          "m/z           100.0000 to 1100.0017\n",
                          "time          0.000 to 76.148 s\n",
                          "kind          profile\n",
                          "peak width    12.2 points\n",
                          "numbers       1 to 20\n",
                          "MS levels     20 of level 1\n",
                          "polarity      20 positive\n",
                          "zeros         0.0035 % of the amplitudes\n",
                          "TIC           615779 to 1.24813e+06 counts\n",
                          "tune          1: Demonstration\n",
                          "  probe       ESI\n",
                          "  polarity    Positive\n",
                          "  function    scan\n",
                          "  m/z         100 to 1100, step 0.05\n",
                          "  dwell       50 us, 4 scans a spectrum\n",
                          "  duration    4007.8 ms a spectrum\n",
                          "  calibration 4 points\n"})
    EXPECT_THAT(outcome.out, HasSubstr(row));
}

TEST(Info, TellsOfTheMethodThatAcquiredARun) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/a.run";
  TslBL::Method method;
  method.Desc = L"Ramping:\r\nSkimmer from 10 to 20 step 5\r\n";
  method.Tunes = {{1, DemoTune()}};
  method.TuneRuns = {{1, {1, 2}}, {2, {1, 2}}};
  method.TimePeriods.resize(3);
  method.TimePeriods[0].Sequence = {{1}, {2}};
  method.TimePeriods[2].Sequence = {{1}};
  {
    TslTool::RunWriter writer(file, "");
    writer.AddMethod(method);
    writer.AddTune(1, DemoTune());
    writer.AddScan(RawScan(1, {1, 2, 3}));
    writer.Finish();
  }
  EXPECT_THAT(RunTool({"info", file}).out, HasSubstr("method        Ramping: Skimmer from 10 to 20 step 5\n"
                                                     "  periods     3 with 3 sequence items\n"
                                                     "  runs        2 of 1 tunes\n"
                                                     "tune          1: Demonstration\n"));
  const auto json = nlohmann::json::parse(RunTool({"info", file, "--format", "json"}).out);
  EXPECT_EQ(json["method"], nlohmann::json::parse(R"({"description":
      "Ramping:\r\nSkimmer from 10 to 20 step 5\r\n", "time_periods": 3, "tune_runs": 2})"));
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

// Two profiles, the second marked as centroid, one spectrum without points, and chromatograms.
std::string ManyKinds() {
  Values even, counts;
  for (int i = 0; i < 60; ++i) {
    even.push_back(100 + i * 0.125);
    counts.push_back(i % 4 == 0 ? 0 : i);
  }
  const std::string arrays =
      ArrayOf(kMz, BytesOf<double>(even)) + ArrayOf(kIntensity, BytesOf<double>(counts));
  std::string text =
      MzML(PlainSpectrum("function=1\t scan=5", {99, 100, 103.5}, {1, 7, 0}) +
               SpectrumOf("function=2 scan=5", 60, arrays,
                          Term("MS:1000511", "value=\"2\"") + Term(kCentroid) + Term("MS:1000129")) +
               "<spectrum index=\"2\" id=\"scan=9\" defaultArrayLength=\"0\"></spectrum>",
           3);
  const std::string chromatogram = "<chromatogram index=\"0\" id=\"TIC\" defaultArrayLength=\"150\"/>";
  return text.insert(text.find("</run>"),
                     "<chromatogramList count=\"2\">" + chromatogram + chromatogram + "</chromatogramList>");
}

TEST(Info, TellsNumbersLevelsPolaritiesAndWhatIsNotAsMarked) {
  const TempFile file("a.mzML", ManyKinds());
  const Outcome outcome = RunTool({"info", file.Path()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, testing::EndsWith("kind          1 profile, 1 centroid, 1 unknown\n"
                                             "  by points   2 profile; 1 not as marked, first scan 5\n"
                                             "peak width    unknown\n"
                                             "numbers       5 to 9, not ascending\n"
                                             "MS levels     1 unknown, 1 of level 1, 1 of level 2\n"
                                             "polarity      1 negative, 2 unknown\n"
                                             "functions     1 of function 1, 1 of function 2\n"
                                             "zeros         25.4 % of the amplitudes\n"
                                             "TIC           8 to 1350\n"
                                             "chromatograms 2, 300 points in all\n"));
}

TEST(Info, TsvHasARowForEachSpectrum) {
  const TempFile file("a.mzML", ManyKinds());
  EXPECT_EQ(
      RunTool({"info", file.Path(), "--format", "tsv"}).out,
      "scan\tid\trt_s\tms_level\tpolarity\tmarked\tjudged\tpoints\tmz_from\tmz_to\ttic\tbase_peak_mz\t"
      "base_peak\tzeros\n"
      "5\tfunction=1  scan=5\t120\t1\t\tprofile\tprofile\t3\t99\t103.5\t8\t100\t7\t1\n"
      "5\tfunction=2 scan=5\t120\t2\tnegative\tcentroid\tprofile\t60\t100\t107.375\t1350\t107.375\t59\t15\n"
      "9\tscan=9\t\t\t\t\t\t0\t\t\t0\t\t\t0\n");
}

TEST(Info, JsonIsOneObjectWithTheFactsOfTheFile) {
  const TempFile file("a.mzML", ManyKinds());
  const auto json = nlohmann::json::parse(RunTool({"info", file.Path(), "--format", "json"}).out);
  EXPECT_EQ(json["file"], file.Path());
  EXPECT_EQ(json["format"], "mzML");
  ASSERT_EQ(json["scans"].size(), 3U);
  EXPECT_EQ(json["scans"][1]["id"], "function=2 scan=5");
  EXPECT_EQ(json["scans"][1]["polarity"], "negative");
  EXPECT_EQ(json["scans"][1]["zeros"], 15);
  EXPECT_TRUE(json["scans"][2]["mz_from"].is_null());
  const auto expected = nlohmann::json::parse(R"({"spectra": 3, "empty": 1, "first": 5, "last": 9,
    "ascending": false, "ms_levels": {"unknown": 1, "1": 1, "2": 1}, "polarities": {"negative": 1, "unknown": 2},
    "functions": {"1": 1, "2": 1},
    "marked": {"profile": 1, "centroid": 1, "unknown": 1}, "judged": {"profile": 2}, "not_as_marked": 1,
    "points": 63, "zeros": 16, "fewest_points": 0, "most_points": 60, "mz": {"from": 99, "to": 107.375},
    "rt_s": {"from": 120, "to": 120}, "tic": {"from": 8, "to": 1350}, "base_peak": {"from": 7, "to": 59},
    "points_across_a_peak": null, "chromatograms": {"count": 2, "points": 300}})");
  for (const auto& [key, value] : expected.items()) EXPECT_EQ(json[key], value) << key;
  EXPECT_EQ(json.size(), expected.size() + 3);
}

TEST(Info, RunsAndTextHaveTheSameColumns) {
  const auto run = RowsOf(RunTool({"info", DemoRun::Get().Run(), "--format", "tsv"}).out);
  ASSERT_EQ(run.size(), 20U);
  EXPECT_EQ(run[4].at("scan"), "5");
  EXPECT_EQ(run[4].at("id"), "");
  EXPECT_EQ(run[4].at("ms_level"), "1");
  EXPECT_EQ(run[4].at("polarity"), "positive");
  EXPECT_EQ(run[4].at("judged"), "profile");
  EXPECT_EQ(run[4].at("points"), "20003");
  EXPECT_NEAR(std::stod(run[4].at("base_peak_mz")), 195.09, 0.2);
  const TempFile file("a.txt", "100 1\n101 5\n102 0\n");
  EXPECT_EQ(LinesOf(RunTool({"info", file.Path(), "--format", "tsv"}).out).at(1),
            "1\t\t\t\t\t\tcentroid\t3\t100\t102\t6\t101\t5\t1");
  const auto json = nlohmann::json::parse(RunTool({"info", DemoRun::Get().Run(), "--format", "json"}).out);
  EXPECT_EQ(json["title"], "Demonstration");
  EXPECT_EQ(json["tunes"], nlohmann::json::parse(R"([{"id": 1, "name": "Demonstration"}])"));
}

TEST(Info, JsonOfNothingIsAnObjectWithoutScans) {
  const TempFile file("a.mzML", MzML("", 0));
  const auto json = nlohmann::json::parse(RunTool({"info", file.Path(), "--format", "json"}).out);
  EXPECT_TRUE(json["scans"].empty());
  EXPECT_EQ(json["spectra"], 0);
  EXPECT_TRUE(json["first"].is_null());
  EXPECT_TRUE(json["fewest_points"].is_null());
}

TEST(Info, WithoutInputItIsWrongUsage) {
  const Outcome outcome = RunTool({"info"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr("INPUT is required"));
}

TEST(Info, LeavesOutWhatCannotBeReadWholeAndTells) {
  const TempFile file("a.mzML", MzML(PlainSpectrum("scan=1", {100, 101, 102}, {1, 5, 2}) +
                                         PlainSpectrum("scan=2", {100, 101, 102}, {1, std::nan(""), 2}),
                                     2));
  const Outcome outcome = RunTool({"info", file.Path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("spectra       1\n"));
  EXPECT_EQ(outcome.err, "tslbl: warning: " + file.Path() +
                             ": 1 of 2 spectra skipped: 1 with a value that is not finite (first at line 10, "
                             "spectrum \"scan=2\")\n");
}

TEST(Info, ReadsStandardInput) {
  const TempFile file("in", "100 1\n100.1 5\n100.2 2\n");
  for (const std::string script : {"cat in | \"$TSLBL\" info -", "\"$TSLBL\" info - < in"}) {
    const Outcome outcome = RunShell("cd '" + file.Folder() + "' && " + script);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("file          standard input\n")) << script;
    EXPECT_THAT(outcome.out, HasSubstr("points        3 each\n")) << script;
  }
  EXPECT_EQ(RunShell("printf '100 1\\n101 x\\n' | \"$TSLBL\" info -").err,
            "tslbl: standard input: line 2: \"x\" is not a number\n");
}

TEST(Info, WritesOutWhatANameCouldDoToATerminal) {
  const TempFile file("a\nb\x1b[1m.txt", "100 1\n100.1 5\n100.2 2\n");
  EXPECT_THAT(RunTool({"info", file.Path()}).out, HasSubstr("a\\nb\\x1b[1m.txt\nformat "));
}

}  // namespace
}  // namespace tests
