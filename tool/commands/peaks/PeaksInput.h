#pragma once
// What the command peaks reads, by the name that the user gives: a file, "-" for standard input, or nothing.

#include <functional>
#include <string>

namespace TslTool {

// The path to open; empty for the demonstration run, which is what no name means unless standard input offers
// data: that is a UsageError, as nothing that was piped in may go unnoticed. Throws InputError for a standard
// input that is closed, was read in part or is a run, which SQLite reads from its file only.
std::string InputPath(const std::string& input);

// How messages call a path.
std::string InputName(const std::string& path);

// Runs `work` so that an InputError about standard input calls it so.
void NamingStandardInput(const std::function<void()>& work);

}  // namespace TslTool
