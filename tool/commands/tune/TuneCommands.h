#pragma once
// The family of tslbl tune, one file each.

#include <tool/frame/CommandLine.h>

namespace TslTool {

Command TuneNewCommand();
Command TuneShowCommand();
Command TuneCheckCommand();
Command TuneSetCommand();
Command TuneDiffCommand();
Command TuneConvertCommand();
Command TuneSyringesCommand();

}  // namespace TslTool
