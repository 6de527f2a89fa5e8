#include <gtest/gtest.h>

#include <string>

#include <tool/frame/Utf8.h>

namespace tests {
namespace {

using TslTool::FirstCharacter;
using TslTool::IsUtf8;
using TslTool::ToUtf8;

TEST(Utf8, TheFirstCharacterHasItsCodeAndItsLength) {
  struct Case {
    const char* text;
    std::size_t bytes;
    char32_t code;
  };
  for (const Case& c :
       {Case{"Az", 1, U'A'}, Case{"\xc3\xa4z", 2, U'\u00e4'}, Case{"\xe2\x80\x93z", 3, U'\u2013'},
        Case{"\xf0\x9f\xa7\xaaz", 4, U'\U0001f9ea'}, Case{"\xed\x9f\xbf", 3, 0xd7ff},
        Case{"\xee\x80\x80", 3, 0xe000}, Case{"\xf4\x8f\xbf\xbf", 4, 0x10ffff}}) {
    const auto character = FirstCharacter(c.text);
    EXPECT_TRUE(character.isValid) << c.text;
    EXPECT_EQ(character.bytes, c.bytes) << c.text;
    EXPECT_EQ(character.code, c.code) << c.text;
  }
}

TEST(Utf8, OfWhatIsNotValidOneByteIsTaken) {
  for (const char* text : {"\xe4z", "\x9bz", "\xc3", "\xe2\x80", "\xc0\x8a", "\xe0\x80\x9b", "\xed\xa0\x80",
                           "\xf4\x90\x80\x80", "\xff\xfe"}) {
    EXPECT_FALSE(FirstCharacter(text).isValid) << text;
    EXPECT_EQ(FirstCharacter(text).bytes, 1U) << text;
  }
}

TEST(Utf8, ATextIsValidIfAllOfItIs) {
  for (const char* text : {"", "scan=1", "Fl\xc3\xa4", "\xf0\x9f\xa7\xaa"}) EXPECT_TRUE(IsUtf8(text)) << text;
  for (const char* text : {"\xe4", "scan=1\xff", "\xc3\xa4\xc3", "a\xed\xa0\x80"}) EXPECT_FALSE(IsUtf8(text));
}

TEST(Utf8, OtherTextIsTakenForLatin1) {
  EXPECT_EQ(ToUtf8("Fl\xe4"), "Fl\xc3\xa4");
  EXPECT_EQ(ToUtf8("\x80\xbf\xc0\xff"), "\xc2\x80\xc2\xbf\xc3\x80\xc3\xbf");
  for (const char* text : {"", "scan=1", "Fl\xc3\xa4"}) EXPECT_EQ(ToUtf8(text), text);
}

}  // namespace
}  // namespace tests
