#pragma once
// How many threads work at once.

#include <cstdint>

namespace TslTool {

// Sets the process-wide threading parameters to so many, as --threads asks for. Throws UsageError for none
// and for more than 1024.
void UseThreads(std::uint32_t threads);

// How many these parameters allow.
int ThreadsAllowed();

}  // namespace TslTool
