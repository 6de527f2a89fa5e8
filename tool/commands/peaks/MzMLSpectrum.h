#pragma once
// The peaks of a spectrum as an element <spectrum> of an mzML file.

#include <tool/commands/peaks/ReportedPeak.h>
#include <tool/io/MzMLTerms.h>
#include <string>
#include <vector>

namespace TslTool {

// By the level; a spectrum without one is a mass spectrum.
const CvTerm& SpectrumType(int msLevel);

// Its id in the file: its own, or "scan=N" where it has none or one that the format does not allow.
std::string IdFor(const LoadedSpectrum& loaded);

// A centroid spectrum, its peaks by ascending m/z, without the attribute "index". The intensity is the
// amplitude with which a peak is reported, in `unit`; more arrays hold what else is known. Peaks for which
// fitted ones stand are left out. Throws std::runtime_error with the reason if an m/z or amplitude is not
// finite.
std::string SpectrumElement(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& peaks,
                            const CvTerm& unit, unsigned depth);

}  // namespace TslTool
