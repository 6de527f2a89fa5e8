#pragma once
// All commands of a program in one list.

#include <tool/frame/CommandLine.h>
#include <string>
#include <vector>

namespace TslTool {

struct ListedCommand {
  std::string words;  // from the program's name on, as in "tslbl tune show"
  const Command* command;
  std::vector<Option> options;  // with --help, and --version of the program
};

// The program first, each family before its members. The program must outlive the list.
std::vector<ListedCommand> ListCommands(const Command& program);

// Whether the option's value is the name of a file; see Options.
bool TakesFile(const Option& option);

}  // namespace TslTool
