#pragma once
// What a command reads by the name that the user gives: a file, or "-" for standard input.

#include <functional>
#include <string>

namespace TslTool {

// The path to open. Throws InputError for a standard input that is closed, was read in part or is a run,
// which SQLite reads from its file only.
std::string InputPath(const std::string& input);

// How messages call a path; an empty one is the demonstration run.
std::string InputName(const std::string& path);

// The name of a file without its folder, an ending .gz and one extension.
std::string StemOf(const std::string& input);

// Runs `work` so that an InputError about standard input calls it so.
void NamingStandardInput(const std::function<void()>& work);

}  // namespace TslTool
