#pragma once
// How a failure is told, whatever was thrown.

#include <exception>
#include <string>

namespace TslTool {

// One line without the tool's name.
std::string FailureText(const std::exception_ptr& failure);

}  // namespace TslTool
