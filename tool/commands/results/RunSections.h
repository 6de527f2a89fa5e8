#pragma once
// What a document of results says of the whole run, before its spectra.

#include <tool/commands/chrom/Chromatogram.h>
#include <tool/commands/chrom/CurveChoice.h>
#include <string>
#include <vector>

namespace TslTool {

// "Run" and "Tunes". An empty `input` is the demonstration run. Throws InputError for what is no run.
std::string RunSection(const std::string& input);

// "MZRanges" and "CurveDefs", as LoadCurvesFile reads them.
std::string DefinitionSections(const CurveChoice& choice);

// "Chromatograms", whose values are the sums of the ranges or, if `isMean`, their means. `curves` are those
// of ReadCurves: for each kind of scans the total ion current, the base peak, and the chosen ones in their
// order.
std::string ChromatogramSection(const CurveChoice& choice, const std::vector<Chromatogram>& curves,
                                bool isMean);

}  // namespace TslTool
