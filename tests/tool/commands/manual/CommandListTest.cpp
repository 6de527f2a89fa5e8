// Tests: tool/commands/Program.cpp.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include <tool/commands/Commands.h>
#include <tool/commands/manual/CommandList.h>
#include <tool/commands/manual/Helps.h>

namespace tests {
namespace {

using TslTool::Option;

std::vector<std::string> NamesOf(const std::vector<Option>& options) {
  std::vector<std::string> names;
  for (const Option& option : options) names.insert(names.end(), option.names.begin(), option.names.end());
  std::ranges::sort(names);
  return names;
}

TEST(CommandList, HasEveryCommandAndOptionThatTheHelpShows) {
  const TslTool::Command program = TslTool::Program();
  const std::vector<TslTool::ListedCommand> list = ListCommands(program);
  const std::vector<Help> helps = AllHelps();
  ASSERT_EQ(list.size(), helps.size());
  for (const Help& help : helps) {
    const std::string line = Joined(help.line);
    const auto listed = std::ranges::find(list, line, &TslTool::ListedCommand::words);
    ASSERT_NE(listed, list.end()) << line;
    std::vector<std::string> names;
    for (const HelpedOption& option : help.options)
      names.insert(names.end(), option.names.begin(), option.names.end());
    std::ranges::sort(names);
    EXPECT_EQ(NamesOf(listed->options), names) << line;
  }
}

TEST(CommandList, AFamilyComesBeforeItsMembers) {
  const TslTool::Command program = OddProgram();
  const auto list = ListCommands(program);
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].words, "odd");
  EXPECT_EQ(list[1].words, "odd do");
}

TEST(CommandList, AValueCalledFileRunOrInputIsAFile) {
  const TslTool::Command program = OddProgram();
  const auto list = ListCommands(program);
  for (const Option& option : list[1].options)
    EXPECT_EQ(TakesFile(option), option.names.back() == "--to" || option.names.back() == "FILE")
        << option.names.back();
}

}  // namespace
}  // namespace tests
