#pragma once
// What the user typed is wrong.

#include <stdexcept>

namespace TslTool {

// The message goes to standard error and the exit status is 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace TslTool
