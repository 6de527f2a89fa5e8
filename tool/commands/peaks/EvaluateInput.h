#pragma once
// One input of the command peaks, from its spectra to its table.

#include <tool/commands/peaks/PeakFile.h>
#include <tool/commands/peaks/PeaksArguments.h>
#include <tool/frame/Options.h>

namespace TslTool {

// Evaluates all that is asked for and writes it to the --output, and to the file of --curve. Throws
// InputError.
void EvaluateInput(const PeaksArguments& arguments, const Options& options);

// Writes the chain that the input would be evaluated with.
void ShowChain(const PeaksArguments& arguments, const Options& options);

}  // namespace TslTool
