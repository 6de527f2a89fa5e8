#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <tool/plot/Curves.h>
#include <tool/plot/SvgReading.h>

using namespace tests;
using TslTool::Axes;
using TslTool::CurvePoints;
using TslTool::Point;
using TslTool::Range;
using TslTool::Svg;

namespace {

using Values = std::vector<double>;

const double kNaN = std::nan("");

// An area of 100 x 100 pixels whose places are x and 100 - y of the values, its corner at 0, 0.
const Axes kHundred({-64, -30, 184, 174}, {0, 100}, {0, 100});

std::string Places(const Values& x, const Values& y) { return TextOf(CurvePoints(kHundred, x, y)); }

// `inColumn` points to a pixel over the whole area.
Values Dense(int inColumn) {
  Values x;
  for (int i = 0; i < 100 * inColumn; ++i) x.push_back((i + 0.5) / inColumn);
  return x;
}

TEST(CurvePoints, OfAShortCurveAreAllOfThem) {
  EXPECT_EQ(Places({0, 0.2, 0.4, 0.6, 50}, {10, 11, 12, 13, 0}), "0,90 0.2,89 0.4,88 0.6,87 50,100");
}

TEST(CurvePoints, AreBrokenWhereYIsNotFinite) {
  EXPECT_EQ(Places({0, 1, 2, 3, 4}, {10, kNaN, 30, HUGE_VAL, 50}), "0,90 - 2,70 - 4,50");
}

TEST(CurvePoints, OutsideTheAxisAreTheNearestOnEitherSide) {
  EXPECT_EQ(Places({-30, -20, 50, 120, 130}, {1, 2, 3, 4, 5}), "-20,98 50,97 120,96");
  EXPECT_EQ(Places({-30, -20}, {1, 2}), "-20,98");
  EXPECT_EQ(Places({120, 130}, {1, 2}), "120,99");
  EXPECT_EQ(Places({}, {}), "");
}

TEST(CurvePoints, OfALongCurveAreLowestAndHighestOfEachColumnInTheirOrder) {
  Values y(500, 50);
  for (std::size_t i = 0; i < y.size(); i += 5) y[i + 1] = 90, y[i + 3] = 10;
  y[5 + 1] = 10, y[5 + 3] = 90;
  const std::vector<Point> points = CurvePoints(kHundred, Dense(5), y);
  EXPECT_EQ(points.size(), 200U);
  EXPECT_EQ(TextOf({points.begin(), points.begin() + 4}), "0.3,10 0.7,90 1.3,90 1.7,10");
}

// Held against the plain way: gather each column, then look for its ends.
TEST(CurvePoints, OfNoiseKeepTheEndsOfEveryColumn) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> value(0, 100);
  const Values x = Dense(37);
  Values y(x.size());
  std::map<double, Range> wanted, found;
  for (std::size_t i = 0; i < x.size(); ++i) {
    y[i] = std::round(value(random));
    wanted[std::floor(x[i])].Include(100 - y[i]);
  }
  double last = -1;
  for (const auto& [px, py] : CurvePoints(kHundred, x, y)) {
    EXPECT_GT(px, last);
    last = px;
    found[std::floor(px)].Include(py);
  }
  ASSERT_EQ(found.size(), wanted.size());
  for (const auto& [column, range] : wanted) {
    EXPECT_NEAR(found[column].low, range.low, 1e-9) << column;
    EXPECT_NEAR(found[column].high, range.high, 1e-9) << column;
  }
}

TEST(CurvePoints, OfALevelColumnAreTwo) {
  EXPECT_EQ(CurvePoints(kHundred, Dense(10), Values(1000, 5)).size(), 200U);
}

TEST(CurvePoints, ALongCurveIsBrokenByGapsOfAColumnAndBridgesNarrowerOnes) {
  Values y(1000, 50);
  y[3] = kNaN;                                                   // within a column
  for (std::size_t i = 20; i < 30; ++i) y[i] = kNaN;             // a whole one
  for (std::size_t i = 0; i < 3; ++i) y[i] = y[999 - i] = kNaN;  // at the ends
  const std::vector<Point> points = CurvePoints(kHundred, Dense(10), y);
  EXPECT_EQ(TextOf({points.begin(), points.begin() + 7}),
            "0.45,50 0.55,50 1.05,50 1.15,50 - 3.05,50 3.15,50");
  EXPECT_EQ(points.size(), 1U + 2U * 99U);
}

TEST(CurvePoints, AreNeverMoreThanThreeToAColumn) {
  Values y(100000, 50);
  for (std::size_t i = 0; i < y.size(); i += 2) y[i] = kNaN;
  EXPECT_LE(CurvePoints(kHundred, Dense(1000), y).size(), 300U);
  for (std::size_t i = 0; i < y.size(); ++i) y[i] = i / 1000 % 2 == 0 ? 50 : kNaN;
  EXPECT_LE(CurvePoints(kHundred, Dense(1000), y).size(), 300U);
}

TEST(CurvePoints, OfALongCurveSeenCloseUpAreAllInside) {
  const Values x = Dense(1000);
  const Axes closeUp({-64, -30, 184, 174}, {40.0, 40.1}, {0, 100});
  EXPECT_EQ(CurvePoints(closeUp, x, Values(x.size(), 1)).size(), 100U + 2U);
}

TEST(CurvePoints, NeedAsManyYAsX) {
  EXPECT_THROW(CurvePoints(kHundred, Values{1, 2}, Values{1}), std::invalid_argument);
}

TEST(DrawCurve, IsCutAtTheEdgesOfTheArea) {
  Svg svg(100, 100);
  DrawCurve(svg, kHundred, Values{0, 50, 100}, Values{0, 1000, 0}, {"#000"});
  EXPECT_EQ(AttributesOf(svg.Document(), "svg", "viewBox").back(), "-1 -1 102 102");
  EXPECT_EQ(AttributesOf(svg.Document(), "path", "d").front(), "M0 100L50 -900L100 100");
}

TEST(DrawBand, FillsBetweenTheCurves) {
  Svg svg(100, 100);
  DrawBand(svg, kHundred, Values{0, 50, 100}, Values{10, 20, 10}, Values{30, 40, 30}, "#eee");
  EXPECT_EQ(AttributesOf(svg.Document(), "path", "d").front(), "M0 70L50 60L100 70L100 90L50 80L0 90Z");
}

TEST(DrawBand, HasAPieceForEachStretchWithBothEnds) {
  Svg svg(100, 100);
  DrawBand(svg, kHundred, Values{0, 10, 20, 30, 40, 50, 60}, Values{10, 10, kNaN, 10, 10, 10, 10},
           Values{30, 30, 30, 30, 30, kNaN, 30}, "#eee");
  EXPECT_EQ(
      AttributesOf(svg.Document(), "path", "d"),
      (std::vector<std::string>{"M0 70L10 70L10 90L0 90Z", "M30 70L40 70L40 90L30 90Z", "M60 70L60 90Z"}));
}

TEST(DrawBand, NeedsBothEndsEverywhere) {
  Svg svg(100, 100);
  EXPECT_THROW(DrawBand(svg, kHundred, Values{1, 2}, Values{1}, Values{1, 2}, "#eee"), std::invalid_argument);
  EXPECT_THROW(DrawBand(svg, kHundred, Values{1, 2}, Values{1, 2}, Values{1}, "#eee"), std::invalid_argument);
}

}  // namespace
