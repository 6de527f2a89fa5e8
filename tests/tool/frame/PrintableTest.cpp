#include <gtest/gtest.h>

#include <string>

#include <tool/frame/Printable.h>

namespace tests {
namespace {

using TslTool::Printable;

TEST(Printable, LettersOfAllLanguagesStay) {
  for (const char* text : {"", "m/z (Th)", "Intensit\xc3\xa4t", "\xd0\xb2\xd1\x80\xd0\xb5\xd0\xbc\xd1\x8f"})
    EXPECT_EQ(Printable(text), text);
}

TEST(Printable, WhatCannotBeSeenIsWrittenOut) {
  const std::pair<const char*, const char*> cases[] = {{"1\xc2\xa0"
                                                        "700",
                                                        "1\\u00a0700"},
                                                       {"1\xe2\x80\xaf"
                                                        "700",
                                                        "1\\u202f700"},
                                                       {"\xef\xbb\xbfmz", "\\ufeffmz"},
                                                       {"a\x1b[1m\t", "a\\x1b[1m\\t"}};
  for (const auto& [text, shown] : cases) EXPECT_EQ(Printable(text), shown);
}

TEST(Printable, BytesThatAreNoUtf8AreWrittenOut) { EXPECT_EQ(Printable("Intensit\xe4t"), "Intensit\\xe4t"); }

TEST(Printable, IsCutBetweenCharacters) {
  EXPECT_EQ(Printable("\xc3\xa4\xc3\xb6\xc3\xbc", 3), "\xc3\xa4\xc3\xb6\xc3\xbc");
  EXPECT_EQ(Printable("\xc3\xa4\xc3\xb6\xc3\xbc", 2), "\xc3\xa4\xc3\xb6...");
  EXPECT_EQ(Printable(std::string(41, 'a')), std::string(40, 'a') + "...");
}

}  // namespace
}  // namespace tests
