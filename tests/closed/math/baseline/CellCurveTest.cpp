#include <tslbl/closed/math/baseline/CellCurve.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;
using testing::ElementsAre;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Samples Digits(std::size_t n, std::uint32_t seed) {
  std::mt19937 random(seed);
  Samples y(n);
  for (double& v : y) v = static_cast<double>(random() % 100);
  return y;
}

Samples InnerOf(const Samples& y) {
  const CellCurve curve(y.data(), y.size(), 3);
  return Samples(curve.Inner(), curve.Inner() + curve.InnerSize());
}

// Points of a cell each, the first `bad` cells of no use.
Samples CellsOf(const Samples& levels) {
  Samples y;
  for (const double level : levels) y.insert(y.end(), kCellSize, level);
  return y;
}

// Where the middle of a cell lies, the curve's first one having number 0.
double CentreOf(double cell, std::size_t n) {
  return std::floor(static_cast<double>(n % 5) / 2) + 5 * cell + 2;
}

TEST(CellCurve, HasTheMeansOfFivePoints) {
  for (std::size_t n = 0; n < 40; ++n) {
    const Samples y = Digits(n, 1);
    const Samples cells = InnerOf(y);
    ASSERT_EQ(cells.size(), n / 5);
    for (std::size_t c = 0; c < cells.size(); ++c) {
      const std::size_t first = n % 5 / 2 + 5 * c;
      ASSERT_EQ(cells[c], (y[first] + y[first + 1] + y[first + 2] + y[first + 3] + y[first + 4]) / 5) << n;
    }
  }
}

TEST(CellCurve, MayHaveMoreThan65536Cells) {
  Samples y(400004, 0.0);
  for (std::size_t i = 0; i < y.size(); ++i) y[i] = static_cast<double>(i);
  const CellCurve curve(y.data(), y.size(), 3);
  ASSERT_EQ(curve.InnerSize(), 80000U);
  for (const std::size_t c : {0U, 65535U, 65536U, 79999U})
    EXPECT_EQ(curve.Inner()[c], CentreOf(static_cast<double>(c), y.size()));
  Samples drawn(y.size());
  curve.DrawPoints(curve.Cells(), y.size(), drawn.data());
  for (const std::size_t i : {4U, 70000U, 399990U}) EXPECT_NEAR(drawn[i], y[i], 1e-9);
}

TEST(CellCurve, MayHaveMoreThan65536CellsInItsMargins) {
  const Samples y(20, 1.0);
  CellCurve curve(y.data(), y.size(), 70000);
  curve.Continue({10, 0.5}, 6, {20, -0.25}, 15);
  EXPECT_EQ(curve.Cells().front(), 10 + 0.5 * (CentreOf(-70000, 20) - 6));
  EXPECT_EQ(curve.Cells()[69999], 10 + 0.5 * (CentreOf(-1, 20) - 6));
  EXPECT_EQ(curve.Cells().back(), 20 - 0.25 * (CentreOf(70003, 20) - 15));
}

TEST(CellCurve, RepeatsTheCellBeforeOneThatIsNotFinite) {
  EXPECT_THAT(InnerOf(CellsOf({3, kNaN, kNaN, 8, kInfinity, 2})), ElementsAre(3, 3, 3, 8, 8, 2));
}

TEST(CellCurve, BeginsWithTheFirstCellThatIsFinite) {
  EXPECT_THAT(InnerOf(CellsOf({kNaN, -kInfinity, 7, 4})), ElementsAre(7, 7, 7, 4));
}

TEST(CellCurve, OfNothingFiniteIsZero) {
  EXPECT_THAT(InnerOf(CellsOf({kNaN, kInfinity})), ElementsAre(0, 0));
}

TEST(CellCurve, HasMarginsOfZeroAtFirst) {
  const Samples y = CellsOf({3, 4});
  EXPECT_THAT(CellCurve(y.data(), y.size(), 2).Cells(), ElementsAre(0, 0, 3, 4, 0, 0));
}

TEST(CellCurve, GoesOnAlongALineOnEitherSide) {
  for (const std::size_t n : {20U, 21U, 22U, 23U, 24U}) {
    const Samples y(n, 1.0);
    CellCurve curve(y.data(), n, 3);
    curve.Continue({10, 0.5}, 6, {20, -0.25}, 15);
    for (int c = 0; c < 3; ++c) {
      const double left = CentreOf(c - 3, n);
      const double right = CentreOf(c + 4, n);
      EXPECT_EQ(curve.Cells()[static_cast<std::size_t>(c)], 10 + 0.5 * (left - 6)) << n;
      EXPECT_EQ(curve.Cells()[static_cast<std::size_t>(c + 7)], 20 - 0.25 * (right - 15)) << n;
    }
  }
}

TEST(CellCurve, GoesOnLevelWhereALineIsNotFinite) {
  const Samples y = CellsOf({3, 4, 5});
  CellCurve curve(y.data(), y.size(), 2);
  curve.Continue({kNaN, 0}, 0, {1, kInfinity}, 0);
  EXPECT_THAT(curve.Cells(), ElementsAre(3, 3, 3, 4, 5, 5, 5));
}

TEST(CellCurve, GoesOnAtZeroWithoutACellOfItsOwn) {
  const Samples y(4, 9.0);
  CellCurve curve(y.data(), y.size(), 2);
  curve.Continue({kNaN, 0}, 0, {kNaN, 0}, 0);
  EXPECT_THAT(curve.Cells(), ElementsAre(0, 0, 0, 0));
}

TEST(CellCurve, DrawsLinesFromCentreToCentre) {
  for (std::size_t n = 0; n < 60; ++n) {
    const Samples y(n, 0.0);
    const CellCurve curve(y.data(), n, 3);
    const Samples cells = Digits(curve.Cells().size(), 2);
    Samples out(n + 1, -1);
    curve.DrawPoints(cells, n, out.data());
    for (std::size_t i = 0; i < n; ++i) {
      const double place = (static_cast<double>(i) - CentreOf(-3, n)) / 5;
      const auto cell = static_cast<std::size_t>(place);
      const double share = place - static_cast<double>(cell);
      ASSERT_NEAR(out[i], (1 - share) * cells[cell] + share * cells[cell + 1], 1e-12) << i << " of " << n;
    }
    EXPECT_EQ(out[n], -1);
  }
}

}  // namespace
