#include <tslbl/closed/math/peak/TypicalOfKinds.h>

#include <gtest/gtest.h>

using TslMath::TypicalOfKinds;

namespace {

TEST(TypicalOfKinds, IsTheWeightedMedian) {
  EXPECT_EQ(TypicalOfKinds({{10, 1}, {9, 1}, {8, 1}}, 0.25), 9.0);
  EXPECT_EQ(TypicalOfKinds({{10, 3}, {9, 1}, {8, 1}}, 0.25), 10.0);
  EXPECT_EQ(TypicalOfKinds({{7, 1}}, 0.25), 7.0);
}

TEST(TypicalOfKinds, OfEqualHalvesIsTheLower) { EXPECT_EQ(TypicalOfKinds({{9, 1}, {8, 1}}, 0.25), 8.0); }

TEST(TypicalOfKinds, IsThatOfTheNarrowOnesIfTheyHaveTheShare) {
  EXPECT_EQ(TypicalOfKinds({{10, 3}, {5, 1}}, 0.25), 5.0);
  EXPECT_EQ(TypicalOfKinds({{10, 3}, {5, 0.9}}, 0.25), 10.0);
  EXPECT_EQ(TypicalOfKinds({{10, 9}, {5, 1}}, 0.1), 5.0);
}

TEST(TypicalOfKinds, OfWidthsMuchAlikeIsTheMedian) {
  EXPECT_EQ(TypicalOfKinds({{10, 3}, {6, 1}}, 0.25), 10.0);
  EXPECT_EQ(TypicalOfKinds({{10, 3}, {5.9, 1}}, 0.25), 5.9);
}

}  // namespace
