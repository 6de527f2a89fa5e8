#include <tslbl/closed/math/baseline/Polyline.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;
using testing::Each;
using testing::ElementsAre;

namespace {

Samples Drawn(const std::vector<Knot>& knots, std::size_t n) {
  Samples out(n, -1);
  DrawPolyline(knots, n, out.data());
  return out;
}

double PlainLevel(const std::vector<Knot>& knots, double position) {
  if (position <= knots.front().position) return knots.front().level;
  for (std::size_t k = 1; k < knots.size(); ++k) {
    const Knot& a = knots[k - 1];
    const Knot& b = knots[k];
    if (position <= b.position)
      return a.level + (position - a.position) / (b.position - a.position) * (b.level - a.level);
  }
  return knots.back().level;
}

TEST(Polyline, IsStraightFromKnotToKnotAndLevelBeyond) {
  EXPECT_THAT(Drawn({{2, 10}, {4, 20}, {5, 0}}, 8), ElementsAre(10, 10, 10, 15, 20, 0, 0, 0));
}

TEST(Polyline, OfOneKnotIsLevel) { EXPECT_THAT(Drawn({{3.5, 7}}, 9), Each(7.0)); }

TEST(Polyline, EqualsTheLinesBetweenNeighbours) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> uniform(0, 1);
  for (int round = 0; round < 300; ++round) {
    const std::size_t n = 1 + random() % 120;
    std::vector<Knot> knots;
    for (double position = 9 * uniform(random); position <= static_cast<double>(n - 1);
         position += 0.1 + 25 * uniform(random))
      knots.push_back({position, 100 * uniform(random)});
    if (knots.empty()) continue;
    const Samples drawn = Drawn(knots, n);
    for (std::size_t i = 0; i < n; ++i) {
      ASSERT_NEAR(drawn[i], PlainLevel(knots, static_cast<double>(i)), 1e-9) << i << " of " << n;
    }
  }
}

TEST(Polyline, OfALongCurveReachesItsEnd) {
  const Samples drawn = Drawn({{0, 0}, {90000, 90000}}, 90001);
  for (std::size_t i = 0; i < drawn.size(); i += 1000) EXPECT_NEAR(drawn[i], static_cast<double>(i), 1e-9);
}

}  // namespace
