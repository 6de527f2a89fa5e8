#pragma once
// What the user is told who typed something wrong.

#include <functional>
#include <string>

#include <tool/frame/UsageError.h>

namespace tests {

// Empty if nothing is wrong.
inline std::string UsageErrorOf(const std::function<void()>& run) {
  try {
    run();
  } catch (const TslTool::UsageError& error) {
    return error.what();
  }
  return "";
}

}  // namespace tests
