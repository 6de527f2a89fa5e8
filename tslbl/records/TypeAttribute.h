#pragma once
// A record whose field `Type` has a text form for every number, those without a name of
// their own included: R::CvtType gives it both ways. Binary holds the number, a document
// the text, as the attribute "Type".
//
// For the sources of records; not part of the library's interface.

#include <tslbl/records/Archive.h>
#include <string>

namespace TslBL {

template <class R>
void TypeAttribute(Archive& ar, R& record) {
  if (!ar.Xml() && !ar.Dumping()) {
    ar.EnumAttribute(L"Type", record.Type, Codes{});
    return;
  }
  const std::wstring before = R::CvtType(record.Type);
  std::wstring text = before;
  ar.Attribute(L"Type", text);
  if (text != before) record.Type = R::CvtType(text);
}

}  // namespace TslBL
