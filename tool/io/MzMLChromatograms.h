#pragma once
// Reads the chromatograms that an mzML file holds beside its spectra: total ion currents, selected reactions,
// traces of detectors.
//
// Arrays of time and intensity, numbers and packing as of spectra (MzMLArray.h). A chromatogram that lacks
// one of them, as that of a pressure does, or holds less than two points is left out with a warning. Times
// without a unit are taken as seconds, with a warning.

#include <tool/io/ByteSource.h>
#include <tool/io/Trace.h>
#include <string>
#include <vector>

namespace TslTool {

// All of them, or the one whose id `only` is, or whose number in the file, counted from 0. `warnings` are of
// the file as a whole. Throws InputError for one that there is not, with those that there are, and for arrays
// that are damaged, of different lengths, not finite, or with times that do not ascend, naming the
// chromatogram. A file without any gives none.
Traces ReadChromatograms(ByteSource source, const std::string& only, std::vector<std::string> warnings = {});

}  // namespace TslTool
