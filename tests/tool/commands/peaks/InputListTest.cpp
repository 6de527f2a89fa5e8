#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/commands/peaks/InputList.h>
#include <tool/frame/InputError.h>

namespace tests {
namespace {

using Names = std::vector<std::string>;

std::string ErrorOf(const std::string& list) {
  try {
    TslTool::ReadInputList(list);
  } catch (const TslTool::InputError& e) {
    return e.what();
  }
  return "";
}

TEST(InputList, HasANameALineWhateverItsEnd) {
  for (const char* text : {"a b.mzML\nc.txt\n", "a b.mzML\r\nc.txt\r\n", "a b.mzML\nc.txt",
                           "\xef\xbb\xbf"
                           "a b.mzML\n\n \t\n# d.txt\nc.txt\n"})
    EXPECT_EQ(TslTool::ReadInputList(TempFile("list", text).Path()), (Names{"a b.mzML", "c.txt"})) << text;
}

TEST(InputList, ANameMayBeginWithASignOrABlank) {
  const TempFile list("list", "./#a.txt\n b.txt\n");
  EXPECT_EQ(TslTool::ReadInputList(list.Path()), (Names{"./#a.txt", " b.txt"}));
}

TEST(InputList, ThatNamesNothingOrCannotBeReadIsAnError) {
  const TempFile empty("list", "# nothing\n\n");
  EXPECT_EQ(ErrorOf(empty.Path()), empty.Path() + ": names no input");
  const TempFile binary("list", std::string_view("a.txt\nb\0c\n", 10));
  EXPECT_EQ(ErrorOf(binary.Path()), binary.Path() + ": line 2: holds a zero byte; it is no list of names");
  EXPECT_EQ(ErrorOf("/no/such"), "/no/such: cannot be opened: No such file or directory");
  EXPECT_EQ(ErrorOf(empty.Folder()), empty.Folder() + ": is a folder, not a file");
}

}  // namespace
}  // namespace tests
