// tslbl: the command-line tool. tool/commands/Program.cpp lists its commands.

#include <tool/commands/Commands.h>
#include <tool/frame/CommandLine.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Log.h>

int main(int argc, char** argv) {
  using namespace TslTool;
  CatchInterrupts();
  LogWarningsToStandardError();
  const int status = RunCommandLine(argc, argv, Program());
  EndIfInterrupted();
  return status;
}
