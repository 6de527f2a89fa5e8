#include <tool/plot/PictureName.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/ToolRun.h>
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

TEST(PictureName, IsRefusedByEachCommandThatDraws) {
  for (const Arguments& command :
       {Arguments{"peaks"}, Arguments{"overlap"}, Arguments{"decon"},
        Arguments{"calibrate", "--calibrants", "y"}, Arguments{"chrom"}, Arguments{"tune", "show"}}) {
    Arguments arguments = command;
    arguments.insert(arguments.end(), {"x", "--plot", "x.png"});
    const Outcome outcome = RunTool(arguments);
    EXPECT_EQ(outcome.status, 2) << command.back();
    EXPECT_THAT(outcome.err, testing::HasSubstr("--plot: pictures are SVG, and x.png ends in .png"));
  }
}

}  // namespace
}  // namespace tests
