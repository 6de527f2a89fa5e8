#pragma once
// What an mzML file of peaks says before its spectra.

#include <tool/commands/peaks/PeakOrigin.h>
#include <tool/io/MzMLTerms.h>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// What its spectra turned out to be.
struct MzMLContent {
  std::uint64_t spectra = 0;
  std::vector<CvTerm> types;                 // each once
  std::optional<CvTerm> ids = std::nullopt;  // how they are built, if all alike
};

// The lines of an indexed file to the start tag of the list of spectra. The checksum of an input that is a
// file is made here, by reading it. Throws InputError if that fails.
std::string MzMLHeader(const PeakOrigin& origin, const MzMLContent& content);

}  // namespace TslTool
