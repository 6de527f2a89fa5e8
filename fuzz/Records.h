#pragma once
// Records to and from their stored forms, for the fuzz targets.

#include <fuzz/Input.h>
#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <sstream>
#include <string>
#include <string_view>

namespace fuzz {

template <class R>
std::string BytesOf(const R& record) {
  std::ostringstream out(std::ios::binary);
  TslCommon::BinaryWriter writer(out);
  record.Serialize(writer);
  return out.str();
}

template <class R>
bool ReadBytes(std::string_view bytes, R& record) {
  std::istringstream in(std::string(bytes), std::ios::binary);
  TslCommon::BinaryReader reader(in);
  return Accepts([&] { record.Serialize(reader); });
}

template <class R>
std::wstring XmlOf(const R& record) {
  TslCommon::XMLBuilder builder;
  record.Serialize(builder);
  return builder.QXML();
}

template <class R>
bool ReadXml(const std::wstring& xml, R& record) {
  TslCommon::XMLParser parser;
  if (!parser.LoadText(xml)) {
    Require(!parser.QLoadError().empty(), "a document that is not well formed has a reason");
    return false;
  }
  return Accepts([&] { record.Serialize(parser); });
}

// A document that the library wrote is read, and what was read is written as the same document.
template <class R>
void RequireDocumentStays(const std::wstring& xml) {
  R record;
  Require(ReadXml(xml, record), "a written document is read");
  Require(XmlOf(record) == xml, "what was read from a written document is written the same");
}

}  // namespace fuzz
