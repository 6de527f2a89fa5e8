#pragma once
// A run that is made of another, and appears whole or not at all.

#include <tool/io/RunFile.h>
#include <functional>
#include <string>

namespace TslTool {

// `fill` adds tunes and scans. Until then the run is FILE.part: one that a killed process left is made anew,
// as a measured run would never be. Throws InputError if FILE exists, and what `fill` and the writer throw,
// with nothing left.
void WriteWholeRun(const std::string& file, const std::string& title,
                   const std::function<void(RunWriter&)>& fill);

}  // namespace TslTool
