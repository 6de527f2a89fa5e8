#pragma once
// The program of a method as a picture.

#include <tslbl/method/MethodRules.h>
#include <string>

namespace TslTool {

// An SVG document over time: one loop of each time period, stretched over the length of the period, with its
// scans in m/z, in the colour of their polarity; the time periods; the valve. A time period without end is as
// long as its loops. Throws std::runtime_error as TimesOf does.
std::string MethodPlot(const TslBL::MethodRules& rules);

}  // namespace TslTool
