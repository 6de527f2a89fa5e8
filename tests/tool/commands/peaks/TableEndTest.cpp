#include <gtest/gtest.h>

#include <string>

#include <tool/TempFile.h>
#include <tool/commands/peaks/TableEnd.h>
#include <tool/frame/InputError.h>

namespace tests {
namespace {

const std::string kHead = "scan\tpeak\n";

std::optional<TslTool::TableEnd> EndOf(const std::string& text) {
  const TempFile file("table.tsv.part", text);
  return TslTool::FindTableEnd(file.Path(), kHead);
}

std::string ErrorOf(const std::string& text) {
  try {
    EndOf(text);
  } catch (const TslTool::InputError& error) {
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

TEST(TableEnd, IsTheLastScanBehindWhichAnotherOneBegins) {
  const auto end = EndOf(kHead + "3\ta\n7\tb\n7\tc\n8\td\n");
  ASSERT_TRUE(end);
  EXPECT_EQ(end->scan, 7U);
  EXPECT_EQ(end->first, 3U);
  EXPECT_EQ(end->bytes, kHead.size() + 4);
  EXPECT_EQ(end->rows, "7\tb\n7\tc\n");
}

TEST(TableEnd, DoesNotCountARowThatWasCut) {
  const auto end = EndOf(kHead + "3\ta\n7\tb\n8");
  ASSERT_TRUE(end);
  EXPECT_EQ(end->scan, 3U);
  EXPECT_EQ(end->rows, "3\ta\n");
}

TEST(TableEnd, IsNoneWithoutAWholeScan) {
  for (const std::string& text : {std::string(), kHead.substr(0, 5), kHead, kHead + "3\ta\n3\tb\n"})
    EXPECT_FALSE(EndOf(text)) << text;
}

TEST(TableEnd, RefusesWhatIsNoTable) {
  EXPECT_EQ(ErrorOf("something else entirely\n"), "line 1: is not the head of a peak table");
  EXPECT_EQ(ErrorOf(kHead + "3\ta\nthree\tb\n"), "line 3: is no row of a peak table");
  EXPECT_EQ(ErrorOf(kHead + "3\n"), "line 2: is no row of a peak table");
}

}  // namespace
}  // namespace tests
