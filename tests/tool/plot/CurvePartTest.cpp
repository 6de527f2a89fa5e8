#include <tool/plot/CurvePart.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslTool::CurvePart;

const std::vector<double> kX = {1, 2, 3, 4, 5};

TEST(CurvePart, ReachesFromThePointBeforeToTheOneBehind) {
  EXPECT_THAT(CurvePart(kX, {2.5, 3.5}).Of(kX), ElementsAre(2, 3, 4));
  EXPECT_THAT(CurvePart(kX, {2.2, 2.8}).Of(kX), ElementsAre(2, 3));
  EXPECT_THAT(CurvePart(kX, {0.0, 9.0}).Of(kX), ElementsAre(1, 2, 3, 4, 5));
}

TEST(CurvePart, BeyondTheCurveIsItsLastPoint) {
  EXPECT_THAT(CurvePart(kX, {7.0, 9.0}).Of(kX), ElementsAre(5));
  EXPECT_THAT(CurvePart(kX, {-2.0, 0.0}).Of(kX), ElementsAre(1));
  EXPECT_TRUE(CurvePart({}, {1.0, 2.0}).Of({}).empty());
}

TEST(CurvePart, OfFewerValuesIsNothing) {
  EXPECT_TRUE(CurvePart(kX, {2.5, 3.5}).Of({1, 2, 3}).empty());
  EXPECT_TRUE(CurvePart(kX, {2.5, 3.5}).Of({}).empty());
}

}  // namespace
}  // namespace tests
