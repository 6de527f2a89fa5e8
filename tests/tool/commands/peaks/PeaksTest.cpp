// Tests: EvaluateInput.cpp, RefuseNothing.cpp, ScansInstead.cpp.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <tool/chain/ChainFile.h>
#include <tool/commands/DemoRun.h>
#include <tool/io/MzMLMaker.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::set<std::string> ScansOf(const std::vector<Row>& rows) {
  std::set<std::string> scans;
  for (const Row& row : rows) scans.insert(row.at("scan"));
  return scans;
}

TEST(Peaks, WithoutInputEvaluatesTheDemonstration) {
  const Outcome outcome = RunTool({"peaks", "--format", "tsv", "--quiet"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(RowsOf(outcome.out), DemoRun::Get().Peaks());
}

TEST(Peaks, TellWhatOfTheChainWasTakenFromTheData) {
  const Outcome outcome = RunTool({"peaks", DemoRun::Get().Run(), "--scan", "5", "--min-rise", "0"});
  EXPECT_THAT(outcome.err,
              testing::MatchesRegex("tslbl: .*/demo.run: --smooth savgol:13:2 --baseline linear:4.. "
                                    "--noise linear:4.. --sn 5 --min-width 0.3.. "
                                    "\\(peaks are 12.. points wide\\)\n"));
}

TEST(Peaks, WhatWasTakenFromTheDataGivesTheSameWhenTyped) {
  const Arguments words = {"peaks", DemoRun::Get().Run(), "--scan", "5"};
  const Outcome outcome = RunTool(words);
  const std::size_t begin = outcome.err.find("--smooth");
  const std::string switches = outcome.err.substr(begin, outcome.err.find(" (") - begin);
  const Outcome typed = RunShell("\"$TSLBL\" peaks '" + DemoRun::Get().Run() + "' --scan 5 " + switches);
  EXPECT_EQ(typed.out, outcome.out);
  EXPECT_THAT(typed.err, Not(HasSubstr("--smooth")));
}

TEST(Peaks, ScanAndTimeSelect) {
  const DemoRun& demo = DemoRun::Get();
  EXPECT_THAT(ScansOf(demo.Peaks({"--scan", "3"})), ElementsAre("3"));
  EXPECT_THAT(ScansOf(demo.Peaks({"--scan", "2-4"})), ElementsAre("2", "3", "4"));
  EXPECT_THAT(ScansOf(demo.Peaks({"--rt", "4-8.1"})), ElementsAre("2", "3"));
  EXPECT_THAT(ScansOf(demo.Peaks({"--rt", "4-8.1", "--scan", "3-9"})), ElementsAre("3"));
}

TEST(Peaks, AreTheSameOnAnyNumberOfThreads) {
  const Arguments all = {"peaks", DemoRun::Get().Run(), "--format", "tsv",        "--sn",
                         "0",     "--min-width",        "0",        "--min-rise", "0"};
  const auto with = [&](const char* threads) {
    Arguments words = all;
    words.insert(words.end(), {"--threads", threads});
    return RunTool(words).out;
  };
  const std::string one = with("1");
  EXPECT_GT(LinesOf(one).size(), 5000U);
  EXPECT_TRUE(one == with("2"));
  EXPECT_TRUE(one == with("8"));
  EXPECT_TRUE(one == RunTool(all).out);
}

TEST(Peaks, OutputFileHoldsWhatStandardOutputWould) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/peaks.tsv";
  const Arguments words = {"peaks", DemoRun::Get().Run(), "--scan", "3", "--format", "tsv"};
  Arguments toFile = words;
  toFile.insert(toFile.end(), {"--output", file, "--quiet"});
  const Outcome outcome = RunTool(toFile);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_EQ(ReadFile(file), RunTool(words).out);
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("peaks.tsv", "x"));
}

