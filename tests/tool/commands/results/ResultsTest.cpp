// Tests: Results.cpp, ResultWriter.cpp, RunSections.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <iterator>
#include <map>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include <tool/commands/DemoRun.h>
#include <tool/io/RunMaker.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/method/Method.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/records/RecordForms.h>
#include <tslbl/results/ResultCurve.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

Outcome Results(const std::string& run, const Arguments& more = {}) {
  Arguments words = {"results", run};
  words.insert(words.end(), more.begin(), more.end());
  return RunTool(words);
}

pugi::xml_document Parsed(const Outcome& outcome) {
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  pugi::xml_document document;
  EXPECT_TRUE(document.load_string(outcome.out.c_str()));
  return document;
}

pugi::xml_document ResultsOfDemo(const Arguments& more = {}) {
  return Parsed(Results(DemoRun::Get().Run(), more));
}

std::string Xml(const pugi::xml_node& node) {
  std::ostringstream text;
  node.print(text, "", pugi::format_raw);
  return text.str();
}

std::vector<std::string> Names(const pugi::xml_node& node) {
  std::vector<std::string> names;
  for (const pugi::xml_node child : node.children()) names.emplace_back(child.name());
  return names;
}

std::size_t Count(const pugi::xml_node& node, const char* name) {
  const auto children = node.children(name);
  return static_cast<std::size_t>(std::distance(children.begin(), children.end()));
}

// A run of one scan, whose ids are the largest that there are.
class HugeIds {
 public:
  HugeIds() {
    TslBL::RawSpectrum raw = RawScan(1, std::vector<double>(300, 5.0));
    raw.info.Id = raw.info.TimeStamp = raw.info.TuneId = 4294967295;
    TslTool::RunWriter writer(Path(), "<&\"");
    writer.AddTune(4294967295, DemoTune());
    writer.AddScan(raw);
    writer.Finish();
  }
  std::string Path() const { return folder_.Folder() + "/huge.run"; }

 private:
  TempFile folder_{"x", ""};
};

TEST(Results, HasTheSectionsOfTheRunBeforeItsSpectra) {
  const auto document = ResultsOfDemo({"--range", "A=500-600"});
  EXPECT_THAT(Names(document.child("Results")),
              ElementsAre("Run", "Tunes", "MZRanges", "CurveDefs", "Chromatograms", "CurveEvals", "Spectra"));
  EXPECT_STREQ(document.child("Results").child("Run").attribute("File").value(), "demo.run");
  EXPECT_STREQ(document.child("Results").child("Run").attribute("Title").value(), "Demonstration");
}

TEST(Results, HasTheTunesAsTheLibraryReadsThem) {
  const Outcome outcome = Results(DemoRun::Get().Run(), {"--header-only"});
  TslCommon::XMLParser parser;
  ASSERT_TRUE(parser.LoadText(TslCommon::FromUtf8(outcome.out)));
  ASSERT_TRUE(parser.StartNode(L"Results"));
  int count = 0;
  ASSERT_TRUE(parser.StartList(L"Tunes", count));
  std::map<std::uint32_t, TslBL::Tune> tunes;
  TslBL::LoadTune(parser, tunes);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(TslBL::ToXml(tunes.at(1)), TslBL::ToXml(DemoTune()));
}

TEST(Results, HasThePeaksThatTheCommandPeaksFinds) {
  pugi::xml_document peaks;
  ASSERT_TRUE(peaks.load_string(RunTool({"peaks", DemoRun::Get().Run(), "--format", "xml"}).out.c_str()));
  const auto results = ResultsOfDemo();
  pugi::xml_node spectrum = results.child("Results").child("Spectra").child("RawSpec");
  std::size_t count = 0;
  for (const pugi::xml_node scan : peaks.child("Scans").children("Scan")) {
    EXPECT_EQ(Xml(spectrum.child("Peaks")), Xml(scan.child("Peaks"))) << count;
    EXPECT_STREQ(spectrum.attribute("Id").value(), scan.attribute("Number").value());
    spectrum = spectrum.next_sibling("RawSpec");
    ++count;
  }
  EXPECT_EQ(count, 20u);
  EXPECT_FALSE(spectrum);
}

TEST(Results, HasTheChainThatFoundThem) {
  const Outcome chain = RunTool({"peaks", DemoRun::Get().Run(), "--sn", "9", "--show-chain"});
  EXPECT_THAT(Results(DemoRun::Get().Run(), {"--sn", "9"}).out, HasSubstr(chain.out));
}

