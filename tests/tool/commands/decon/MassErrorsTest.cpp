#include <tool/commands/decon/MassErrors.h>

#include <gtest/gtest.h>

#include <cmath>

#include <tool/commands/decon/Proteins.h>
#include <tool/commands/decon/SeriesRows.h>

namespace tests {
namespace {

using TslBL::CSSeries;
using TslBL::CSSeriesInfo;
using TslBL::CSSeriesPeakInfo;
using TslTool::MassErrors;
using TslTool::ReportedPeak;

// A resolved series of 1000 Da whose peaks have these m/z errors and intensities, an isotope each of
// charge 2.
struct Resolved {
  Resolved(const std::vector<double>& errors, const std::vector<double>& areas) {
    series.Series = {CSSeries::Resolved, 1};
    series.AvgMass = 1000.0;
    for (std::size_t i = 0; i < errors.size(); ++i) {
      ReportedPeak& peak = peaks.emplace_back();
      peak.errors.mz = errors[i];
      peak.row.Area = areas[i];
      AddMember(2, 500.0 + 1.007276 + 0.501 * static_cast<double>(i), i == 0);
    }
    spectrum.CSParams.PkIntensity = TslBL::ChargeStateParams::Area;
    spectrum.CSParams.Resolved.MMFunction = TslBL::ResolvedParams::WeightedAvg;
  }
  void AddMember(std::uint32_t charge, double mz, bool isMono) {
    CSSeriesPeakInfo& member = series.Peaks.emplace_back();
    member.PeakId = static_cast<std::uint32_t>(series.Peaks.size() - 1);
    member.Charge = charge;
    member.MZ = mz;
    member.IsMonoPeak = isMono;
  }
  double Error() const {
    const TslTool::PeakShares none(spectrum, std::vector<double>(peaks.size(), 1.0));
    return MassErrors(spectrum, peaks, none).Of(series).error;
  }

