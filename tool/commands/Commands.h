#pragma once
// The commands of the tool, one file each.

#include <tool/frame/CommandLine.h>

namespace TslTool {

// The program, with all of them.
Command Program();

Command PeaksCommand();
Command OverlapCommand();
Command DeconCommand();
Command ChromCommand();
Command RampCommand();
Command ResultsCommand();
Command SimulateCommand();
Command InfoCommand();
Command AverageCommand();
Command CalibrateCommand();
Command TuneCommand();
Command MethodCommand();
Command ManualCommand();

}  // namespace TslTool
