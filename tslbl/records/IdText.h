#pragma once
// Ids of other records as the text of an element.
//
// For the sources of records; not part of the library's interface.

#include <cstdint>
#include <string>
#include <vector>

namespace TslBL {

// In decimal, a blank between two.
std::wstring IdsToText(const std::vector<std::uint32_t>& ids);
// As far as there are ids, as a stream would extract them.
std::vector<std::uint32_t> IdsFromText(const std::wstring& text);

}  // namespace TslBL
