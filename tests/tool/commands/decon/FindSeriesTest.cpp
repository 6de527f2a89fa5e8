#include <tool/commands/decon/FindSeries.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <set>

#include <tool/commands/decon/DerivedParams.h>
#include <tool/commands/decon/Proteins.h>

namespace tests {
namespace {

using TslBL::ChargeStateParams;
using TslBL::CSSeries;
using TslBL::DeconSpectrum;
using TslTool::FindSeries;
using TslTool::LoadedSpectrum;
using TslTool::Order;

DeconSpectrum SearchedIn(const LoadedSpectrum& loaded, Order order,
                         ChargeStateParams::Methods method = ChargeStateParams::ResAndUnres) {
  DeconSpectrum spectrum(*loaded.spectrum);
  spectrum.CSParams = DerivedParams(DefaultWishes(), loaded);
  spectrum.CSParams.Method = method;
  FindSeries(spectrum, order);
  return spectrum;
}

std::vector<CSSeries::Types> TypesOf(const DeconSpectrum& spectrum) {
  std::vector<CSSeries::Types> types;
  for (const auto& series : spectrum.Series) types.push_back(series.Series.Type);
  return types;
}

// Charges of a large molecule among the isotopes of a peptide.
LoadedSpectrum MixedList() {
  std::vector<std::pair<double, double>> peaks;
  for (int isotope = 0; isotope < 4; ++isotope)
    peaks.emplace_back(kPeptide.Mz(isotope), 1000.0 * (1.0 - 0.2 * isotope));
  for (int charge = 12; charge <= 20; ++charge) peaks.emplace_back(kLarge.Mz(charge), kLarge.Height(charge));
  std::ranges::sort(peaks);
  std::vector<double> mz;
  std::vector<double> intensity;
  for (const auto& [place, height] : peaks) {
    mz.push_back(place);
    intensity.push_back(height);
  }
  LoadedSpectrum loaded = PeptideList();
  loaded.spectrum = TslTool::PeakListSpectrum(mz, intensity);
  return loaded;
}

// A complex whose lines are 40 m/z wide, and off their places by 400 ppm to both sides.
LoadedSpectrum WideLines() {
  LoadedSpectrum loaded;
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  std::mt19937_64 random(3);
  for (int i = 0; i < 2400; ++i) {
    const double mz = 3600.0 + i;
    double mean = 10.0;
    for (int charge = 22; charge <= 31; ++charge) {
      const double place = (123250.0 / charge + kProton) * (1.0 + (charge % 2 == 0 ? 4e-4 : -4e-4));
      const double u = (mz - place) / 17.0;
      mean += 2000.0 * std::exp(-0.5 * u * u - 0.1 * (charge - 26.5) * (charge - 26.5));
    }
    loaded.spectrum->xAxis.push_back(mz);
    loaded.spectrum->yAxis.push_back(std::poisson_distribution<int>(mean)(random));
  }
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  return WithProteinPeaks(std::move(loaded));
}

TEST(FindSeries, WideLinesMayLieFartherOffTheirPlaces) {
  const DeconSpectrum spectrum = SearchedIn(WideLines(), Order::UnresolvedFirst);
  ASSERT_EQ(spectrum.Series.size(), 1U);
  EXPECT_NEAR(spectrum.Series[0].AvgMass, 123250.0, 60.0);
}

// Two isotopes of a charge, and then a third.
LoadedSpectrum IsotopesOf(double mass, int charge, int count) {
  std::vector<double> mz;
  std::vector<double> intensity;
  for (int isotope = 0; isotope < count; ++isotope) {
    mz.push_back((mass + 1.00286 * isotope) / charge + kProton);
    intensity.push_back(1000.0 - 100.0 * isotope);
  }
  LoadedSpectrum loaded = PeptideList();
  loaded.spectrum = TslTool::PeakListSpectrum(mz, intensity);
  return loaded;
}

TEST(FindSeries, TwoIsotopesAreNoneOfALargeMolecule) {
  const auto count = [](const LoadedSpectrum& loaded) {
    return SearchedIn(loaded, Order::ResolvedFirst, ChargeStateParams::ResolvedOnly).Series.size();
  };
  EXPECT_EQ(count(IsotopesOf(2100.0, 3, 2)), 0U);
  EXPECT_EQ(count(IsotopesOf(2100.0, 3, 3)), 1U);
  EXPECT_EQ(count(IsotopesOf(1500.0, 3, 2)), 1U);
}

TEST(FindSeries, FindsTheProteinsOfASpectrum) {
  const DeconSpectrum spectrum = SearchedIn(WithProteinPeaks(), Order::UnresolvedFirst);
  ASSERT_GE(spectrum.Series.size(), 2U);
  EXPECT_NEAR(spectrum.Series[0].AvgMass, kLarge.mass, 0.1);
  EXPECT_NEAR(spectrum.Series[1].AvgMass, kSmall.mass, 0.3);
  EXPECT_TRUE(spectrum.CheckAllStatus(TslBL::Curve::STATUS_CSDECON));
}

TEST(FindSeries, GivesNoPeakToBothMethods) {
  for (const Order order : {Order::ResolvedFirst, Order::UnresolvedFirst, Order::OfList}) {
    const DeconSpectrum spectrum = SearchedIn(MixedList(), order);
    EXPECT_THAT(TypesOf(spectrum), testing::Contains(CSSeries::Resolved));
    EXPECT_THAT(TypesOf(spectrum), testing::Contains(CSSeries::Unresolved));
    std::multiset<std::uint32_t> resolved;
    std::set<std::uint32_t> unresolved;
    for (const auto& series : spectrum.Series)
      for (const auto& peak : series.Peaks)
        series.Series.Type == CSSeries::Resolved ? void(resolved.insert(peak.PeakId))
                                                 : void(unresolved.insert(peak.PeakId));
    for (const std::uint32_t id : unresolved) EXPECT_FALSE(resolved.contains(id)) << id;
  }
}

TEST(FindSeries, NumbersThePeaksOfTheSecondMethodAsTheSpectrumDoes) {
  const DeconSpectrum spectrum = SearchedIn(MixedList(), Order::ResolvedFirst);
  for (const auto& series : spectrum.Series)
    for (const auto& peak : series.Peaks)
      EXPECT_EQ(peak.MZ, spectrum.FractionalIndexToXAxisVal(spectrum.peaks.at(peak.PeakId).centroidIdx));
}

TEST(FindSeries, AddsUpTheCurvesOfBothMethods) {
  const auto area = [](const DeconSpectrum& spectrum) {
    double sum = 0.0;
    for (std::size_t i = 1; i < spectrum.MassX.size(); ++i)
      sum += 0.5 * (spectrum.MassY[i] + spectrum.MassY[i - 1]) * (spectrum.MassX[i] - spectrum.MassX[i - 1]);
    return sum;
  };
  const LoadedSpectrum list = MixedList();
  const double both = area(SearchedIn(list, Order::ResolvedFirst));
  const double resolved = area(SearchedIn(list, Order::ResolvedFirst, ChargeStateParams::ResolvedOnly));
  const double unresolved = area(SearchedIn(list, Order::ResolvedFirst, ChargeStateParams::UnresolvedOnly));
  EXPECT_GT(resolved, 0.0);
  EXPECT_NEAR(both, resolved + unresolved, 1e-9 * both);
}

TEST(FindSeries, PrefersByIntensityWhatExplainsMore) {
  const DeconSpectrum peptide = SearchedIn(PeptideList(), Order::OfList);
  EXPECT_THAT(TypesOf(peptide), testing::ElementsAre(CSSeries::Resolved));
  EXPECT_NEAR(peptide.Series[0].AvgMass, kPeptide.monoMass, 0.02);
}

TEST(FindSeries, TakesNoIsotopesThatWereLeftOverForCharges) {
  // Every second isotope at charges to 6 of one molecule: their charges stand in one row, too.
  std::vector<Peptide> peptides;
  for (int charge = 6; charge >= 2; --charge) peptides.push_back({4500.3, charge, 1000.0});
  const DeconSpectrum spectrum = SearchedIn(PeptideList(peptides), Order::ResolvedFirst);
  for (const auto& series : spectrum.Series) EXPECT_EQ(series.Series.Type, CSSeries::Resolved);
}

// A series of ten charges, each off its place by so many ppm in turn.
DeconSpectrum Series(double mass, int lowCharge, double offPpm, bool isFullRange = true) {
  std::vector<double> mz;
  for (int charge = lowCharge + 9; charge >= lowCharge; --charge)
    mz.push_back((mass / charge + kProton) * (1.0 + (charge % 2 == 0 ? 1e-6 : -1e-6) * offPpm));
  LoadedSpectrum loaded = PeptideList();
  loaded.spectrum = TslTool::PeakListSpectrum(mz, std::vector<double>(mz.size(), 100.0));
  DeconSpectrum spectrum(*loaded.spectrum);
  spectrum.CSParams = DerivedParams(DefaultWishes(), loaded);
  spectrum.CSParams.Method = ChargeStateParams::UnresolvedOnly;
  spectrum.CSParams.FullRange = isFullRange;
  FindSeries(spectrum, Order::UnresolvedFirst);
  EXPECT_EQ(spectrum.CSParams.FullRange, isFullRange);
  return spectrum;
}

TEST(FindSeries, TakesNoPeaksOfSmallMoleculesForCharges) {
  EXPECT_EQ(Series(24000.0, 50, 0.0).Series.size(), 1U);
  EXPECT_TRUE(Series(24000.0, 80, 0.0).Series.empty());
  EXPECT_EQ(Series(24000.0, 80, 0.0, false).Series.size(), 1U);
}

TEST(FindSeries, TakesNoPlacesThatScatterAsChanceMakesThem) {
  EXPECT_EQ(Series(24000.0, 20, 100.0).Series.size(), 1U);
  EXPECT_TRUE(Series(24000.0, 20, 350.0).Series.empty());
}

TEST(FindSeries, FindingNothingIsAResult) {
  LoadedSpectrum one = PeptideList();
  one.spectrum = TslTool::PeakListSpectrum(std::vector{700.0}, std::vector{5.0});
  for (const auto method :
       {ChargeStateParams::ResAndUnres, ChargeStateParams::ResolvedOnly, ChargeStateParams::UnresolvedOnly}) {
    const DeconSpectrum spectrum = SearchedIn(one, Order::ResolvedFirst, method);
    EXPECT_TRUE(spectrum.Series.empty());
    EXPECT_TRUE(spectrum.CheckAllStatus(TslBL::Curve::STATUS_CSDECON));
  }
}

}  // namespace
}  // namespace tests
