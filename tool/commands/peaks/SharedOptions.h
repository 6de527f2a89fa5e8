#pragma once
// Options that the commands share which make tables of evaluated spectra.

#include <tool/commands/peaks/PeaksArguments.h>
#include <tool/frame/Options.h>

namespace TslTool {

// What is done to a spectrum beside its chain.
void DeclareEvaluation(Options& options, PeaksArguments& arguments);
void DeclareOutput(Options& options, PeaksArguments& arguments);
// What is written beside the table, and how the command goes on with it.
void DeclareBeside(Options& options, PeaksArguments& arguments,
                   const std::string& curveHelp = "Write the evaluated curves, point by point, to this file");

// Whether these fit together. All throw UsageError.
void RequireSoundValues(const PeaksArguments& arguments);
void RequireSafeFiles(const PeaksArguments& arguments);
// `edits` is the file of --edits; empty without it.
void RequireSafeEdits(const PeaksArguments& arguments, const std::string& edits);
void RequireResumable(const PeaksArguments& arguments);

}  // namespace TslTool
