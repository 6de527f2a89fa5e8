// tslbl method: the commands that make, show, check, time, change and convert acquisition methods.

#include <tool/commands/Commands.h>
#include <tool/commands/method/MethodCommands.h>

namespace TslTool {

Command MethodCommand() {
  return {
      .name = "method",
      .summary = "Makes, shows, checks, times, changes and converts acquisition methods",
      .examples =
          "A method is a document (XML) or a binary file, or stands in a run that it acquired; which one is\n"
          "seen from the content. Its time periods are called P0, P1 and so on, as the rules count them, "
          "the\n"
          "items of their sequences P0/0, P0/1, and the runs of an item P0/1/0, P0/1/1.\n"
          "'tslbl method COMMAND --help' describes a command in full.",
      .declare = {},
      .run = {},
      .family = {MethodNewCommand(), MethodShowCommand(), MethodCheckCommand(), MethodTimeCommand(),
                 MethodSetCommand(), MethodConvertCommand(), MethodRampCommand(), MethodCheckPeaksCommand()}};
}

}  // namespace TslTool
