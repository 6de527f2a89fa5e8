#pragma once
// A record of the instrument, a tune or a method, as a file: a document, or its bytes.

#include <tool/frame/InputError.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/RecordForms.h>
#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace TslTool {

enum class RecordForm { Xml, Binary };

struct RecordKind {
  const char* name;     // what a user calls it
  std::size_t largest;  // bytes of a file
};

// The bytes of a file, unpacked if it is gzip. Throws InputError if it cannot be read, is empty, or larger
// than its kind gets.
std::string ReadRecordFile(const std::string& file, const RecordKind& kind);

// Whether bytes begin as a document does: UTF-8 with or without its mark, or UTF-16.
bool IsDocument(std::string_view bytes);

// A document as it was written.
class WrittenDocument {
 public:
  // Throws InputError with the line of what is no character in the encoding of the document.
  WrittenDocument(const std::string& file, const std::string& bytes);

  pugi::xml_node Root() const { return document_.document_element(); }
  // For the library's reader, which says what is wrong, with line and column.
  const std::wstring& Text() const { return text_; }

 private:
  pugi::xml_document document_;
  std::wstring text_;
};

// Throws InputError for a number that is none, which would pass every limit.
void RequireFinite(const std::string& file, const std::wstring& document);

template <class R>
std::string DocumentOf(const R& record) {
  return TslCommon::ToUtf8(TslBL::ToXml(record));
}

// Throws InputError with the library's reason.
template <class R>
R RecordOfDocument(const std::string& file, const WrittenDocument& document) {
  try {
    return TslBL::FromXml<R>(document.Text());
  } catch (const std::exception& e) {
    throw InputError(file, "", e.what());
  }
}

// Throws InputError for bytes that are no such record, for more of them, and for a number that is none.
template <class R>
R RecordOfBytes(const std::string& file, const std::string& bytes, const RecordKind& kind) {
  R record;
  std::size_t end = 0;
  try {
    end = TslBL::ReadBytes(bytes, record);
  } catch (const std::exception& e) {
    throw InputError(file, "", std::string("is no ") + kind.name + ": " + e.what());
  }
  if (end != bytes.size())
    throw InputError(file, "byte " + std::to_string(end),
                     std::to_string(bytes.size() - end) + " bytes behind the " + kind.name);
  RequireFinite(file, TslBL::ToXml(record));
  return record;
}

template <class R>
std::string RecordBytes(const R& record, RecordForm form) {
  if (form == RecordForm::Binary) return TslBL::ToBytes(record);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + DocumentOf(record);
}

// What a record is after being written in a form and read again: a document keeps six digits of a number,
// bytes of a method no number of records.
template <class R>
R ThroughForm(const R& record, RecordForm form) {
  if (form == RecordForm::Binary) return TslBL::FromBytes<R>(TslBL::ToBytes(record));
  return TslBL::FromXml<R>(TslBL::ToXml(record));
}

// The form that a file's name asks for: a document if it ends in ".xml".
RecordForm FormOfName(const std::string& file);

}  // namespace TslTool
