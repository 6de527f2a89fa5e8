#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include <tool/plot/Axes.h>
#include <tool/plot/SvgReading.h>

using namespace tests;
using TslTool::Axes;
using TslTool::Box;
using TslTool::Range;
using TslTool::Svg;

namespace {

constexpr Box kPanel = {100, 50, 460, 200};

std::string Drawn(const Axes& axes) {
  Svg svg(1000, 1000);
  axes.Draw(svg, "m/z", "counts");
  return svg.Document();
}

TEST(Axes, TheAreaLiesInItsPanelWithRoomForTextsAllAround) {
  const Box area = Axes(kPanel, {0, 1}, {0, 1}).Area();
  EXPECT_GT(area.left, kPanel.left);
  EXPECT_GT(area.top, kPanel.top);
  EXPECT_LT(area.Right(), kPanel.Right());
  EXPECT_LT(area.Bottom(), kPanel.Bottom());
}

TEST(Axes, TheEndsOfTheRangesAreTheCornersOfTheArea) {
  const Axes axes(kPanel, {5, 3000}, {-10, 10});
  EXPECT_DOUBLE_EQ(axes.X(5), axes.Area().left);
  EXPECT_DOUBLE_EQ(axes.X(3000), axes.Area().Right());
  EXPECT_DOUBLE_EQ(axes.Y(-10), axes.Area().Bottom());
  EXPECT_DOUBLE_EQ(axes.Y(10), axes.Area().top);
  EXPECT_DOUBLE_EQ(axes.At(0, 0).y, axes.Area().top + axes.Area().height / 2);
}

TEST(Axes, PlacesOutsideAreLimitedAndThatOfNaNIsNone) {
  const Axes axes(kPanel, {0, 1}, {0, 1});
  EXPECT_EQ(axes.X(1e300), 1e5);
  EXPECT_EQ(axes.Y(1e300), -1e5);
  EXPECT_TRUE(std::isnan(axes.X(std::nan(""))));
}

TEST(Axes, EachTickHasALineThroughItsPlaceAndAText) {
  const Axes axes(kPanel, {0, 300}, {0, 100});
  const std::string drawn = Drawn(axes);
  for (const char* text :
       {">0<", ">50<", ">100<", ">150<", ">200<", ">250<", ">300<", ">20<", ">m/z<", ">counts<"})
    EXPECT_GE(CountOf(drawn, text), 1U) << text;
  EXPECT_EQ(AttributesOf(drawn, "line", "x1").at(3), AttributesOf(drawn, "text", "x").at(3));
  EXPECT_EQ(AttributesOf(drawn, "line", "x1").size(), 7U + 6U);
}

TEST(Axes, ALongerAxisHasMoreTicks) {
  const auto ticks = [](double width) {
    return CountOf(Drawn(Axes({0, 0, width, 200}, {0, 1000}, {0, 1})), "text-anchor=\"middle\"");
  };
  EXPECT_EQ(ticks(460), 6U);
  EXPECT_EQ(ticks(1000), 11U);
}

TEST(Axes, CanBeDrawnInAnyPanelWithAnyRanges) {
  for (const Box& panel : {kPanel, Box{0, 0, 0, 0}, Box{0, 0, 90, 5000}}) {
    for (const Range& range : {Range{}, Range{7, 7}, Range{-1e308, 1e308}, Range{1e15, 1e15 + 1}}) {
      const std::string drawn = Drawn(Axes(panel, range, range));
      EXPECT_TRUE(IsDocument(drawn));
      EXPECT_EQ(CountOf(drawn, "nan") + CountOf(drawn, "inf"), 0U);
      EXPECT_GE(CountOf(drawn, "text-anchor=\"middle\""), 1U) << "no tick from " << range.low;
    }
  }
}

}  // namespace
