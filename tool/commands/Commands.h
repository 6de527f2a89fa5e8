#pragma once
// The commands of the tool, one file each.

#include <tool/frame/CommandLine.h>

namespace TslTool {

Command PeaksCommand();
Command SimulateCommand();
Command InfoCommand();
Command TuneCommand();
// A member of its family.
Command TuneSetCommand();

}  // namespace TslTool
