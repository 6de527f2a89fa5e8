#include <gtest/gtest.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/DiverterValve.h>
#include <cmath>
#include <limits>
#include <sstream>
#include <vector>

namespace {

using namespace TslCommon;

template <class T>
std::string Written(const T& value) {
  std::ostringstream out(std::ios::binary);
  BinaryWriter writer(out);
  writer << value;
  return out.str();
}

// Reads a T over a value that it must replace, and tells whether all of it was there.
template <class T>
std::pair<T, bool> ReadFrom(const std::string& bytes, T value) {
  std::istringstream in(bytes, std::ios::binary);
  BinaryReader reader(in);
  reader >> value;
  return {value, reader.Good()};
}

std::string Raw(std::initializer_list<int> bytes) {
  std::string text;
  for (const int byte : bytes) text.push_back(static_cast<char>(byte));
  return text;
}

TEST(BinaryWriter, WritesLittleEndianBytes) {
  EXPECT_EQ(Written(true), Raw({1}));
  EXPECT_EQ(Written(false), Raw({0}));
  EXPECT_EQ(Written(std::int32_t{-2}), Raw({0xFE, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(Written(std::uint32_t{0x01020304}), Raw({4, 3, 2, 1}));
  EXPECT_EQ(Written(std::int64_t{0x0102030405060708}), Raw({8, 7, 6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(Written(1.5), Raw({0, 0, 0, 0, 0, 0, 0xF8, 0x3F}));
}

TEST(BinaryWriter, CountsTheUtf8BytesOfAString) {
  EXPECT_EQ(Written(std::wstring()), Raw({0, 0, 0, 0}));
  EXPECT_EQ(Written(std::wstring(L"\u00B5V")), Raw({3, 0, 0, 0, 0xC2, 0xB5, 'V'}));
}

TEST(BinaryWriter, CountsTheValuesOfAVector) {
  EXPECT_EQ(Written(std::vector<double>{}), Raw({0, 0, 0, 0}));
  EXPECT_EQ(Written(std::vector<double>{1.5}), Raw({1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F}));
}

TEST(BinaryWriter, WritesAValveAsItsState) {
  EXPECT_EQ(Written(DiverterValve(DiverterValve::kToWaste)), Raw({1, 0, 0, 0}));
}

TEST(BinaryStream, ValuesInARowComeBackInTheirOrder) {
  std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
  BinaryWriter writer(stream);
  writer << true << std::int32_t{-7} << std::uint32_t{7} << std::int64_t{-9000000000} << 0.1
         << std::wstring(L"text") << std::vector<double>{1.0, 2.0} << DiverterValve(0);
  bool flag = false;
  std::int32_t i = 0;
  std::uint32_t u = 0;
  std::int64_t l = 0;
  double d = 0.0;
  std::wstring text;
  std::vector<double> values;
  DiverterValve valve;
  BinaryReader reader(stream);
  reader >> flag >> i >> u >> l >> d >> text >> values >> valve;
  EXPECT_TRUE(reader.Good());
  EXPECT_EQ(std::tuple(flag, i, u, l, d), std::tuple(true, -7, 7u, -9000000000, 0.1));
  EXPECT_EQ(text, L"text");
  EXPECT_EQ(values, (std::vector<double>{1.0, 2.0}));
  EXPECT_EQ(valve, DiverterValve(DiverterValve::kToSource));
}

TEST(BinaryStream, EveryKindOfStringSurvives) {
  std::wstring control;
  for (wchar_t c = 0; c < 0xA0; ++c) control += c;
  for (const std::wstring& text :
       {std::wstring(), std::wstring(L" \t leading and trailing \r\n"), control,
        std::wstring(L"\U0001F9EA\uFFFF"), std::wstring(L"_x0020_ <&>\"'"), std::wstring(200000, L'\u20AC')})
    EXPECT_EQ(ReadFrom<std::wstring>(Written(text), L"old").first, text);
}

TEST(BinaryStream, EveryKindOfDoubleSurvivesBitForBit) {
  using Limits = std::numeric_limits<double>;
  const std::vector<double> values = {
      0.0, -0.0, 0.1, Limits::max(), Limits::denorm_min(), Limits::infinity()};
  const auto [read, good] = ReadFrom<std::vector<double>>(Written(values), {1.0});
  EXPECT_EQ(read, values);
  EXPECT_TRUE(std::signbit(read[1]));
  EXPECT_TRUE(std::isnan(ReadFrom(Written(Limits::quiet_NaN()), 1.0).first));
}

TEST(BinaryStream, AVectorOfManyPiecesSurvives) {
  std::vector<double> values(100003);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i);
  EXPECT_EQ(ReadFrom<std::vector<double>>(Written(values), {}).first, values);
}

TEST(BinaryReader, TakesAnyByteButZeroForTrue) {
  EXPECT_TRUE(ReadFrom(Raw({2}), false).first);
  EXPECT_FALSE(ReadFrom(Raw({0}), true).first);
}

// Cut off anywhere, a value reads as zero or empty and the stream as bad.
template <class T>
void CheckCutShort(const T& value, const T& old) {
  const std::string whole = Written(value);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto [read, good] = ReadFrom(whole.substr(0, length), old);
    EXPECT_FALSE(good) << length;
    EXPECT_TRUE(read == T{}) << length;
  }
}

TEST(BinaryReader, YieldsZerosPastTheEnd) {
  CheckCutShort(true, true);
  CheckCutShort(std::int32_t{-1}, 5);
  CheckCutShort(std::uint32_t{0xFFFFFFFF}, 5u);
  CheckCutShort(std::int64_t{-1}, std::int64_t{5});
  CheckCutShort(0.1, 5.0);
  CheckCutShort(std::wstring(L"text \u20AC"), std::wstring(L"old"));
  CheckCutShort(std::vector<double>{1.0, 2.0, 3.0}, std::vector<double>{5.0});
}

TEST(BinaryReader, StaysBadOnceAValueWasCutShort) {
  std::istringstream in(Raw({1, 2, 3}), std::ios::binary);
  BinaryReader reader(in);
  std::uint32_t four = 5, none = 6;
  std::wstring text = L"old";
  reader >> four >> none >> text;
  EXPECT_FALSE(reader.Good());
  EXPECT_EQ(std::tuple(four, none, text), std::tuple(0u, 0u, std::wstring()));
}

TEST(BinaryReader, IsGoodAtTheVeryEnd) {
  EXPECT_TRUE(ReadFrom(Raw({1, 0, 0, 0}), 0u).second);
  EXPECT_TRUE(ReadFrom<std::wstring>(Raw({0, 0, 0, 0}), L"old").second);
}

TEST(BinaryReader, DoesNotTrustALength) {
  const std::string garbage = Raw({0xFF, 0xFF, 0xFF, 0xFF}) + std::string(1000, 'x');
  const auto [text, textGood] = ReadFrom<std::wstring>(garbage, L"old");
  EXPECT_FALSE(textGood);
  EXPECT_LE(text.capacity(), 1000u);
  const auto [values, valuesGood] = ReadFrom<std::vector<double>>(garbage, {1.0});
  EXPECT_FALSE(valuesGood);
  EXPECT_LE(values.capacity() * sizeof(double), 1u << 20);
}

TEST(BinaryReader, KeepsTheTextAroundMalformedUtf8) {
  EXPECT_EQ(ReadFrom<std::wstring>(Raw({3, 0, 0, 0, 'a', 0xFF, 'b'}), L"").first, L"a\uFFFDb");
}

struct Pair final : ITslSerial {
  std::uint32_t a = 0, b = 0;
  using ITslSerial::Serialize;
  void Serialize(BinaryReader& reader) override { reader >> a >> b; }
  void Serialize(BinaryWriter& writer) const override { writer << a << b; }
};

TEST(BinaryStream, ARecordWritesAndReadsItself) {
  Pair pair;
  pair.a = 1, pair.b = 2;
  Pair read;
  std::istringstream in(Written(pair), std::ios::binary);
  BinaryReader reader(in);
  reader >> read;
  EXPECT_EQ(std::pair(read.a, read.b), std::pair(1u, 2u));
}

TEST(BinaryReader, RaisesForARecordCutShort) {
  std::istringstream in(Raw({1, 0, 0, 0, 2}), std::ios::binary);
  BinaryReader reader(in);
  Pair pair;
  try {
    reader >> pair;
    FAIL() << "nothing was raised";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(), "Unexpected end of stream.");
  }
}

TEST(ITslSerial, DumpsNothingByDefault) {
  std::wstring text = L"replaced";
  Pair().Serialize(text);
  EXPECT_EQ(text, L"");
}

}  // namespace
