#pragma once
// Names of columns of times.

#include <string>
#include <string_view>

namespace TslTool {

// Letters and digits of a name, small, without its unit: "retentiontime" for "Retention Time (min)".
std::string PlainName(std::string_view name);

// Whether a column of this name holds times, in one of several languages, with or without a unit.
bool IsTimeName(std::string_view name);

}  // namespace TslTool
