#pragma once
// What the commands peaks and chrom read: what the user names, or nothing, for the demonstration run.

#include <tool/io/InputPath.h>

#include <string>

namespace TslTool {

// The path to open; empty for the demonstration run, which is what no name means unless standard input offers
// data: that is a UsageError, as nothing that was piped in may go unnoticed. Throws InputError as InputPath
// does. `command` is how the message calls the program.
std::string PeaksInputPath(const std::string& input, const std::string& command = "tslbl peaks");

}  // namespace TslTool
