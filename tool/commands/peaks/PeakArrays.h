#pragma once
// The peaks of a spectrum as the arrays of an mzML file.

#include <tool/commands/peaks/ReportedPeak.h>
#include <tool/mzml/SpectrumElement.h>
#include <vector>

namespace TslTool {

// Of a centroid spectrum, by ascending m/z. The intensity is the amplitude with which a peak is reported, in
// `unit`; more arrays hold what else is known. Peaks for which fitted ones stand are left out.
SpectrumArrays PeakArrays(const std::vector<ReportedPeak>& peaks, const CvTerm& unit);

}  // namespace TslTool
