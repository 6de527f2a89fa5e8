#pragma once
// Tunes from and to files, as the commands use them, with warnings on standard error.

#include <tool/commands/tune/TuneFile.h>
#include <tool/frame/Warning.h>
#include <string>
#include <vector>

namespace TslTool {

// As LoadTune, with a warning of what the document lacks.
TuneFile LoadWithWarning(const std::string& file);
// The tune of it.
TslBL::Tune Load(const std::string& file);

// With a warning of what this form does not keep. Throws as Output does.
void Save(const TslBL::Tune& tune, TuneForm form, const std::string& file);

// Of what the rules find; of what is among `before`, that they did so then.
void WarnOfFaults(const std::string& file, const std::vector<std::string>& before, const TslBL::Tune& tune);

// To standard output.
void Print(const std::string& text);

}  // namespace TslTool
