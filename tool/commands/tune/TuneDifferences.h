#pragma once
// In what two tunes differ.

#include <tslbl/tune/Tune.h>
#include <string>
#include <vector>

namespace TslTool {

// Lines "FIELD: A -> B"; none for tunes that compare equal.
std::vector<std::string> TuneDifferences(const TslBL::Tune& a, const TslBL::Tune& b);

}  // namespace TslTool
