#pragma once
// Decodes one <binaryDataArray> of an mzML file.
//
// Numbers: floats and integers of 32 and 64 bits, little-endian. Packing: none, zlib, MS-Numpress linear, pic
// and slof, alone or inside zlib.

#include <tool/io/MzMLElement.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace TslTool {

// What is wrong with the values of one spectrum and tells nothing of the others.
class SpectrumDefect : public std::runtime_error {
 public:
  // `what` completes the sentence "N spectra ...".
  SpectrumDefect(const char* what, const std::string& reason) : std::runtime_error(reason), kind_(what) {}
  const char* Kind() const { return kind_; }

 private:
  const char* kind_;
};

inline constexpr const char* kOtherLength = "with arrays of another length than announced";

struct MzMLArray {
  std::vector<double> values;
  // Whether the array announces the length that its text has.
  bool isLengthTrue = true;
};

// Whether a term tells how the bytes of an array become numbers.
bool IsArrayForm(std::string_view accession);

// `what` is how messages name the array: "m/z". `points` is how many values there must be.
// Throws std::runtime_error with the reason if the text is damaged, the numbers are of another kind or are
// not so many, which is a SpectrumDefect, or a term of the array is not known: it may change what the bytes
// mean. Memory grows with what is unpacked, not with what is announced.
MzMLArray DecodeArray(const pugi::xml_node& array, const MzMLTerms& terms, const std::string& what,
                      std::uint64_t points);

}  // namespace TslTool