TEST(Results, HasTheHeaderOfEachSpectrum) {
  const auto document = ResultsOfDemo({"--scan", "2"});
  const pugi::xml_node spectrum = document.child("Results").child("Spectra").child("RawSpec");
  TslTool::RunReader run(DemoRun::Get().Run());
  TslBL::RawSpectrum raw;
  std::uint32_t number = 0;
  run.Next(number, raw);
  run.Next(number, raw);
  EXPECT_EQ(spectrum.attribute("Id").as_uint(), raw.info.Id);
  EXPECT_EQ(spectrum.attribute("TimeStamp").as_uint(), raw.info.TimeStamp);
  EXPECT_EQ(spectrum.attribute("TuneId").as_uint(), raw.info.TuneId);
  EXPECT_FALSE(spectrum.next_sibling("RawSpec"));
}

TEST(Results, HeaderOnlyHasNothingElseOfASpectrum) {
  const auto document = ResultsOfDemo({"--header-only"});
  const pugi::xml_node results = document.child("Results");
  EXPECT_FALSE(results.child("CurveEvals"));
  EXPECT_EQ(Count(results.child("Spectra"), "RawSpec"), 20u);
  for (const pugi::xml_node spectrum : results.child("Spectra").children())
    EXPECT_FALSE(spectrum.first_child());
}

TEST(Results, HasTheMeasuredPointsIfAskedFor) {
  EXPECT_FALSE(
      ResultsOfDemo({"--scan", "1"}).child("Results").child("Spectra").child("RawSpec").child("Profile"));
  const auto document = ResultsOfDemo({"--scan", "1", "--profile"});
  const pugi::xml_node spectrum = document.child("Results").child("Spectra").child("RawSpec");
  EXPECT_THAT(Names(spectrum), ElementsAre("Profile", "Peaks"));
  EXPECT_EQ(spectrum.child("Profile").attribute("Count").as_uint(), 20003u);
  std::istringstream y(spectrum.child("Profile").child("Y").child_value());
  double sum = 0.0;
  for (double value = 0.0; y >> value;) sum += value;
  EXPECT_NEAR(sum, spectrum.attribute("TIC").as_double(), 1e-5 * sum);
}

TEST(Results, HasDefinitionsAsTheLibraryReadsThem) {
  const Outcome outcome = Results(DemoRun::Get().Run(), {"--header-only", "--range", "C=500-600", "--range",
                                                         "A=600.5-700", "--curve", "a-C", "--curve", "1+c"});
  TslCommon::XMLParser parser;
  ASSERT_TRUE(parser.LoadText(TslCommon::FromUtf8(outcome.out)));
  ASSERT_TRUE(parser.StartNode(L"Results"));
  int count = 0;
  ASSERT_TRUE(parser.StartList(L"MZRanges", count));
  std::vector<TslBL::MZRange> ranges;
  for (; count > 0; --count) TslBL::LoadMZRange(parser, ranges);
  parser.EndList();
  ASSERT_TRUE(parser.StartList(L"CurveDefs", count));
  std::map<std::uint32_t, std::wstring> definitions;
  for (; count > 0; --count) TslBL::LoadCurveDefs(parser, definitions);
  EXPECT_THAT(ranges, ElementsAre(TslBL::MZRange(TslBL::MZRange::Partial, 500, 600),
                                  TslBL::MZRange(TslBL::MZRange::Partial, 600.5, 700)));
  EXPECT_EQ(definitions, (std::map<std::uint32_t, std::wstring>{{1, L"B-A"}, {2, L"1+A"}}));
}

TEST(Results, HasThePointsOfEachCurve) {
  const auto document = ResultsOfDemo({"--header-only", "--range", "A=500-600", "--range", "B=600-700"});
  std::vector<std::string> seen;
  for (const pugi::xml_node curve : document.child("Results").child("Chromatograms").children()) {
    seen.push_back(std::string(curve.attribute("Name").value()) + " " +
                   curve.child("Curve").attribute("Id").value() + " " + curve.attribute("DefId").value());
    EXPECT_EQ(curve.child("Curve").child("Profile").attribute("Count").as_uint(), 20u);
  }
  EXPECT_THAT(seen, ElementsAre("TIC 3 ", "BPC 4 ", "A 1 1", "B 2 2"));
}

