#include <gtest/gtest.h>

#include <tslbl/closed/common/Text.h>
#include <cmath>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <vector>

namespace {

using namespace TslCommon;

constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(EqualsIgnoreCase, TakesLettersOfEitherCaseForEqual) {
  EXPECT_TRUE(EqualsIgnoreCase(L"", L""));
  EXPECT_TRUE(EqualsIgnoreCase(L"Top Hat", L"tOP hAT"));
  EXPECT_TRUE(EqualsIgnoreCase(L"az AZ 09", L"AZ az 09"));
}

TEST(EqualsIgnoreCase, KeepsDifferentTextsApart) {
  EXPECT_FALSE(EqualsIgnoreCase(L"Auto", L"Auto "));
  EXPECT_FALSE(EqualsIgnoreCase(L"Auto", L"Aut"));
  EXPECT_FALSE(EqualsIgnoreCase(L"@", L"`"));
  EXPECT_FALSE(EqualsIgnoreCase(L"[", L"{"));
}

TEST(EqualsIgnoreCase, FoldsNothingBeyondAscii) { EXPECT_FALSE(EqualsIgnoreCase(L"\u00C4", L"\u00E4")); }

struct Encoded {
  std::wstring text;
  std::string bytes;
};
const std::vector<Encoded> kEncodings = {
    {L"", ""},
    {L"abc\r\n\t", "abc\r\n\t"},
    {std::wstring(L"a\0b", 3), std::string("a\0b", 3)},
    {L"\x7F", "\x7F"},
    {L"\u0080", "\xC2\x80"},
    {L"\u07FF", "\xDF\xBF"},
    {L"\u0800", "\xE0\xA0\x80"},
    {L"\uD7FF\uE000", "\xED\x9F\xBF\xEE\x80\x80"},
    {L"\uFFFF", "\xEF\xBF\xBF"},
    {L"\U00010000", "\xF0\x90\x80\x80"},
    {L"\U0001F9EA", "\xF0\x9F\xA7\xAA"},
    {L"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
};

TEST(Utf8, EncodesAndDecodesEveryLength) {
  for (const auto& [text, bytes] : kEncodings) {
    EXPECT_EQ(ToUtf8(text), bytes);
    EXPECT_EQ(FromUtf8(bytes), text);
  }
}

TEST(Utf8, EveryCharacterSurvives) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    const std::wstring text(1, static_cast<wchar_t>(c));
    ASSERT_EQ(FromUtf8(ToUtf8(text)), text) << std::hex << static_cast<std::uint32_t>(c);
  }
}

TEST(Utf8, WritesTheReplacementForWhatIsNoCharacter) {
  EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0xDFFF))), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0x110000))), "\xEF\xBF\xBD");
}

TEST(Utf8, LosesOneByteOfAMalformedSequenceAndNoMore) {
  const std::vector<Encoded> cases = {
      {L"\uFFFDa",
       "\x80"
       "a"},                // continuation without a lead
      {L"\uFFFD", "\xC3"},  // cut short
      {L"\uFFFDa",
       "\xC3"
       "a"},                                              // lead without its continuation
      {L"\uFFFD\uFFFD", "\xC0\x80"},                      // overlong
      {L"\uFFFD\uFFFD\uFFFD", "\xE0\x80\x80"},            // overlong
      {L"\uFFFD\uFFFD\uFFFD", "\xED\xA0\x80"},            // a surrogate
      {L"\uFFFD\uFFFD\uFFFD\uFFFD", "\xF4\x90\x80\x80"},  // beyond the last character
      {L"\uFFFD\uFFFD", "\xFF\xFE"},
  };
  for (const auto& [text, bytes] : cases) EXPECT_EQ(FromUtf8(bytes), text);
}

TEST(NarrowToWide, ReadsUtf8) { EXPECT_EQ(TslNarrowToWideStr("\xC2\xB5V"), L"\u00B5V"); }

std::wstring Printf(double value) {
  char buffer[64];
  const int length = std::snprintf(buffer, sizeof buffer, "%.6g", value);
  return {buffer, buffer + length};
}

TEST(DoubleToText, IsWhatPrintfGives) {
  for (const double value : {0.0,
                             -0.0,
                             1.0,
                             -1.0,
                             0.1,
                             1.2345678,
                             123456.0,
                             1234567.0,
                             999999.4,
                             999999.5,
                             0.0001,
                             0.00001,
                             1e5,
                             1e6,
                             1e20,
                             1e100,
                             6.02214076e23,
                             1.0 / 3.0,
                             kMax,
                             -kMax,
                             std::numeric_limits<double>::min(),
                             std::numeric_limits<double>::denorm_min(),
                             kInfinity,
                             -kInfinity,
                             kNaN})
    EXPECT_EQ(ToText(value), Printf(value));
}

