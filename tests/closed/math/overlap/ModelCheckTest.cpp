#include <tslbl/closed/math/overlap/ModelCheck.h>

#include <gtest/gtest.h>

#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

constexpr double kSigma = 12 / kFwhmPerSigma;

SimulatedGroup Group(std::size_t peaks, double spacing) {
  Random random(2);
  return SimulateGroup({.peaks = peaks, .spacing = spacing, .signalToNoise = 100}, random);
}

TEST(ModelCheck, AddsAPeakThatIsMissing) {
  const SimulatedGroup group = Group(3, 1.1);
  const std::vector<double> centres =
      ModelCheck(group.y, {}, kSigma).AddMissing({group.centres[0], group.centres[2]});
  ASSERT_EQ(centres.size(), 3u);
  for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(centres[k], group.centres[k], 1.5);
}

TEST(ModelCheck, SplitsOnePeakThatIsTwo) {
  const SimulatedGroup group = Group(2, 1.0);
  const double middle = (group.centres[0] + group.centres[1]) / 2;
  EXPECT_EQ(ModelCheck(group.y, {}, kSigma).AddMissing({middle}).size(), 2u);
}

TEST(ModelCheck, RefinesThePlaces) {
  const SimulatedGroup group = Group(2, 1.5);
  const std::vector<double> centres =
      ModelCheck(group.y, {}, kSigma).AddMissing({group.centres[0] - 2, group.centres[1] + 2});
  ASSERT_EQ(centres.size(), 2u);
  EXPECT_NEAR(centres[0], group.centres[0], 0.2);
  EXPECT_NEAR(centres[1], group.centres[1], 0.2);
}

// A bump of 5 % of the height, as a filter may leave it.
TEST(ModelCheck, AddsNothingWithinTheDistortion) {
  Random random(2);
  SimulatedGroup group = SimulateGroup({.peaks = 1, .signalToNoise = 100}, random);
  for (std::size_t i = 0; i < group.y.size(); ++i)
    group.y[i] += 500 * ShapeAt(group.x[i] - group.centres[0] - 16, 4, 4);
  EXPECT_GT(ModelCheck(group.y, {1, 0}, kSigma).AddMissing({group.centres[0]}).size(), 1u);
  EXPECT_EQ(ModelCheck(group.y, {1, 0.05}, kSigma).AddMissing({group.centres[0]}).size(), 1u);
}

TEST(ModelCheck, LeavesTooManyPeaksAlone) {
  const SimulatedGroup group = Group(2, 1.5);
  const std::vector<double> many(61, 20.0);
  EXPECT_EQ(ModelCheck(group.y, {}, kSigma).AddMissing(many), many);
}

}  // namespace
