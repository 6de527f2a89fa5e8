// tslbl: the command-line tool. Its commands stand in tool/commands, one file each.

#include <tool/CommandLine.h>
#include <tool/Interrupt.h>
#include <tool/Log.h>
#include <tool/commands/Commands.h>

int main(int argc, char** argv) {
  using namespace TslTool;
  CatchInterrupts();
  LogWarningsToStandardError();
  return RunCommandLine(argc, argv, {PeaksCommand(), SimulateCommand(), InfoCommand(), TuneCommand()});
}
