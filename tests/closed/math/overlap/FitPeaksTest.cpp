#include <tslbl/closed/math/overlap/FitPeaks.h>

#include <gtest/gtest.h>

#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

TEST(FitPeaks, TakesTwoPeaksApart) {
  Random random(1);
  const SimulatedGroup group = SimulateGroup({.spacing = 1.25, .signalToNoise = 100}, random);
  const std::vector<std::int32_t> apexes = {21, 35};
  for (const bool hookeJeeves : {false, true}) {
    std::vector<FittedGaussian> results(2);
    ASSERT_TRUE(FitPeaks(hookeJeeves, group.x, group.y, apexes, 0, 5, results));
    for (std::size_t k = 0; k < 2; ++k) {
      EXPECT_NEAR(results[k].centre, group.centres[k], 4 * results[k].fit5);
      EXPECT_NEAR(results[k].height * results[k].a3 * std::sqrt(2 * std::numbers::pi), group.areas[k],
                  4 * results[k].fit6);
    }
  }
}

}  // namespace
