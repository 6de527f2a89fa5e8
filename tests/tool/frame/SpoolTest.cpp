#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tool/ToolRun.h>
#include <tool/frame/Spool.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<std::string> LinesIn(TslTool::Spool& spool) {
  std::vector<std::string> lines;
  spool.ForEachLine([&](std::string_view line) { lines.emplace_back(line); });
  return lines;
}

TEST(Spool, GivesItsLinesBackInTheirOrder) {
  const TempFile folder("x", "");
  TslTool::Spool spool(folder.Folder());
  spool.Write("a\nb");
  spool.Write("b\n\n");
  spool.Write(std::string(100000, 'c') + "\nend");
  EXPECT_THAT(LinesIn(spool), ElementsAre("a\n", "bb\n", "\n", std::string(100000, 'c') + "\n", "end"));
}

TEST(Spool, KnowsHowManyBytesItHolds) {
  const TempFile folder("x", "");
  TslTool::Spool spool(folder.Folder());
  EXPECT_EQ(spool.Size(), 0U);
  spool.Write("abc\n");
  spool.Write("d");
  EXPECT_EQ(spool.Size(), 5U);
}

TEST(Spool, EmptyGivesNoLine) {
  const TempFile folder("x", "");
  TslTool::Spool spool(folder.Folder());
  EXPECT_THAT(LinesIn(spool), testing::IsEmpty());
}

TEST(Spool, HasNoNameInItsFolder) {
  const TempFile folder("x", "");
  TslTool::Spool spool(folder.Folder());
  spool.Write("abc\n");
  EXPECT_THAT(NamesIn(folder.Folder()), ElementsAre("x"));
}

TEST(Spool, NamesTheFolderThatTakesNoFile) {
  try {
    TslTool::Spool spool("/no/such/folder");
    FAIL() << "it was made";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), StartsWith("/no/such/folder: a temporary file cannot be made: "));
    EXPECT_THAT(error.what(), HasSubstr("No such file"));
  }
}

}  // namespace
}  // namespace tests
