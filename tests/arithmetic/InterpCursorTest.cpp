#include <gtest/gtest.h>

#include <tslbl/arithmetic/InterpCursor.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <random>

using namespace TslBL;

namespace {

Spectrum Points(const std::vector<double>& x, const std::vector<double>& y) {
  Spectrum s;
  s.xAxis = x;
  s.yAxis = y;
  return s;
}

std::optional<double> Value(const InterpValue& at) {
  if (at.exists) return at.value;
  EXPECT_EQ(at.value, 0.0);
  return std::nullopt;
}

// Anew for each place, by a search of the whole axis.
std::optional<double> Plain(const Spectrum& s, double x) {
  const auto at = std::ranges::lower_bound(s.xAxis, x) - s.xAxis.begin();
  const auto i = static_cast<std::size_t>(at);
  if (i == s.xAxis.size() || x < s.xAxis.front()) return std::nullopt;
  if (s.xAxis[i] == x) return s.yAxis[i];
  return (s.yAxis[i] - s.yAxis[i - 1]) / (s.xAxis[i] - s.xAxis[i - 1]) * (x - s.xAxis[i - 1]) +
         s.yAxis[i - 1];
}

}  // namespace

TEST(InterpCursor, IsThePointOrLiesBetweenTwo) {
  const Spectrum s = Points({1, 2, 4}, {10, 20, 0});
  InterpCursor cursor(s, 3);
  EXPECT_EQ(cursor.Count(), 3u);
  EXPECT_EQ(Value(cursor.At(1)), 10);
  EXPECT_EQ(Value(cursor.At(1.25)), 12.5);
  EXPECT_EQ(Value(cursor.At(1.5)), 15);
  EXPECT_EQ(Value(cursor.At(2)), 20);
  EXPECT_EQ(Value(cursor.At(3)), 10);
  EXPECT_EQ(Value(cursor.At(4)), 0);
}

TEST(InterpCursor, HasNoValueOutsideTheAxis) {
  const Spectrum s = Points({1, 2}, {10, 20});
  InterpCursor cursor(s, 1);
  EXPECT_EQ(Value(cursor.At(0.999)), std::nullopt);
  EXPECT_EQ(Value(cursor.At(1.5)), 15);
  EXPECT_EQ(Value(cursor.At(2.001)), std::nullopt);
  EXPECT_EQ(Value(cursor.At(3)), std::nullopt);
}

TEST(InterpCursor, WhatRoundingPutsBesideAnEndIsAtThatEnd) {
  const Spectrum s = Points({1, 2}, {10, 20});
  InterpCursor cursor(s, 1);
  EXPECT_EQ(Value(cursor.At(1 - 2e-9)), std::nullopt);
  EXPECT_EQ(Value(cursor.At(1 - 5e-10)), 10);
  EXPECT_EQ(Value(cursor.At(2 + 5e-10)), 20);
  EXPECT_EQ(Value(cursor.At(2 + 2e-9)), std::nullopt);
}

TEST(InterpCursor, DoesNotGoBack) {
  const Spectrum s = Points({1, 2, 3, 4}, {10, 20, 30, 40});
  InterpCursor cursor(s, 1);
  EXPECT_EQ(Value(cursor.At(3.5)), 35);
  EXPECT_EQ(Value(cursor.At(2.5)), std::nullopt);
  EXPECT_EQ(Value(cursor.At(3.25)), 32.5) << "on the same stretch it can";
}

TEST(InterpCursor, OfASpectrumOfNoPointOrOne) {
  const Spectrum none;
  EXPECT_EQ(Value(InterpCursor(none, 1).At(1)), std::nullopt);
  const Spectrum one = Points({1}, {10});
  InterpCursor cursor(one, 1);
  EXPECT_EQ(Value(cursor.At(0.5)), std::nullopt);
  EXPECT_EQ(Value(cursor.At(1)), 10);
  EXPECT_EQ(Value(cursor.At(1.5)), std::nullopt);
}

TEST(InterpCursor, OfWhatIsNoPlaceHasNoValue) {
  const Spectrum s = Points({1, 2}, {10, 20});
  InterpCursor cursor(s, 1);
  EXPECT_EQ(Value(cursor.At(std::numeric_limits<double>::quiet_NaN())), std::nullopt);
  EXPECT_EQ(Value(cursor.At(2)), 20);
}

TEST(InterpCursor, EndsWithTheShorterOfBothArrays) {
  const Spectrum s = Points({1, 2, 3}, {10, 20});
  InterpCursor cursor(s, 1);
  EXPECT_EQ(Value(cursor.At(2)), 20);
  EXPECT_EQ(Value(cursor.At(2.5)), std::nullopt);
}

TEST(InterpCursor, FindsWhatASearchOfTheWholeAxisFinds) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> place(0.0, 100.0);
  for (const int points : {2, 3, 10, 1000}) {
    Spectrum s;
    for (int i = 0; i < points; ++i) s.xAxis.push_back(place(random));
    std::ranges::sort(s.xAxis);
    for (int i = 0; i < points; ++i) s.yAxis.push_back(place(random));
    for (const int queries : {5, 500, 5000}) {
      std::vector<double> x;
      for (int i = 0; i < queries; ++i)
        x.push_back(i % 3 ? place(random) : s.xAxis[random() % s.xAxis.size()]);
      std::ranges::sort(x);
      InterpCursor cursor(s, 1);
      for (const double at : x)
        ASSERT_EQ(Value(cursor.At(at)), Plain(s, at)) << points << " points, at " << at;
    }
  }
}
