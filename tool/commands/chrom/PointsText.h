#pragma once
// The points of chromatograms as a table.

#include <tool/commands/chrom/EvaluateCurve.h>
#include <string>
#include <vector>

namespace TslTool {

// Columns between tabs: rt_s, and the measured values of each curve under its name. Curves that have no point
// at a time, as those of other scans, have an empty cell there.
std::string PointsText(const std::vector<EvaluatedCurve>& curves);

}  // namespace TslTool
