#pragma once
// The library logs through log4cxx and leaves it to the application where that goes.

namespace TslTool {

// Warnings and worse go to standard error, a line each; the rest goes nowhere.
void LogWarningsToStandardError();

}  // namespace TslTool
