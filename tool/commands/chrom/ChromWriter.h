#pragma once
// The peaks of chromatograms as a table.

#include <tool/commands/chrom/EvaluateCurve.h>
#include <string>
#include <vector>

namespace TslTool {

// The formats: "table" for reading, "tsv", "csv" and "json" for programs.
const std::vector<std::string>& ChromFormats();

// All curves in one text. The columns of the formats for programs are curve, peak, rt_s, height, area,
// area_se, start_s, end_s, width_s, sn, in this order; JSON has the title of each curve too.
std::string PeaksText(const std::string& format, const std::vector<EvaluatedCurve>& curves);

}  // namespace TslTool
