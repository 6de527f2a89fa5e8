#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/TempFile.h>
#include <tool/io/RecordFile.h>

namespace tests {
namespace {

using namespace TslTool;

constexpr RecordKind kKind = {.name = "tune", .largest = 10};

std::string ErrorOf(const std::function<void()>& read) {
  try {
    read();
  } catch (const InputError& error) {
    return error.Place() + "|" + error.Reason();
  }
  return "";
}

TEST(RecordFile, IsReadUpToTheLargestOfItsKind) {
  const TempFile file("a.tune", "0123456789");
  EXPECT_EQ(ReadRecordFile(file.Path(), kKind), "0123456789");
  file.Write("0123456789x");
  EXPECT_EQ(ErrorOf([&] { ReadRecordFile(file.Path(), kKind); }), "|the file is too large for a tune");
}

TEST(RecordFile, IsRefusedIfItIsEmpty) {
  const TempFile file("a.tune", "");
  EXPECT_EQ(ErrorOf([&] { ReadRecordFile(file.Path(), kKind); }), "|the file is empty");
}

TEST(RecordFile, IsADocumentByItsFirstCharacter) {
  for (const char* bytes : {"<a/>", " \r\n\t<a/>", "\xEF\xBB\xBF<a/>", "\xFF\xFE<", "\xFE\xFF"})
    EXPECT_TRUE(IsDocument(bytes)) << bytes;
  for (const char* bytes : {"", " ", "a<", "\x03"}) EXPECT_FALSE(IsDocument(bytes)) << bytes;
}

TEST(WrittenDocument, IsReadInWhateverCodingItHas) {
  const std::string utf16("\xFF\xFE<\0a\0>\0\xE4\0<\0/\0a\0>\0", 18);
  for (const std::string& bytes : {std::string("<a>\xC3\xA4</a>"), utf16}) {
    const WrittenDocument document("f", bytes);
    EXPECT_STREQ(document.Root().child_value(), "\xC3\xA4");
    EXPECT_EQ(document.Text(), L"<a>\u00E4</a>");
  }
}

TEST(WrittenDocument, RefusesBytesThatAreNoCharacters) {
  EXPECT_EQ(ErrorOf([] { WrittenDocument("f", "<a>\n<b>\xE9</b></a>"); }),
            "line 2|holds a byte that is not UTF-8");
}

TEST(WrittenDocument, LeavesWhatIsNotWellFormedToTheReader) {
  EXPECT_EQ(WrittenDocument("f", "<a><b></a>").Text(), L"<a><b></a>");
}

TEST(RequireFinite, RefusesANumberThatIsNone) {
  EXPECT_EQ(ErrorOf([] { RequireFinite("f", L"<a><b>nan</b></a>"); }),
            "a/b|\"nan\" is no number that an instrument takes");
  EXPECT_EQ(ErrorOf([] { RequireFinite("f", L"<a b=\"-inf\" />"); }),
            "a@b|\"-inf\" is no number that an instrument takes");
}

TEST(RequireFinite, TakesTextsAndNumbers) {
  RequireFinite("f", L"<a><Name>nan</Name><Desc>inf</Desc><b c=\"1e300\">-5</b></a>");
}

}  // namespace
}  // namespace tests