TEST(Results, DriveTheSameCurvesOfChrom) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/results.xml";
  const Arguments curves = {"--range", "A=508.2+-0.5", "--range", "B=600-700", "--curve",
                            "A",       "--curve",      "1+B"};
  for (const char* values : {"", "--mean"}) {
    Arguments made = {"--header-only", "-o", file};
    made.insert(made.end(), curves.begin(), curves.end());
    Arguments asked = {"chrom", DemoRun::Get().Run(), "--format", "tsv", "-q"};
    if (*values != '\0') {
      made.emplace_back(values);
      asked.emplace_back(values);
    }
    ASSERT_EQ(Results(DemoRun::Get().Run(), made).status, 0);
    Arguments byFile = asked;
    byFile.insert(byFile.end(), {"--curves-from", file});
    asked.insert(asked.end(), curves.begin(), curves.end());
    const Outcome outcome = RunTool(byFile);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, RunTool(asked).out);
  }
}

TEST(Results, OfMeansGiveMeansAgain) {
  const TempFile folder("x", "");
  const std::string file = folder.Folder() + "/mean.xml";
  const std::string run = DemoRun::Get().Run();
  const Arguments curves = {"--mean", "--range", "A=194-196"};
  Arguments made = {"-o", file};
  made.insert(made.end(), curves.begin(), curves.end());
  ASSERT_EQ(Results(run, made).status, 0);
  Arguments asked = {"chrom", run, "--format", "tsv", "-q"};
  Arguments byFile = asked;
  asked.insert(asked.end(), curves.begin(), curves.end());
  byFile.insert(byFile.end(), {"--curves-from", file});
  EXPECT_EQ(RunTool(byFile).out, RunTool(asked).out);
}

TEST(Results, TellsOfRangesThatItsDigitsDoNotHold) {
  const Outcome outcome = Results(DemoRun::Get().Run(), {"--header-only", "--range", "A=600.12345-700"});
  EXPECT_THAT(outcome.out, HasSubstr("<MZRange Type=\"Partial\" Start=\"600.123\" End=\"700\" />"));
  EXPECT_THAT(outcome.out, HasSubstr("Title=\"m/z 600.123 to 700\""));
  EXPECT_THAT(outcome.err,
              HasSubstr("range A (600.12345 to 700) is taken as 600.123 to 700, as a document has six "
                        "digits\n"));
  EXPECT_EQ(Results(DemoRun::Get().Run(), {"--range", "A=1000.001-1000.002"}).status, 2);
}

TEST(Results, OfOneScanHasNoChromatograms) {
  const HugeIds run;
  const Outcome outcome = Results(run.Path());
  const auto document = Parsed(outcome);
  EXPECT_FALSE(document.child("Results").child("Chromatograms"));
  EXPECT_THAT(outcome.err, HasSubstr("tslbl: warning: " + run.Path() + ": no chromatograms: holds 1 scan"));
  EXPECT_EQ(Results(run.Path(), {"--range", "A=500-600"}).status, 1);
}

TEST(Results, KeepsTheLargestIdsAndAnyTitle) {
  const HugeIds run;
  const Outcome outcome = Results(run.Path(), {"--header-only"});
  EXPECT_THAT(
      outcome.out,
      HasSubstr("<RawSpec Id=\"4294967295\" TimeStamp=\"4294967295\" TIC=\"7.5e+06\" TuneId=\"4294967295\""));
  EXPECT_THAT(outcome.out, HasSubstr("<TunePair Id=\"4294967295\">"));
  EXPECT_STREQ(Parsed(outcome).child("Results").child("Run").attribute("Title").value(), "<&\"");
}

TEST(Results, OfARunWithoutScansIsRefused) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/empty.run";
  {
    TslTool::RunWriter writer(run, "");
    writer.AddTune(1, DemoTune());
    writer.Finish();
  }
  for (const Arguments& more : {Arguments{}, {"--header-only"}}) {
    Arguments words = more;
    words.insert(words.end(), {"-o", folder.Folder() + "/results.xml"});
    const Outcome outcome = Results(run, words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("tslbl: " + run + ": holds no spectrum"));
    EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("empty.run", "x"));
  }
}

