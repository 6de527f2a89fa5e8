#pragma once
// The option --to of the commands that write a tune.

#include <tool/commands/tune/TuneFile.h>
#include <tool/frame/Options.h>
#include <string>

namespace TslTool {

void DeclareForm(Options& options, std::string& to);

// The form that was asked for, or else that of the file's name.
TuneForm FormFor(const std::string& to, const std::string& file);

}  // namespace TslTool
