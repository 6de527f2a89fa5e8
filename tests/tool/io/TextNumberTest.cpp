#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include <tool/io/TextNumber.h>

namespace tests {
namespace {

using TslTool::HasUnclearComma;
using TslTool::IsNumber;
using TslTool::LooksLikeNumber;
using TslTool::ToNumber;

std::string ErrorOfNumber(const std::string& text, char decimal) {
  try {
    ToNumber(text, decimal);
  } catch (const std::runtime_error& error) {
    EXPECT_FALSE(IsNumber(text, decimal)) << text;
    return error.what();
  }
  EXPECT_TRUE(IsNumber(text, decimal)) << text;
  return "";
}

TEST(TextNumber, ReadsBothDecimalMarks) {
  for (const char* text : {"1234.5", "+1234.5", "1.2345e3", "12345E-1"})
    EXPECT_EQ(ToNumber(text, '.'), 1234.5) << text;
  for (const char* text : {"1234,5", "+1234,5", "1,2345e3", "12345E-1"})
    EXPECT_EQ(ToNumber(text, ','), 1234.5) << text;
  EXPECT_EQ(ToNumber("-,5", ','), -0.5);
}

TEST(TextNumber, RefusesWhatIsNone) {
  for (const char* text : {"", "x", "0x1F", "1.5.2", "1,5", "--1", "+-1", "1 ", "1e", "#N/A"})
    EXPECT_EQ(ErrorOfNumber(text, '.'), "\"" + std::string(text) + "\" is not a number");
  for (const char* text : {"1.5", "1,5,2", "0x1,8"})
    EXPECT_EQ(ErrorOfNumber(text, ','), "\"" + std::string(text) + "\" is not a number");
  for (const char* text : {"nan", "inf", "-Infinity"})
    EXPECT_EQ(ErrorOfNumber(text, '.'), "\"" + std::string(text) + "\" is not a finite number");
  EXPECT_EQ(ErrorOfNumber("1e999", '.'), "\"1e999\" is beyond the range of numbers");
}

TEST(TextNumber, TellsOfMarksBetweenThousands) {
  const std::string reason =
      "\" is not a number; thousands have no mark, and the decimal mark is the same in the whole file";
  for (const char* text : {"1,234", "1,234.5", "12,345,678", "-1'234.5", "1 234"})
    EXPECT_EQ(ErrorOfNumber(text, '.'), "\"" + std::string(text) + reason);
  for (const char* text : {"1.234", "1.234,5", "1 234,5"})
    EXPECT_EQ(ErrorOfNumber(text, ','), "\"" + std::string(text) + reason);
}

TEST(TextNumber, NamesAMarkThatLooksLikeABlank) {
  const std::pair<const char*, const char*> cases[] = {
      {"1\u00a0700",
       "\"1\\u00a0700\" is not a number: a no-break space stands between its digits; thousands"},
      {"1\xa0"
       "700",
       "\"1\\xa0700\" is not a number: a no-break space stands between its digits; thousands"},
      {"-12\u202f500", "\"-12\\u202f500\" is not a number: a narrow no-break space stands between"},
      {"1\u2009700", "\"1\\u2009700\" is not a number: a thin space stands between its digits; thousands"}};
  for (const auto& [text, reason] : cases) EXPECT_THAT(ErrorOfNumber(text, '.'), testing::StartsWith(reason));
}

TEST(TextNumber, KnowsWhatIsTakenForANumber) {
  for (const char* text : {"1", "-1", ".5", ",5", "+.5", "1x", "1,234.5", "nan", "-inf"})
    EXPECT_TRUE(LooksLikeNumber(text)) << text;
  for (const char* text : {"", "-", ".", "x1", "m/z", "-x", "e5"})
    EXPECT_FALSE(LooksLikeNumber(text)) << text;
}

TEST(TextNumber, KnowsACommaThatMayMarkThousands) {
  for (const char* text : {"1,234", "-12,345", "999,000"}) EXPECT_TRUE(HasUnclearComma(text)) << text;
  for (const char* text : {"1,23", "1,2345", "0,123", "1234,567", "1234", "1,234e2", ",234", "1,2x4"})
    EXPECT_FALSE(HasUnclearComma(text)) << text;
}

}  // namespace
}  // namespace tests
