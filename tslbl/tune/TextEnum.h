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
  // No document can hold this text, so that it tells an absent element.
  const std::wstring absent(1, L'\0');
  std::wstring text = ar.Reading() ? absent : toText(value);
  ar(name, text);
  if (ar.Reading() && text != absent) value = fromText(text);
}

}  // namespace TslBL