  TslBL::DeconSpectrum spectrum;
  std::vector<ReportedPeak> peaks;
  CSSeriesInfo series;
};

TEST(MassErrors, OfResolvedPeaksAddUpAsTheirMeanDoes) {
  // 2 (3 * 0.001, 1 * 0.002) / 4
  EXPECT_NEAR(Resolved({0.001, 0.002}, {3.0, 1.0}).Error(), 2.0 * std::hypot(0.003, 0.002) / 4.0, 1e-12);
  Resolved plain({0.001, 0.002}, {3.0, 1.0});
  plain.spectrum.CSParams.Resolved.MMFunction = TslBL::ResolvedParams::Average;
  EXPECT_NEAR(plain.Error(), 2.0 * std::hypot(0.001, 0.002) / 2.0, 1e-12);
}

TEST(MassErrors, HaveWhatTheIsotopesOfRealProteinsDifferBy) {
  // The third of three equal isotopes lies one beyond the first: 1.1 / 1000 / 3.
  EXPECT_NEAR(Resolved({0.0, 0.0, 0.0}, {1.0, 1.0, 1.0}).Error(), 1.1 / 1000.0 / 3.0, 1e-12);
}

TEST(MassErrors, HaveHowBadlyMergedIsotopesAreTakenApart) {
  Resolved merged({0.0, 0.0}, {1.0, 1.0});
  merged.spectrum.xAxis = {500.0, 500.1, 500.2, 500.3};
  merged.spectrum.AddStatus(TslBL::Curve::STATUS_X);
  TslBL::OverlapPeakInfo fit;
  fit.Position = 1.5;
  for (const double width : {0.3, 0.45}) {
    fit.FWHM = width / 0.1;
    merged.spectrum.overlapPeaks = {fit, fit};
    for (ReportedPeak& peak : merged.peaks) peak.row.Kind = TslBL::MZPeak::OverlapPeak;
    // Of charge 2: 0.6 and 0.9 isotopes.
    EXPECT_NEAR(merged.Error(), 0.25 * std::max(2.0 * width / 1.00235 - 0.7, 0.0), 1e-12) << width;
  }
}

// Three charges of equal precision, one of which is far off.
Resolved ThreeCharges(double off) {
  Resolved resolved({0.001}, {1.0});
  for (const std::uint32_t charge : {3U, 4U}) {
    resolved.peaks.push_back(resolved.peaks.front());
    resolved.peaks.back().errors.mz = 0.002 / charge;
    resolved.AddMember(charge, 1000.0 / charge + 1.007276, true);
  }
  resolved.series.Peaks.back().MassDev = off;
  return resolved;
}

TEST(MassErrors, GrowWhereChargesDifferByMoreThanTheirPeaksSay) {
  const double alone = 0.002 / std::sqrt(3.0);
  EXPECT_NEAR(ThreeCharges(0.0).Error(), alone, 1e-12);
  EXPECT_NEAR(ThreeCharges(0.02).Error(), alone * std::sqrt(100.0 / 2.0), 1e-12);
}

TEST(MassErrors, OfPeaksWithoutErrorsAreToldByThreeChargesAlone) {
  Resolved resolved = ThreeCharges(0.0);
  for (ReportedPeak& peak : resolved.peaks) peak.errors.mz = std::nan("");
  resolved.series.StdDev = 0.03;
  EXPECT_NEAR(resolved.Error(), 0.03 / std::sqrt(3.0), 1e-12);
  EXPECT_TRUE(std::isnan(Resolved({std::nan(""), std::nan("")}, {1.0, 1.0}).Error()));
}

TEST(MassErrors, OfUnresolvedSeriesAreAsLargeAsTheyAreOff) {
  const auto loaded = WithSeries();
  const auto rows = TslTool::SeriesRows(loaded);
  ASSERT_GE(rows.size(), 2U);
  EXPECT_LT(std::abs(rows[0].mass - kLarge.mass), 4.0 * rows[0].massError);
  EXPECT_LT(rows[0].massError, 0.05);
  EXPECT_LT(std::abs(rows[1].mass - kSmall.mass), 4.0 * rows[1].massError);
}

// Isotopes of 12 000 Da make lines of this width skew by 0.27 Da at a charge of 12.
constexpr double kLine = 0.73;

// Charges 10 to 14 of 12 000 Da, whose peaks have their mean so far above their position, in m/z.
struct Unresolved {
  explicit Unresolved(double skew) {
    series.Series = {CSSeries::Unresolved, 1};
    series.AvgMass = 12000.0;
    series.StdDev = 0.05;
    for (std::uint32_t charge = 10; charge < 15; ++charge) {
      CSSeriesPeakInfo& member = series.Peaks.emplace_back();
      member.PeakId = charge - 10;
      member.Charge = charge;
      member.MZ = 12000.0 / charge + spectrum.CSParams.GetAdductIonInfo().AvgMass + 1e-5 * (charge % 2);
      means.push_back(member.MZ + skew / charge);
      ReportedPeak& peak = peaks.emplace_back();
      peak.row.Ampl = peak.row.Area = 100.0;
      peak.row.Resolution = member.MZ / kLine;
    }
  }
  TslTool::SeriesMass Mass() const {
    const TslTool::PeakShares shares(spectrum, std::vector<double>(peaks.size(), 1.0));
    return MassErrors(spectrum, peaks, shares).Of(series, means);
  }

