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
  // No document can hold this text, so that it tells an absent attribute.
  const std::wstring absent(1, L'\0');
  std::wstring text = ar.Reading() ? absent : R::CvtType(record.Type);
  ar.Attribute(L"Type", text);
  if (ar.Reading() && text != absent) record.Type = R::CvtType(text);
}

}  // namespace TslBL
