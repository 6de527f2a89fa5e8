#pragma once
// Text: comparison, UTF-8, and numbers. Nothing here depends on a locale.

#include <tslbl/Export.h>
#include <cstdint>
#include <string>
#include <string_view>

namespace TslCommon {

// Equal but for the case of the letters a to z.
TSLBL_API bool EqualsIgnoreCase(std::wstring_view a, std::wstring_view b);

// UTF-8 stands in files, terminals and logs; wide text everywhere inside. What cannot
// be encoded or decoded becomes U+FFFD.
TSLBL_API std::string ToUtf8(std::wstring_view text);
TSLBL_API std::wstring FromUtf8(std::string_view bytes);
TSLBL_API std::wstring TslNarrowToWideStr(const std::string& text);

// The text of a number in a stream's default state: integers in decimal, doubles with
// six significant digits as "%.6g" gives them.
TSLBL_API std::wstring ToText(double value);
// With 17 significant digits, which read back to the same double.
TSLBL_API std::wstring ToFullText(double value);
TSLBL_API std::wstring ToText(std::int32_t value);
TSLBL_API std::wstring ToText(std::uint32_t value);
TSLBL_API std::wstring ToText(std::int64_t value);

// Takes what a stream's operator>> would take: leading blanks are skipped, and the
// number ends at the first character foreign to it. Returns false, with `value` left
// alone, if no number stands there. A number out of range gives the nearest end.
TSLBL_API bool FromText(std::wstring_view text, double& value);
TSLBL_API bool FromText(std::wstring_view text, std::int32_t& value);
TSLBL_API bool FromText(std::wstring_view text, std::uint32_t& value);
TSLBL_API bool FromText(std::wstring_view text, std::int64_t& value);

// "true" and "false". Reading ignores case and takes 0 for false and any other number
// for true; another text leaves `value` alone.
TSLBL_API std::wstring ToWStr(const bool& value);
TSLBL_API void FromWStr(const std::wstring& text, bool& value);
TSLBL_API std::wstring ToWStr(const std::int64_t& value);
TSLBL_API void FromWStr(const std::wstring& text, std::int64_t& value);

}  // namespace TslCommon
