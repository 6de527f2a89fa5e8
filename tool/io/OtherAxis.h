#pragma once
// Names of columns that hold no m/z.

#include <string_view>

namespace TslTool {

// Whether a name is that of a time, a wavelength, a temperature or another axis that measured curves have, in
// the languages that instruments' programs speak: by its words, or by a unit, in brackets, behind a slash or
// alone. UTF-8 or Latin-1.
bool IsOtherAxis(std::string_view name);

}  // namespace TslTool
