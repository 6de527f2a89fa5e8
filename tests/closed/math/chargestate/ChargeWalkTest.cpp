#include <tslbl/closed/math/chargestate/ChargeWalk.h>

#include <gtest/gtest.h>

#include "SimulatedSeries.h"

using namespace TslMath;
using namespace tests;

namespace {

constexpr Tolerance kTolerance{3e-4, 1e-3};

// A walk over peaks of 12 000 Da at these charges, all of one intensity or of those given.
class Walked {
 public:
  explicit Walked(const std::vector<int>& charges, std::int32_t maxGaps = 1,
                  std::vector<double> intensities = {})
      : rows_(Rows(charges, intensities)),
        peaks_(rows_, kProton, kTolerance.window),
        places_(peaks_, kTolerance.window),
        owned_(peaks_.Count(), 0),
        walk_(peaks_, places_, owned_, {kProton, maxGaps}) {
    walk_.SetTolerance(kTolerance);
  }

  bool Follow(std::int32_t seed, double mass = 12000) { return walk_.Follow(mass, seed, run); }
  bool MayHave(std::size_t members, std::int32_t seed) const { return walk_.MayHave(members, 12000, seed); }
  bool IsPartOf(std::int32_t parts) const { return walk_.IsPartOf(parts, 12000.0 / parts, run); }
  void WorkOutForAll() { walk_.SetToleranceOfMany(kTolerance); }
  void Own(int charge) {
    for (std::size_t i = 0; i < peaks_.Count(); ++i)
      if (std::abs(12000.0 / charge + kProton - peaks_[i].mz) < 0.01) owned_[i] = 1;
  }

  std::vector<int> Charges() const {
    std::vector<int> charges;
    for (const ChargedPeak& member : run.members) charges.push_back(member.charge);
    return charges;
  }

  ChargeRun run;

 private:
  static std::vector<IonPeak> Rows(const std::vector<int>& charges, const std::vector<double>& intensities) {
    std::vector<IonPeak> rows;
    for (std::size_t k = 0; k < charges.size(); ++k) {
      const double intensity = intensities.empty() ? 1000 : intensities[k];
      rows.push_back({12000.0 / charges[k] + kProton, intensity, intensity, 50, 1000});
    }
    return rows;
  }

  std::vector<IonPeak> rows_;
  RankedPeaks peaks_;
  PlaceMap places_;
  std::vector<char> owned_;
  ChargeWalk walk_;
};

TEST(ChargeWalk, TakesTheChargesOnBothSidesOfItsSeed) {
  Walked walked({10, 11, 12, 13, 14});
  for (const std::int32_t seed : {10, 12, 14}) {
    ASSERT_TRUE(walked.Follow(seed));
    EXPECT_EQ(walked.Charges(), (std::vector<int>{10, 11, 12, 13, 14}));
    EXPECT_EQ(walked.run.unowned, 5U);
  }
}

TEST(ChargeWalk, EndsWhereMoreChargesLackThanMay) {
  const std::vector<int> charges = {8, 9, 10, 12, 13, 16, 17};
  Walked none(charges, 0);
  ASSERT_TRUE(none.Follow(9));
  EXPECT_EQ(none.Charges(), (std::vector<int>{8, 9, 10}));
  Walked one(charges, 1);
  ASSERT_TRUE(one.Follow(9));
  EXPECT_EQ(one.Charges(), (std::vector<int>{8, 9, 10, 12, 13}));
  Walked two(charges, 2);
  ASSERT_TRUE(two.Follow(9));
  EXPECT_EQ(two.Charges(), charges);
}

TEST(ChargeWalk, FindsNothingWithoutASeedOrASecondCharge) {
  Walked walked({10, 14});
  EXPECT_FALSE(walked.Follow(12));
  EXPECT_FALSE(walked.Follow(10));
  EXPECT_FALSE(walked.Follow(0));
  EXPECT_FALSE(walked.Follow(200));
}

TEST(ChargeWalk, CountsNothingForPeaksOfOthers) {
  Walked walked({10, 11, 12, 13, 14});
  ASSERT_TRUE(walked.Follow(12));
  const double before = walked.run.score;
  walked.Own(11);
  ASSERT_TRUE(walked.Follow(12));
  EXPECT_LT(walked.run.score, before);
  EXPECT_EQ(walked.run.members.size(), 5U);
  EXPECT_EQ(walked.run.unowned, 4U);
}

TEST(ChargeWalk, ScoresPlacesThatFitHigher) {
  Walked walked({10, 11, 12, 13, 14});
  ASSERT_TRUE(walked.Follow(12));
  const double exact = walked.run.score;
  ASSERT_TRUE(walked.Follow(12, 12004));
  EXPECT_LT(walked.run.score, exact);
}

TEST(ChargeWalk, ScoresAnEnvelopeHigherThanLeaps) {
  Walked envelope({10, 11, 12, 13, 14}, 1, {100, 1000, 3000, 1000, 100});
  Walked leaps({10, 11, 12, 13, 14}, 1, {1000, 100, 3000, 100, 1000});
  ASSERT_TRUE(envelope.Follow(12));
  ASSERT_TRUE(leaps.Follow(12));
  EXPECT_GT(envelope.run.score, leaps.run.score + 3);
}

// Charges 20 to 28, of which every second is a charge of half the mass.
TEST(ChargeWalk, TellsThatARunIsEverySecondChargeOfAnother) {
  Walked all({20, 21, 22, 23, 24, 25, 26, 27, 28});
  ASSERT_TRUE(all.Follow(12, 6000));
  EXPECT_EQ(all.Charges(), (std::vector<int>{10, 11, 12, 13, 14}));
  EXPECT_TRUE(all.IsPartOf(2));
  EXPECT_FALSE(all.IsPartOf(3));
  Walked half({20, 22, 24, 26, 28});
  ASSERT_TRUE(half.Follow(12, 6000));
  EXPECT_FALSE(half.IsPartOf(2));
}

TEST(ChargeWalk, HasARunStandAloneWhereTheChargesBetweenAreFarWeaker) {
  Walked walked({20, 21, 22, 23, 24, 25, 26, 27, 28}, 1, {100, 10, 100, 10, 100, 10, 100, 10, 100});
  ASSERT_TRUE(walked.Follow(12, 6000));
  EXPECT_FALSE(walked.IsPartOf(2));
}

TEST(ChargeWalk, TakesHigherChargesTheNarrowerTheWindow) {
  EXPECT_EQ(ChargeWalk::MostCharge(1e-3), 199);
  EXPECT_EQ(ChargeWalk::MostCharge(2e-3), 99);
  EXPECT_EQ(ChargeWalk::MostCharge(1e-5), 400);
  EXPECT_EQ(ChargeWalk::MostCharge(0.3), 1);
}

TEST(ChargeWalk, IsTheSameWorkedOutForAllPeaks) {
  Walked walked({10, 11, 12, 13, 14}, 1, {100, 1000, 3000, 1000, 100});
  ASSERT_TRUE(walked.Follow(12, 12003));
  const double once = walked.run.score;
  walked.WorkOutForAll();
  ASSERT_TRUE(walked.Follow(12, 12003));
  EXPECT_DOUBLE_EQ(walked.run.score, once);
}

TEST(ChargeWalk, KnowsBeforehandWhatIsTooSmall) {
  const Walked walked({10, 11, 12, 14, 15});
  EXPECT_TRUE(walked.MayHave(5, 11));
  EXPECT_FALSE(walked.MayHave(6, 11));
}

}  // namespace
