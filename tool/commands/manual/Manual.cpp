// tslbl manual: the manual page and the completions of shells, made from the list of commands.

#include <tool/commands/Commands.h>
#include <tool/commands/manual/Completion.h>
#include <tool/commands/manual/ManPage.h>
#include <tool/frame/Output.h>

namespace TslTool {
namespace {

struct Format {
  const char* name;
  std::string (*print)(const Command& program);
};

constexpr Format kFormats[] = {
    {"man", ManPage}, {"bash", BashCompletion}, {"zsh", ZshCompletion}, {"fish", FishCompletion}};

struct ManualArguments {
  std::string format = "man";
  std::string output;
};

std::vector<std::string> FormatNames() {
  std::vector<std::string> names;
  for (const Format& format : kFormats) names.emplace_back(format.name);
  return names;
}

int RunManual(const ManualArguments& arguments) {
  Output output(arguments.output);
  for (const Format& format : kFormats)
    if (arguments.format == format.name) output.Write(format.print(Program()));
  output.Commit();
  return kDone;
}

}  // namespace

Command ManualCommand() {
  auto arguments = std::make_shared<ManualArguments>();
  return {
      .name = "manual",
      .summary = "Prints the manual page, or the completions for a shell",
      .examples =
          "An installed tslbl has brought them along: 'man tslbl'. To try them without:\n\n"
          "  tslbl manual > tslbl.1 && man ./tslbl.1\n"
          "  source <(tslbl manual --format bash)\n",
      .declare =
          [arguments](Options& options) {
            options.Choice("--format FORM", arguments->format, FormatNames(),
                           "The page for man, or a script for a shell");
            options.Value("-o,--output FILE", arguments->output, "Write the result to this file");
          },
      .run = [arguments](const Options&) { return RunManual(*arguments); },
  };
}

}  // namespace TslTool
