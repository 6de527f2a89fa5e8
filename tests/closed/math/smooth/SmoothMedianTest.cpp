// Tests: MedianNetwork.cpp.
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>
#include <limits>

#include <closed/math/smooth/FilterCheck.h>

using namespace tests;

namespace {

Samples PlainMedian(const Samples& y, std::size_t width) {
  Samples out;
  for (std::size_t i = 0; i < y.size(); ++i) {
    const std::size_t half = std::min({width / 2, i, y.size() - 1 - i});
    const auto at = y.begin() + static_cast<std::ptrdiff_t>(i);
    const auto reach = static_cast<std::ptrdiff_t>(half);
    Samples window(at - reach, at + reach + 1);
    std::sort(window.begin(), window.end());
    out.push_back(window[half]);
  }
  return out;
}

void ExpectPlainMedians(const std::function<Samples(std::size_t)>& data) {
  for (std::size_t n : Lengths{1, 2, 3, 5, 8, 37, 1500}) {
    for (std::uint32_t width :
         Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 31, 64, 101, 151, 152, 153, 401, 2000}) {
      const Samples y = data(n);
      ASSERT_EQ(PlainMedian(y, width), Smooth(Median(width), y)) << "n " << n << ", width " << width;
    }
  }
}

TEST(SmoothMedian, IsExactOnCounts) {
  ExpectPlainMedians([](std::size_t n) { return Counts(n, 3); });
}

TEST(SmoothMedian, IsExactOnNoise) { ExpectPlainMedians(Noise); }

TEST(SmoothMedian, IsExactOnRisingAndFallingData) {
  ExpectPlainMedians(Line);
  ExpectPlainMedians([](std::size_t n) { return Tabulate(n, [](double i) { return -i * i; }); });
}

TEST(SmoothMedian, IsExactOnConstantData) {
  ExpectPlainMedians([](std::size_t n) { return Samples(n, -2.5); });
}

TEST(SmoothMedian, IsExactOverManySortings) {
  const Samples y = Noise(20000);
  EXPECT_EQ(PlainMedian(y, 201), Smooth(Median(201), y));
}

// 90 000 points need ranks of more than 16 bits.
TEST(SmoothMedian, OfAVeryWideWindowOnALongRiseIsTheRise) {
  const Samples y = Line(90000);
  EXPECT_EQ(y, Smooth(Median(20001), y));
}

TEST(SmoothMedian, IsExactInVeryWideWindows) {
  const Samples y = Noise(90000);
  const Samples smoothed = Smooth(Median(20001), y);
  for (std::size_t i = 0; i < y.size(); i += 4999) {
    const auto half = static_cast<std::ptrdiff_t>(std::min({std::size_t{10000}, i, y.size() - 1 - i}));
    const auto at = y.begin() + static_cast<std::ptrdiff_t>(i);
    Samples window(at - half, at + half + 1);
    std::nth_element(window.begin(), window.begin() + half, window.end());
    ASSERT_EQ(window[static_cast<std::size_t>(half)], smoothed[i]) << i;
  }
}

TEST(SmoothMedian, AgreesWithScipyWhereTheWindowIsWhole) {
  for (std::uint32_t width : Numbers{3, 5, 7, 9, 11, 31, 153}) {
    ExpectOracle(Median(width), "median " + std::to_string(width), 0);
  }
}

TEST(SmoothMedian, RoundsAnEvenWidthUp) {
  const Samples y = Noise(700);
  for (std::uint32_t width : Numbers{2, 4, 30, 200})
    EXPECT_EQ(Smooth(Median(width + 1), y), Smooth(Median(width), y));
}

TEST(SmoothMedian, RemovesASpikeAndKeepsAnEdge) {
  EXPECT_EQ(Samples({1, 1, 1, 1, 1, 5, 5, 5}), Smooth(Median(3), {1, 1, 99, 1, 1, 5, 5, 5}));
}

TEST(SmoothMedian, OrdersInfinities) {
  const double infinite = std::numeric_limits<double>::infinity();
  Samples y = Noise(500);
  for (std::size_t i = 0; i < y.size(); i += 3) y[i] = i % 2 == 0 ? infinite : -infinite;
  for (std::uint32_t width : Numbers{5, 31, 201}) EXPECT_EQ(PlainMedian(y, width), Smooth(Median(width), y));
}

}  // namespace
