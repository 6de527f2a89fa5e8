#pragma once
// The program of a method over time, drawn with letters.

#include <tool/commands/method/MethodTimes.h>
#include <string>

namespace TslTool {

// Lanes of one width: the time periods by their numbers, the polarity of what they measure (+, - or, for
// both, m), and where the valve stands (S for the source, W for waste), over a scale in minutes or seconds. A
// time period without end is as long as its loops. Empty for a method that takes no time.
std::string MethodTimeline(const TslBL::MethodRules& rules, const std::vector<PeriodTimes>& times);

}  // namespace TslTool
