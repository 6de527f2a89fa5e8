#pragma once
// A copy of an mzML file with other m/z.

#include <tool/frame/Output.h>
#include <tool/mzml/ChangeMz.h>
#include <tool/mzml/MzMLHeader.h>
#include <cstdint>
#include <string>

namespace TslTool {

// Everything stays, element by element, but the m/z of the spectra (ChangeMz.h), the index with its checksum,
// which are made anew, and what tells of it: the program among the software, and what was done behind what
// had been done to the spectra before. Comments and blanks between elements are those of nobody. One element
// is in memory at a time. Returns the number of spectra. Throws InputError.
std::uint64_t RewriteMzML(const std::string& input, const MzMap& map, const std::string& program,
                          const ProcessingMethod& method, Output& output);

}  // namespace TslTool