TEST(Results, TakesRunsOnly) {
  for (const char* name : {"a.txt", "a.mzML"}) {
    const TempFile file(name, "100 1\n101 2\n102 1\n");
    const Outcome outcome = Results(file.Path());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tslbl: " + file.Path() + ": is no run of raw counts, of which results are\n");
    EXPECT_EQ(outcome.out, "");
  }
  EXPECT_EQ(Results("-").status, 2);
  EXPECT_THAT(Results("/no/such.run").err, StartsWith("tslbl: /no/such.run: cannot be opened"));
}

TEST(Results, RefusesOptionsThatDoNotFit) {
  const std::string run = DemoRun::Get().Run();
  const std::pair<Arguments, std::string> kRows[] = {
      {{"--profile", "--header-only"}, "--profile and --header-only exclude each other"},
      {{"--header-only", "--sn", "5"}, "--sn: --header-only evaluates nothing"},
      {{"--header-only", "--scale", "2"}, "--scale: --header-only evaluates nothing"},
      {{"--curve", "A"}, "--curve: a definition is made of ranges"},
      {{"--range", "A=500-600", "--curve", "k"}, "--curve: \"k\": "},
      {{"-o", run}, "--output: " + run + " is the input"},
  };
  for (const auto& [words, error] : kRows) {
    const Outcome outcome = Results(run, words);
    EXPECT_EQ(outcome.status, 2) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(error));
    EXPECT_EQ(outcome.out, "");
  }
}

TEST(Results, WithoutARunIsThatOfTheDemonstration) {
  const auto document = Parsed(RunTool({"results", "--header-only"}));
  EXPECT_EQ(Count(document.child("Results").child("Spectra"), "RawSpec"), 20u);
  EXPECT_EQ(Count(document.child("Results").child("Tunes"), "TunePair"), 1u);
}

TEST(Results, CtrlCLeavesNothing) {
  const TempFile folder("x", "");
  const std::string run = folder.Folder() + "/long.run";
  ASSERT_EQ(RunTool({"simulate", "--output", run, "--scans", "250"}).status, 0);
  Process process(ToolCommand(
      {"results", run, "--smooth", "median:151", "--threads", "1", "-o", folder.Folder() + "/results.xml"}));
  ASSERT_TRUE(WaitUntil([&] { return NamesIn(folder.Folder()).size() == 3; }));
  usleep(50000);
  process.Signal(SIGINT);
  EXPECT_EQ(process.Wait().status, 130);
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("long.run", "x"));
}

TEST(Results, ADamagedScanLeavesNothingAndIsNamed) {
  const SmallRun run;
  run.Change("UPDATE scan SET counts = x'00' WHERE number = 2");
  const Outcome outcome = Results(run.Path(), {"-o", run.Folder() + "/results.xml"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("tslbl: " + run.Path() + ": scan 2: "));
  EXPECT_THAT(NamesIn(run.Folder()), ElementsAre("small.run", "x"));
}

TEST(CurvesFromResults, ExcludesOtherDefinitionsAndOtherKindsOfInput) {
  const TempFile file("a.xml",
                      "<Results><MZRanges><MZRange Type=\"Partial\" Start=\"500\" End=\"600\"/></MZRanges>"
                      "<CurveDefs><Curve Id=\"1\"><CurveDef>A</CurveDef></Curve></CurveDefs></Results>");
  const std::string run = DemoRun::Get().Run();
  EXPECT_THAT(RunTool({"chrom", run, "--curves-from", file.Path(), "--range", "A=1-2"}).err,
              HasSubstr("--curves-from excludes --range and --curve"));
  EXPECT_THAT(RunTool({"chrom", run, "--curves-from", file.Path(), "-o", file.Path()}).err,
              HasSubstr("is the --curves-from as well"));
  const TempFile text("a.txt", "rt_s\tuv\n1\t2\n2\t3\n3\t2\n");
  EXPECT_THAT(RunTool({"chrom", text.Path(), "--curves-from", file.Path()}).err,
              HasSubstr("--curves-from: is for scans, and this is a text"));
}

TEST(CurvesFromResults, NamesFileAndElementOfWhatIsWrong) {
  const TempFile file("a.xml",
                      "<Results><MZRanges/><CurveDefs><Curve Id=\"5\"><CurveDef>A</CurveDef></Curve>"
                      "</CurveDefs></Results>");
  const Outcome outcome = RunTool({"chrom", DemoRun::Get().Run(), "--curves-from", file.Path()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, StartsWith("tslbl: " + file.Path() + ": Curve with Id 5: "));
}

}  // namespace
}  // namespace tests