  TslBL::DeconSpectrum spectrum;
  std::vector<ReportedPeak> peaks;
  CSSeriesInfo series;
  std::vector<double> means;
};

TEST(MassErrors, OfUnresolvedSeriesTakeTheMeansOfPeaks) {
  EXPECT_NEAR(Unresolved(0.2).Mass().mass, Unresolved(0.1).Mass().mass + 0.1, 1e-6);
  EXPECT_NEAR(Unresolved(0.2).Mass().error, std::hypot(Unresolved(0.0).Mass().error, 0.006), 1e-6);
}

// Lines of 0.6 m/z: variance of line and isotopes, Da times Da, for each charge.
TEST(MassErrors, OfAListHaveHowFarTopsMayLieBelowMeans) {
  Unresolved list(0.0);
  const double counted = list.Mass().error;
  list.means.clear();
  double skew = 0.0;
  for (const double charge : {10.0, 11.0, 12.0, 13.0, 14.0})
    skew += 3.1e-4 * 12000.0 / (std::pow(charge * 0.6 / 2.3548, 2.0) + 5.9e-4 * 12000.0) / 5.0;
  EXPECT_NEAR(skew, 0.23, 0.01);
  EXPECT_NEAR(list.Mass().error, std::hypot(counted, 0.7 * skew), 1e-5);
  EXPECT_EQ(list.Mass().mass, 12000.0);
}

TEST(MassErrors, TakeNoMoreSkewThanIsotopesMake) {
  const double most = Unresolved(1.0).Mass().mass;
  EXPECT_GT(most, 12000.45);
  EXPECT_LT(most, 12000.65);
  EXPECT_NEAR(Unresolved(2.0).Mass().mass, most, 1e-6);
  EXPECT_NEAR(Unresolved(-0.2).Mass().mass, Unresolved(0.2).Mass().mass - 0.4, 1e-6);
}

TEST(MassErrors, PeaksWhoseMeanIsNotKnownAreAsSkewAsTheOthers) {
  Unresolved one(0.2);
  one.means[2] = std::nan("");
  EXPECT_NEAR(one.Mass().mass, Unresolved(0.2).Mass().mass, 1e-6);
}

// 3.1e-4 * 12 000 over the variance of a line, to a quarter.
TEST(MassErrors, WithoutTheMeansOfMostTheSkewIsThatOfIsotopes) {
  Unresolved one(0.05);
  for (const std::size_t i : {0U, 1U, 2U}) one.means[i] = std::nan("");
  double skew = 0.0;
  for (const double charge : {10.0, 11.0, 12.0, 13.0, 14.0})
    skew += 3.1e-4 * 12000.0 / std::pow(charge * kLine / 2.3548, 2.0) / 5.0;
  EXPECT_NEAR(one.Mass().mass - Unresolved(0.0).Mass().mass, skew, 1e-4);
  EXPECT_NEAR(one.Mass().error, std::hypot(Unresolved(0.0).Mass().error, 0.25 * skew), 1e-4);
}

// A quarter of what tops lie off.
TEST(MassErrors, FittedLinesLieCloserToTheirMeans) {
  Unresolved fits(0.0);
  fits.spectrum.xAxis = {0.0, 3000.0};
  for (std::size_t i = 0; i < fits.peaks.size(); ++i) {
    fits.peaks[i].row.Kind = TslBL::MZPeak::OverlapPeak;
    TslBL::OverlapPeakInfo& fit = fits.spectrum.overlapPeaks.emplace_back();
    fit.Position = fits.series.Peaks[i].MZ / 3000.0;
    fit.FWHM = kLine / 3000.0;
    fits.means[i] = std::nan("");
  }
  const double off = fits.Mass().mass - Unresolved(0.0).Mass().mass;
  EXPECT_NEAR(off, 0.27 * 8.0 / 31.0, 0.01);
  EXPECT_NEAR(fits.Mass().error, std::hypot(Unresolved(0.0).Mass().error, 0.4 * off), 0.1 * off);
}

// Another series has charges 10 and 12, which lie 0.05 m/z lower for it.
TEST(MassErrors, AreThoseOfPeaksThatNoOtherSeriesHas) {
  const double alone = Unresolved(0.1).Mass().mass;
  Unresolved dimer(0.1);
  for (const std::size_t i : {0U, 2U}) {
    dimer.series.Peaks[i].MZ -= 0.05;
    dimer.means[i] -= 0.05;
  }
  EXPECT_GT(dimer.Mass().deviation, 0.2);
  dimer.spectrum.Series = {dimer.series, dimer.series};
  dimer.spectrum.Series[1].Peaks = {dimer.series.Peaks[0], dimer.series.Peaks[2]};
  EXPECT_NEAR(dimer.Mass().mass, alone, 0.01);
  EXPECT_LT(dimer.Mass().deviation, 0.001);
}

TEST(MassErrors, OfTwoChargesAreNotKnown) {
  Resolved two({0.001, 0.001}, {1.0, 1.0});
  two.series.Series.Type = CSSeries::Unresolved;
  EXPECT_TRUE(std::isnan(two.Error()));
}

}  // namespace
}  // namespace tests
