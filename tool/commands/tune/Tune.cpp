// tslbl tune: the commands that make, show, check, change, compare and convert tunes.

#include <tool/commands/Commands.h>
#include <tool/commands/tune/TuneCommands.h>

namespace TslTool {

Command TuneCommand() {
  return {.name = "tune",
          .summary = "Makes, shows, checks, changes, compares and converts tunes",
          .examples =
              "A tune is a document (XML) or a binary file; which one is seen from its content.\n"
              "'tslbl tune COMMAND --help' describes a command in full.",
          .declare = {},
          .run = {},
          .family = {TuneNewCommand(), TuneShowCommand(), TuneCheckCommand(), TuneSetCommand(),
                     TuneDiffCommand(), TuneConvertCommand(), TuneSyringesCommand()}};
}

}  // namespace TslTool
