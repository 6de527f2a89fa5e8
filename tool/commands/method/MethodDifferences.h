#pragma once
// In what two methods differ.

#include <tslbl/method/Method.h>
#include <string>
#include <vector>

namespace TslTool {

// Lines "P0/1.FIELD: A -> B", place by place; a place that only one of them has is "-" in the other. Ids of
// tunes and of tune runs count for nothing. Empty for methods that do the same.
std::vector<std::string> MethodDifferences(const TslBL::Method& a, const TslBL::Method& b);

}  // namespace TslTool
