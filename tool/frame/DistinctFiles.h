#pragma once
// Files that a command writes and that must not be one.

#include <string>

namespace TslTool {

// Throws UsageError that begins with `option` if `file` is also `other`, which is `what`: "the input".
// Standard output is no file, and neither is an empty name.
void RequireDistinct(const std::string& option, const std::string& file, const std::string& other,
                     const std::string& what);

}  // namespace TslTool
