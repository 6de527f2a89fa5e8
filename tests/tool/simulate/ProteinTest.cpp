#include <tool/simulate/Protein.h>

#include <gtest/gtest.h>

namespace tests {
namespace {

using TslTool::CountRange;
using TslTool::Instrument;
using TslTool::ScannedCharges;

std::vector<double> SharesOf(const CountRange& charges) {
  std::vector<double> shares;
  for (const auto& state : TslTool::InfusedProtein("a", 20000.0, charges, 1.0).charges)
    shares.push_back(state.share);
  return shares;
}

// A Gaussian that is a tenth at the ends is 0.1^(1/4) half way to them.
TEST(Protein, ChargesFollowAGaussianAroundTheMiddleOfTheirRange) {
  const std::vector<double> shares = SharesOf({10, 14});
  const std::vector<double> expected = {0.1, std::pow(0.1, 0.25), 1.0, std::pow(0.1, 0.25), 0.1};
  ASSERT_EQ(shares.size(), expected.size());
  for (std::size_t i = 0; i < shares.size(); ++i) EXPECT_NEAR(shares[i], expected[i], 1e-12);
}

TEST(Protein, TheHighestChargeHasAllOfTheHeight) {
  EXPECT_EQ(SharesOf({7, 7}), std::vector<double>{1.0});
  EXPECT_EQ(SharesOf({7, 8}), (std::vector<double>{1.0, 1.0}));
  const std::vector<double> even = SharesOf({10, 13});
  EXPECT_EQ(even[1], 1.0);
  EXPECT_EQ(even[2], 1.0);
  EXPECT_EQ(even[0], even[3]);
}

TEST(Protein, ScannedChargesAreThoseWhoseMzIsScanned) {
  const Instrument instrument{.mzLow = 400.0, .mzHigh = 900.0};
  for (const double mass : {500.0, 8000.0, 16951.5, 150000.0}) {
    const CountRange scanned = ScannedCharges(mass, instrument);
    for (std::uint32_t charge = 1; charge < 500; ++charge) {
      const double mz = (mass + charge * 1.00727646688) / charge;
      EXPECT_EQ(charge >= scanned.from && charge <= scanned.to, mz >= 400.0 && mz <= 900.0) << charge;
    }
  }
}

TEST(Protein, WhatFitsNowhereHasNoScannedCharge) {
  const CountRange scanned = ScannedCharges(5000.0, {.mzLow = 1010.0, .mzHigh = 1240.0});
  EXPECT_GT(scanned.from, scanned.to);
}

TEST(Protein, HasOneChargeForEach100DaAtMost) {
  EXPECT_EQ(TslTool::MostCharges(500.0), 5U);
  EXPECT_EQ(TslTool::MostCharges(16951.5), 169U);
}

TEST(Protein, UsualChargesAreAtMz700To1500) {
  EXPECT_EQ(TslTool::UsualCharges(16951.5), (CountRange{12, 24}));
  EXPECT_EQ(TslTool::UsualCharges(500.0), (CountRange{1, 1}));
  EXPECT_EQ(TslTool::UsualCharges(1300.0), (CountRange{1, 1}));
}

TEST(Protein, RangesWithoutACommonChargeHaveAnEmptyOne) {
  EXPECT_EQ(TslTool::Common({3, 9}, {5, 20}), (CountRange{5, 9}));
  const CountRange none = TslTool::Common({3, 4}, {5, 20});
  EXPECT_GT(none.from, none.to);
}

}  // namespace
}  // namespace tests
