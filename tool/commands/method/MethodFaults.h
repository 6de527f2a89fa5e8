#pragma once
// What the rules find in a method.

#include <tslbl/method/MethodRules.h>
#include <string>
#include <vector>

namespace TslTool {

// Each in one line, in the words of the rules; of a tune all that tslbl tune check finds, with its id.
std::vector<std::string> MethodFaults(const TslBL::MethodRules& rules);

}  // namespace TslTool
