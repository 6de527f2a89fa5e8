#pragma once
// Writes one <binaryDataArray> of an mzML file: 64 bit floats, little-endian, packed by zlib.

#include <tool/io/MzMLTerms.h>
#include <optional>
#include <string>
#include <vector>

namespace TslTool {

// What an array holds. The term for arrays of no other kind has the array's name as its value.
struct ArrayKind {
  CvTerm term;
  std::string name = {};
  std::optional<CvTerm> unit = std::nullopt;
};

// A child of <binaryDataArrayList>. No values are no bytes.
void AddArray(pugi::xml_node& list, const ArrayKind& kind, const std::vector<double>& values);

}  // namespace TslTool
