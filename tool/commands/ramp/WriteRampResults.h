#pragma once
// The result of a ramp goes into a tune.

#include <tool/commands/ramp/RampResponse.h>
#include <string>

namespace TslTool {

// Stores the best values in the tune of this file, under the rules of the tune, and tells what has changed.
// Whatever is refused leaves the file as it was. `ramped` is a tune of the run. Throws InputError for a file
// that holds no tune, or one of other ions or another probe; std::runtime_error with the rule's text.
void WriteRampResults(const std::string& file, const RampResponse& response, const TslBL::Tune& ramped);

}  // namespace TslTool
