#pragma once
// Chromatograms as a picture.

#include <tool/commands/chrom/EvaluateCurve.h>
#include <string>
#include <vector>

namespace TslTool {

// An SVG document: a panel for each curve, one below the other over the same times, with what was measured,
// the evaluated curve, its baseline and its peaks; tops are labelled with their times.
std::string ChromPlot(const std::vector<EvaluatedCurve>& curves, const std::string& title);

}  // namespace TslTool
