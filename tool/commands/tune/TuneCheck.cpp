// tslbl tune check: what the rules find in tunes.

#include <fmt/format.h>

#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <tool/frame/Warning.h>
#include <memory>

namespace TslTool {
namespace {

// A file that cannot be read does not keep the others from being checked.
int RunCheck(const std::vector<std::string>& files) {
  if (files.empty()) throw UsageError("FILE is missing");
  int status = kDone;
  for (const std::string& file : files) {
    try {
      for (const std::string& fault : TuneFaults(Load(file))) {
        Print(fmt::format("{}: {}\n", file, fault));
        status = kFailed;
      }
    } catch (const InputError& e) {
      Tell(e.what());
      status = kFailed;
    }
  }
  return status;
}

}  // namespace

Command TuneCheckCommand() {
  auto files = std::make_shared<std::vector<std::string>>();
  return {.name = "check",
          .summary = "Shows every problem that the rules find in tunes",
          .examples =
              "A line \"FILE: FIELD: PROBLEM\" each. The exit status is 1 if there is any.\n\n"
              "Example:\n  tslbl tune check *.xml\n",
          .declare = [files](Options& options) { options.Values("FILE", *files, "Tunes"); },
          .run = [files](const Options&) { return RunCheck(*files); }};
}

}  // namespace TslTool
