// tslbl tune check: what the rules find in tunes.

#include <tool/commands/tune/CheckFiles.h>
#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneStore.h>
#include <memory>

namespace TslTool {
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
          .run =
              [files](const Options&) {
                return CheckFiles(*files, [](const std::string& file) { return TuneFaults(Load(file)); });
              }};
}

}  // namespace TslTool
