#pragma once
// A record to its bytes or its document and back, in one call.
//
//   const std::string bytes = ToBytes(tune);
//   const auto again = FromBytes<Tune>(bytes);
//   const std::wstring document = ToXml(tune);
//   const auto read = FromXml<Tune>(document);
//
// All or nothing. What is returned is whole: where memory runs out on the way, std::bad_alloc
// is raised, and never is a part of the record returned. What cannot be read raises
// std::runtime_error with the record's own reason or one of those below; a record of the
// frame (Record.h) then stays as it was.
//
// For everything with the operations of ITslSerial or ITslXML, or stream operators that do
// the same.

#include <tslbl/Export.h>
#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/records/Common.h>
#include <cstddef>
#include <string>
#include <string_view>

namespace TslBL {

namespace frame {

using WriteFn = void (*)(BinaryWriter& writer, const void* record);
using ReadFn = void (*)(BinaryReader& reader, void* record);

TSLBL_API std::string WriteBytes(WriteFn write, const void* record);
TSLBL_API std::size_t ReadBytes(ReadFn read, std::string_view bytes, void* record);
[[noreturn]] TSLBL_API void ThrowLeftOver(std::size_t bytes);
TSLBL_API void LoadDocument(XMLParser& parser, const std::wstring& document);

}  // namespace frame

template <class R>
std::string ToBytes(const R& record) {
  const auto write = [](BinaryWriter& writer, const void* from) {
    if constexpr (requires(const R& r) { r.Serialize(writer); }) {
      static_cast<const R*>(from)->Serialize(writer);
    } else {
      writer << *static_cast<const R*>(from);
    }
  };
  return frame::WriteBytes(write, &record);
}

// Reads the record at the beginning of `bytes` and returns how many bytes it took. Raises
// "Unexpected end of stream." if they end within it.
template <class R>
std::size_t ReadBytes(std::string_view bytes, R& record) {
  const auto read = [](BinaryReader& reader, void* to) {
    if constexpr (requires(R & r) { r.Serialize(reader); }) {
      static_cast<R*>(to)->Serialize(reader);
    } else {
      reader >> *static_cast<R*>(to);
    }
  };
  return frame::ReadBytes(read, bytes, &record);
}

// The record whose bytes these are. As ReadBytes; bytes that are left over raise, too:
// "Bytes behind the record: 3."
template <class R>
R FromBytes(std::string_view bytes, R record = R()) {
  const std::size_t taken = ReadBytes(bytes, record);
  if (taken != bytes.size()) frame::ThrowLeftOver(bytes.size() - taken);
  return record;
}

// The text of the document, without a declaration.
template <class R>
std::wstring ToXml(const R& record) {
  XMLBuilder builder;
  record.Serialize(builder);
  return builder.QXML();
}

// What the document lacks stays as it is in `record`. Raises reason and place of a text that
// is not well formed.
template <class R>
R FromXml(const std::wstring& document, R record = R()) {
  XMLParser parser;
  frame::LoadDocument(parser, document);
  if constexpr (requires { record.Serialize(parser); }) {
    record.Serialize(parser);
  } else {
    parser >> record;
  }
  return record;
}

}  // namespace TslBL
