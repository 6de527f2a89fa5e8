#include <gtest/gtest.h>

#include <tool/chain/FlatTop.h>
#include <vector>

namespace tests {
namespace {

bool Has(const std::vector<double>& amplitudes) { return TslTool::HasFlatTop(amplitudes); }

TEST(FlatTop, IsFourOfTheHighestPointsOrMore) {
  EXPECT_FALSE(Has({0, 5, 9, 9, 9, 5, 0, 1}));
  EXPECT_TRUE(Has({0, 5, 9, 9, 9, 9, 5, 0, 1}));
  EXPECT_TRUE(Has({0, 5, 9, 5, 0, 5, 9, 9, 9, 9, 9, 5, 0, 1}));
}

TEST(FlatTop, IsFoundWhereItBegins) {
  EXPECT_EQ(TslTool::FindFlatTop(std::vector<double>{0, 5, 9, 5, 0, 5, 9, 9, 9, 9, 9, 5, 0, 1}), 6u);
}

TEST(FlatTop, IsHigherThanAllOthers) { EXPECT_FALSE(Has({0, 5, 9, 9, 9, 9, 5, 0, 1, 10, 1})); }

TEST(FlatTop, OfRoundedAmplitudesIsNone) {
  EXPECT_FALSE(Has({5, 6, 7, 8, 8, 8, 8, 8, 7, 6, 5}));
  EXPECT_FALSE(Has({5, 7, 8, 8, 8, 8, 8, 7, 5}));
}

TEST(FlatTop, StandsBetweenLowerPoints) {
  EXPECT_FALSE(Has({9, 9, 9, 9, 9, 0, 1}));
  EXPECT_FALSE(Has({1, 0, 9, 9, 9, 9, 9}));
  EXPECT_FALSE(Has({9, 9, 9, 9, 9}));
  EXPECT_FALSE(Has({}));
}

}  // namespace
}  // namespace tests
