// Tests: MethodCheck.cpp, MethodCheckPeaks.cpp, MethodConvert.cpp, MethodEdit.cpp, MethodFaults.cpp,
// MethodNew.cpp, MethodRamp.cpp, MethodSet.cpp, MethodShow.cpp, MethodStore.cpp, MethodTime.cpp,
// SwitchTime.cpp, TimeTable.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>
#include <method/TestMethod.h>
#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/commands/method/MethodTimes.h>
#include <tool/commands/method/TimeTable.h>
#include <tool/frame/TimeText.h>

namespace tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// A folder with a tune of 100 to 800 m/z, 7 s a spectrum, and a method of it of a minute, which is a binary
// file, so that no form loses anything of a default tune.
class MethodTest : public testing::Test {
 protected:
  MethodTest() {
    EXPECT_EQ(RunTool({"tune", "new", "--output", Path("t.tune")}).status, 0);
    EXPECT_EQ(RunTool({"tune", "set", Path("t.tune"), "MZRange=100-800"}).status, 0);
    EXPECT_EQ(RunTool({"method", "new", "--tune", Path("t.tune"), "--output", Path("m")}).status, 0);
  }
  std::string Path(const std::string& name) const { return folder_.Folder() + "/" + name; }

  Outcome Set(const Arguments& edits) {
    Arguments arguments = {"method", "set", Path("m")};
    arguments.insert(arguments.end(), edits.begin(), edits.end());
    return RunTool(arguments);
  }
  // Expects this status, and that the method stays as it was, byte for byte.
  std::string SetRefused(const Arguments& edits, int status) {
    const std::string before = ReadFile(Path("m"));
    const Outcome outcome = Set(edits);
    EXPECT_EQ(outcome.status, status) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(ReadFile(Path("m")), before);
    return outcome.err;
  }
  std::string Shown() { return RunTool({"method", "show", Path("m")}).out; }
  // As a document, with these texts replaced.
  std::string Document(const std::string& name,
                       const std::vector<std::pair<std::string, std::string>>& replaced) {
    RunTool({"method", "convert", Path("m"), "--output", Path(name)});
    std::string text = ReadFile(Path(name));
    for (const auto& [from, to] : replaced) text.replace(text.find(from), from.size(), to);
    std::ofstream(Path(name)) << text;
    return Path(name);
  }

 private:
  TempFile folder_{"keep", ""};
};

TEST_F(MethodTest, NewIsOfOneTuneForAMinute) {
  EXPECT_EQ(Shown(),
            "New Method\n"
            "60 s, one tune in one run, 0.5 s for a change of polarity\n"
            "\n"
            "Program\n"
            "  seconds   0           10          20          30          40          50\n"
            "  periods   P0======================================================================\n"
            "  polarity  ++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++++\n"
            "  valve     SSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSSS\n"
            "\n"
            "P0  1min, 9 loops\n"
            "  item      type ions m/z            spectra         each    switching  tune\n"
            "  P0/0      scan +    100-800              1     7.0025 s            -  New Tune\n"
            "\n"
            "Valve\n"
            "         0 s  Source\n"
            "\n"
            "The rules accept it.\n");
}

TEST_F(MethodTest, NewTakesItsTime) {
  RunTool({"method", "new", "--time", "1.5h", "--output", Path("n")});
  EXPECT_THAT(RunTool({"method", "show", Path("n")}).out, HasSubstr("P0  1.5h, "));
  RunTool({"method", "new", "--time", "free", "--output", Path("f")});
  EXPECT_THAT(RunTool({"method", "show", Path("f")}).out, HasSubstr("P0  without end, 1 loop\n"));
}

