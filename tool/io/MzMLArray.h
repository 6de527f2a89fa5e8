#pragma once
// Decodes one <binaryDataArray> of an mzML file.
//
// Numbers: floats and integers of 32 and 64 bits, little-endian. Packing: none, zlib, MS-Numpress linear, pic
// and slof, alone or inside zlib.

#include <tool/io/MzMLElement.h>

#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

struct MzMLArray {
  std::vector<double> values;
  // Whether the array announces the length that its text has.
  bool isLengthTrue = true;
};

// `what` is how messages name the array: "m/z". `points` is how many values there must be.
// Throws std::runtime_error with the reason if the text is damaged, the numbers are of another kind or are
// not so many, or a term of the array is not known: it may change what the bytes mean. Memory grows with what
// is unpacked, not with what is announced.
MzMLArray DecodeArray(const pugi::xml_node& array, const MzMLTerms& terms, const std::string& what,
                      std::uint64_t points);

}  // namespace TslTool
