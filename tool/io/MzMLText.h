#pragma once
// Makes the text of one mzML <spectrum> element fit for decoding. Works on text alone.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace TslTool {

// Returns the element with
// - arrays that are neither m/z nor intensity left out: charges, mobilities and whatever else the vocabulary
//   gains may have number types that the decoder does not know, and this program does not use them;
// - the arrays' tags reduced to their lengths;
// - blanks and line breaks inside base64 text removed, as pretty-printers put them in;
// - <cvParam> elements outside the arrays left out if `isKnown` does not know their accession, since the
//   vocabulary grows every month and the decoder stops at a term younger than itself.
// Throws std::runtime_error with the reason if base64 text holds a foreign character or has a length that is
// none or not the announced one, or if an array has no binary element.
std::string TidySpectrumText(std::string_view element,
                             const std::function<bool(const std::string&)>& isKnown);

// The last of these steps alone, for elements that hold no arrays.
std::string WithoutUnknownTerms(std::string_view text,
                                const std::function<bool(const std::string&)>& isKnown);

// The number of characters in the longest <binary> text, blanks included.
std::size_t LongestArrayText(std::string_view element);

}  // namespace TslTool