TEST(DoubleToText, IsWhatPrintfGivesForValuesOfEverySize) {
  std::mt19937_64 random(20250601);
  std::uniform_real_distribution<double> exponent(-320.0, 308.0), mantissa(-10.0, 10.0);
  for (int i = 0; i < 20000; ++i) {
    const double value = mantissa(random) * std::pow(10.0, exponent(random));
    ASSERT_EQ(ToText(value), Printf(value));
  }
}

TEST(DoubleToText, KeepsSixSignificantDigits) {
  double read = 0.0;
  ASSERT_TRUE(FromText(ToText(1.2345678), read));
  EXPECT_EQ(read, 1.23457);
}

TEST(DoubleToFullText, ReadsBackToTheSameDouble) {
  EXPECT_EQ(ToFullText(0.1), L"0.10000000000000001");
  EXPECT_EQ(ToFullText(250.0), L"250");
  for (const double value : {1.0 / 3.0, -kMax, std::numeric_limits<double>::denorm_min(), 6.02214076e23}) {
    double read = 0.0;
    EXPECT_TRUE(FromText(ToFullText(value), read) && read == value) << value;
  }
}

TEST(IntegerToText, IsDecimal) {
  EXPECT_EQ(ToText(std::int32_t{0}), L"0");
  EXPECT_EQ(ToText(std::numeric_limits<std::int32_t>::min()), L"-2147483648");
  EXPECT_EQ(ToText(std::numeric_limits<std::uint32_t>::max()), L"4294967295");
  EXPECT_EQ(ToText(std::numeric_limits<std::int64_t>::min()), L"-9223372036854775808");
  EXPECT_EQ(ToWStr(std::numeric_limits<std::int64_t>::max()), L"9223372036854775807");
}

// What a wide stream in its classic locale makes of a text; `from` where it reads nothing.
template <class T>
T Streamed(const std::wstring& text, T from) {
  std::wistringstream stream(text);
  stream.imbue(std::locale::classic());
  T value = from;
  stream >> value;
  // A stream gives 0 for what is no number, and the nearest end for what is out of range.
  return stream.fail() && value == T{} ? from : value;
}

template <class T>
T Read(const std::wstring& text, T from) {
  T value = from;
  const bool found = FromText(text, value);
  EXPECT_TRUE(found || value == from) << "a value was given, but not reported";
  return value;
}

template <class T>
class IntegerFromText : public testing::Test {};
using Integers = testing::Types<std::int32_t, std::uint32_t, std::int64_t>;
TYPED_TEST_SUITE(IntegerFromText, Integers);

TYPED_TEST(IntegerFromText, TakesWhatAStreamTakes) {
  for (const wchar_t* text : {L"",
                              L" ",
                              L"0",
                              L"7",
                              L"+7",
                              L"-7",
                              L"- 7",
                              L"+-7",
                              L"-+7",
                              L"--7",
                              L" \t\r\n\v\f42",
                              L"42 ",
                              L"42abc",
                              L"abc",
                              L"abc42",
                              L"3.7",
                              L".5",
                              L"1e3",
                              L"1,234",
                              L"0x10",
                              L"010",
                              L"00012",
                              L"-0",
                              L"12 34",
                              L"inf",
                              L"nan",
                              L"_1",
                              L"2147483647",
                              L"2147483648",
                              L"-2147483648",
                              L"-2147483649",
                              L"4294967295",
                              L"4294967296",
                              L"-4294967295",
                              L"-4294967296",
                              L"9223372036854775807",
                              L"9223372036854775808",
                              L"-9223372036854775808",
                              L"-9223372036854775809",
                              L"99999999999999999999999999",
                              L"-99999999999999999999999999",
                              L"\u00A05",
                              L"\u0665",
                              L"\uFF15",
                              L"5\u00A0"})
    EXPECT_EQ(Read<TypeParam>(text, 77), Streamed<TypeParam>(text, 77)) << ToUtf8(text);
}

