#pragma once
// Tunes from and to files, as the commands use them: what is odd is told on standard error.

#include <tool/commands/tune/TuneFile.h>
#include <tool/frame/Warning.h>
#include <string>
#include <vector>

namespace TslTool {

// As LoadTune; tells what the document lacks.
TuneFile LoadAndTell(const std::string& file);
// The tune of it.
TslBL::Tune Load(const std::string& file);

// Tells what this form does not keep. Throws as Output does.
void Save(const TslBL::Tune& tune, TuneForm form, const std::string& file);

// Tells what the rules find that is not among `before`.
void WarnOfFaults(const std::string& file, const std::vector<std::string>& before, const TslBL::Tune& tune);

// To standard output.
void Tell(const std::string& text);

}  // namespace TslTool
