#pragma once
// The family of tslbl method, one file each.

#include <tool/frame/CommandLine.h>

namespace TslTool {

Command MethodNewCommand();
Command MethodShowCommand();
Command MethodCheckCommand();
Command MethodTimeCommand();
Command MethodSetCommand();
Command MethodConvertCommand();
Command MethodRampCommand();
Command MethodCheckPeaksCommand();

}  // namespace TslTool
