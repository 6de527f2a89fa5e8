#pragma once
// The manual page of the program.

#include <tool/frame/CommandLine.h>
#include <string>

namespace TslTool {

// The page in the language of man, with every command, option and example of the program.
std::string ManPage(const Command& program);

}  // namespace TslTool
