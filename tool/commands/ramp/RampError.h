#pragma once
// A run that is no ramp, or that shows nothing.

#include <stdexcept>

namespace TslTool {

class RampError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace TslTool
