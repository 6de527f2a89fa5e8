#pragma once
// What is told a user of whose input nothing is left.

#include <tool/io/SpectrumSource.h>
#include <string>

namespace TslTool {

// Whether a source of it can be opened twice: the demonstration run, and what is no pipe.
bool CanBeOpenedAgain(const std::string& input);

// Throws InputError with what was skipped, passed over, or is there instead. `source` was read to its end.
[[noreturn]] void RefuseNothing(const std::string& input, const SpectrumChoice& wanted,
                                const SpectrumSource& source);

}  // namespace TslTool
