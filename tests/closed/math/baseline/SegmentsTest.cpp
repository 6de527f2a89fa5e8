#include <tslbl/closed/math/baseline/Segments.h>

#include <gtest/gtest.h>

#include <cmath>

using TslMath::Segments;

namespace {

constexpr std::size_t kPoints[] = {1, 2, 3, 7, 10, 99, 250, 375, 374, 625, 20000, 59901, 70000, 4000000000};
constexpr std::size_t kLengths[] = {1, 2, 3, 7, 10, 99, 250, 70001};

template <class Check>
void ForSegments(Check check) {
  for (const std::size_t n : kPoints) {
    for (const std::size_t length : kLengths) {
      SCOPED_TRACE(testing::Message() << n << " points, segments of " << length);
      check(Segments(n, length), n, length);
    }
  }
}

// Some of very many.
std::size_t Stride(const Segments& segments) { return 1 + segments.Count() / 1000; }

TEST(Segments, AreAsManyAsTheLengthGoesIntoTheCurve) {
  ForSegments([](const Segments& segments, std::size_t n, std::size_t length) {
    const double wanted = std::floor(static_cast<double>(n) / static_cast<double>(length) + 0.5);
    EXPECT_EQ(static_cast<double>(segments.Count()), std::max(wanted, 1.0));
  });
}

TEST(Segments, HoldEachPointOnce) {
  ForSegments([](const Segments& segments, std::size_t n, std::size_t) {
    EXPECT_EQ(segments.Begin(0), 0U);
    EXPECT_EQ(segments.Begin(segments.Count()), n);
  });
}

TEST(Segments, AreOfNearlyEqualLength) {
  ForSegments([](const Segments& segments, std::size_t n, std::size_t) {
    for (std::size_t k = 0; k < segments.Count(); k += Stride(segments)) {
      const std::size_t length = segments.Begin(k + 1) - segments.Begin(k);
      ASSERT_GE(length, n / segments.Count());
      ASSERT_LE(length, n / segments.Count() + 1);
      ASSERT_LE(length, segments.Longest());
      ASSERT_GT(length, 0U);
    }
  });
}

TEST(Segments, HaveTheirCentreMidwayBetweenTheirPoints) {
  ForSegments([](const Segments& segments, std::size_t, std::size_t) {
    for (std::size_t k = 0; k < segments.Count(); k += Stride(segments)) {
      const auto first = static_cast<double>(segments.Begin(k));
      const auto last = static_cast<double>(segments.Begin(k + 1) - 1);
      ASSERT_EQ(segments.Centre(k), (first + last) / 2);
    }
  });
}

}  // namespace
