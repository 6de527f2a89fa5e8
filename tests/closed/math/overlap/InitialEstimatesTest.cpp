#include <tslbl/closed/math/overlap/InitialEstimates.h>

#include <gtest/gtest.h>

#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

TEST(InitialEstimates, SeesEachPeak) {
  Random random(1);
  const SimulatedGroup group = SimulateGroup({.peaks = 4, .spacing = 1.5}, random);
  const std::vector<std::int32_t> places = InitialEstimates(true, 3, group.y);
  ASSERT_EQ(places.size(), 4u);
  for (std::size_t k = 0; k < 4; ++k) EXPECT_NEAR(places[k], group.centres[k], 2);
}

}  // namespace
