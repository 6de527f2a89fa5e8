// tslbl method check: what the rules find in methods.

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodFaults.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/tune/CheckFiles.h>
#include <memory>

namespace TslTool {
namespace {

// The time of a change of polarity is in no rule.
std::vector<std::string> FaultsOf(const std::string& file) {
  return MethodFaults(TslBL::MethodRules(0.0, LoadMethodWithWarning(file).method));
}

}  // namespace

Command MethodCheckCommand() {
  auto files = std::make_shared<std::vector<std::string>>();
  return {
      .name = "check",
      .summary = "Shows every problem that the rules find in methods",
      .examples =
          "A line \"FILE: PROBLEM\" each; time periods, items and ids are numbered as in the method. What\n"
          "is said of a tune is what 'tslbl tune check' says, which is stricter than the instrument. The "
          "exit\n"
          "status is 1 if there is any, and 3 if a file could not be read.\n\n"
          "Example:\n  tslbl method check *.xml\n",
      .declare = [files](Options& options) { options.Values("FILE", *files, "Methods"); },
      .run = [files](const Options&) { return CheckFiles(*files, FaultsOf); }};
}

}  // namespace TslTool
