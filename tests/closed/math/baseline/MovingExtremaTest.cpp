#include <tslbl/closed/math/baseline/MovingExtrema.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>

using namespace TslMath;
using testing::ElementsAreArray;

namespace {

using Samples = std::vector<double>;
using Filter = void (*)(const double*, std::size_t, std::size_t, double*, ExtremaScratch&);

constexpr std::size_t kLengths[] = {1, 2, 3, 5, 8, 37, 1500};
constexpr std::size_t kWindows[] = {
    0, 1, 2, 3, 4, 5, 7, 12, 31, 64, 101, 750, 1499, 1500, 1501, std::numeric_limits<std::size_t>::max()};

// Small integers, so that there are many ties.
Samples Digits(std::size_t n) {
  std::mt19937 random(17);
  Samples y(n);
  for (double& v : y) v = static_cast<double>(random() % 10);
  return y;
}

Samples Filtered(Filter filter, const Samples& y, std::size_t length) {
  ExtremaScratch scratch;
  Samples out(y.size());
  filter(y.data(), y.size(), length, out.data(), scratch);
  return out;
}

// The window's samples, one by one.
template <class Pick>
Samples Plain(const Samples& y, std::size_t length, Pick pick) {
  Samples out;
  const std::size_t half = std::min(length / 2, y.size());
  for (std::size_t i = 0; i < y.size(); ++i) {
    const auto begin = y.begin() + static_cast<std::ptrdiff_t>(i - std::min(i, half));
    const auto end = y.begin() + static_cast<std::ptrdiff_t>(std::min(y.size(), i + half + 1));
    out.push_back(*pick(begin, end));
  }
  return out;
}

Samples PlainMinimum(const Samples& y, std::size_t length) {
  return Plain(y, length, [](auto begin, auto end) { return std::min_element(begin, end); });
}

Samples PlainMaximum(const Samples& y, std::size_t length) {
  return Plain(y, length, [](auto begin, auto end) { return std::max_element(begin, end); });
}

TEST(MovingExtrema, MinimumEqualsThatOfEachWindow) {
  for (std::size_t n : kLengths) {
    for (std::size_t length : kWindows) {
      const Samples y = Digits(n);
      ASSERT_EQ(Filtered(MovingMinimum, y, length), PlainMinimum(y, length))
          << n << " points, window " << length;
    }
  }
}

TEST(MovingExtrema, MaximumEqualsThatOfEachWindow) {
  for (std::size_t n : kLengths) {
    for (std::size_t length : kWindows) {
      const Samples y = Digits(n);
      ASSERT_EQ(Filtered(MovingMaximum, y, length), PlainMaximum(y, length))
          << n << " points, window " << length;
    }
  }
}

TEST(MovingExtrema, ReachTheEndOfALongCurve) {
  const Samples y = Digits(70001);
  for (const std::size_t length : {3U, 31U}) {
    EXPECT_EQ(Filtered(MovingMinimum, y, length), PlainMinimum(y, length));
    EXPECT_EQ(Filtered(MovingMaximum, y, length), PlainMaximum(y, length));
  }
}

// A window of more points than 16 bits count slides over a single low place.
TEST(MovingExtrema, TakeVeryLongWindows) {
  Samples y(200001, 5.0);
  y[100000] = 1;
  const Samples low = Filtered(MovingMinimum, y, 70001);
  for (const std::size_t i : {0U, 64999U, 65000U, 99000U, 135000U, 135001U, 200000U})
    EXPECT_EQ(low[i], i >= 65000 && i <= 135000 ? 1 : 5) << i;
}

TEST(MovingExtrema, OpeningIsTheMaximumOfTheMinimum) {
  for (std::size_t length : kWindows) {
    const Samples y = Digits(1500);
    ASSERT_EQ(Filtered(MovingOpening, y, length), PlainMaximum(PlainMinimum(y, length), length)) << length;
  }
}

TEST(MovingExtrema, OpeningTakesOffWhatIsNarrowerThanTheWindow) {
  const Samples y{1, 1, 9, 9, 1, 1, 7, 7, 7, 1, 1};
  EXPECT_THAT(Filtered(MovingOpening, y, 3), ElementsAreArray({1, 1, 1, 1, 1, 1, 7, 7, 7, 1, 1}));
}

TEST(MovingExtrema, OpeningTwiceChangesNothing) {
  const Samples once = Filtered(MovingOpening, Digits(1500), 31);
  EXPECT_EQ(Filtered(MovingOpening, once, 31), once);
}

TEST(MovingExtrema, WorkInPlace) {
  Samples y = Digits(1500);
  const Samples expected = PlainMinimum(y, 31);
  ExtremaScratch scratch;
  MovingMinimum(y.data(), y.size(), 31, y.data(), scratch);
  EXPECT_EQ(y, expected);
}

TEST(MovingExtrema, OneScratchServesCurvesOfAnyLength) {
  ExtremaScratch scratch;
  for (std::size_t n : {1500U, 3U, 37U}) {
    const Samples y = Digits(n);
    Samples out(n);
    MovingMaximum(y.data(), n, 5, out.data(), scratch);
    EXPECT_EQ(out, PlainMaximum(y, 5)) << n;
  }
}

TEST(MovingExtrema, NoPointsDoNothing) {
  ExtremaScratch scratch;
  double out = 4;
  MovingMinimum(&out, 0, 3, &out, scratch);
  EXPECT_EQ(out, 4);
}

}  // namespace
