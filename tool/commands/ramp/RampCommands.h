#pragma once
// The family of tslbl ramp, one file each.

#include <tool/frame/CommandLine.h>

namespace TslTool {

Command RampBestCommand();

}  // namespace TslTool
