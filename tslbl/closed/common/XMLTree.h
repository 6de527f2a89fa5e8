#pragma once
// Documents as trees, under the rules that XMLParser.h tells: one element, not too deep, no DOCTYPE.
//
// For the sources of the library; not part of its interface.

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace TslCommon {

// Replaces what the document holds. Returns reason and place of a failure, after which it holds nothing; an
// empty text without one.
std::wstring LoadXmlTree(std::string_view bytes, pugi::xml_encoding encoding, pugi::xml_document& document);

bool IsXmlText(pugi::xml_node node);

}  // namespace TslCommon
