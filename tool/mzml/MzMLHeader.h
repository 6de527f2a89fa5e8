#pragma once
// What an mzML file says before its spectra.

#include <tool/io/MzMLTerms.h>
#include <tool/io/Scan.h>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace TslTool {

// What was done to the data.
struct ProcessingMethod {
  std::vector<CvTerm> terms;
  std::vector<std::pair<std::string, std::string>> params;  // user parameters, by their names
};

// Adds it to a <dataProcessing>, behind what stands there.
void AddMethod(pugi::xml_node& processing, const ProcessingMethod& method, const char* software);

// How its spectra came about.
struct MzMLOrigin {
  std::string input = {};                      // its path; empty for the demonstration run
  IdFormat ids = {};                           // that the input tells of
  std::string program = {};                    // as in "tslbl peaks"
  std::vector<ProcessingMethod> methods = {};  // in their order
};

// What its spectra turned out to be.
struct MzMLContent {
  std::uint64_t spectra = 0;
  std::vector<CvTerm> types;                 // each kind that there is, once
  std::optional<CvTerm> ids = std::nullopt;  // how they are built, if all alike
};

// The lines of an indexed file to the start tag of the list of spectra. The checksum of an input that is a
// file is made here, by reading it. Throws InputError if that fails.
std::string MzMLHeader(const MzMLOrigin& origin, const MzMLContent& content);

}  // namespace TslTool
