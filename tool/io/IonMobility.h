#pragma once
// Spectra of mzML whose points have an ion mobility each.

#include <tool/io/MzMLElement.h>

#include <cstdint>

namespace TslTool {

// Whether a <binaryDataArray> tells the ion mobility or drift time of each point, by its terms or, where its
// writer had none, by a name.
bool IsIonMobilityArray(const pugi::xml_node& array, const MzMLTerms& terms);

// Whether all points, of which there are `points`, have the same one. False if that cannot be read.
bool HasOneMobility(const pugi::xml_node& array, const MzMLTerms& terms, std::uint64_t points);

}  // namespace TslTool
