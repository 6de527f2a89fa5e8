// tslbl ramp: what a lens ramp has shown.

#include <tool/commands/Commands.h>
#include <tool/commands/ramp/RampCommands.h>

namespace TslTool {

Command RampCommand() {
  return {.name = "ramp",
          .summary = "Tells what a lens ramp has shown",
          .examples =
              "'tslbl method ramp' makes the method of a ramp.\n"
              "'tslbl ramp COMMAND --help' describes a command in full.",
          .declare = {},
          .run = {},
          .family = {RampBestCommand()}};
}

}  // namespace TslTool
