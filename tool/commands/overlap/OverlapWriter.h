#pragma once
// The table of the command overlap in its formats.

#include <tool/commands/peaks/SpectrumWriter.h>
#include <memory>
#include <string>
#include <vector>

namespace TslTool {

// "table" for reading; "tsv", "csv" and "json" for programs.
const std::vector<std::string>& OverlapFormats();
std::unique_ptr<SpectrumWriter> MakeOverlapWriter(const std::string& format);

}  // namespace TslTool
