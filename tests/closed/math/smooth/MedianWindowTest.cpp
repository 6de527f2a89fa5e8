#include <tslbl/closed/math/smooth/MedianWindow.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <random>
#include <set>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Samples Digits(std::size_t n) {
  std::mt19937 random(13);
  Samples y(n);
  for (double& v : y) v = static_cast<double>(random() % 50) - 25;
  return y;
}

Samples Falling(std::size_t n) {
  Samples y(n);
  for (std::size_t i = 0; i < n; ++i) y[i] = -static_cast<double>(i);
  return y;
}

// The samples first .. first + size - 1 slide to the right, and each rank is asked for in turn.
template <class Window>
void ExpectRanks(Window& window, const Samples& y, std::size_t first, std::size_t size) {
  std::multiset<double> plain;
  for (std::size_t i = first; i < first + size; ++i) {
    window.Insert(i);
    plain.insert(y[i]);
  }
  for (std::size_t i = first; i + size < y.size(); ++i) {
    const std::size_t rank = i * 7919 % size;
    ASSERT_EQ(window.Ranked(rank), *std::next(plain.begin(), static_cast<std::ptrdiff_t>(rank))) << i;
    if (i % 3 == 0) {
      window.Erase(i);
      window.Insert(i + size);
    } else {
      window.Replace(i, i + size);
    }
    plain.erase(plain.find(y[i]));
    plain.insert(y[i + size]);
  }
}

TEST(OrderedKey, IsInTheOrderOfTheDoubles) {
  const Samples ascending{-kInfinity,
                          -1e300,
                          -2,
                          -1e-320,
                          -0.0,
                          0.0,
                          1e-320,
                          2,
                          1e300,
                          kInfinity,
                          std::numeric_limits<double>::quiet_NaN()};
  for (std::size_t k = 1; k < ascending.size(); ++k)
    EXPECT_LT(OrderedKey(ascending[k - 1]), OrderedKey(ascending[k])) << ascending[k];
}

TEST(OrderedKey, LeadsBackToItsValue) {
  for (const double value : {-kInfinity, -2.5, -0.0, 0.0, 1e-320, 3.25, kInfinity})
    EXPECT_EQ(std::bit_cast<std::uint64_t>(ValueOfKey(OrderedKey(value))),
              std::bit_cast<std::uint64_t>(value));
}

TEST(SortedWindow, TellsEveryRank) {
  const Samples y = Digits(700);
  for (const std::size_t size : {1U, 2U, 5U, 64U, 300U}) {
    SortedWindow window(y.data(), size + 1);
    ExpectRanks(window, y, 0, size);
  }
}

TEST(RankWindow, TellsEveryRank) {
  const Samples y = Digits(700);
  for (const std::size_t size : {1U, 2U, 5U, 64U, 300U}) {
    RankWindow window(y.data(), 0, y.size());
    ExpectRanks(window, y, 0, size);
  }
}

TEST(RankWindow, MayBeginAnywhere) {
  const Samples y = Digits(700);
  RankWindow window(y.data(), 300, 700);
  ExpectRanks(window, y, 300, 50);
}

TEST(RankWindow, HoldsMoreSamplesThanSixteenBitsCount) {
  const Samples y = Falling(90000);
  RankWindow window(y.data(), 0, y.size());
  for (std::size_t i = 0; i < y.size(); ++i) window.Insert(i);
  for (const std::size_t below : {0U, 1U, 45000U, 70000U, 89999U, 3U})
    EXPECT_EQ(window.Ranked(below), static_cast<double>(below) - 89999);
  for (std::size_t i = 0; i < 80000; ++i) window.Erase(i);
  EXPECT_EQ(window.Ranked(0), -89999);
  EXPECT_EQ(window.Ranked(9999), -80000);
}

}  // namespace
