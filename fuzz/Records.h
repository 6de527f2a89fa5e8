#pragma once
// Records to and from their stored forms, for the fuzz targets.

#include <fuzz/Input.h>
#include <tslbl/records/RecordForms.h>
#include <string>
#include <string_view>

namespace fuzz {

using TslBL::ToBytes;
using TslBL::ToXml;

template <class R>
bool AcceptsBytes(std::string_view bytes, R& record) {
  return Accepts([&] { TslBL::ReadBytes(bytes, record); });
}

template <class R>
bool AcceptsXml(const std::wstring& xml, R& record) {
  return Accepts([&] { record = TslBL::FromXml(xml, record); });
}

// A document that the library wrote is read, and what was read is written as the same document.
template <class R>
void RequireDocumentStays(const std::wstring& xml) {
  R record;
  Require(AcceptsXml(xml, record), "a written document is read");
  Require(ToXml(record) == xml, "what was read from a written document is written the same");
}

// The same of a record that a document may change once, as it has no text for a code, or reads a range that
// it was written with as another one. What was read from it then stays.
template <class R>
void RequireDocumentSettles(const std::wstring& xml) {
  R read;
  Require(AcceptsXml(xml, read), "a written document is read");
  RequireDocumentStays<R>(ToXml(read));
}

}  // namespace fuzz
