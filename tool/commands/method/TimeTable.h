#pragma once
// Where the time of a method goes, as text.

#include <tool/commands/method/MethodTimes.h>
#include <string>
#include <vector>

namespace TslTool {

// For a reader: a block for each time period, and how the time of its loops divides.
std::string TimeTable(const std::vector<PeriodTimes>& times);

// A row for each item: period, item, loops, spectra, switch_s, init_settle_s, step_settle_s, count_s, item_s
// (all of one loop), loop_s and period_s.
std::string TimeTsv(const std::vector<PeriodTimes>& times);

}  // namespace TslTool
