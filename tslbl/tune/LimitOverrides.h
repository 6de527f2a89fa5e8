#pragma once
// The rows of "overrides.txt"; see FieldLimits.h.

#include <tslbl/records/Common.h>
#include <tslbl/tune/FieldLimits.h>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>

namespace TslBL {

using LimitRows = std::map<std::uint32_t, Limits>;  // by field number

// All rows up to the first bad one. Of several rows of a field the last counts.
LimitRows ReadLimitRows(std::istream& in);

// Those of a file; nothing if there is no such file.
std::optional<LimitRows> LoadLimitOverrides(const std::wstring& path);

// A line in the log that the file was found.
void LogOverrides(const std::wstring& path);

}  // namespace TslBL
