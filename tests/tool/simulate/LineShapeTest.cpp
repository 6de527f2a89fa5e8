#include <tool/simulate/LineShape.h>

#include <gtest/gtest.h>

#include <cmath>

namespace tests {
namespace {

using TslTool::Line;
using TslTool::LineShape;
using TslTool::VisibleLines;

TEST(LineShape, IsHalfAsHighHalfAWidthAside) {
  for (const double width : {0.2, 0.6, 3.0}) {
    const LineShape shape(width);
    EXPECT_EQ(shape.At(0.0), 1.0);
    EXPECT_NEAR(shape.At(0.5 * width), 0.5, 1e-12);
    EXPECT_NEAR(shape.At(-0.5 * width), 0.5, 1e-12);
    EXPECT_LT(shape.At(shape.Reach()), 1e-7);
  }
}

// Two equal lines as far apart as the blur.
TEST(LineShape, ABlurChangesALineByLessThanAThousandth) {
  const LineShape shape(0.6);
  const double half = 0.5 * shape.Blur();
  for (double at = -1.0; at <= 1.0; at += 0.01)
    EXPECT_NEAR(0.5 * (shape.At(at - half) + shape.At(at + half)), shape.At(at), 0.001);
}

TEST(VisibleLines, ThoseThatStandApartAreSeenEach) {
  std::vector<Line> lines;
  for (int i = 0; i < 30; ++i) lines.push_back({500.0 + 0.35 * i, 1.0 + 0.3 * std::sin(i)});
  const std::vector<Line> visible = VisibleLines(lines, 3, LineShape(0.2));
  ASSERT_EQ(visible.size(), lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) EXPECT_NEAR(visible[i].mz, lines[i].mz, 0.005);
}

TEST(VisibleLines, ThoseThatRunTogetherAreOneBetweenThem) {
  const std::vector<Line> visible = VisibleLines({{500.0, 1.0}, {500.1, 1.0}}, 10, LineShape(0.6));
  ASSERT_EQ(visible.size(), 1U);
  EXPECT_NEAR(visible[0].mz, 500.05, 1e-6);
  EXPECT_NEAR(visible[0].height, 2.0 * LineShape(0.6).At(0.05), 1e-6);
}

TEST(VisibleLines, IsotopesThatStandApartAreShownThemselves) {
  const std::vector<Line> visible = VisibleLines({{500.0, 1.0}, {500.7, 0.8}}, 1, LineShape(0.6));
  ASSERT_EQ(visible.size(), 2U);
  EXPECT_EQ(visible[0].mz, 500.0);
  EXPECT_EQ(visible[1].mz, 500.7);
  EXPECT_EQ(VisibleLines({{500.0, 1.0}, {500.25, 0.8}}, 4, LineShape(0.2))[0].mz, 500.0);
  EXPECT_EQ(VisibleLines({{500.0, 1.0}, {500.7, 0.8}}, 2, LineShape(0.6)).size(), 1U);
}

TEST(VisibleLines, AShoulderIsNoLine) {
  EXPECT_EQ(VisibleLines({{500.0, 1.0}, {500.5, 0.3}}, 2, LineShape(0.6)).size(), 1U);
}

}  // namespace
}  // namespace tests
