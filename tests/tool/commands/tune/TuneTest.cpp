// Tests: CheckFiles.cpp, ConvertOptions.cpp, FormOption.cpp, TuneCheck.cpp, TuneConvert.cpp, TuneDiff.cpp,
// TuneNew.cpp, TuneSet.cpp, TuneShow.cpp, TuneStore.cpp, tool/frame/FileLock.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <ctime>
#include <filesystem>
#include <string>

#include <tool/TempFile.h>
#include <tool/ToolRun.h>

namespace tests {
namespace {

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

// A folder with a default tune of each probe.
class TuneTest : public testing::Test {
 protected:
  TuneTest() {
    EXPECT_EQ(RunTool({"tune", "new", "--output", Path("esi.xml")}).status, 0);
    EXPECT_EQ(RunTool({"tune", "new", "--probe", "apci", "--output", Path("apci.tune")}).status, 0);
  }
  std::string Path(const std::string& name) const { return folder_.Folder() + "/" + name; }

  // Runs it, expects this status, and that the file stays as it was, byte for byte.
  Outcome RunRefused(const Arguments& arguments, int status, const std::string& file) {
    const std::string before = ReadFile(file);
    const std::vector<std::string> names = NamesIn(folder_.Folder());
    const Outcome outcome = RunTool(arguments);
    EXPECT_EQ(outcome.status, status) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(ReadFile(file), before);
    EXPECT_EQ(NamesIn(folder_.Folder()), names);
    return outcome;
  }

