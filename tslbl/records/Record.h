#pragma once
// The frame of every stored record.
//
// A record is a plain struct with public fields and their defaults beside them. It says
// once, in its source file, what its fields are and how versions and forms differ:
//
//   struct SmoothStep : Record<SmoothStep> { double Value = 5.0; std::uint32_t Size = 5; };
//   void Describe(Archive& ar, SmoothStep& s);   // see Archive.h
//
// and gets from here, all derived from that one function:
//   - binary out and in. Reading throws std::runtime_error "Unknown <Record> version."
//     for a version that it does not know and "Unexpected end of stream." for a record
//     cut short; either way the record stays as it was;
//   - XML out and in. A missing element or child leaves the fields as they are, text that
//     is no number leaves its field, doubles keep six significant digits;
//   - a text dump, a line "  label:\tvalue\r\n" for each field;
//   - operator==, field by field in declaration order. Doubles compare exactly, unless the
//     record says otherwise; an object equals itself whatever it holds.
//
// Record has both interfaces, SerialRecord the binary one alone, XmlRecord the document
// one alone. Records are values; one thread at a time may change one.

#include <tslbl/Export.h>
#include <tslbl/closed/common/ITslSerial.h>
#include <tslbl/closed/common/ITslXML.h>
#include <tslbl/records/Common.h>
#include <string>
#include <utility>

namespace TslBL {

class Archive;

namespace frame {

// Describe of some record, its type erased.
using DescribeFn = void (*)(Archive& ar, void* record);

TSLBL_API void WriteBinary(DescribeFn describe, const void* record, BinaryWriter& writer);
TSLBL_API void ReadBinary(DescribeFn describe, void* record, BinaryReader& reader);
TSLBL_API void WriteXml(DescribeFn describe, const void* record, XMLBuilder& builder);
TSLBL_API void ReadXml(DescribeFn describe, void* record, XMLParser& parser);
TSLBL_API void Dump(DescribeFn describe, const void* record, std::wstring& text);
TSLBL_API bool Equal(DescribeFn describe, const void* a, const void* b);

template <class R>
void DescribeErased(Archive& ar, void* record) {
  Describe(ar, *static_cast<R*>(record));
}

// The binary operations. Reads into a fresh record, so that a failure changes nothing.
template <class R, class Base>
class Serial : public Base {
 public:
  using Base::Serialize;
  void Serialize(std::wstring& text) const override {
    Dump(&DescribeErased<R>, static_cast<const R*>(this), text);
  }
  void Serialize(BinaryReader& reader) override {
    R fresh;
    ReadBinary(&DescribeErased<R>, &fresh, reader);
    static_cast<R&>(*this) = std::move(fresh);
  }
  void Serialize(BinaryWriter& writer) const override {
    WriteBinary(&DescribeErased<R>, static_cast<const R*>(this), writer);
  }

  friend bool operator==(const R& a, const R& b) { return &a == &b || Equal(&DescribeErased<R>, &a, &b); }
};

struct SerialAndXml : ITslSerial, ITslXML {
  using ITslSerial::Serialize;
  using ITslXML::Serialize;
};

}  // namespace frame

template <class R>
class SerialRecord : public frame::Serial<R, ITslSerial> {};

template <class R>
class Record : public frame::Serial<R, frame::SerialAndXml> {
 public:
  using frame::Serial<R, frame::SerialAndXml>::Serialize;
  void Serialize(XMLParser& parser) override {
    frame::ReadXml(&frame::DescribeErased<R>, static_cast<R*>(this), parser);
  }
  void Serialize(XMLBuilder& builder) const override {
    frame::WriteXml(&frame::DescribeErased<R>, static_cast<const R*>(this), builder);
  }
};

template <class R>
class XmlRecord : public ITslXML {
 public:
  void Serialize(XMLParser& parser) override {
    frame::ReadXml(&frame::DescribeErased<R>, static_cast<R*>(this), parser);
  }
  void Serialize(XMLBuilder& builder) const override {
    frame::WriteXml(&frame::DescribeErased<R>, static_cast<const R*>(this), builder);
  }

  friend bool operator==(const R& a, const R& b) {
    return &a == &b || frame::Equal(&frame::DescribeErased<R>, &a, &b);
  }
};

}  // namespace TslBL