TEST(Peaks, EveryFormatHoldsTheSamePeaks) {
  const auto out = [](const char* format) {
    return RunTool({"peaks", DemoRun::Get().Run(), "--scan", "5", "--format", format}).out;
  };
  const auto rows = RowsOf(out("tsv"));
  const auto json = nlohmann::json::parse(out("json"));
  pugi::xml_document xml;
  ASSERT_TRUE(xml.load_string(out("xml").c_str()));
  ASSERT_GT(rows.size(), 10U);
  EXPECT_EQ(json[0]["peaks"].size(), rows.size());
  EXPECT_EQ(xml.select_nodes("/Scans/Scan//Peak").size(), rows.size());
  EXPECT_EQ(LinesOf(out("table")).size(), rows.size() + 2);
  for (std::size_t i = 0; i < rows.size(); ++i)
    EXPECT_EQ(json[0]["peaks"][i]["mz"].get<double>(), std::stod(rows[i].at("mz")));
}

TEST(Peaks, CurveOfAForeignFileIsTheFile) {
  std::string text;
  for (int i = 0; i < 500; ++i)
    text += fmt::format("{}\t{}\n", 100 + i * 0.1, 3 + i % 5 + 900 * std::exp(-std::pow((i - 200) / 6.0, 2)));
  const TempFile file("a.txt", text);
  const std::string curve = file.Folder() + "/curve.tsv";
  ASSERT_EQ(
      RunTool({"peaks", file.Path(), "--smooth", "off", "--curve", curve, "-o", file.Folder() + "/p"}).status,
      0);
  std::string again;
  for (const Row& row : RowsOf(ReadFile(curve))) again += row.at("mz") + '\t' + row.at("amplitude") + '\n';
  EXPECT_EQ(again, text);
}

TEST(Peaks, ShownChainIsTheChainOfAnyLaterRun) {
  const TempFile folder("x", "");
  const std::string chain = folder.Folder() + "/chain.xml";
  const std::string run = DemoRun::Get().Run();
  for (const Arguments& switches :
       {Arguments{}, Arguments{"--smooth", "mean:9", "--sn", "20", "--aerosol"},
        Arguments{"--noise", "6sd:100-140", "--subtract-baseline", "--threshold", "5000"}}) {
    Arguments show = {"peaks", run, "--scan", "5", "--show-chain", "-o", chain};
    show.insert(show.end(), switches.begin(), switches.end());
    ASSERT_EQ(RunTool(show).status, 0);
    Arguments with = {"--scan", "5"};
    with.insert(with.end(), switches.begin(), switches.end());
    EXPECT_EQ(DemoRun::Get().Peaks({"--scan", "5", "--chain", chain}), DemoRun::Get().Peaks(with));
  }
}

