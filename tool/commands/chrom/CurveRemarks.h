#pragma once
// What a user has to know of evaluated chromatograms beside their peaks.

#include <tool/commands/chrom/EvaluateCurve.h>
#include <string>
#include <vector>

namespace TslTool {

// How many peaks are not reported, and why; empty if there are none.
std::string LeftOutNote(const std::vector<EvaluatedCurve>& curves);

// A sentence each, with the first curve and time, for what makes the peaks untrue: a top that the detector
// cuts; a peak above half its height at an end of the curve; and a dip below the baseline, as of the solvent
// or of a lamp, beside which the way back up looks like a peak.
std::vector<std::string> CurveWarnings(const std::vector<EvaluatedCurve>& curves);

}  // namespace TslTool
