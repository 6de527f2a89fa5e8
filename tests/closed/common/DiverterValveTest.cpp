#include <gtest/gtest.h>

#include <tslbl/closed/common/DiverterValve.h>

namespace {

using TslCommon::DiverterValve;

TEST(DiverterValve, HasATextForEachState) {
  EXPECT_EQ(DiverterValve::ToStr(DiverterValve(DiverterValve::kToSource)), L"Source");
  EXPECT_EQ(DiverterValve::ToStr(DiverterValve(DiverterValve::kToWaste)), L"Waste");
  for (const std::uint32_t state : {2u, 3u, 0xFFFFFFFFu})
    EXPECT_EQ(DiverterValve::ToStr(DiverterValve(state)), L"Unknown");
}

TEST(DiverterValve, IsUnknownUntilItIsSet) { EXPECT_EQ(DiverterValve().State(), DiverterValve::kUnknown); }

TEST(DiverterValve, EqualsAValveInTheSameState) {
  EXPECT_EQ(DiverterValve(0), DiverterValve(DiverterValve::kToSource));
  EXPECT_NE(DiverterValve(0), DiverterValve(1));
}

}  // namespace
