#pragma once
// A tune on a sheet.

#include <tslbl/tune/Tune.h>
#include <string>

namespace TslTool {

// Fields with units and limits, calibrations, what each lens does over m/z, timing.
std::string TuneSheet(const TslBL::Tune& tune);

}  // namespace TslTool
