// What standard input gives is tested by its commands: commands/peaks/PeaksInputTest.cpp,
// commands/info/InfoTest.cpp.

#include <gtest/gtest.h>

#include <string>

#include <tool/frame/InputError.h>
#include <tool/io/InputPath.h>

namespace tests {
namespace {

using TslTool::InputName;
using TslTool::InputPath;

TEST(InputPath, IsTheNameOfAFile) {
  EXPECT_EQ(InputPath("a.txt"), "a.txt");
  EXPECT_EQ(InputPath("./-"), "./-");
}

TEST(InputPath, HasANameForMessages) {
  EXPECT_EQ(InputName("a.txt"), "a.txt");
  EXPECT_EQ(InputName("/dev/stdin"), "standard input");
  EXPECT_EQ(InputName(""), "demonstration run");
}

TEST(InputPath, ErrorsCallStandardInputSo) {
  try {
    TslTool::NamingStandardInput([] { throw TslTool::InputError("/dev/stdin", "line 2", "is odd"); });
    FAIL();
  } catch (const TslTool::InputError& error) {
    EXPECT_STREQ(error.what(), "standard input: line 2: is odd");
  }
}

}  // namespace
}  // namespace tests
