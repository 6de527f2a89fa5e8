#include <tool/commands/decon/ChanceSeries.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include <tool/commands/decon/DerivedParams.h>
#include <tool/commands/decon/FindSeries.h>
#include <tool/commands/decon/Proteins.h>

namespace tests {
namespace {

using TslBL::CSSeries;
using TslBL::CSSeriesPeakInfo;
using TslBL::DeconSpectrum;
using TslTool::LoadedSpectrum;

// Forty peaks of these intensities, 10 m/z apart.
DeconSpectrum FortyPeaks() {
  std::vector<double> mz;
  std::vector<double> intensity;
  for (int i = 0; i < 40; ++i) {
    mz.push_back(500.0 + 10.0 * i);
    intensity.push_back(100.0 - i);
  }
  DeconSpectrum spectrum(*TslTool::PeakListSpectrum(mz, intensity));
  spectrum.AddStatus(TslBL::Curve::STATUS_CSDECON);
  return spectrum;
}

void AddSeries(DeconSpectrum& spectrum, const std::vector<std::uint32_t>& ids,
               CSSeries::Types type = CSSeries::Resolved) {
  std::vector<CSSeriesPeakInfo> members;
  for (const std::uint32_t id : ids) {
    CSSeriesPeakInfo& member = members.emplace_back();
    member.PeakId = id;
    member.Charge = 2;
    member.IsMonoPeak = members.size() == 1;
    member.MZ = spectrum.FractionalIndexToXAxisVal(spectrum.peaks.at(id).centroidIdx);
  }
  spectrum.CSAddSeries(type, 1500.0, 0.0, members);
}

// What is left of the series where each search among stretched peaks finds those by chance.
std::size_t LeftOf(DeconSpectrum spectrum, const std::vector<std::vector<std::uint32_t>>& byChance) {
  const std::size_t all = spectrum.Series.size();
  const std::size_t out = TslTool::DropChanceSeries(spectrum, [&](DeconSpectrum& stretched) {
    EXPECT_TRUE(stretched.Series.empty());
    EXPECT_GT(std::abs(stretched.xAxis.front() / spectrum.xAxis.front() - 1.0), 0.03);
    for (const auto& ids : byChance) AddSeries(stretched, ids);
  });
  EXPECT_EQ(spectrum.Series.size(), all - out);
  return spectrum.Series.size();
}

TEST(ChanceSeries, ASeriesThatChanceMakesAsWellIsTakenOut) {
  DeconSpectrum spectrum = FortyPeaks();
  AddSeries(spectrum, {20, 21, 22});
  EXPECT_EQ(LeftOf(spectrum, {{10, 11, 12}}), 0U);
}

TEST(ChanceSeries, OneOfMorePeaksOrOfMoreIntensityStays) {
  DeconSpectrum spectrum = FortyPeaks();
  AddSeries(spectrum, {20, 21, 22});
  EXPECT_EQ(LeftOf(spectrum, {{10, 11}}), 1U);
  EXPECT_EQ(LeftOf(spectrum, {{30, 31, 32}}), 1U);
}

TEST(ChanceSeries, ThePeaksOfOneTrueSeriesProveNoChance) {
  DeconSpectrum spectrum = FortyPeaks();
  AddSeries(spectrum, {10, 11, 12, 13});
  AddSeries(spectrum, {30, 31, 32});
  EXPECT_EQ(LeftOf(spectrum, {{10, 11, 12, 20}}), 2U);
  EXPECT_EQ(LeftOf(spectrum, {{10, 20, 21, 22}}), 1U);
}

TEST(ChanceSeries, OneOfTwentyMayBeOfChance) {
  DeconSpectrum spectrum = FortyPeaks();
  for (std::uint32_t i = 0; i < 20; ++i) AddSeries(spectrum, {i, i + 1});
  EXPECT_EQ(LeftOf(spectrum, {{30, 31, 32}}), 20U);
  EXPECT_EQ(LeftOf(spectrum, {{33, 34, 35, 36}, {30, 31, 32}}), 0U);
}

TEST(ChanceSeries, UnresolvedOnesStay) {
  DeconSpectrum spectrum = FortyPeaks();
  AddSeries(spectrum, {20, 21, 22}, CSSeries::Unresolved);
  EXPECT_EQ(LeftOf(spectrum, {{10, 11, 12}}), 1U);
}

// The tops that a picker takes of noise on a grid of 0.05 m/z: on average every fifth point, two at least
// apart.
LoadedSpectrum TopsOfNoise(const std::vector<Peptide>& peptides) {
  std::mt19937_64 random(5);
  std::vector<std::pair<double, double>> peaks;
  for (double mz = 600.0; mz < 1200.0; mz += 0.05 * (2 + std::poisson_distribution<int>(3.0)(random)))
    peaks.emplace_back(mz, 20.0 + std::exponential_distribution(0.1)(random));
  const auto list = PeptideList(peptides);
  for (const TslBL::PeakInfo& peak : list.spectrum->peaks)
    peaks.emplace_back(list.spectrum->FractionalIndexToXAxisVal(peak.centroidIdx), peak.area);
  std::ranges::sort(peaks);
  std::vector<double> places;
  std::vector<double> intensities;
  for (const auto& [place, intensity] : peaks) {
    places.push_back(place);
    intensities.push_back(intensity);
  }
  LoadedSpectrum loaded = PeptideList();
  loaded.spectrum = TslTool::PeakListSpectrum(places, intensities);
  return loaded;
}

DeconSpectrum Searched(const LoadedSpectrum& loaded, TslTool::Order order) {
  DeconSpectrum spectrum(*loaded.spectrum);
  spectrum.CSParams = DerivedParams(DefaultWishes(), loaded);
  spectrum.CSParams.Method = TslBL::ChargeStateParams::ResolvedOnly;
  FindSeries(spectrum, order);
  return spectrum;
}

TEST(ChanceSeries, OfTheTopsOfNoiseNothingIsLeftButThePeptide) {
  const LoadedSpectrum noise = TopsOfNoise({});
  EXPECT_GT(Searched(noise, TslTool::Order::ResolvedFirst).Series.size(), 30U);
  EXPECT_LE(Searched(noise, TslTool::Order::OfList).Series.size(), 3U);
  const DeconSpectrum spectrum = Searched(TopsOfNoise({{1500.75, 2, 2000.0}}), TslTool::Order::OfList);
  ASSERT_GE(spectrum.Series.size(), 1U);
  EXPECT_LE(spectrum.Series.size(), 3U);
  EXPECT_NEAR(spectrum.Series[0].AvgMass, 1500.75, 0.03);
}

}  // namespace
}  // namespace tests
