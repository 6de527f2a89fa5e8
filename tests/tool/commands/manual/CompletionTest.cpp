// Tests: BashCompletion.cpp, FishCompletion.cpp, ShellText.cpp, ZshCompletion.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/commands/Commands.h>
#include <tool/commands/manual/Completion.h>
#include <tool/commands/manual/Helps.h>
#include <tool/commands/peaks/PeakWriter.h>

namespace tests {
namespace {

using testing::HasSubstr;

// What bash offers for the last of the words.
std::vector<std::string> Offered(const std::string& script, Arguments words) {
  const TempFile file("tool.bash", script);
  words.insert(words.begin(), {"/bin/bash", "-c",
                               "source \"$0\"; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); \"_$1\"; "
                               "printf '%s\\n' \"${COMPREPLY[@]}\"",
                               file.Path()});
  const Outcome outcome = Process(words).Wait();
  EXPECT_EQ(outcome.err, "");
  return SplitAt(outcome.out, '\n');
}

std::string Tslbl(const Arguments& words) {
  Arguments line = {"tslbl"};
  line.insert(line.end(), words.begin(), words.end());
  return Joined(Offered(TslTool::BashCompletion(TslTool::Program()), line));
}

std::vector<std::string> NamesOfCommands() {
  std::vector<std::string> names;
  for (const TslTool::Command& command : TslTool::Program().family) names.push_back(command.name);
  return names;
}

TEST(BashCompletion, OffersEveryOptionOfEveryCommand) {
  const std::string script = TslTool::BashCompletion(TslTool::Program());
  for (const Help& help : AllHelps()) {
    std::vector<std::string> names;
    for (const HelpedOption& option : help.options)
      if (option.names.front().starts_with('-'))
        names.insert(names.end(), option.names.begin(), option.names.end());
    Arguments line = help.line;
    line.push_back("-");
    EXPECT_THAT(Offered(script, line), testing::UnorderedElementsAreArray(names)) << Joined(line);
  }
}

TEST(BashCompletion, OffersCommandsMembersAndWhatMayBeChosen) {
  EXPECT_EQ(Tslbl({""}), Joined(NamesOfCommands()));
  EXPECT_EQ(Tslbl({"si"}), "simulate");
  EXPECT_EQ(Tslbl({"tune", ""}), "new show check set diff convert syringes");
  EXPECT_EQ(Tslbl({"tune", "new", "--probe", ""}), "esi apci low-flow-esi");
  EXPECT_EQ(Tslbl({"peaks", "--format", "t"}), "table tsv");
}

TEST(BashCompletion, KnowsValuesBehindASign) {
  EXPECT_EQ(Tslbl({"peaks", "--format", "="}), Joined(TslTool::PeakFormats()));
  EXPECT_EQ(Tslbl({"peaks", "--format", "=", "j"}), "json");
}

TEST(BashCompletion, LeavesTheRestToTheNamesOfFiles) {
  EXPECT_EQ(Tslbl({"peaks", ""}), "");
  EXPECT_EQ(Tslbl({"peaks", "--output", ""}), "");
  EXPECT_THAT(TslTool::BashCompletion(OddProgram()), HasSubstr("complete -o default -F _odd odd\n"));
}

TEST(BashCompletion, AValueIsNoCommand) {
  EXPECT_EQ(Tslbl({"peaks", "--output", "tune", "--res"}), "--resume");
}

TEST(BashCompletion, IsAScriptWithoutMistakes) {
  for (const TslTool::Command& program : {TslTool::Program(), OddProgram()}) {
    const TempFile file("tool.bash", TslTool::BashCompletion(program));
    const Outcome outcome = Process({"/bin/bash", "-n", file.Path()}).Wait();
    EXPECT_EQ(outcome.status, 0) << outcome.err;
  }
}

TEST(ZshCompletion, HasEveryCommandAndOptionInItsCase) {
  const std::string script = TslTool::ZshCompletion(TslTool::Program());
  for (const Help& help : AllHelps()) {
    const std::size_t at = script.find("\n    ('" + Joined(help.line) + "')\n");
    ASSERT_NE(at, std::string::npos) << Joined(help.line);
    const std::string its = script.substr(at, script.find("\n      ;;", at) - at);
    for (const HelpedOption& option : help.options)
      for (const std::string& name : option.names)
        EXPECT_THAT(its, testing::ContainsRegex("['):]" + name + "[^a-z-]")) << Joined(help.line);
    for (const std::string& member : help.members) EXPECT_THAT(its, HasSubstr(" '" + member + ":"));
  }
}

TEST(ZshCompletion, ProtectsWhatZshTakesForSomethingElse) {
  const std::string script = TslTool::ZshCompletion(OddProgram());
  for (const char* argument :
       {"'(--quiet)--quiet[Don'\\''t say\\: \\[anything\\] \\\\ \"more\"]'",
        "'(-c --colour)-c[A colour\\: red, green]:C:(red green)'",
        "'(-c --colour)--colour=[A colour\\: red, green]:C:(red green)'", "'(--to)--to=[.start]:FILE:_files'",
        "'(--number)--number=[A number]:N: '", "'*:FILE:_files'", "members=( 'do:Doesn'\\''t')"})
    EXPECT_THAT(script, HasSubstr(argument));
}

TEST(FishCompletion, HasALineForEveryCommandAndOption) {
  const std::string script = TslTool::FishCompletion(TslTool::Program());
  for (const Help& help : AllHelps()) {
    const std::string start = "complete -c tslbl -n '__tslbl_is " + Joined(help.line) + "'";
    for (const std::string& member : help.members)
      EXPECT_THAT(script, HasSubstr(start + " -a " + member + " -d '"));
    for (const HelpedOption& option : help.options) {
      if (!option.names.front().starts_with('-')) continue;
      std::string switches;
      for (const std::string& name : option.names)
        switches += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
      EXPECT_THAT(script, HasSubstr(start + switches + ' '));
    }
  }
}

TEST(FishCompletion, ProtectsWhatFishTakesForSomethingElse) {
  const std::string script = TslTool::FishCompletion(OddProgram());
  for (const char* line :
       {"'__odd_is odd' -f\n", "'__odd_is odd' -a do -d 'Doesn\\'t'\n",
        "'__odd_is odd do' -l quiet -d 'Don\\'t say: [anything] \\\\ \"more\"'\n",
        "'__odd_is odd do' -s c -l colour -x -a 'red green' -d 'A colour: red, green'\n",
        "'__odd_is odd do' -l to -r -F -d '.start'\n", "'__odd_is odd do' -l number -x -d 'A number'\n"})
    EXPECT_THAT(script, HasSubstr(line));
}

}  // namespace
}  // namespace tests
