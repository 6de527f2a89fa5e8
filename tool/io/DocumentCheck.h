#pragma once
// Compares a document with what was read from it, so that no typing error goes unnoticed: the
// records of the library ignore what they do not know.

#include <functional>
#include <pugixml.hpp>
#include <string>

namespace TslTool {

// A value of the document: where it stands, as in "Tune/Source/Type" or "Step@Size", and
// both its texts, without blanks around them.
struct DocumentValue {
  std::string place;
  std::string written;
  std::string taken;
};

// Why a value is refused; empty if it is not. This one refuses what was not taken as it
// stands: texts may differ in case, numbers as far as the six digits of a document go.
std::string RefuseOther(const DocumentValue& value);

// Throws InputError for an element or an attribute of `written` that `taken` has not, and
// for a value that `refuse` refuses.
void CheckDocument(const std::string& file, const pugi::xml_node& written, const pugi::xml_node& taken,
                   const std::function<std::string(const DocumentValue&)>& refuse);

}  // namespace TslTool