TEST(DoubleFromText, TakesWhatAStreamTakes) {
  for (const wchar_t* text : {L"",
                              L" ",
                              L"0",
                              L"-0",
                              L"1",
                              L"+1.5",
                              L"-1.5",
                              L"- 1.5",
                              L"+-1",
                              L"1.",
                              L".5",
                              L"-.5",
                              L".",
                              L"-",
                              L"+",
                              L"e5",
                              L".e5",
                              L"1e5",
                              L"1E5",
                              L"1e+5",
                              L"1e-5",
                              L"1e5.5",
                              L"1e5e5",
                              L"1.2.3",
                              L"1.5abc",
                              L"1.5 abc",
                              L"abc",
                              L"\t\n 2.5",
                              L"1,5",
                              L"1-5",
                              L"1+5",
                              L"inf",
                              L"-inf",
                              L"infinity",
                              L"nan",
                              L"0x10",
                              L"0x1p3",
                              L"1.7976931348623157e308",
                              L"2e308",
                              L"-2e308",
                              L"1e400",
                              L"-1e+400",
                              L"1e99999999999999999999",
                              L"5e-324",
                              L"2.2250738585072011e-308",
                              L"0.1",
                              L"3.14159265358979323846264338327950288",
                              L"123456789012345678901234567890",
                              L"\u00A01",
                              L"1\u00A0",
                              L"00001.50000",
                              L"1e0",
                              L"1e-0",
                              L"1e00005"})
    EXPECT_EQ(Read(text, 77.0), Streamed(text, 77.0)) << ToUtf8(text);
}

TEST(DoubleFromText, ReadsBackEveryFullPrecisionText) {
  std::mt19937_64 random(20250602);
  std::uniform_real_distribution<double> exponent(-300.0, 300.0);
  for (int i = 0; i < 5000; ++i) {
    const double value = std::pow(10.0, exponent(random));
    std::wostringstream out;
    out.precision(17);
    out << value;
    ASSERT_EQ(Read(out.str(), 0.0), value);
  }
}

// A stream refuses a number whose exponent has no digits and forgets the digits before it;
// "5 eV" typed without its blank is still five.
TEST(DoubleFromText, AnExponentWithoutDigitsIsForeignText) {
  EXPECT_EQ(Read(L"5eV", 77.0), 5.0);
  EXPECT_EQ(Read(L"1.5e", 77.0), 1.5);
  EXPECT_EQ(Read(L"1.5e+", 77.0), 1.5);
  EXPECT_EQ(Streamed(L"5eV", 77.0), 77.0);
}

// A stream takes these for 0 as well, which the comparison above cannot tell from nothing.
TEST(DoubleFromText, TooSmallANumberIsZero) {
  EXPECT_EQ(Read(L"1e-400", 77.0), 0.0);
  EXPECT_EQ(Read(L"-1e-400", 77.0), 0.0);
  EXPECT_EQ(Read(L"1e-99999999999999999999", 77.0), 0.0);
  EXPECT_EQ(Read(L"0." + std::wstring(400, L'0') + L"1", 77.0), 0.0);
  EXPECT_EQ(Read(L"0." + std::wstring(800, L'0') + L"1e+300", 77.0), 0.0);
}

TEST(DoubleFromText, TooLargeANumberIsTheLargest) {
  EXPECT_EQ(Read(std::wstring(400, L'9'), 77.0), kMax);
  EXPECT_EQ(Read(L"-" + std::wstring(400, L'9'), 77.0), -kMax);
  EXPECT_EQ(Read(std::wstring(800, L'9') + L".5e-300", 77.0), kMax);
}

TEST(FromText, LeavesTheValueAloneWhereThereIsNoNumber) {
  double value = 2.5;
  EXPECT_FALSE(FromText(L"abc", value));
  EXPECT_EQ(value, 2.5);
}

TEST(BoolToText, IsTrueOrFalse) {
  EXPECT_EQ(ToWStr(true), L"true");
  EXPECT_EQ(ToWStr(false), L"false");
}

bool ReadBool(const std::wstring& text, bool from) {
  FromWStr(text, from);
  return from;
}

TEST(BoolFromText, ReadsWordsOfEitherCaseAndNumbers) {
  for (const wchar_t* text : {L"true", L"TRUE", L"True", L"1", L"-1", L"42", L" 1"})
    EXPECT_TRUE(ReadBool(text, false)) << ToUtf8(text);
  for (const wchar_t* text : {L"false", L"FALSE", L"0", L" 0", L"00"})
    EXPECT_FALSE(ReadBool(text, true)) << ToUtf8(text);
}

TEST(BoolFromText, LeavesTheValueAloneForAnotherText) {
  for (const wchar_t* text : {L"", L"yes", L"truely", L"on"}) {
    EXPECT_TRUE(ReadBool(text, true)) << ToUtf8(text);
    EXPECT_FALSE(ReadBool(text, false)) << ToUtf8(text);
  }
}

TEST(Int64FromText, ReadsANumberAndLeavesTheValueAloneForAnotherText) {
  std::int64_t value = 5;
  FromWStr(L"-9000000000", value);
  EXPECT_EQ(value, -9000000000);
  FromWStr(L"none", value);
  EXPECT_EQ(value, -9000000000);
}

}  // namespace
