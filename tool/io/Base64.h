#pragma once
// Base64 (RFC 4648) as it stands in XML: blanks and line breaks between the letters mean nothing.

#include <string>
#include <string_view>

namespace TslTool {

// The bytes. Throws std::runtime_error with what is wrong, to be read behind "the base64 text": a foreign
// character, a length that is no multiple of 4, letters behind the padding.
std::string FromBase64(std::string_view text);

// With padding, without line breaks.
std::string ToBase64(std::string_view bytes);

}  // namespace TslTool
