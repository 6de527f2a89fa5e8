// tslbl tune check: what the rules find in tunes.

#include <fmt/format.h>

#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <tool/frame/Warning.h>
#include <algorithm>
#include <memory>

namespace TslTool {
namespace {

// A file that cannot be read does not keep the others from being checked, and weighs more than
// what is found in them.
int RunCheck(const std::vector<std::string>& files) {
  if (files.empty()) throw UsageError("FILE is missing");
  int status = kDone;
  for (const std::string& file : files) {
    try {
      for (const std::string& fault : TuneFaults(Load(file))) {
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

Command TuneCheckCommand() {
  auto files = std::make_shared<std::vector<std::string>>();
  return {.name = "check",
          .summary = "Shows every problem that the rules find in tunes",
          .examples =
              "A line \"FILE: FIELD: PROBLEM\" each. Exit status: 0 none, 1 problems, 3 a tune could not be\n"
              "read, 2 wrong usage. This is stricter than what the rules ask of a tune before it runs: they\n"
              "stop at the first problem, and neither look at the syringe and at curves with two calibrants\n"
              "of one m/z, nor ask whether each field would be taken if it were set anew, as the corona\n"
              "and gases of an APCI source.\n\n"
              "Example:\n  tslbl tune check *.xml\n",
          .declare = [files](Options& options) { options.Values("FILE", *files, "Tunes"); },
          .run = [files](const Options&) { return RunCheck(*files); }};
}

}  // namespace TslTool
