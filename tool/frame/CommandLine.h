#pragma once
// The frame of the command line: a command names its options once; reading them, checking them and the help
// come from here. The parser behind it is seen by CommandLine.cpp alone.
//
// To add a command: write tool/commands/FAMILY/NAME.cpp with a `Command NameCommand()` and add it to the list
// in tool/commands/Program.cpp.

#include <tool/frame/Options.h>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TslTool {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;
// Of a command whose kFailed is an answer, such as "they differ": a file could not be read.
inline constexpr int kNotRead = 3;

// A command, made afresh for each start of the program: it runs, or it is a family of commands, of which the
// user names one after it. The program itself is such a family.
struct Command {
  std::string name;
  std::string summary;   // one line
  std::string examples;  // the end of its help
  std::function<void(Options&)> declare;
  std::function<int(const Options&)> run;  // returns the exit status
  std::vector<Command> family = {};        // these have neither of the two above
};

// What every command has beside the options that it declares, and what the program has.
Option HelpOption();
Option VersionOption();

// Parses the arguments, runs the command they name and returns the exit status: 0 done, 1 could not do it, 2
// wrong usage. Errors go to standard error, and no exception leaves.
int RunCommandLine(int argc, char** argv, const Command& program);

}  // namespace TslTool
