#include <tool/plot/PictureName.h>

#include <gtest/gtest.h>

#include <tool/frame/UsageError.h>

namespace tests {
namespace {

TEST(PictureName, EndsInSvgOrInNothing) {
  for (const char* name : {"", "-", "a.svg", "A.SVG", "/tmp/v1.2/picture", "/dev/stdout"})
    EXPECT_NO_THROW(TslTool::RequirePictureName("--plot", name)) << name;
}

TEST(PictureName, OfAnotherKindIsRefused) {
  try {
    TslTool::RequirePictureName("--plot", "/tmp/a.PNG");
    ADD_FAILURE();
  } catch (const TslTool::UsageError& error) {
    EXPECT_STREQ(error.what(), "--plot: pictures are SVG, and /tmp/a.PNG ends in .png");
  }
}

}  // namespace
}  // namespace tests
