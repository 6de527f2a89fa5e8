#pragma once
// A method as text for a user.

#include <tslbl/method/MethodRules.h>
#include <string>

namespace TslTool {

// The program over time, its time periods with their items, the valve, the windows of the data-dependent
// logic, and what the rules find.
std::string MethodSheet(const TslBL::MethodRules& rules);

}  // namespace TslTool
