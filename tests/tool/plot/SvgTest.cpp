#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include <tool/plot/Svg.h>
#include <tool/plot/SvgReading.h>

using namespace tests;
using TslTool::Anchor;
using TslTool::kGap;
using TslTool::Point;
using TslTool::Svg;

namespace {

const double kNaN = std::nan("");

std::string PathOf(const std::vector<Point>& points) {
  Svg svg(100, 100);
  svg.Polyline(points, {"#000"});
  const std::vector<std::string> paths = AttributesOf(svg.Document(), "path", "d");
  return paths.empty() ? "" : paths.front();
}

TEST(Svg, IsADocumentOfItsSizeOnWhite) {
  const std::string document = Svg(640, 480.5).Document();
  EXPECT_TRUE(IsDocument(document));
  EXPECT_EQ(AttributesOf(document, "svg", "viewBox").front(), "0 0 640 480.5");
  EXPECT_EQ(AttributesOf(document, "rect", "fill").front(), "#fff");
}

TEST(Svg, NumbersHaveTwoDecimalsAtMostAndNoZerosBehind) {
  EXPECT_EQ(PathOf({{1.0, 2.5}, {0.123456, -0.001}, {100.0, 99.999}}), "M1 2.5L0.12 0L100 100");
}

TEST(Svg, EachElementHasItsPlaceAndLook) {
  Svg svg(100, 100);
  svg.Line({1, 2}, {3, 4}, {"#abc", 2, "6 3"});
  svg.Frame({5, 6, 7, 8}, {"#def"});
  svg.Circle({9, 10}, 3, "#123");
  svg.Polygon(std::vector<Point>{{0, 0}, {4, 0}, {4, 4}}, "#456");
  svg.Text({11, 12}, Anchor::Middle, 9, "word");
  EXPECT_EQ(ElementsOf(svg),
            "<line x1=\"1\" y1=\"2\" x2=\"3\" y2=\"4\" stroke-width=\"2\" stroke=\"#abc\" "
            "stroke-dasharray=\"6 3\"/>\n"
            "<rect x=\"5\" y=\"6\" width=\"7\" height=\"8\" fill=\"none\" stroke=\"#def\"/>\n"
            "<circle cx=\"9\" cy=\"10\" r=\"3\" fill=\"#123\"/>\n"
            "<path d=\"M0 0L4 0L4 4Z\" fill=\"#456\"/>\n"
            "<text x=\"11\" y=\"12\" text-anchor=\"middle\" font-size=\"9\">word</text>\n");
}

TEST(Svg, TextUpwardsIsTurnedAboutItsPlace) {
  Svg svg(100, 100);
  svg.TextUpwards({11, 12}, Anchor::End, 9, "up");
  EXPECT_EQ(AttributesOf(svg.Document(), "text", "transform").front(), "rotate(-90 11 12)");
}

TEST(Svg, TextMayHoldAnyCharacter) {
  Svg svg(100, 100);
  svg.Text({0, 0}, Anchor::Start, 9, "<a> & \x01\"b\" \xC3\xA9 \xEF\xBF\xBE \xFF");
  EXPECT_TRUE(IsDocument(svg.Document()));
  EXPECT_EQ(CountOf(svg.Document(), ">&lt;a> &amp;  \"b\" \xC3\xA9   \xEF\xBF\xBD<"), 1U);
}

TEST(Svg, APolylineIsBrokenWhereAPointIsNotFinite) {
  EXPECT_EQ(PathOf({{0, 0}, {1, 1}, kGap, {2, 2}, {3, 3}}), "M0 0L1 1M2 2L3 3");
  EXPECT_EQ(PathOf({kGap, {0, 0}, {1, HUGE_VAL}, {HUGE_VAL, 1}, {2, 2}, {3, 3}, kGap}), "M-0.5 0h1M2 2L3 3");
}

TEST(Svg, APointAloneIsADotOneUnitLong) { EXPECT_EQ(PathOf({{7, 7}}), "M6.5 7h1"); }

TEST(Svg, WhatHasNoPlaceOrNoContentIsLeftOut) {
  Svg svg(100, 100);
  svg.Line({0, 0}, {kNaN, 1}, {"#000"});
  svg.Polyline(std::vector<Point>{kGap, kGap}, {"#000"});
  svg.Polyline({}, {"#000"});
  svg.Polygon(std::vector<Point>{{0, 0}, kGap, {1, 1}}, "#000");
  svg.Polygon({}, "#000");
  svg.Circle({HUGE_VAL, 0}, 1, "#000");
  svg.Text({0, kNaN}, Anchor::Start, 9, "nowhere");
  svg.Text({0, 0}, Anchor::Start, 9, "");
  EXPECT_EQ(ElementsOf(svg), "");
}

TEST(Svg, ClippedKeepsPlacesAsTheyAre) {
  Svg svg(100, 100);
  svg.Clipped({10, 20, 30, 40}, [&] { svg.Circle({15, 25}, 1, "#000"); });
  EXPECT_EQ(ElementsOf(svg),
            "<svg x=\"10\" y=\"20\" width=\"30\" height=\"40\" viewBox=\"10 20 30 40\">\n"
            "<circle cx=\"15\" cy=\"25\" r=\"1\" fill=\"#000\"/>\n</svg>\n");
}

}  // namespace
