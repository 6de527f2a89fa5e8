#pragma once
// Ctrl-C ends a command cleanly: the loop over scans asks, nothing is left half written.

#include <exception>

namespace TslTool {

class Interrupted : public std::exception {
 public:
  const char* what() const noexcept override { return "interrupted"; }
};

// From here on SIGINT and SIGTERM only set a flag; a second one ends the process at once.
void CatchInterrupts();

// Throws Interrupted if the user asked to end.
void ThrowIfInterrupted();

}  // namespace TslTool
