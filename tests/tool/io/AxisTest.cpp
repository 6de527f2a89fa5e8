#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include <tool/io/Axis.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslTool::RepairAxis;
using Values = std::vector<double>;

TEST(Axis, LeavesAnAscendingAxisAlone) {
  Values mz = {1, 2, 3}, amplitude = {7, 8, 9};
  const auto repair = RepairAxis(mz, amplitude);
  EXPECT_FALSE(repair.first || repair.disorder);
  EXPECT_THAT(amplitude, ElementsAre(7, 8, 9));
  EXPECT_EQ(DescribeRepair(repair, "line 1"), "");
}

TEST(Axis, ExchangesPairs) {
  Values mz = {2, 1, 3, 5, 4}, amplitude = {1, 2, 3, 4, 5};
  const auto repair = RepairAxis(mz, amplitude);
  EXPECT_THAT(mz, ElementsAre(1, 2, 3, 4, 5));
  EXPECT_THAT(amplitude, ElementsAre(2, 1, 3, 5, 4));
  EXPECT_EQ(repair.exchanged, 2u);
  EXPECT_EQ(repair.first, 1u);
}

// Segments overlap by the zeros that frame them.
TEST(Axis, LeavesZerosOutThatStepBack) {
  Values mz = {1, 2, 3, 2.5, 3.5, 4}, amplitude = {0, 5, 7, 0, 0, 6};
  const auto repair = RepairAxis(mz, amplitude);
  EXPECT_THAT(mz, ElementsAre(1, 2, 3, 3.5, 4));
  EXPECT_THAT(amplitude, ElementsAre(0, 5, 7, 0, 6));
  EXPECT_EQ(repair.dropped, 1u);
  EXPECT_EQ(repair.exchanged, 0u);
  EXPECT_EQ(repair.first, 3u);
  EXPECT_EQ(DescribeRepair(repair, "line 4"),
            "m/z does not ascend everywhere (first at line 4): 1 zero that stepped back left out");
}

TEST(Axis, DoesNotMoveAPointByTwoPlaces) {
  Values back = {1, 3, 4, 2}, forth = {1, 4, 2, 3}, amplitude(4);
  EXPECT_EQ(RepairAxis(back, amplitude).disorder, 3u);
  EXPECT_EQ(RepairAxis(forth, amplitude).disorder, 3u);
}

TEST(Axis, AveragesEveryRunOfEqualValues) {
  Values mz = {1, 1, 1, 2, 3, 3}, amplitude = {3, 6, 9, 1, 4, 8};
  const auto repair = RepairAxis(mz, amplitude);
  EXPECT_THAT(mz, ElementsAre(1, 2, 3));
  EXPECT_THAT(amplitude, ElementsAre(6, 1, 6));
  EXPECT_EQ(repair.merged, 3u);
}

TEST(Axis, AveragesWhatAnExchangeBroughtTogether) {
  Values mz = {1, 2, 1, 3}, amplitude = {2, 5, 4, 6};
  const auto repair = RepairAxis(mz, amplitude);
  EXPECT_THAT(mz, ElementsAre(1, 2, 3));
  EXPECT_THAT(amplitude, ElementsAre(3, 5, 6));
  EXPECT_EQ(DescribeRepair(repair, "line 2"),
            "m/z does not ascend everywhere (first at line 2): 1 pair of neighbouring points put in order, 1 "
            "point with a "
            "repeated m/z averaged");
}

TEST(Axis, TakesAnEmptyAxis) {
  Values none, nothing;
  EXPECT_FALSE(RepairAxis(none, nothing).first);
}

TEST(Axis, SortsPeaksAndKeepsEqualOnesInTheirOrder) {
  Values mz = {3, 1, 2, 1}, amplitude = {1, 2, 3, 4};
  TslTool::SortPeaks(mz, amplitude);
  EXPECT_THAT(mz, ElementsAre(1, 1, 2, 3));
  EXPECT_THAT(amplitude, ElementsAre(2, 4, 3, 1));
}

TEST(Axis, AscendsIfEachValueIsFiniteAndLargerThanTheOneBefore) {
  for (const Values& mz : {Values{}, Values{5}, Values{-1, 0, 2.5}}) EXPECT_TRUE(TslTool::Ascends(mz));
  for (const Values& mz : {Values{1, 1}, Values{1, 3, 2}, Values{1, NAN}, Values{1, INFINITY}})
    EXPECT_FALSE(TslTool::Ascends(mz));
}

}  // namespace
}  // namespace tests
