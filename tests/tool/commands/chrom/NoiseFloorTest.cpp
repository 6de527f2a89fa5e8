#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include <tool/commands/chrom/NoiseFloor.h>
#include <tslbl/chromatogram/ICObj.h>

namespace tests {
namespace {

using TslTool::LeastNoise;

TEST(LeastNoise, IsAMillionthOfTheSpan) {
  EXPECT_DOUBLE_EQ(LeastNoise({-1e6, 0.1, 0.3, 0.7, 0.8, 2.25, 1e6}), 2.0);
}

TEST(LeastNoise, IsWhatRoundingToStepsLeaves) {
  EXPECT_DOUBLE_EQ(LeastNoise({2.0, 4.0, 8.0, 6.0, 2.0}), 2.0 / std::sqrt(12.0));
}

TEST(LeastNoise, IsTheLowestValueWhereLowerOnesWereCut) {
  EXPECT_DOUBLE_EQ(LeastNoise({0.0, 0.0, 37.0, 151.5, 0.0}), 37.0);
}

TEST(LeastNoise, IsNothingForAConstant) { EXPECT_EQ(LeastNoise({0.0, 0.0, 0.0}), 0.0); }

TEST(RaiseNoise, NeverLowersIt) {
  TslTool::Chromatogram measured;
  measured.values = {0.0, 0.0, 37.0, 151.5, 0.0};
  TslBL::ICObj curve;
  curve.noise = {0.0, 50.0, 0.0, 0.0, 0.0};
  TslTool::RaiseNoise(measured, curve);
  EXPECT_EQ(curve.noise[1], 50.0);
  EXPECT_DOUBLE_EQ(curve.noise[0], 37.0);
}

}  // namespace
}  // namespace tests
