#pragma once
// Completions of the program's commands, options and values for three shells.

#include <tool/frame/CommandLine.h>
#include <string>

namespace TslTool {

// Scripts that a shell reads, from a folder of its own or by `source`. After a command come its options,
// after the name of a family its members, after an option of a choice what may be chosen, else names of
// files.
std::string BashCompletion(const Command& program);
std::string ZshCompletion(const Command& program);
std::string FishCompletion(const Command& program);

}  // namespace TslTool
