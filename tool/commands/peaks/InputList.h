#pragma once
// The names of many inputs, from a file.

#include <string>
#include <vector>

namespace TslTool {

// One name a line, blanks within it kept; blank lines and lines that begin with # are skipped. A file whose
// name begins with # is written ./#name. "-" is standard input. Relative names are relative to the current
// folder, wherever the list lies. Throws InputError if the list cannot be read, holds a zero byte or names
// nothing.
std::vector<std::string> ReadInputList(const std::string& list);

}  // namespace TslTool
