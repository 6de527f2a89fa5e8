#include <tool/commands/decon/PeakShares.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tests {
namespace {

using TslBL::CSSeries;
using TslBL::DeconSpectrum;
using TslTool::PeakShares;

constexpr std::uint32_t kFirst = 12;  // charge of the dimer

double OfDimer(std::uint32_t charge) { return 100.0 * std::exp(-0.02 * std::pow(charge - 17.0, 2.0)); }
double OfMonomer(std::uint32_t charge) { return 800.0 * std::exp(-0.1 * std::pow(charge - 8.0, 2.0)); }

void AddMember(TslBL::CSSeriesInfo& series, std::uint32_t peak, std::uint32_t charge) {
  TslBL::CSSeriesPeakInfo& member = series.Peaks.emplace_back();
  member.PeakId = peak;
  member.Charge = charge;
}

// A dimer of charges 12 to 22 and a monomer of 6 to 11, all of which it shares.
struct Complex {
  Complex() {
    spectrum.Series.resize(2);
    spectrum.Series[0].Series = {CSSeries::Unresolved, 1};
    spectrum.Series[1].Series = {CSSeries::Unresolved, 2};
    for (std::uint32_t charge = kFirst; charge <= 22; ++charge) {
      const auto peak = static_cast<std::uint32_t>(intensities.size());
      AddMember(spectrum.Series[0], peak, charge);
      intensities.push_back(OfDimer(charge));
      if (charge % 2 != 0) continue;
      AddMember(spectrum.Series[1], peak, charge / 2);
      intensities.back() += OfMonomer(charge / 2);
    }
  }
  DeconSpectrum spectrum;
  std::vector<double> intensities;
};

TEST(PeakShares, OfADimerLieBetweenItsNeighbouringCharges) {
  const Complex complex;
  const PeakShares shares(complex.spectrum, complex.intensities);
  for (std::uint32_t k = 0; k < complex.spectrum.Series[0].Peaks.size(); ++k) {
    const std::uint32_t charge = kFirst + k;
    const double expected = charge % 2 != 0 ? complex.intensities[k] : OfDimer(charge);
    if (charge > kFirst && charge < 22) {
      EXPECT_NEAR(shares.Of(0, k) * complex.intensities[k] / expected, 1.0, 0.03) << charge;
    }
  }
}

TEST(PeakShares, BeyondTheLastChargesFollowTheNearestTwo) {
  const Complex complex;
  const PeakShares shares(complex.spectrum, complex.intensities);
  EXPECT_NEAR(shares.Of(0, 0) * complex.intensities[0] / (OfDimer(13) * std::sqrt(OfDimer(13) / OfDimer(15))),
              1.0, 1e-9);
}

TEST(PeakShares, ThatNobodyKnowsAreWhatIsLeft) {
  const Complex complex;
  const PeakShares shares(complex.spectrum, complex.intensities);
  for (std::uint32_t k = 0; k < complex.spectrum.Series[1].Peaks.size(); ++k)
    EXPECT_NEAR(shares.Of(0, 2 * k) + shares.Of(1, k), 1.0, 1e-12) << k;
}

// 30 of the monomer at 7 and 9, which the dimer lacks at 14 and 18, beside what that has at 16.
TEST(PeakShares, AreInProportionWhereAllAreKnown) {
  Complex complex;
  for (const std::size_t k : {1U, 3U}) {
    complex.spectrum.Series[1].Peaks[k].PeakId = static_cast<std::uint32_t>(complex.intensities.size());
    complex.intensities.push_back(30.0);
  }
  const PeakShares shares(complex.spectrum, complex.intensities);
  const double ofDimer = std::sqrt(OfDimer(15) * OfDimer(17));
  EXPECT_NEAR(shares.Of(1, 2), 30.0 / (30.0 + ofDimer), 1e-3);
  EXPECT_NEAR(shares.Of(0, 4), 1.0 - shares.Of(1, 2), 1e-12);
}

// 5 and 12 of a monomer that shares all between tell nothing of 8.
TEST(PeakShares, AreNotKnownFarFromChargesOfTheirOwn) {
  Complex complex;
  const double before = PeakShares(complex.spectrum, complex.intensities).Of(1, 2);
  for (const std::uint32_t charge : {5U, 12U}) {
    AddMember(complex.spectrum.Series[1], static_cast<std::uint32_t>(complex.intensities.size()), charge);
    complex.intensities.push_back(30.0);
  }
  EXPECT_EQ(PeakShares(complex.spectrum, complex.intensities).Of(1, 2), before);
}

TEST(PeakShares, LeaveWhatExceedsThePeakToTheKnown) {
  Complex complex;
  complex.intensities[4] = 1.0;
  const PeakShares shares(complex.spectrum, complex.intensities);
  EXPECT_NEAR(shares.Of(0, 4), 1.0, 1e-12);
  EXPECT_NEAR(shares.Of(1, 2), 0.0, 1e-12);
}

TEST(PeakShares, OfResolvedSeriesAreWhole) {
  Complex complex;
  complex.spectrum.Series[0].Series.Type = CSSeries::Resolved;
  const PeakShares shares(complex.spectrum, complex.intensities);
  EXPECT_FALSE(shares.IsShared(0));
  EXPECT_EQ(shares.Of(0, 0), 1.0);
  EXPECT_EQ(shares.Of(1, 0), 1.0);
}

}  // namespace
}  // namespace tests
