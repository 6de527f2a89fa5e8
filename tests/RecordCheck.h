#pragma once
// What every record must do, checked for one record at a time.
//
//   TEST(AllRecords, SmoothParams) {
//     CheckRecord<SmoothParams>({
//         {"Alg", [](auto& r) { r.Alg = SmoothParams::Median; }},
//         {"Steps", [](auto& r) { r.Steps.resize(2); }},
//         {"Steps.Size", [](auto& r) { r.Steps[0].Size = 7; }},
//         ...
//     });
//   }
//   TEST(Golden, SmoothParams) { CheckGolden(SampleSmoothParams(), "SmoothParams.v1"); }
//
// There is a row for each field that Describe names, which changes this field alone; further
// rows may change several. scripts/check-records looks for the other half: that Describe names
// each member.
//
// Golden bytes are text files of hexadecimal bytes, tests/data/golden/NAME.hex; '#' starts
// a comment. With TSLBL_WRITE_GOLDEN=1 in the environment a current version's file is
// written from the record, to be reviewed as text; without it the record is held against
// the file.

#include <gtest/gtest.h>

#include <DescribedFields.h>
#include <tslbl/records/RecordForms.h>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

using TslBL::FromBytes;
using TslBL::FromXml;
using TslBL::ToBytes;
using TslBL::ToXml;

// The text of the std::runtime_error that reading these bytes raises; empty without one.
template <class R>
std::string ReadFailure(const std::string& bytes, R record = R()) {
  const R before = record;
  try {
    TslBL::ReadBytes(bytes, record);
  } catch (const std::runtime_error& e) {
    EXPECT_TRUE(record == before) << "a failed reading changed the record";
    return e.what();
  }
  return "";
}

// Bytes of values in a row, as a stream holds them.
template <class... Ts>
std::string Bytes(const Ts&... values) {
  std::ostringstream out(std::ios::binary);
  TslCommon::BinaryWriter writer(out);
  (void)(writer << ... << values);
  return out.str();
}

template <class R>
std::wstring DumpOf(const R& record) {
  std::wstring text = L"replaced";
  record.Serialize(text);
  return text;
}

enum Forms { BinaryOnly = 1, XmlOnly = 2, BothForms = 3 };

template <class R>
struct FieldChange {
  const char* field;
  std::function<void(R&)> change;
  int forms = BothForms;  // which forms carry the field
};

// The record that a row changes. A row "first.then" goes on from the row "first": an item must
// be in a list before it can change, and some fields are those of one kind only.
template <class R>
R RecordBefore(const FieldChange<R>& row, const std::vector<FieldChange<R>>& rows) {
  const std::string_view field = row.field;
  const std::string_view first = field.substr(0, field.find('.'));
  R record;
  if (first == field) return record;
  const auto found =
      std::ranges::find(rows, first, [](const auto& other) { return std::string_view(other.field); });
  if (found == rows.end()) throw std::logic_error("There is no row \"" + std::string(first) + "\".");
  found->change(record);
  return record;
}

// What a record's Describe and the rows of its test do not agree on: each row changes what
// Describe names, and for each field that Describe names there is a row that changes this
// field alone.
template <class R>
std::vector<std::string> FieldFaults(const std::vector<FieldChange<R>>& rows) {
  std::vector<std::string> faults;
  FieldTexts named = DescribedFields::Of(R());
  std::set<std::string> changedAlone;
  for (const FieldChange<R>& row : rows) {
    const R before = RecordBefore(row, rows);
    R changed = before;
    row.change(changed);
    named.merge(DescribedFields::Of(changed));
    const auto differing = DifferingFields(DescribedFields::Of(before), DescribedFields::Of(changed));
    if (differing.empty()) faults.push_back(std::string(row.field) + " changes nothing that Describe names");
    if (differing.size() == 1) changedAlone.insert(*differing.begin());
  }
  for (const auto& [field, text] : named)
    if (!changedAlone.contains(field)) faults.push_back("no row changes " + field + " alone");
  return faults;
}

template <class R>
void CheckForms(const R& record, int forms) {
  if constexpr (requires(TslCommon::BinaryWriter & writer) { record.Serialize(writer); }) {
    EXPECT_EQ(FromBytes<R>(ToBytes(record)) == record, (forms & BinaryOnly) != 0) << "binary";
  }
  if constexpr (requires(TslCommon::XMLBuilder & builder) { record.Serialize(builder); }) {
    EXPECT_EQ(FromXml<R>(ToXml(record)) == record, (forms & XmlOnly) != 0) << "XML";
  }
}

// Changed, each field breaks equality and survives every form that carries it; and the rows
// are all that Describe names.
template <class R>
void CheckRecord(const std::vector<FieldChange<R>>& rows) {
  EXPECT_TRUE(R() == R());
  for (const FieldChange<R>& row : rows) {
    SCOPED_TRACE(row.field);
    const R before = RecordBefore(row, rows);
    R changed = before;
    row.change(changed);
    EXPECT_FALSE(changed == before) << "not compared";
    EXPECT_TRUE(changed == R(changed)) << "lost by a copy";
    CheckForms(changed, row.forms);
  }
  if constexpr (TslBL::Described<R>) {
    EXPECT_EQ(FieldFaults(rows), std::vector<std::string>());
  }
}

inline std::string GoldenPath(const std::string& name) {
  return std::string(TSLBL_TEST_DATA) + "/golden/" + name + ".hex";
}

inline std::string GoldenBytes(const std::string& name) {
  std::ifstream in(GoldenPath(name));
  EXPECT_TRUE(in) << GoldenPath(name) << " is missing";
  std::string bytes;
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line.substr(0, line.find('#')));
    for (unsigned byte = 0; words >> std::hex >> byte;) bytes.push_back(static_cast<char>(byte));
  }
  return bytes;
}

inline void WriteGolden(const std::string& name, const std::string& bytes) {
  std::ofstream out(GoldenPath(name));
  constexpr char kDigits[] = "0123456789abcdef";
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    out << kDigits[byte >> 4] << kDigits[byte & 15] << (i % 16 == 15 || i + 1 == bytes.size() ? '\n' : ' ');
  }
}

// The record's bytes are those of the file, and read back they give the record.
template <class R>
void CheckGolden(const R& record, const std::string& name) {
  const char* write = std::getenv("TSLBL_WRITE_GOLDEN");
  if (write != nullptr && std::string(write) == "1") WriteGolden(name, ToBytes(record));
  const std::string golden = GoldenBytes(name);
  EXPECT_EQ(golden, ToBytes(record)) << name;
  EXPECT_TRUE(FromBytes<R>(golden) == record) << name;
}

// Every beginning of a record's bytes is refused.
template <class R>
void CheckCutShort(const R& record) {
  const std::string whole = ToBytes(record);
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_NE(ReadFailure<R>(whole.substr(0, length)), "") << length << " of " << whole.size() << " bytes";
}

}  // namespace tests
