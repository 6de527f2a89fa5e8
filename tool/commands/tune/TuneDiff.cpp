// tslbl tune diff: in what two tunes differ.

#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneDifferences.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <memory>

namespace TslTool {
namespace {

int RunDiff(const std::vector<std::string>& files) {
  if (files.size() != 2) throw UsageError("FILE: two tunes are compared");
  try {
    const std::vector<std::string> lines = TuneDifferences(Load(files[0]), Load(files[1]));
    for (const std::string& line : lines) Print(line + '\n');
    return lines.empty() ? kDone : kFailed;
  } catch (const InputError& e) {
    Tell(e.what());
    return kNotRead;
  }
}

}  // namespace

Command TuneDiffCommand() {
  auto files = std::make_shared<std::vector<std::string>>();
  return {.name = "diff",
          .summary = "Shows in what two tunes differ",
          .examples =
              "A line \"FIELD: A -> B\" each. Exit status: 0 the same, 1 they differ, 3 a tune could not be\n"
              "read, 2 wrong usage.\n\n"
              "Example:\n  tslbl tune diff before.xml after.xml\n",
          .declare = [files](Options& options) { options.Values("FILE", *files, "Two tunes, A and B"); },
          .run = [files](const Options&) { return RunDiff(*files); }};
}

}  // namespace TslTool
