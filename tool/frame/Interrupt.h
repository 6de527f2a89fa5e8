#pragma once
// Ctrl-C ends a command cleanly: the loop over scans asks, nothing is left half written.

#include <exception>

namespace TslTool {

class Interrupted : public std::exception {
 public:
  const char* what() const noexcept override { return "interrupted"; }
};

// From here on SIGINT, SIGTERM and SIGHUP set a flag and end a read or write that waits; a
// second one ends the process at once. A reader of standard output that goes away, and a
// file that has reached the largest size allowed, show as a failed write.
void CatchInterrupts();

// Whether the user asked to end.
bool WasInterrupted();

// Throws Interrupted if so.
void ThrowIfInterrupted();

// Ends the process by the signal that was caught, if one was, when all is cleaned up: a shell that runs a
// loop ends the loop only if it sees the signal (status 130 after Ctrl-C).
void EndIfInterrupted();

}  // namespace TslTool
