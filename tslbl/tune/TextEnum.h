#pragma once
// An enumeration whose text forms the platform keeps: a number in binary and in
// comparison, a text in documents and dumps.
//
// For the sources of records; not part of the library's interface.

#include <tslbl/records/Archive.h>
#include <string>

namespace TslBL {

// `toText(value)` and `fromText(text)` are each other's inverse.
template <class E, class ToTextForm, class FromTextForm>
void TextEnum(Archive& ar, const wchar_t* name, E& value, ToTextForm toText, FromTextForm fromText) {
  if (!ar.Xml() && !ar.Dumping()) {
    ar.Enum(name, value, Codes{});
    return;
  }
  const std::wstring before = toText(value);
  std::wstring text = before;
  ar(name, text);
  if (text != before) value = fromText(text);
}

}  // namespace TslBL
