#pragma once
// The frame of the command line: a command names its options once; reading them, checking
// them and the help text come from here. The parser behind it is seen by CommandLine.cpp
// alone.
//
// To add a command: write tool/commands/NAME.cpp with a `Command NameCommand()` and add it
// to the list in main.cpp.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace TslTool {

// Wrong usage: the message goes to standard error and the exit status is 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;

// The options of one command. Names are as typed, such as "--scan" or "-o,--output"; a name
// without dashes is a positional argument. Behind a blank may follow what stands for the
// value in the help, as in "--scan N|A-B". `value` must outlive the parsing and is left
// alone if the option is not given. An empty value, which is mostly a shell variable that
// was never set, is wrong usage; so is a number that is none, or not finite.
class Options {
 public:
  virtual ~Options() = default;

  virtual void Flag(const std::string& names, bool& value, const std::string& help) = 0;
  virtual void Value(const std::string& names, std::string& value, const std::string& help) = 0;
  // One value or more, up to the end of the line.
  virtual void Values(const std::string& names, std::vector<std::string>& values,
                      const std::string& help) = 0;
  virtual void Value(const std::string& names, std::optional<double>& value, const std::string& help) = 0;
  virtual void Value(const std::string& names, std::optional<std::uint32_t>& value,
                     const std::string& help) = 0;
  virtual void Value(const std::string& names, std::optional<std::uint64_t>& value,
                     const std::string& help) = 0;
  virtual void Choice(const std::string& names, std::string& value, const std::vector<std::string>& choices,
                      const std::string& help) = 0;
  // Whether an option was given at all.
  virtual bool Given(const std::string& name) const = 0;
};

// A command, made afresh for each start of the program: it runs, or it is a family of
// commands, of which the user names one behind it.
struct Command {
  std::string name;
  std::string summary;   // one line
  std::string examples;  // the end of its help
  std::function<void(Options&)> declare;
  std::function<int(const Options&)> run;  // returns the exit status
  std::vector<Command> family = {};        // these have neither of the two above
};

// Parses the arguments, runs the command they name and returns the exit status: 0 done,
// 1 could not do it, 2 wrong usage. Errors go to standard error, and no exception leaves.
int RunCommandLine(int argc, char** argv, std::vector<Command> commands);

}  // namespace TslTool
