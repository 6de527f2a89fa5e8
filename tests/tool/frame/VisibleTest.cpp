#include <gtest/gtest.h>

#include <string>

#include <tool/frame/Visible.h>

namespace tests {
namespace {

using TslTool::Visible;

TEST(Visible, LettersOfAllLanguagesStay) {
  for (const char* text : {"", "a b.txt",
                           "Fl\xc3\xa4"
                           "che \xe2\x80\x93 \xe6\x95\xb0.mzML",
                           "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d \xd8\xb3", "\xf0\x9f\xa7\xaa\xf4\x8f\xbf\xbd",
                           "\\x1b back\\slash", "\xc2\xa0\xed\x9f\xbf\xef\xbf\xbd"})
    EXPECT_EQ(Visible(text), text);
}

TEST(Visible, WhatControlsATerminalIsWrittenOut) {
  const std::pair<std::string, const char*> cases[] = {{"\x1b[31mred", "\\x1b[31mred"},
                                                       {"a\nb\tc\rd", "a\\nb\\tc\\rd"},
                                                       {std::string("a\0b", 3), "a\\x00b"},
                                                       {"\x7f\x07\b", "\\x7f\\x07\\x08"},
                                                       {"\xc2\x9b"
                                                        "31m",
                                                        "\\u009b31m"},
                                                       {"txt.\xe2\x80\xae"
                                                        "exe\xe2\x81\xa9",
                                                        "txt.\\u202eexe\\u2069"},
                                                       {"a\xe2\x80\xa8"
                                                        "b\xe2\x80\xa9",
                                                        "a\\u2028b\\u2029"}};
  for (const auto& [text, shown] : cases) EXPECT_EQ(Visible(text), shown);
}

TEST(Visible, BytesThatAreNoUtf8AreWrittenOut) {
  const std::pair<std::string, const char*> cases[] = {{"Fl\xe4"
                                                        "che",
                                                        "Fl\\xe4che"},
                                                       {"\x9b"
                                                        "31m",
                                                        "\\x9b31m"},
                                                       {"\xc3", "\\xc3"},
                                                       {"\xe2\x80", "\\xe2\\x80"},
                                                       {"\xc0\x8a", "\\xc0\\x8a"},
                                                       {"\xe0\x80\x9b", "\\xe0\\x80\\x9b"},
                                                       {"\xf0\x80\x80\x9b", "\\xf0\\x80\\x80\\x9b"},
                                                       {"\xed\xa0\x80", "\\xed\\xa0\\x80"},
                                                       {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
                                                       {"\xff\xfe", "\\xff\\xfe"}};
  for (const auto& [text, shown] : cases) EXPECT_EQ(Visible(text), shown);
}

TEST(Visible, KeptControlsStay) { EXPECT_EQ(Visible("a\tb\n\x1b", "\n\t"), "a\tb\n\\x1b"); }

}  // namespace
}  // namespace tests
