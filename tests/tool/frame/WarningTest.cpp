#include <gtest/gtest.h>

#include <tool/frame/Warning.h>

namespace tests {
namespace {

TEST(Warning, IsALineOfItsOwnOnStandardError) {
  testing::internal::CaptureStderr();
  TslTool::Warn("a.mzML: 2 spectra are empty");
  TslTool::Warn("b.run: has no time");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "tslbl: warning: a.mzML: 2 spectra are empty\ntslbl: warning: b.run: has no time\n");
}

TEST(Warning, DoesNothingToATerminal) {
  testing::internal::CaptureStderr();
  TslTool::Warn("\x1b[2J.mzML: is odd");
  TslTool::Tell("a\nb.mzML", {"\xc3\xa4\x07"});
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "tslbl: warning: \\x1b[2J.mzML: is odd\ntslbl: a\\nb.mzML: \xc3\xa4\\x07\n");
}

TEST(Warning, NamesTheFileForEachOfSeveral) {
  testing::internal::CaptureStderr();
  TslTool::Warn("a.mzML", {"2 spectra are empty", "1 spectrum is odd"});
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "tslbl: warning: a.mzML: 2 spectra are empty\ntslbl: warning: a.mzML: 1 spectrum is odd\n");
}

}  // namespace
}  // namespace tests
