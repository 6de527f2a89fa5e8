#include <tslbl/closed/math/peak/CubicSegment.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using TslMath::CubicSegment;

namespace {

struct Ends {
  double y0, y1, curvature0, curvature1;

  CubicSegment Segment() const { return {y0, y1, curvature0, curvature1}; }
};

template <class Check>
void ForRandomSegments(Check check) {
  std::mt19937 random(6);
  std::uniform_real_distribution<double> uniform(-10, 10);
  for (int round = 0; round < 2000; ++round) {
    const Ends ends{uniform(random), uniform(random), 4 * uniform(random), 4 * uniform(random)};
    ASSERT_NO_FATAL_FAILURE(check(ends));
  }
}

// Exact for cubics and fifth powers: Gauss's rule with three places.
template <class F>
double Integral(double from, double to, F f) {
  const double middle = (from + to) / 2;
  const double reach = (to - from) / 2 * std::sqrt(0.6);
  return (to - from) / 18 * (5 * f(middle - reach) + 8 * f(middle) + 5 * f(middle + reach));
}

TEST(CubicSegment, HasTheValuesAndTheCurvaturesOfItsEnds) {
  ForRandomSegments([](const Ends& e) {
    const CubicSegment segment = e.Segment();
    constexpr double h = 1e-3;
    const auto curvature = [&](double t) {
      return (segment.Value(t - h) - 2 * segment.Value(t) + segment.Value(t + h)) / (h * h);
    };
    ASSERT_NEAR(segment.Value(0), e.y0, 1e-12);
    ASSERT_NEAR(segment.Value(1), e.y1, 1e-12);
    ASSERT_NEAR(curvature(0), e.curvature0, 1e-6);
    ASSERT_NEAR(curvature(1), e.curvature1, 1e-6);
  });
}

TEST(CubicSegment, WithItsEndsExchangedIsMirrored) {
  ForRandomSegments([](const Ends& e) {
    const CubicSegment mirrored(e.y1, e.y0, e.curvature1, e.curvature0);
    for (const double t : {0.0, 0.25, 0.7, 1.0})
      ASSERT_NEAR(e.Segment().Value(t), mirrored.Value(1 - t), 1e-12);
  });
}

TEST(CubicSegment, HasItsIntegralAndItsMoment) {
  ForRandomSegments([](const Ends& e) {
    const CubicSegment s = e.Segment();
    for (const auto& [t0, t1] : {std::pair{0.0, 1.0}, {0.0, 0.4}, {0.3, 0.9}, {0.6, 0.6}}) {
      ASSERT_NEAR(s.Integral(1.5, t0, t1), Integral(t0, t1, [&](double t) { return s.Value(t) - 1.5; }),
                  1e-12);
      ASSERT_NEAR(s.Moment(t0, t1), Integral(t0, t1, [&](double t) { return t * s.Value(t); }), 1e-12);
    }
  });
}

TEST(CubicSegment, IsNowhereBelowItsLowerBound) {
  ForRandomSegments([](const Ends& e) {
    const CubicSegment s = e.Segment();
    for (int k = 0; k <= 100; ++k) ASSERT_GE(s.Value(0.01 * k), s.LowerBound() - 1e-12);
  });
}

// By the signs of the slope at many places.
TEST(CubicSegment, FindsItsExtrema) {
  ForRandomSegments([](const Ends& e) {
    const CubicSegment s = e.Segment();
    const CubicSegment::Extrema found = s.FindExtrema();
    constexpr int kPlaces = 1000;
    int expected = 0;
    bool rose = s.Value(1e-3) > s.Value(0);
    for (int k = 1; k < kPlaces; ++k) {
      const bool rises = s.Value((k + 1.0) / kPlaces) > s.Value(static_cast<double>(k) / kPlaces);
      if (rises != rose) {
        ASSERT_LT(expected, found.count);
        ASSERT_NEAR(found.t[expected++], static_cast<double>(k) / kPlaces, 1.5 / kPlaces);
      }
      rose = rises;
    }
    // Two that are nearer than the places, or in the first or last of them, may be missed.
    for (int k = expected; k < found.count; ++k)
      ASSERT_TRUE(expected == 0 || found.t[k] < 2e-3 || found.t[k] > 0.998);
  });
}

// (t - 1/2)^3 is level in the middle, and rises on both sides.
TEST(CubicSegment, HasNoExtremumWhereItIsLevelButRises) {
  EXPECT_EQ(CubicSegment(-0.125, 0.125, -3, 3).FindExtrema().count, 0);
}

TEST(CubicSegment, FallsBelowALevelAtTheFirstPlaceWhereItDoes) {
  ForRandomSegments([](const Ends& e) {
    const CubicSegment s = e.Segment();
    for (const double from : {0.0, 0.35}) {
      const double level = std::min(s.Value(from), (e.y0 + 2 * e.y1) / 3);
      const double found = s.FirstBelow(level, from);
      const double end = found < 0 ? 1 : found;
      for (double t = from; t < end - 1e-9; t += 0.01) ASSERT_GE(s.Value(t), level - 1e-9) << t;
      if (found < 0) continue;
      ASSERT_GE(found, from);
      ASSERT_LE(found, 1);
      ASSERT_NEAR(s.Value(found), level, 1e-9);
      ASSERT_LT(s.Value(std::min(1.0, found + 1e-7)), level + 1e-9);
    }
  });
}

TEST(CubicSegment, IsBelowALevelAtOnceWhereItStartsBelow) {
  EXPECT_EQ(CubicSegment(3, 5, 0, 0).FirstBelow(4, 0), 0);
  EXPECT_EQ(CubicSegment(5, 3, 0, 0).FirstBelow(4.5, 0.5), 0.5);
  EXPECT_EQ(CubicSegment(3, 5, 0, 0).FirstBelow(3, 0), -1);
}

}  // namespace
