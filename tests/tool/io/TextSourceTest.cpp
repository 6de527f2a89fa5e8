#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include <tool/TempFile.h>
#include <tool/io/LineReader.h>
#include <tool/io/TextReading.h>
#include <tool/io/TextSource.h>

namespace tests {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;
using TslTool::ByteSource;
using TslTool::Encoding;
using TslTool::EncodingOf;
using TslTool::TextSource;

// All text of a file with these bytes, read in pieces of `size`.
std::string TextOf(std::string_view bytes, std::size_t size = 4096) {
  const TempFile file("text", bytes);
  ByteSource bytesOfFile(file.Path());
  TextSource source(bytesOfFile);
  std::string text, piece(size, '\0');
  while (const std::size_t count = source.Read(piece.data(), size)) text.append(piece, 0, count);
  return text;
}

std::vector<std::string> LinesIn(std::string_view bytes) {
  const TempFile file("text", bytes);
  ByteSource source(file.Path());
  TslTool::LineReader reader(source);
  std::vector<std::string> lines;
  for (std::string_view line; reader.Next(line);) lines.emplace_back(line);
  return lines;
}

TEST(Encoding, IsKnownByItsMark) {
  EXPECT_EQ(EncodingOf("\xff\xfe"
                       "1\0"sv),
            Encoding::Utf16LE);
  EXPECT_EQ(EncodingOf("\xfe\xff\0001"sv), Encoding::Utf16BE);
  EXPECT_EQ(EncodingOf("\xef\xbb\xbf"
                       "1"),
            Encoding::EightBit);
}

TEST(Encoding, IsKnownByZerosAtEveryOtherPlace) {
  EXPECT_EQ(EncodingOf("1\0 \0"sv), Encoding::Utf16LE);
  EXPECT_EQ(EncodingOf("\0001\0 "sv), Encoding::Utf16BE);
  for (const std::string_view other :
       {""sv, "1"sv, "1\0"sv, "100 5\n"sv, "1\0\0\0"sv, "ab\0d"sv, "\0\0\0\0"sv})
    EXPECT_EQ(EncodingOf(other), Encoding::EightBit) << other;
}

TEST(TextSource, GivesUtf8WithoutMark) {
  EXPECT_EQ(TextOf("\xef\xbb\xbf"
                   "100 5\n"),
            "100 5\n");
  for (const bool bigEndian : {false, true}) {
    EXPECT_EQ(TextOf(Utf16("100 5\n", bigEndian, true)), "100 5\n");
    EXPECT_EQ(TextOf(Utf16("100 5\n", bigEndian, false)), "100 5\n");
    EXPECT_EQ(TslTool::HeadText(Utf16("100", bigEndian, true)), "100");
  }
}

TEST(TextSource, DecodesCharactersOfEveryLength) {
  // a, e with acute, euro sign, a clef beyond the first plane
  const auto units =
      "\xff\xfe"
      "a\0\xe9\0\xac\x20\x34\xd8\x1e\xdd"sv;
  for (const std::size_t size : {8u, 9u, 4096u})
    EXPECT_EQ(TextOf(units, size), "a\xc3\xa9\xe2\x82\xac\xf0\x9d\x84\x9e") << size;
}

TEST(TextSource, ShowsWhatIsNoCharacter) {
  const std::string none = "\xef\xbf\xbd";
  EXPECT_EQ(TextOf("\xff\xfe\x34\xd8"
                   "a\0"sv),
            none + "a");
  EXPECT_EQ(TextOf("\xff\xfe\x1e\xdd"
                   "a\0"sv),
            none + "a");
  EXPECT_EQ(TextOf("\xff\xfe"
                   "a\0b"sv),
            "a" + none);
  EXPECT_EQ(TextOf("\xff\xfe"
                   "a\0\x34\xd8"sv),
            "a" + none);
  EXPECT_EQ(TextOf("\xff\xfe"
                   "a\0\x34\xd8"
                   "b"sv),
            "a" + none + none);
}

TEST(TextSource, MakesALoneCrTheEndOfALine) {
  for (const std::size_t size : {8u, 9u, 4096u}) {
    EXPECT_EQ(TextOf("aaaaaaa\rb\rc\r", size), "aaaaaaa\nb\nc\n") << size;
    EXPECT_EQ(TextOf("a\r\rb", size), "a\n\nb") << size;
  }
  for (const std::string text : {"aaaaaaa\r\nb\r\n", "aaaaaaaa\r\nb\r\n", "aaaaaa\r\n\r\nb"})
    EXPECT_THAT(LinesIn(TextOf(text, 8)), testing::ContainerEq(LinesIn(text))) << text;
}

TEST(LineReader, CutsAtEveryKindOfEnd) {
  EXPECT_THAT(LinesIn("a\nb\r\nc\rd\n\ne"), ElementsAre("a", "b", "c", "d", "", "e"));
  EXPECT_THAT(LinesIn(Utf16("a\r\nb\rc\n", false, true)), ElementsAre("a", "b", "c"));
}

}  // namespace
}  // namespace tests
