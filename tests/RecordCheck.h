#pragma once
// What every record must do, checked for one record at a time.
//
//   TEST(AllRecords, BaselineParams) {
//     CheckRecord<BaselineParams>({
//         {"Auto", [](auto& r) { r.Auto = false; }},
//         {"SegSize", [](auto& r) { r.SegSize = 7; }},
//     });
//   }
//   TEST(Golden, BaselineParams) { CheckGolden(SampleBaselineParams(), "BaselineParams.v1"); }
//
// Golden bytes are text files of hexadecimal bytes, tests/data/golden/NAME.hex; '#' starts
// a comment. With TSLBL_WRITE_GOLDEN=1 in the environment a current version's file is
// written from the record, to be reviewed as text; without it the record is held against
// the file.

#include <gtest/gtest.h>

#include <tslbl/records/RecordForms.h>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <type_traits>
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

// Changed, each field breaks equality and survives every form that carries it.
template <class R>
void CheckRecord(const std::vector<FieldChange<R>>& fields) {
  EXPECT_TRUE(R() == R());
  for (const auto& [field, change, forms] : fields) {
    SCOPED_TRACE(field);
    R changed;
    change(changed);
    EXPECT_FALSE(changed == R()) << "not compared";
    EXPECT_TRUE(changed == R(changed)) << "lost by a copy";
    if constexpr (std::is_base_of_v<TslCommon::ITslSerial, R>) {
      EXPECT_EQ(FromBytes<R>(ToBytes(changed)) == changed, (forms & BinaryOnly) != 0) << "binary";
    }
    if constexpr (std::is_base_of_v<TslCommon::ITslXML, R>) {
      EXPECT_EQ(FromXml<R>(ToXml(changed)) == changed, (forms & XmlOnly) != 0) << "XML";
    }
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
