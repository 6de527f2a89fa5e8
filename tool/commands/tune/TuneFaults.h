#pragma once
// All that the rules find in a tune.

#include <tslbl/tune/Tune.h>
#include <string>
#include <vector>

namespace TslTool {

// Lines "FIELD: TEXT": what would keep the tune from the instrument, then settings that no
// writer would take, such as a vaporizer at 100 degrees, and curves that are open;
// one line for each fault.
std::vector<std::string> TuneFaults(const TslBL::Tune& tune);

}  // namespace TslTool