TEST_F(MethodTest, NewReplacesNothing) {
  const std::string before = ReadFile(Path("m"));
  const Outcome outcome = RunTool({"method", "new", "--output", Path("m")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(Path("m") + ": exists already"));
  EXPECT_EQ(ReadFile(Path("m")), before);
}

TEST_F(MethodTest, SetChangesAllThatAMethodHolds) {
  const Outcome outcome =
      Set({"Desc=Survey", "P0.Timeout=20min", "P0.Save=off", "P0/0.Records=3",
           "P0/0.StartTrigger=snabovethres", "P0/0.StartTriggerValue=12.5", "P0/0.EndTrigger=TriggerTimeout",
           "P0/0.EndTriggerValue=30", "P0/0.ExcludeDuration=60", "P0/0.Type=PeakPark",
           "Inclusion=100-200@1-5", "Exclusion=149.5-150.5", "Valve@0=waste", "Valve@90s=source"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "Desc: New Method -> Survey\n"
            "P0.Save: on -> off\n"
            "P0.Timeout: 1min -> 20min\n"
            "P0.Loops: 9 -> 58\n"
            "P0/0.Records: 1 -> 3\n"
            "P0/0.Type: None -> PeakPark\n"
            "P0/0.StartTrigger: AbsAmplAboveThres -> SNAboveThres\n"
            "P0/0.StartTriggerValue: 0 -> 12.5\n"
            "P0/0.EndTrigger: StartTriggerNotDetected -> TriggerTimeout\n"
            "P0/0.EndTriggerValue: 0 -> 30\n"
            "P0/0.ExcludeDuration: 0 -> 60\n"
            "Valve@0ms: Source -> Waste\n"
            "Inclusion 1: - -> 100-200@1-5\n"
            "Exclusion 1: - -> 149.5-150.5@0-0\n"
            "Valve@90000ms: - -> Source\n");
}

TEST_F(MethodTest, SetTellsWhatABinaryMethodDoesNotKeep) {
  EXPECT_EQ(Set({"P0/0.Records=3"}).err,
            "tslbl: warning: " + Path("m") + ": a binary method does not keep Records: 3 -> 1 (P0/0)\n");
}

TEST_F(MethodTest, SetAddsMovesAndRemovesPlaces) {
  EXPECT_EQ(Set({"P0.Item=" + Path("t.tune"), "P0/1.PolarityType=negative", "Period=esi"}).status, 0);
  EXPECT_THAT(Shown(), HasSubstr("P0/1      scan -    100-800 "));
  EXPECT_THAT(Shown(), HasSubstr("P1/0      scan +    5-3000 "));
  EXPECT_EQ(Set({"P0/1=up", "P1=up"}).status, 0);
  EXPECT_THAT(Shown(), HasSubstr("P0/0      scan +    5-3000 "));
  EXPECT_THAT(Shown(), HasSubstr("P1/0      scan -    100-800 "));
  EXPECT_EQ(Set({"P0=remove", "P0/0=remove"}).status, 0);
  EXPECT_THAT(Shown(), Not(HasSubstr("P1")));
  EXPECT_THAT(Shown(), HasSubstr("P0/0      scan +    100-800 "));
}

TEST_F(MethodTest, SetSortsItemsByPolarity) {
  Set({"P0.Item=" + Path("t.tune"), "P0/1.PolarityType=negative", "Items=sort"});
  EXPECT_THAT(Shown(), HasSubstr("P0/0      scan -    100-800 "));
}

TEST_F(MethodTest, SetGivesARunToChangeTo) {
  EXPECT_EQ(Set({"P0/0.Type=TuneChange", "P0/0/1.MZRange=50-60"}).status, 0);
  EXPECT_THAT(Shown(), HasSubstr("P0/0/1    scan +    50-60 "));
  EXPECT_EQ(Set({"P0/0.Type=None"}).out, "P0/0.Type: TuneChange -> None\nP0/0/1: a run -> -\n");
}

TEST_F(MethodTest, SetTakesAChainFromAFile) {
  const TempFile chain(
      "c.xml", "<CurveEvals><CurveEval Type=\"Threshold\"><Threshold>5</Threshold></CurveEval></CurveEvals>");
  EXPECT_EQ(Set({"P0/0.Evals=" + chain.Path()}).out, "P0/0.Evals: none -> Threshold\n");
  EXPECT_EQ(Set({"P0/0.Evals=none"}).out, "P0/0.Evals: Threshold -> none\n");
}

TEST_F(MethodTest, SetTakesWindowsAndStatesAway) {
  Set({"Inclusion=1-2", "Exclusion=3-4", "Valve@10=waste"});
  EXPECT_EQ(Set({"Inclusion=none", "Exclusion=none", "Valve@10=none"}).out,
            "Inclusion 1: 1-2@0-0 -> -\nExclusion 1: 3-4@0-0 -> -\nValve@10000ms: Waste -> -\n");
}

TEST_F(MethodTest, SetShowsTheDelaysThatFollow) {
  const std::string out = Set({"P0.Item=" + Path("t.tune"), "P0/1.PolarityType=negative"}).out;
  EXPECT_THAT(out, HasSubstr("P0/0.SettleDelay: 0 us -> 500000 us\n"));
  EXPECT_THAT(RunTool({"method", "set", Path("m"), "P0.Timeout=2min", "--switch-time", "0.3"}).out,
              HasSubstr("P0/0.SettleDelay: 500000 us -> 300000 us\n"));
}

TEST_F(MethodTest, SetThatChangesNothingSaysSo) {
  EXPECT_EQ(Set({"Desc=New Method"}).err, "tslbl: warning: " + Path("m") + ": no change\n");
}

TEST_F(MethodTest, SetRefusesWhatTheInstrumentCannotDo) {
  const std::pair<const char*, const char*> kEdits[] = {
      {"P0=remove", "a method keeps one time period at least"},
      {"P0.Loops=5", "the loops of a time period follow from its Timeout, unless that is free"},
      {"P0/0.InitSettleDelay=5", "in a method this delay follows from the tune before it in the sequence"},
      {"P0/0.MZLow=1", "Low m/z is out of range.  Valid values are 5.00 to 3000.00."},
      {"P0/0/0=up", "a run comes and goes with the Type of the run before it"}};
  for (const auto& [edit, reason] : kEdits)
    EXPECT_EQ(SetRefused({"Desc=other", edit}, 1),
              "tslbl: " + Path("m") + ": " + edit + ": " + reason + "\n");
}

TEST_F(MethodTest, SetStopsAtThirtyTimePeriods) {
  const Arguments edits(29, "Period=esi");
  EXPECT_EQ(Set(edits).status, 0);
  EXPECT_THAT(SetRefused({"Period=esi"}, 1), HasSubstr("the instrument takes 30 time periods at most"));
}

TEST_F(MethodTest, SetTellsWhatIsNoChange) {
  const std::pair<const char*, const char*> kEdits[] = {
      {"Desc", "\"Desc\" is not FIELD=VALUE"},
      {"=5", "\"=5\" is not FIELD=VALUE"},
      {"Speed=5", "Speed: a method has no field \"Speed\"; it has Desc, Period, Items, Inclusion, Exclusion"},
      {"P0.Speed=5", "P0.Speed: a time period has no field \"Speed\"; it has Save, Timeout, Loops, Item"},
      {"P1.Save=on", "P1: the method has one time period, number 0"},
      {"P0/1.Tune=x", "P0/1: P0 has one item, number 0"},
      {"P0/0/1.Tune=x", "P0/0/1: P0/0 has one run, number 0"},
      {"P0/.Tune=x", "\"P0/\" is no place such as P0, P0/1 or P0/1/0"},
      {"P0/0/0/0=up", "\"P0/0/0/0\" is no place such as P0, P0/1 or P0/1/0"},
      {"P0=away", "P0: \"away\" is not one of remove, up, down"},
      {"P0.Save=maybe", "P0.Save: \"maybe\" is not "},
      {"P0/0.Type=Park", "P0/0.Type: \"Park\" is not one of None, FractionCollect, PeakPark, TuneChange"},
      {"Valve@soon=waste", "Valve@soon: \"soon\" is not a number"},
      {"Valve@0=off", "Valve@0: \"off\" is not one of source, waste, none"},
      {"Valve@1000h=waste", "Valve@1000h: the valve counts no more than 2147483647 ms"},
      {"P0.Timeout=4294967295ms", "P0.Timeout: that many milliseconds stand for no end; write free"}};
  for (const auto& [edit, message] : kEdits)
    EXPECT_THAT(SetRefused({edit}, 2), StartsWith(std::string("tslbl: ") + message)) << edit;
}

TEST_F(MethodTest, SetNamesTheFileThatItCannotTake) {
  EXPECT_THAT(SetRefused({"P0/0.Tune=" + Path("none.tune")}, 1), HasSubstr(Path("none.tune") + ": "));
}

TEST_F(MethodTest, SetTellsWhatTheRulesFind) {
  const std::string noLoops = "Time period 0 is invalid.  There are no loops.\n";
  const Outcome outcome = Set({"P0.Timeout=0"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "tslbl: warning: " + Path("m") + ": the rules do not accept this method: " + noLoops);
  EXPECT_EQ(Set({"Desc=other"}).err,
            "tslbl: warning: " + Path("m") + ": the rules did not accept it before: " + noLoops);
}

TEST_F(MethodTest, CheckTellsEveryProblemOfEveryFile) {
  const std::string bad = Document(
      "bad.xml",
      {{"<MZLow>100<", "<MZLow>1<"}, {"Records=\"1\"", "Records=\"0\""}, {"<Start>0<", "<Start>7<"}});
  const Outcome outcome = RunTool({"method", "check", bad, Path("m")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out,
            bad + ": tune 1: MZLow: Low m/z is out of range.  Valid values are 5.00 to 3000.00.\n" + bad +
                ": Tune run 1 is invalid.  There are no records to collect.\n" + bad +
                ": Start Time of first Diverter Valve Method state must be equal to 0.0.\n");
}

TEST_F(MethodTest, CheckHasAStatusForWhatItCannotRead) {
  const Outcome outcome = RunTool({"method", "check", Path("t.tune"), Path("m")});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, StartsWith("tslbl: " + Path("t.tune") + ": is no method: "));
}

TEST_F(MethodTest, TimeTellsWhereItGoes) {
  EXPECT_EQ(RunTool({"method", "time", Path("m")}).out,
            "P0  60 s, 9 loops of 7.0025 s\n"
            "  seconds  spectra   polarity   settling      steps   counting     in all\n"
            "  P0/0           1          0     0.0015          0      7.001     7.0025\n"
            "  loop           1          0     0.0015          0      7.001     7.0025\n"
            "  share                   0 %   0.0214 %        0 %      100 %      100 %\n"
            "  the time period ends 3.0225 s before its last loop does\n"
            "\n"
            "The method takes 60 s.\n");
}

// The polarity takes 0.5 s, then the loops begin.
TEST(TimeTable, TheRestOfAPeriodHasTheChangeOfPolarity) {
  TslBL::MethodRules rules = RulesOf("+100-200 | -100-200");
  rules.WTPTimeout(1, 10000);
  const std::vector<TslTool::PeriodTimes> times = TslTool::TimesOf(rules);
  const TslTool::PeriodTimes& last = times.at(1);
  ASSERT_DOUBLE_EQ(last.polaritySwitch, 0.5);
  const double rest = 0.5 + last.loops * last.loop - 10.0;
  ASSERT_GT(rest, 0.0);
  EXPECT_THAT(
      TslTool::TimeTable(times),
      HasSubstr(fmt::format("  the time period ends {} before its last loop", TslTool::ShownSeconds(rest))));
}

TEST_F(MethodTest, TimeIsATableForPrograms) {
  EXPECT_EQ(RunTool({"method", "time", Path("m"), "--format", "tsv"}).out,
            "period\titem\tloops\tspectra\tswitch_s\tinit_settle_s\tstep_settle_s\tcount_s\titem_s\tloop_"
            "s\tperiod_s\n"
            "0\t0\t9\t1\t0\t0.0015\t0\t7.001\t7.0025\t7.0025\t60\n");
}

TEST_F(MethodTest, TimeNamesTheRunThatIsMissing) {
  const std::string broken = Document("b.xml", {{"<TuneRunIds>1<", "<TuneRunIds>9<"}});
  const Outcome outcome = RunTool({"method", "time", broken});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tslbl: " + broken + ": P0/0: its run is not in the method\n");
  EXPECT_THAT(RunTool({"method", "show", broken}).out,
              HasSubstr("  P0/0      run 9, which the method has not\n"));
}

TEST_F(MethodTest, ConvertKeepsTheMethod) {
  RunTool({"method", "convert", Path("m"), "--output", Path("c.xml")});
  EXPECT_THAT(ReadFile(Path("c.xml")), StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Method>"));
  RunTool({"method", "convert", Path("c.xml"), "--output", Path("d.xml")});
  EXPECT_EQ(ReadFile(Path("d.xml")), ReadFile(Path("c.xml")));
  EXPECT_EQ(RunTool({"method", "convert", Path("m"), "--output", Path("m")}).status, 2);
}

TEST_F(MethodTest, OfARunIsTheOneThatAcquiredIt) {
  ASSERT_EQ(RunTool({"simulate", "--method", Path("m"), "--output", Path("a.run")}).status, 0);
  EXPECT_EQ(RunTool({"method", "show", Path("a.run")}).out, Shown());
  ASSERT_EQ(RunTool({"method", "convert", Path("a.run"), "--output", Path("taken")}).status, 0);
  EXPECT_EQ(ReadFile(Path("taken")), ReadFile(Path("m")));
}

TEST_F(MethodTest, OfARunIsNotChanged) {
  ASSERT_EQ(RunTool({"simulate", "--method", Path("m"), "--output", Path("a.run")}).status, 0);
  const std::string before = ReadFile(Path("a.run"));
  const Outcome outcome = RunTool({"method", "set", Path("a.run"), "Desc=Other"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "tslbl: " + Path("a.run") +
                ": is a run, whose method stays as it was acquired; 'tslbl method convert' takes it out\n");
  EXPECT_EQ(ReadFile(Path("a.run")), before);
}

TEST_F(MethodTest, OfARunWithoutOneIsRefused) {
  ASSERT_EQ(RunTool({"simulate", "--scans", "1", "--output", Path("a.run")}).status, 0);
  const Outcome outcome = RunTool({"method", "show", Path("a.run")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "tslbl: " + Path("a.run") + ": is a run that holds no method\n");
}

TEST_F(MethodTest, ShowDrawsAPicture) {
  Set({"P0.Item=esi", "P0/1.PolarityType=negative", "Period=esi", "Valve@5=waste"});
  const Outcome outcome = RunTool({"method", "show", Path("m"), "--plot", Path("p.svg")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_THAT(ReadFile(Path("p.svg")), StartsWith("<svg "));
  EXPECT_EQ(RunTool({"method", "show", Path("m"), "--plot", Path("m")}).status, 2);
}

TEST_F(MethodTest, CheckPeaksScansAroundEachPeak) {
  const Outcome outcome =
      RunTool({"method", "check-peaks", Path("t.tune"), "--mz", "622.03,118.09", "--output", Path("c")});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const std::string shown = RunTool({"method", "show", Path("c")}).out;
  EXPECT_THAT(shown, HasSubstr("P0/0      scan +    108.09-128.09 "));
  EXPECT_THAT(shown, HasSubstr("P0/1      scan +    612.03-632.03 "));
}

TEST_F(MethodTest, CheckPeaksTakesNumbersOfTheInstrumentsRangeAlone) {
  for (const char* list : {"118,", "a", "118;322", "-5", "0", "2,118", "118,4000", "118,118"})
    EXPECT_EQ(RunTool({"method", "check-peaks", Path("t.tune"), "--mz", list, "--output", Path("c")}).status,
              2)
        << list;
}

TEST_F(MethodTest, RampHasATimePeriodForEachValue) {
  const Outcome outcome = RunTool({"method", "ramp", Path("t.tune"), "--lens", "CapExit=100:120:8",
                                   "--records", "2", "--output", Path("r.xml")});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const std::string shown = RunTool({"method", "show", Path("r.xml")}).out;
  EXPECT_THAT(shown, HasSubstr(" from 100 to 120 step 8"));
  EXPECT_THAT(shown, HasSubstr("P3  without end, 1 loop\n"));
  EXPECT_THAT(shown, HasSubstr("New Tune, CapExit 124\n"));
  EXPECT_THAT(shown, EndsWith("The rules accept it.\n"));
}

TEST_F(MethodTest, RampTellsWhatItCannotWalk) {
  const std::pair<Arguments, const char*> kLenses[] = {
      {{}, "--lens is missing"},
      {{"--lens", "CapExit=1:2"}, "--lens: \"CapExit=1:2\" is not LENS=START:END:STEP"},
      {{"--lens", "CapExit"}, "--lens: \"CapExit\" is not LENS=START:END:STEP"},
      {{"--lens", "MZLow=5:10:1"}, "--lens: \"MZLow=5:10:1\" is of a field that no ramp can walk"},
      {{"--lens", "CapExit=100:200:0"}, "--lens: \"CapExit=100:200:0\" has a step that is not above 0"},
      {{"--lens", "CapExit=100:500:5"},
       "--lens: \"CapExit=100:500:5\" is out of range: 500 is not from -400 to 400"},
      {{"--lens", "CapExit=0:1:1e-9"}, "--lens: \"CapExit=0:1:1e-9\" has more than 10000 steps"},
      {{"--lens", "CapExit=1:2:1", "--lens", "CapExit=1:2:1"}, "--lens: both are of one lens"},
      {{"--lens", "CapExit=1:2:1", "--lens", "EndPlate=1:2:1"},
       "--lens: You cannot mix steppable and non-steppable lenses."}};
  for (const auto& [lenses, message] : kLenses) {
    Arguments arguments = {"method", "ramp", Path("t.tune"), "--output", Path("r.xml")};
    arguments.insert(arguments.end(), lenses.begin(), lenses.end());
    const Outcome outcome = RunTool(arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, StartsWith(std::string("tslbl: ") + message));
    EXPECT_FALSE(std::filesystem::exists(Path("r.xml")));
  }
}

TEST_F(MethodTest, TakesNoTimeOfAPolarityChangeThatNoInstrumentHas) {
  for (const char* time : {"0.05", "3"})
    EXPECT_THAT(RunTool({"method", "show", Path("m"), "--switch-time", time}).err,
                HasSubstr(std::string("--switch-time: ") + time + " is not from 0.1 to 2 s"));
}

}  // namespace
}  // namespace tests
