#pragma once
// An element <spectrum> whose m/z are changed, and nothing else.

#include <tool/io/MzMLElement.h>
#include <functional>
#include <pugixml.hpp>

namespace TslTool {

// Gives an element that was made, with all in it, the namespace prefix of `like`, if that has one.
void TakePrefix(pugi::xml_node element, const pugi::xml_node& like);

using MzMap = std::function<double(double mz)>;

// The m/z array, which becomes 64 bit floats packed by zlib, and the terms for m/z that were observed in it.
// What was set or selected, as scan windows and precursors, stays, and so does a spectrum without m/z. Throws
// std::runtime_error with the reason if the array cannot be read.
void ChangeMz(pugi::xml_node& spectrum, const MzMLGroups& groups, const MzMap& map);

}  // namespace TslTool
