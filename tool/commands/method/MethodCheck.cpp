// tslbl method check: what the rules find in methods.

#include <fmt/format.h>

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodFaults.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <tool/frame/Warning.h>
#include <algorithm>
#include <memory>

namespace TslTool {
namespace {

int RunCheck(const std::vector<std::string>& files) {
  if (files.empty()) throw UsageError("FILE is missing");
  int status = kDone;
  for (const std::string& file : files) {
    try {
      // The time of a change of polarity is in no rule.
      const TslBL::MethodRules rules(0.0, LoadMethodWithWarning(file).method);
      for (const std::string& fault : MethodFaults(rules)) {
        Print(fmt::format("{}: {}\n", file, fault));
        status = std::max(status, kFailed);
      }
    } catch (const InputError& e) {
      Tell(e.what());
      status = kNotRead;
    }
  }
  return status;
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
      .run = [files](const Options&) { return RunCheck(*files); }};
}

}  // namespace TslTool