 private:
  TempFile folder_{"keep", ""};
};

TEST_F(TuneTest, NewWritesTheFormOfTheName) {
  EXPECT_THAT(ReadFile(Path("esi.xml")), StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Tune>"));
  EXPECT_THAT(ReadFile(Path("apci.tune")), StartsWith(std::string("\x03\0\0\0", 4)));
}

TEST_F(TuneTest, NewWritesTheFormThatIsAskedFor) {
  RunTool({"tune", "new", "--output", Path("b.xml"), "--to", "binary"});
  EXPECT_THAT(ReadFile(Path("b.xml")), StartsWith(std::string("\x03\0\0\0", 4)));
}

TEST_F(TuneTest, NewReplacesNoTune) {
  const Outcome outcome = RunRefused({"tune", "new", "--output", Path("esi.xml")}, 1, Path("esi.xml"));
  EXPECT_THAT(outcome.err, HasSubstr(Path("esi.xml") + ": exists already"));
}

TEST_F(TuneTest, NewThatFailsLeavesNothing) {
  const std::vector<std::string> names = NamesIn(Path(""));
  const Outcome outcome =
      RunShell("ulimit -f 1; trap '' XFSZ; exec $TSLBL tune new --output '" + Path("full.xml") + "'");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(Path("full.xml")));
  EXPECT_EQ(NamesIn(Path("")), names);
}

TEST_F(TuneTest, NewTunesAreAccepted) {
  const Outcome outcome = RunTool({"tune", "check", Path("esi.xml"), Path("apci.tune")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
}

TEST_F(TuneTest, ShowIsASheet) {
  const Outcome outcome = RunTool({"tune", "show", Path("apci.tune")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("  CoronaVoltage       Corona Voltage"));
  EXPECT_THAT(outcome.out, EndsWith("The rules accept it.\n"));
}

TEST_F(TuneTest, ShowOfTwoNamesThem) {
  const Outcome outcome = RunTool({"tune", "show", Path("esi.xml"), Path("apci.tune")});
  EXPECT_THAT(outcome.out, StartsWith(Path("esi.xml") + "\n\nTune\n"));
  EXPECT_THAT(outcome.out, HasSubstr("\n\n" + Path("apci.tune") + "\n\nTune\n"));
}

TEST_F(TuneTest, ShowPlotsOneOrTwo) {
  const Outcome outcome =
      RunTool({"tune", "show", Path("esi.xml"), Path("apci.tune"), "--plot", Path("p.svg")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_THAT(ReadFile(Path("p.svg")), StartsWith("<svg "));
}

TEST_F(TuneTest, ShowDoesNotPlotOverATune) {
  RunRefused({"tune", "show", Path("esi.xml"), "--plot", Path("esi.xml")}, 2, Path("esi.xml"));
}

TEST_F(TuneTest, CheckTellsEveryProblemOfEveryFile) {
  const std::string bad = ReadFile(Path("esi.xml"));
  std::string text = bad;
  text.replace(text.find("<MZLow>5<"), 9, "<MZLow>1<");
  text.replace(text.find("<DetectorGain>-1400<"), 20, "<DetectorGain>1<");
  std::ofstream(Path("bad.xml")) << text;
  std::ofstream(Path("worse.xml")) << "<Tune><Control><MZLow>x</MZLow></Control></Tune>";
  const Outcome outcome = RunTool({"tune", "check", Path("worse.xml"), Path("bad.xml"), Path("esi.xml")});
  EXPECT_EQ(outcome.status, 3) << "the file that cannot be read weighs more";
  EXPECT_EQ(outcome.out,
            Path("bad.xml") + ": MZLow: Low m/z is out of range.  Valid values are 5.00 to 3000.00.\n" +
                Path("bad.xml") +
                ": DetectorGain: Detector Gain is out of range.  Valid values are -3000.00 to 0.00.\n");
  EXPECT_EQ(outcome.err,
            "tslbl: " + Path("worse.xml") + ": Tune/Control/MZLow: \"x\" is not a value for it\n");
}

TEST_F(TuneTest, CheckIsStatus1IfThereAreProblems) {
  RunTool({"tune", "set", Path("apci.tune"), "CoronaVoltage=5000"});
  EXPECT_EQ(RunTool({"tune", "check", Path("apci.tune"), Path("esi.xml")}).status, 1);
}

TEST_F(TuneTest, CheckSaysThatItIsStricter) {
  EXPECT_THAT(RunTool({"tune", "check", "--help"}).out, HasSubstr("This is stricter than"));
}

TEST_F(TuneTest, ShowPlotsNothingElseThanSvg) {
  const Outcome outcome =
      RunRefused({"tune", "show", Path("esi.xml"), "--plot", Path("p.png")}, 2, Path("esi.xml"));
  EXPECT_THAT(outcome.err, HasSubstr("--plot: pictures are SVG, and " + Path("p.png") + " ends in .png"));
}

TEST_F(TuneTest, SetTellsWhatTheRulesDidNotAcceptBefore) {
  RunTool({"tune", "set", Path("apci.tune"), "CoronaVoltage=5000"});
  const std::string warning = "tslbl: warning: " + Path("apci.tune") +
                              ": the rules did not accept this tune before, and do not now: CoronaVoltage: "
                              "Endplate and cylinder can be "
                              "at most 6000 volts apart.\n";
  EXPECT_EQ(RunTool({"tune", "set", Path("apci.tune"), "Name=A"}).err, warning);
  EXPECT_THAT(RunTool({"tune", "set", Path("apci.tune"), "Name=A"}).err, EndsWith(warning)) << "no change";
  EXPECT_EQ(RunTool({"tune", "set", Path("apci.tune"), "CoronaVoltage=4000"}).err, "") << "mended";
}

TEST_F(TuneTest, NewTakesEachProbe) {
  for (const auto& [word, name] :
       {std::pair("esi", "ESI"), std::pair("apci", "APCI"), std::pair("low-flow-esi", "low-flow ESI")}) {
    const std::string file = Path(std::string(word) + ".new");
    EXPECT_EQ(RunTool({"tune", "new", "--probe", word, "--output", file}).status, 0);
    EXPECT_THAT(RunTool({"tune", "show", file}).out,
                ContainsRegex(std::string("SourceType .* ") + name + "\n"));
  }
}

TEST_F(TuneTest, SetChangesFieldsInTheFormOfTheFile) {
  for (const char* name : {"esi.xml", "apci.tune"}) {
    RunTool({"tune", "convert", Path(name), "--output", Path("before.bin")});
    const Outcome outcome = RunTool({"tune", "set", Path(name), "MZLow=100", "MZHi=200.5", "Name=A B"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "Name: New Tune -> A B\nMZLow: 5 -> 100\nMZHi: 3000 -> 200.5\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(LinesOf(RunTool({"tune", "diff", Path("before.bin"), Path(name)}).out),
                testing::IsSupersetOf({"Name: New Tune -> A B", "MZLow: 5 -> 100", "MZHi: 3000 -> 200.5"}));
  }
  EXPECT_THAT(ReadFile(Path("esi.xml")), StartsWith("<?xml"));
  EXPECT_THAT(ReadFile(Path("apci.tune")), StartsWith(std::string("\x03\0\0\0", 4)));
}

// The seconds in an XML tune.
std::int64_t LastSaveOf(const std::string& document) {
  const std::string tag = "<LastSave>";
  return std::stoll(document.substr(document.find(tag) + tag.size()));
}

TEST_F(TuneTest, SetKeepsTheTimeOfSaving) {
  std::string text = ReadFile(Path("esi.xml"));
  const std::string former = std::to_string(LastSaveOf(text));
  std::ofstream(Path("esi.xml")) << text.replace(text.find(former), former.size(), "1000000000");
  const auto before = std::time(nullptr);
  const Outcome outcome = RunTool({"tune", "set", Path("esi.xml"), "MZLow=100"});
  EXPECT_EQ(outcome.out, "MZLow: 5 -> 100\n") << "the time of saving is no change of the user's";
  EXPECT_GE(LastSaveOf(ReadFile(Path("esi.xml"))), before);
  EXPECT_LE(LastSaveOf(ReadFile(Path("esi.xml"))), std::time(nullptr));
}

TEST_F(TuneTest, SetRefusesWhatTheRulesRefuse) {
  const Outcome outcome =
      RunRefused({"tune", "set", Path("esi.xml"), "MZLow=100", "MZHi=50"}, 1, Path("esi.xml"));
  EXPECT_EQ(outcome.err,
            "tslbl: " + Path("esi.xml") + ": MZHi=50: High m/z must be greater than or equal to low m/z.\n");
}

TEST_F(TuneTest, SetRefusesWhatIsNoChange) {
  const Outcome outcome =
      RunRefused({"tune", "set", Path("apci.tune"), "MZLow=100", "Foo=1"}, 2, Path("apci.tune"));
  EXPECT_THAT(outcome.err, HasSubstr("there is no field \"Foo\""));
}

TEST_F(TuneTest, SetOfWhatItHasLeavesTheFile) {
  const Outcome outcome = RunRefused({"tune", "set", Path("esi.xml"), "MZLow=5"}, 0, Path("esi.xml"));
  EXPECT_THAT(outcome.err, HasSubstr(Path("esi.xml") + ": no change\n"));
}

TEST_F(TuneTest, SetTellsAWarningAndWrites) {
  std::string text = ReadFile(Path("esi.xml"));
  const std::size_t begin = text.find("<Q1CalPts>");
  const std::size_t end = text.find("</Q1CalPts>") + 11;
  std::ofstream(Path("esi.xml")) << text.erase(begin, end - begin);
  const Outcome outcome = RunTool({"tune", "set", Path("esi.xml"), "CapExit=calibrated"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err,
              HasSubstr("CapExit=calibrated: Capillary Exit - There must be at least two Q1 step "
                        "calibration points for this field.\n"));
  EXPECT_THAT(ReadFile(Path("esi.xml")), HasSubstr("Type=\"Calibrated\""));
}

TEST_F(TuneTest, SetTellsWhatALaterChangeTurnedBack) {
  const Outcome outcome = RunTool({"tune", "set", Path("apci.tune"), "ApciNebGas=off", "ApciVapTemp=300"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "tslbl: warning: " + Path("apci.tune") + ": ApciNebGas=off: a later change made it on\n");
}

TEST_F(TuneTest, SetTellsWhatTheRulesFindThen) {
  const Outcome outcome = RunTool({"tune", "set", Path("esi.xml"), "Cylinder=6000"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "Cylinder: -3500 -> 6000\n");
  EXPECT_EQ(outcome.err, "tslbl: warning: " + Path("esi.xml") +
                             ": the rules do not accept this tune: Cylinder: Endplate and cylinder can be at "
                             "most 6000 volts apart.\n");
}

TEST_F(TuneTest, SetChangesRegularFilesOnly) {
  ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
  const Outcome outcome = RunTool({"tune", "set", Path("fifo"), "MZLow=7"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(Path("fifo") + ": is not a regular file"));
}

TEST_F(TuneTest, SeveralSetsAtOnceLoseNothing) {
  for (int round = 0; round < 5; ++round) {
    const std::string low = "MZLow=" + std::to_string(100 + round);
    const std::string skimmer = "Skimmer=" + std::to_string(30 + round);
    Process first(ToolCommand({"tune", "set", Path("esi.xml"), low}));
    Process second(ToolCommand({"tune", "set", Path("esi.xml"), skimmer}));
    EXPECT_EQ(first.Wait().status + second.Wait().status, 0);
    const std::string text = ReadFile(Path("esi.xml"));
    EXPECT_THAT(text, HasSubstr("<MZLow>" + std::to_string(100 + round) + "<"));
    EXPECT_THAT(text, HasSubstr("<IOPt Type=\"Single\">" + std::to_string(30 + round) + "<"));
  }
}

TEST_F(TuneTest, OneOfSeveralNewTunesTakesTheName) {
  for (int round = 0; round < 5; ++round) {
    const std::string file = Path("new" + std::to_string(round));
    Process first(ToolCommand({"tune", "new", "--output", file}));
    Process second(ToolCommand({"tune", "new", "--probe", "apci", "--output", file}));
    EXPECT_EQ(first.Wait().status + second.Wait().status, 1);
  }
}

TEST_F(TuneTest, AWarningThatCannotBeShownChangesNothingElse) {
  const Outcome outcome =
      RunShell("exec $TSLBL tune set '" + Path("esi.xml") + "' CapExit=calibrated 2>/dev/full");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(ReadFile(Path("esi.xml")), HasSubstr("Type=\"Calibrated\""));
}

TEST_F(TuneTest, WhatADocumentLacksIsTold) {
  std::string text = ReadFile(Path("esi.xml"));
  const std::size_t begin = text.find("<HEDynode>");
  text.erase(begin, text.find("</HEDynode>") + 11 - begin);
  std::ofstream(Path("esi.xml")) << text;
  const Outcome outcome = RunTool({"tune", "check", Path("esi.xml")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "tslbl: warning: " + Path("esi.xml") +
                             ": the document lacks Tune/Control/HEDynode, which count as 0 or empty\n");
}

TEST_F(TuneTest, SetTellsWhatTheDocumentLacked) {
  std::ofstream(Path("short.xml")) << "<Tune><Control><MZLow>100</MZLow></Control></Tune>";
  const Outcome outcome = RunTool({"tune", "set", Path("short.xml"), "Name=A"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr(Path("short.xml") + ": the document lacks Tune/Info, "));
}

TEST_F(TuneTest, SetOnAFullDiskKeepsTheTune) {
  const std::string before = ReadFile(Path("esi.xml"));
  const Outcome outcome =
      RunShell("ulimit -f 1; trap '' XFSZ; exec $TSLBL tune set '" + Path("esi.xml") + "' MZLow=100");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(Path("esi.xml")));
  EXPECT_EQ(ReadFile(Path("esi.xml")), before);
}

TEST_F(TuneTest, DiffOfEqualsIsSilent) {
  const Outcome outcome = RunTool({"tune", "diff", Path("esi.xml"), Path("esi.xml")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
}

TEST_F(TuneTest, DiffIsStatus1) {
  const Outcome outcome = RunTool({"tune", "diff", Path("esi.xml"), Path("apci.tune")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, HasSubstr("SourceType: ESI -> APCI\n"));
}

TEST_F(TuneTest, ConvertGoesBothWays) {
  RunTool({"tune", "convert", Path("esi.xml"), "--output", Path("a.bin")});
  RunTool({"tune", "convert", Path("a.bin"), "--output", Path("b.xml")});
  EXPECT_EQ(ReadFile(Path("b.xml")), ReadFile(Path("esi.xml")));
}

TEST_F(TuneTest, ConvertTellsWhatIsLost) {
  const Outcome outcome = RunTool({"tune", "convert", Path("apci.tune"), "--output", Path("a.xml")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "tslbl: warning: " + Path("a.xml") + ": a document does not keep Q1Enter: 10 -> 0\n");
}

TEST_F(TuneTest, ConvertGoesFromPipeToPipe) {
  const Outcome outcome = RunShell("cat '" + Path("apci.tune") +
                                   "' | $TSLBL tune convert /dev/stdin --output /dev/stdout --to xml | cat");
  EXPECT_THAT(outcome.out, StartsWith("<?xml"));
}

TEST_F(TuneTest, ConvertDoesNotGoOverItsInput) {
  RunRefused({"tune", "convert", Path("esi.xml"), "--output", Path("esi.xml"), "--to", "binary"}, 2,
             Path("esi.xml"));
}

TEST_F(TuneTest, WrongUsageTellsWhereTheHelpIs) {
  struct Row {
    Arguments arguments;
    const char* message;
  };
  const std::string esi = Path("esi.xml");
  for (const auto& [arguments, message] :
       {Row{{"tune"}, "tslbl: a command is required\nRun 'tslbl tune --help' for more information.\n"},
        Row{{"tune", "polish"}, "was not expected: polish"}, Row{{"tune", "new"}, "--output is missing\n"},
        Row{{"tune", "new", "--probe", "ei", "--output", "x"},
            "--probe: \"ei\" is not one of esi, apci, low-flow-esi"},
        Row{{"tune", "new", "--output", "x", "--to", "json"}, "--to: \"json\" is not one of xml, binary"},
        Row{{"tune", "show"}, "FILE is missing"},
        Row{{"tune", "show", esi, esi, esi}, "FILE: one tune or two can be shown"},
        Row{{"tune", "check"}, "FILE is missing"}, Row{{"tune", "check", ""}, "FILE: the value is empty"},
        Row{{"tune", "set"}, "FILE is missing"}, Row{{"tune", "set", esi}, "FIELD=VALUE is missing"},
        Row{{"tune", "diff", esi}, "FILE: two tunes are compared"},
        Row{{"tune", "convert"}, "FILE is missing"}, Row{{"tune", "convert", esi}, "--output is missing"}}) {
    const Outcome outcome = RunTool(arguments);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_THAT(outcome.err, HasSubstr(message));
  }
}

TEST_F(TuneTest, AFileThatIsNoneIsNamed) {
  struct Row {
    Arguments arguments;
    int status;
  };
  for (const auto& [arguments, status] :
       {Row{{"tune", "show", Path("none.xml")}, 1}, Row{{"tune", "check", Path("none.xml")}, 3},
        Row{{"tune", "set", Path("none.xml"), "MZLow=7"}, 1},
        Row{{"tune", "diff", Path("none.xml"), Path("esi.xml")}, 3},
        Row{{"tune", "diff", Path("esi.xml"), Path("none.xml")}, 3},
        Row{{"tune", "convert", Path("none.xml"), "--output", Path("x")}, 1}}) {
    const Outcome outcome = RunTool(arguments);
    EXPECT_EQ(outcome.status, status);
    EXPECT_THAT(outcome.err, HasSubstr(Path("none.xml")));
    EXPECT_FALSE(std::filesystem::exists(Path("x")));
  }
}

TEST_F(TuneTest, TheHelpOfEachCommandHasAnExample) {
  EXPECT_THAT(RunTool({"tune", "--help"}).out, HasSubstr("Subcommands:"));
  for (const char* verb : {"new", "show", "check", "set", "diff", "convert", "syringes"}) {
    const Outcome outcome = RunTool({"tune", verb, "--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr(std::string("  tslbl tune ") + verb + " "));
  }
}

}  // namespace
}  // namespace tests
