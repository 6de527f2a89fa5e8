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

TEST(Warning, NamesTheFileForEachOfSeveral) {
  testing::internal::CaptureStderr();
  TslTool::Warn("a.mzML", {"2 spectra are empty", "1 spectrum is odd"});
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "tslbl: warning: a.mzML: 2 spectra are empty\ntslbl: warning: a.mzML: 1 spectrum is odd\n");
}

}  // namespace
}  // namespace tests
