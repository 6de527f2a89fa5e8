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

}  // namespace fuzz
