#pragma once
// The table of the command decon in its formats.

#include <tool/commands/peaks/SpectrumWriter.h>
#include <memory>
#include <string>
#include <vector>

namespace TslTool {

// "table" for reading; "tsv", "csv" and "json" for programs; the last has the peaks of each series too.
const std::vector<std::string>& DeconFormats();
std::unique_ptr<SpectrumWriter> MakeDeconWriter(const std::string& format);

}  // namespace TslTool
