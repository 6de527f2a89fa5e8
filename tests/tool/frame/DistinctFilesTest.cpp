#include <gtest/gtest.h>

#include <tool/TempFile.h>
#include <tool/frame/DistinctFiles.h>
#include <tool/frame/UsageError.h>

namespace tests {
namespace {

using TslTool::RequireDistinct;

TEST(DistinctFiles, AreToldWithTheOptionWhereTheyAreOne) {
  const TempFile file("a.txt", "");
  try {
    RequireDistinct("--plot", file.Path(), file.Path(), "the input");
    FAIL();
  } catch (const TslTool::UsageError& error) {
    EXPECT_EQ(error.what(), "--plot: " + file.Path() + " is the input");
  }
}

TEST(DistinctFiles, MayBeOthersOrNone) {
  const TempFile file("a.txt", "");
  EXPECT_NO_THROW(RequireDistinct("--plot", file.Path(), file.Path() + "2", "the input"));
  EXPECT_NO_THROW(RequireDistinct("--plot", file.Path(), "", "the input"));
  EXPECT_NO_THROW(RequireDistinct("--plot", "", file.Path(), "the input"));
  EXPECT_NO_THROW(RequireDistinct("--plot", "-", "-", "the --output as well"));
}

}  // namespace
}  // namespace tests
