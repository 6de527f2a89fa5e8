#pragma once
// A ramp as a picture.

#include <tool/commands/ramp/RampResponse.h>
#include <string>

namespace TslTool {

// An SVG document: for each lens the amplitude and the resolution over its value, a curve for each m/z in
// percent of its highest, with a mark at the best step and a line at the best value of all. Of two lenses,
// the other one stands at its best for this m/z.
std::string RampPlot(const RampResponse& response, const TslBL::Tune& tune, const std::string& title);

}  // namespace TslTool
