#include <tool/commands/decon/DerivedParams.h>

#include <gtest/gtest.h>

#include <tool/commands/decon/Proteins.h>
#include <cmath>
#include <utility>

namespace tests {
namespace {

using TslBL::ChargeStateParams;
using TslTool::DerivedParams;
using TslTool::LoadedSpectrum;
using TslTool::PeakWidthOf;

LoadedSpectrum ListOf(const std::vector<double>& mz, const std::vector<double>& intensity) {
  LoadedSpectrum loaded;
  loaded.spectrum = TslTool::PeakListSpectrum(mz, intensity);
  loaded.isPeakList = true;
  return loaded;
}

TEST(PeakWidth, IsThatOfTheLinesWhereNoneIsWider) {
  EXPECT_NEAR(PeakWidthOf(WithProteinPeaks()), 0.72, 0.05);
}

TEST(PeakWidth, IsThatOfTheNarrowLinesThoughWiderOnesHoldMostOfTheArea) {
  LoadedSpectrum loaded = CountedProteins();
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  for (std::size_t i = 0; i < spectrum.xAxis.size(); ++i) {
    const double u = (spectrum.xAxis[i] - 665.0 - std::round(spectrum.xAxis[i] - 665.0)) / (0.45 / 2.3548);
    if (spectrum.xAxis[i] < 670.5) spectrum.yAxis[i] += std::round(2000.0 * std::exp(-0.5 * u * u));
  }
  EXPECT_NEAR(PeakWidthOf(WithProteinPeaks(std::move(loaded))), 0.45, 0.05);
}

TEST(PeakWidth, OfAListIsWhatItsNeighboursLeaveRoomFor) {
  EXPECT_NEAR(PeakWidthOf(ListOf({500.0, 500.5, 501.0, 501.5}, {4, 3, 2, 1})), 0.2, 1e-12);
  // Two faint ones side by side are noise.
  EXPECT_NEAR(PeakWidthOf(ListOf({500.0, 500.5, 501.0, 501.01}, {400, 300, 2, 1})), 0.2, 1e-12);
  EXPECT_EQ(PeakWidthOf(ListOf({500.0}, {4})), 0.0);
  EXPECT_EQ(PeakWidthOf(ListOf({}, {})), 0.0);
}

TEST(MayIsotopesTouch, OfLinesOfHalfAnIsotopeToTwo) {
  EXPECT_TRUE(TslTool::MayIsotopesTouch(WithProteinPeaks()));
  EXPECT_FALSE(TslTool::MayIsotopesTouch(ListOf({500.0, 502.0, 504.0, 506.0}, {4, 3, 2, 1}))) << "no profile";
}

TEST(DerivedParams, HaveIsotopesOfOneChargeForPeaksAsWideAsAQuadrupoles) {
  const ChargeStateParams params = DerivedParams(DefaultWishes(), WithProteinPeaks());
  EXPECT_EQ(params.Resolved.MaxCS, 1U);
  EXPECT_NEAR(params.Resolved.MzAccuracy, 1e6 * 0.18 / 1075.0, 15.0);
  EXPECT_EQ(params.Resolved.CsAccuracy, 300U);
  EXPECT_FALSE(TslTool::AreIsotopesResolved(params));
}

TEST(DerivedParams, HaveAsManyChargesAsStandApart) {
  // Width 0.2: at charge 4 isotopes are 0.25 apart.
  const ChargeStateParams params = DerivedParams(DefaultWishes(), PeptideList());
  EXPECT_EQ(params.Resolved.MaxCS, 3U);
  EXPECT_TRUE(TslTool::AreIsotopesResolved(params));
}

TEST(DerivedParams, LeaveWhatIsGiven) {
  TslTool::DeconWishes wishes = DefaultWishes();
  wishes.hasMaxCharge = wishes.hasIsotopeAccuracy = wishes.hasChargeAccuracy = true;
  wishes.params.Resolved.MaxCS = 17;
  wishes.params.Resolved.MzAccuracy = 33;
  wishes.params.Resolved.CsAccuracy = 44;
  const ChargeStateParams params = DerivedParams(wishes, WithProteinPeaks());
  EXPECT_EQ(params, wishes.params);
}

TEST(DerivedParams, TakeTheLossOfAProtonForNegativeIons) {
  LoadedSpectrum loaded = PeptideList();
  EXPECT_EQ(DerivedParams(DefaultWishes(), loaded).GetAdductIonInfo().MonoMass, 1.007276);
  loaded.polarity = -1;
  EXPECT_EQ(DerivedParams(DefaultWishes(), loaded).GetAdductIonInfo().MonoMass, -1.007276);
  TslTool::DeconWishes wishes = DefaultWishes();
  wishes.hasAdduct = true;
  EXPECT_EQ(DerivedParams(wishes, loaded).GetAdductIonInfo().MonoMass, 1.007276);
}

}  // namespace
}  // namespace tests
