#include <tslbl/records/RecordForms.h>

#include <gtest/gtest.h>

#include <RecordCheck.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/CSSeries.h>
#include <tslbl/records/MZRange.h>
#include <new>

namespace {

using namespace TslBL;
using namespace tests;

const MZRange kRange(MZRange::Partial, 100.5, 900.25);

// The text of what `read` raises.
template <class Read>
std::string Reason(Read read) {
  try {
    read();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "nothing raised";
}

// A value that writes and reads itself as it likes, and does not look at its stream.
struct Careless final : ITslSerial {
  std::uint32_t Value = 5;
  using ITslSerial::Serialize;
  void Serialize(BinaryReader& reader) override { reader >> Value; }
  void Serialize(BinaryWriter& writer) const override { writer << Value; }
};

struct Level {
  std::uint32_t value = 0;
};
BinaryWriter& operator<<(BinaryWriter& writer, const Level& level) { return writer << level.value; }
BinaryReader& operator>>(BinaryReader& reader, Level& level) { return reader >> level.value; }
XMLParser& operator>>(XMLParser& parser, Level& level) {
  std::wstring text;
  if (parser.QNode(L"Level", text)) FromText(text, level.value);
  return parser;
}

struct OutOfMemory final : ITslSerial {
  using ITslSerial::Serialize;
  void Serialize(BinaryReader&) override {}
  void Serialize(BinaryWriter& writer) const override {
    writer << 1u;
    throw std::bad_alloc();
  }
};

TEST(RecordForms, BytesAreThoseThatTheRecordWrites) {
  EXPECT_EQ(ToBytes(kRange), Bytes(1u, 1u, 100.5, 900.25));
  EXPECT_EQ(FromBytes<MZRange>(ToBytes(kRange)), kRange);
}

TEST(RecordForms, DocumentIsThatWhichTheRecordWrites) {
  EXPECT_EQ(ToXml(kRange), L"<MZRange Type=\"Partial\" Start=\"100.5\" End=\"900.25\" />\n");
  EXPECT_EQ(FromXml<MZRange>(ToXml(kRange)), kRange);
}

TEST(RecordForms, ServeWhatHasStreamOperatorsAlone) {
  EXPECT_EQ(ToBytes(Level{7}), Bytes(7u));
  EXPECT_EQ(FromBytes<Level>(Bytes(7u)).value, 7u);
  EXPECT_EQ(FromXml<Level>(L"<Level>7</Level>").value, 7u);
}

TEST(RecordForms, BytesThatEndEarlyAreRefused) {
  const std::string bytes = ToBytes(kRange);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    MZRange range = kRange;
    const auto cut = std::string_view(bytes).substr(0, length);
    EXPECT_EQ(Reason([&] { ReadBytes(cut, range); }),
              length < 4 ? "Unknown MZRange version." : "Unexpected end of stream.");
    EXPECT_EQ(range, kRange);
  }
}

TEST(RecordForms, BytesThatEndEarlyAreRefusedWhetherTheRecordLooksOrNot) {
  EXPECT_EQ(Reason([] { FromBytes<Careless>("abc"); }), "Unexpected end of stream.");
}

TEST(RecordForms, OneRecordOfSeveralTakesItsOwnBytes) {
  const std::string bytes = ToBytes(CSSeries(CSSeries::Resolved, 2)) + ToBytes(kRange);
  CSSeries series;
  MZRange range;
  const std::size_t taken = ReadBytes(bytes, series);
  EXPECT_EQ(taken, 12u);
  EXPECT_EQ(ReadBytes(std::string_view(bytes).substr(taken), range), 24u);
  EXPECT_EQ(series, CSSeries(CSSeries::Resolved, 2));
  EXPECT_EQ(range, kRange);
}

TEST(RecordForms, BytesBehindTheRecordAreRefused) {
  EXPECT_EQ(Reason([] { FromBytes<MZRange>(ToBytes(kRange) + "abc"); }), "Bytes behind the record: 3.");
}

TEST(RecordForms, WhatADocumentLacksStays) {
  EXPECT_EQ(FromXml(L"<Other/>", kRange), kRange);
  EXPECT_EQ(FromXml(L"<MZRange End=\"7\"/>", kRange), MZRange(MZRange::Partial, 100.5, 7.0));
}

TEST(RecordForms, DocumentThatIsNotWellFormedIsRefusedWithItsPlace) {
  EXPECT_EQ(Reason([] { FromXml<MZRange>(L"<MZRange>\n<a></MZRange>"); }),
            "line 2, column 6: Start-end tags mismatch");
}

TEST(RecordForms, MemoryThatRunsOutIsNoEndOfTheRecord) {
  EXPECT_THROW(ToBytes(OutOfMemory()), std::bad_alloc);
}

}  // namespace
