#include <tslbl/closed/math/Lanes.h>
#include <tslbl/closed/math/peak/CubicSegment.h>
#include <tslbl/closed/math/peak/IntervalBounds.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;

namespace {

struct Bounds {
  Samples y, curvature, lower, upper;

  explicit Bounds(std::size_t count)
      : y(Room(count)), curvature(Room(count)), lower(Room(count)), upper(Room(count)) {
    std::mt19937 random(static_cast<std::uint32_t>(count));
    std::uniform_real_distribution<double> uniform(-10, 10);
    for (double& v : y) v = uniform(random);
    for (double& v : curvature) v = 4 * uniform(random);
    BoundIntervals(y.data(), curvature.data(), count, lower.data(), upper.data());
  }

  CubicSegment Segment(std::size_t i) const { return {y[i], y[i + 1], curvature[i], curvature[i + 1]}; }
  CubicSegment Mirrored(std::size_t i) const { return {y[i + 1], y[i], curvature[i + 1], curvature[i]}; }

 private:
  static std::size_t Room(std::size_t count) { return WholeGroups(count) + 1; }
};

template <class Check>
void ForIntervals(Check check) {
  for (const std::size_t count : {1U, 3U, 4U, 5U, 63U, 500U}) {
    const Bounds bounds(count);
    for (std::size_t i = 0; i < count; ++i) ASSERT_NO_FATAL_FAILURE(check(bounds, i));
  }
}

TEST(IntervalBounds, HoldTheCurveBetweenThem) {
  ForIntervals([](const Bounds& bounds, std::size_t i) {
    for (int k = 0; k <= 50; ++k) {
      const double value = bounds.Segment(i).Value(0.02 * k);
      ASSERT_GE(value, bounds.lower[i] - 1e-12);
      ASSERT_LE(value, bounds.upper[i] + 1e-12);
    }
  });
}

TEST(IntervalBounds, AreNotAboveTheLowerBoundOfTheInterval) {
  ForIntervals([](const Bounds& bounds, std::size_t i) {
    ASSERT_LE(bounds.lower[i], bounds.Segment(i).LowerBound());
    ASSERT_LE(bounds.lower[i], bounds.Mirrored(i).LowerBound());
  });
}

// The Bezier points of a cubic lie on the lines that touch it at its ends.
TEST(IntervalBounds, AreThoseOfTheBezierPoints) {
  ForIntervals([](const Bounds& bounds, std::size_t i) {
    const double y0 = bounds.y[i], y1 = bounds.y[i + 1];
    const double slope0 = y1 - y0 - (2 * bounds.curvature[i] + bounds.curvature[i + 1]) / 6;
    const double slope1 = y1 - y0 + (bounds.curvature[i] + 2 * bounds.curvature[i + 1]) / 6;
    const Samples bezier{y0, y0 + slope0 / 3, y1 - slope1 / 3, y1};
    ASSERT_NEAR(bounds.lower[i], *std::min_element(bezier.begin(), bezier.end()), 1e-12);
    ASSERT_NEAR(bounds.upper[i], *std::max_element(bezier.begin(), bezier.end()), 1e-12);
  });
}

}  // namespace
