#pragma once
// Several inputs of the command peaks, each into a table of its own.

#include <tool/commands/peaks/PeaksArguments.h>
#include <tool/frame/Options.h>

namespace TslTool {

// Whether the user asks for tables in a folder, or names what needs one.
bool AsksForSeveral(const PeaksArguments& arguments);

// Evaluates one input after the other and tells at the end how many. What is wrong with the command line, the
// list, the chain or the names of the tables is an error before any work; an input that fails is told, and
// the others go on. With --resume a table that is whole is left alone and counts as done. Returns the exit
// status: 1 if any failed. Throws UsageError, InputError, Interrupted.
int EvaluateSeveral(const PeaksArguments& arguments, const Options& options);

}  // namespace TslTool
