#pragma once
// The polarity of the ions that a tune lets through.

#include <tslbl/Export.h>
#include <cstdint>
#include <string>

namespace TslCommon {

enum PolarityTypes : std::uint32_t { PolarityPositive = 0, PolarityNegative = 1 };

// "Positive" or "Negative"; `fallback` for another value.
TSLBL_API std::wstring PolarityToWStr(PolarityTypes polarity, const wchar_t* fallback);
// Ignores case; `fallback` for another text.
TSLBL_API PolarityTypes PolarityFromWStr(const std::wstring& text, PolarityTypes fallback);

}  // namespace TslCommon
