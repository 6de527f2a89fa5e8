// tslbl: the command-line tool. Its commands stand in tool/commands, one file each.

#include <tool/commands/Commands.h>
#include <tool/frame/CommandLine.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Log.h>

int main(int argc, char** argv) {
  using namespace TslTool;
  CatchInterrupts();
  LogWarningsToStandardError();
  return RunCommandLine(argc, argv, {PeaksCommand(), SimulateCommand(), InfoCommand(), TuneCommand()});
}