TEST(Peaks, AChainThatLacksAStepNamesScanAndStep) {
  using TslBL::CurveEval;
  const TempFile chain("chain.xml", TslTool::ChainToXml({CurveEval(TslBL::PeakDetectParams())}));
  const Outcome outcome = RunTool({"peaks", DemoRun::Get().Run(), "--chain", chain.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, StartsWith("tslbl: " + DemoRun::Get().Run() + ": scan 1: "));
  EXPECT_GT(outcome.err.size(), DemoRun::Get().Run().size() + 25);
}

TEST(Peaks, AChainWithChargeStatesIsForAnotherCommand) {
  const TempFile chain("chain.xml",
                       "<CurveEvals><CurveEval Type=\"Charge State Deconvolution\"><ChargeState/></CurveEval>"
                       "</CurveEvals>");
  const Outcome outcome = RunTool({"peaks", DemoRun::Get().Run(), "--chain", chain.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tslbl: " + chain.Path() +
                             ": command 1: Charge State Deconvolution is done by tslbl decon --chain\n");
}

TEST(Peaks, SubtractingTheBaselineFindsThePeaksOfTheSpectrum) {
  const auto plain = DemoRun::Get().Peaks({"--scan", "5"});
  const auto subtracted = DemoRun::Get().Peaks({"--scan", "5", "--subtract-baseline"});
  EXPECT_NEAR(static_cast<double>(subtracted.size()), static_cast<double>(plain.size()), 3.0);
}

TEST(Peaks, AStretchForTheNoiseMustHoldPoints) {
  const Outcome outcome = RunTool({"peaks", DemoRun::Get().Run(), "--noise", "6sd:2000-3000"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "tslbl: " + DemoRun::Get().Run() +
                ": scan 1: there are no two points from m/z 2000 to 3000 to measure the noise on\n");
}

TEST(Peaks, AStretchToSearchMustHoldPoints) {
  const Outcome outcome = RunTool({"peaks", DemoRun::Get().Run(), "--scan", "5", "--range", "5000-6000"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tslbl: " + DemoRun::Get().Run() +
                             ": scan 5: there are no two points from m/z 5000 to 6000 to find peaks among\n");
}

TEST(Peaks, AChainThatFindsNoneSaysSo) {
  const TempFile chain("chain.xml", "<CurveEvals/>");
  const Outcome outcome = RunTool({"peaks", DemoRun::Get().Run(), "--scan", "5", "--chain", chain.Path()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "tslbl: warning: " + chain.Path() + ": no command \"Peak Detect\", so no peaks\n");
}

TEST(Peaks, NotANumberHasNoSign) {
  const TempFile huge("a.txt",
                      "100 1\n100.1 1e306\n100.2 1.7e308\n100.3 1e306\n100.4 1\n100.5 1\n100.6 1\n100.7 1\n");
  for (const char* format : {"tsv", "table"}) {
    const Outcome outcome = RunTool({"peaks", huge.Path(), "--format", format, "--smooth", "off"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr("-nan"))) << outcome.out;
  }
}

TEST(Peaks, NamesWithBlanksAndLettersOfAllLanguagesAreNames) {
  const TempFile file("Ein Spektrum \xe2\x80\x93 \xc3\xa4\xe6\x95\xb0.mzML",
                      MzML(PlainSpectrum("scan=1", {100, 100.1, 100.2}, {1, 5, 2})));
  const std::string out = file.Folder() + "/\xc3\xbc x.tsv";
  EXPECT_EQ(RunTool({"peaks", file.Path(), "-o", out}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(out));
}

TEST(Peaks, NothingThatWasAskedForIsAFailure) {
  const TempFile none("none.mzML", MzML("", 0));
  const std::string run = DemoRun::Get().Run();
  const std::pair<Arguments, std::string> cases[] = {
      {{"peaks", none.Path()}, none.Path() + ": holds no spectrum"},
      {{"peaks", run, "--scan", "99"}, run + ": holds no spectrum that was asked for: its scans are 1 to 20"},
      {{"peaks", "--rt", "1e6-1e7"},
       "demonstration run: holds no spectrum that was asked for: its retention times are 0.000 to 76.148 s"}};
  for (Arguments words : {cases[0].first, cases[1].first, cases[2].first}) {
    words.insert(words.end(), {"--format", "json"});
    EXPECT_EQ(RunTool(words).out, "");
  }
  for (const auto& [words, message] : cases) {
    const Outcome outcome = RunTool(words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tslbl: " + message + "\n");
  }
}

TEST(Peaks, AFileWithoutSpectraIsToldWithWhatItHolds) {
  std::string srm = MzML("", 0);
  srm.insert(srm.find("</run>"),
             "<chromatogramList count=\"2\"><chromatogram defaultArrayLength=\"600\"/>"
             "<chromatogram defaultArrayLength=\"40\"/></chromatogramList>");
  const std::string counts = ArrayOf(kIntensity, BytesOf<double>({1, 2}));
  const std::pair<std::string, std::string> cases[] = {
      {srm, "; 2 chromatograms of 640 points in all"},
      {MzML(SpectrumOf("scan=1", 2, counts)),
       "; 1 spectrum without an m/z array, left out (first at line 5, spectrum \"scan=1\")"},
      {MzML(SpectrumOf("scan=1", 2, ArrayOf("MS:1000617", BytesOf<double>({200, 201})) + counts)),
       "; 1 spectrum of wavelengths, left out (first at line 5, spectrum \"scan=1\")"}};
  for (const auto& [content, told] : cases) {
    const TempFile file("a.mzML", content);
    EXPECT_EQ(RunTool({"peaks", file.Path()}).err,
              "tslbl: " + file.Path() + ": holds no spectrum" + told + "\n");
  }
}

TEST(Peaks, ASpectrumThatCannotBeReadWholeIsSkippedUnlessStrict) {
  const Values mz = {100, 100.1, 100.2};
  const std::string good = PlainSpectrum("scan=1", mz, {1, 5, 2});
  const std::string hole = PlainSpectrum("scan=2", mz, {1, std::nan(""), 2});
  const std::string cut = SpectrumOf(
      "scan=3", 3, ArrayOf(kMz, BytesOf<double>(mz)) + ArrayOf(kIntensity, BytesOf<double>({1, 5})));
  const TempFile file("a.mzML", MzML(good + hole + cut, 3));
  const Outcome skipped = RunTool({"peaks", file.Path(), "--quiet"});
  EXPECT_EQ(skipped.status, 0);
  EXPECT_EQ(skipped.err,
            "tslbl: warning: " + file.Path() +
                ": 2 of 3 spectra skipped: 1 with a value that is not finite (first at line 10, spectrum "
                "\"scan=2\"), 1 with arrays of another length than announced (first at line 15, spectrum "
                "\"scan=3\")\n");
  const Outcome strict = RunTool({"peaks", file.Path(), "--strict"});
  EXPECT_EQ(strict.status, 1);
  EXPECT_EQ(strict.err, "tslbl: " + file.Path() +
                            ": line 10, spectrum \"scan=2\": point 2 of the intensity array is not a finite "
                            "number\n");
  const TempFile nothing("b.mzML", MzML(cut));
  EXPECT_EQ(RunTool({"peaks", nothing.Path()}).status, 1);
}

TEST(Peaks, AScanThatIsNotThereIsToldWithThoseThatAre) {
  const auto spectrum = [](const std::string& id) {
    return PlainSpectrum(id, {100, 100.1, 100.2}, {1, 5, 2});
  };
  const TempFile gaps("a.mzML", MzML(spectrum("scan=3") + spectrum("scan=4") + spectrum("scan=9"), 3));
  const TempFile text("b.txt", "100 1\n100.1 5\n100.2 2\n");
  const std::string none = ": holds no spectrum that was asked for";
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {gaps.Path(), "5-8,10-", none + ": it has 3 scans from 3 to 9"},
      {text.Path(), "2", none + ": its only scan is 1"},
      {gaps.Path(), "4 --rt 1e6-2e6", none + ": its retention times are 120.000 to 120.000 s"},
      {gaps.Path(), "4 --ms-level 2 --polarity negative", none + ": its MS level is 1; it tells no polarity"},
      {text.Path(), "2 --rt 0-9 --ms-level 1",
       none + ": its only scan is 1; it tells no retention times; it tells no MS level"},
      {DemoRun::Get().Run(), "1 --rt 90-1e9 --ms-level 2 --polarity negative",
       none + ": its retention times are 0.000 to 76.148 s; its MS level is 1; its polarity is positive"}};
  for (const auto& [file, words, told] : cases)
    EXPECT_EQ(RunShell("\"$TSLBL\" peaks '" + file + "' --scan " + words).err,
              "tslbl: " + file + told + "\n");
  EXPECT_EQ(RunTool({"peaks", "--scan", "99"}).err,
            "tslbl: demonstration run" + none + ": its scans are 1 to 20\n");
  EXPECT_EQ(RunShell("cat '" + gaps.Path() + "' | \"$TSLBL\" peaks - --scan 5").err,
            "tslbl: standard input" + none + "\n");
}

TEST(Peaks, WhatWasSkippedIsOneWarning) {
  const TempFile file("a.mzML", MzML(PlainSpectrum("scan=1", {100, 100.1, 100.2}, {1, 5, 2}) +
                                         SpectrumOf("scan=2", 2,
                                                    ArrayOf(kMz, BytesOf<double>({100, 120})) +
                                                        ArrayOf(kIntensity, BytesOf<double>({1, 5})),
                                                    Term(kCentroid)) +
                                         PlainSpectrum("scan=3", {100}, {1}),
                                     3));
  const Outcome outcome = RunTool({"peaks", file.Path(), "--quiet"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "tslbl: warning: " + file.Path() +
                             ": 2 of 3 spectra skipped: 1 marked as centroid (first at scan 2), "
                             "1 of less than two points (first at scan 3)\n");
  EXPECT_EQ(RunTool({"peaks", file.Path(), "--strict"}).status, 1);
  EXPECT_EQ(
      RunTool({"peaks", file.Path(), "--scan", "2-"}).err,
      "tslbl: " + file.Path() +
          ": holds no spectrum to evaluate: 2 of 2 spectra skipped: 1 marked as centroid (first at scan 2), "
          "1 of less than two points (first at scan 3); centroid data are "
          "peaks already; --profile is for profiles that are not known as such\n");
}

TEST(Peaks, WrongUsageIsStatus2) {
  const std::string run = DemoRun::Get().Run();
  const std::pair<Arguments, const char*> cases[] = {
      {{"peaks", "--scan", "x"}, "tslbl: --scan: \"x\" is not a whole number"},
      {{"peaks", "--scan", "5-3"}, "tslbl: --scan: \"5-3\" ends before it begins"},
      {{"peaks", "--scan", ""}, "tslbl: --scan: the value is empty"},
      {{"peaks", "--rt", "a-b"}, "tslbl: --rt: \"a\" is not a number"},
      {{"peaks", "--threshold", "nan"}, "tslbl: --threshold: \"nan\" is not a finite number"},
      {{"peaks", "--threads", "0"}, "tslbl: --threads: there must be at least one"},
      {{"peaks", "--format", "none"}, "tslbl: --format: \"none\" is not one of table, tsv, csv, json, xml"},
      {{"peaks", "--smooth", "boxcar"}, "tslbl: --smooth: \"boxcar\": it is not one of"},
      {{"peaks", "--min-width", "-1"}, "tslbl: --min-width: it cannot be below 0"},
      {{"peaks", "--min-width", "0.5", "--max-width", "0.1"}, "tslbl: --max-width: it is below --min-width"},
      {{"peaks", "--colour"}, "tslbl: The following argument was not expected: --colour"},
      {{"peaks", run, run}, "tslbl: several inputs have a table each: name a folder for them"},
      {{"peak"}, "tslbl: The following argument was not expected: peak; did you mean peaks?\n"},
      {{"peaks", run, "--smoth", "off"},
       "tslbl: The following argument was not expected: --smoth; did you mean --smooth?\n"},
      {{"tune", "shwo"}, "tslbl: The following argument was not expected: shwo; did you mean show?\n"}};
  for (const auto& [words, message] : cases) {
    const Outcome outcome = RunTool(words);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith(message));
  }
}

TEST(Peaks, NeverWritesOverItsInput) {
  const TempFile file("a.txt", "100 1\n101 5\n102 2\n");
  const std::string other = file.Folder() + "/./a.txt";
  for (const Arguments& words :
       {Arguments{"peaks", file.Path(), "-o", other}, Arguments{"peaks", file.Path(), "--curve", other},
        Arguments{"peaks", file.Path(), "--curve", "/tmp/t", "-o", "/tmp/./t"}}) {
    EXPECT_EQ(RunTool(words).status, 2);
    EXPECT_EQ(ReadFile(file.Path()), "100 1\n101 5\n102 2\n");
  }
}

TEST(Help, OfEachCommandHoldsExamples) {
  for (const char* command : {"peaks", "simulate", "info"}) {
    const Outcome outcome = RunTool({command, "--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("Examples:\n  tslbl " + std::string(command)));
    EXPECT_THAT(RunTool({"--help"}).out, HasSubstr(command));
  }
}

TEST(Help, VersionIsOneLine) {
  const Outcome outcome = RunTool({"--version"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, testing::MatchesRegex("tslbl [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

}  // namespace
}  // namespace tests
