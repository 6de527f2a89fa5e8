#include <tool/commands/decon/IsotopeScatter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using TslBL::CSSeries;
using TslBL::CSSeriesInfo;
using TslBL::CSSeriesPeakInfo;
using TslBL::DeconSpectrum;
using TslTool::IsotopeScatter;

namespace {

// So many series of charge 2 with so many isotopes each, off their places by this, relative to m/z.
DeconSpectrum With(int seriesCount, int isotopes, double scatter, CSSeries::Types type = CSSeries::Resolved) {
  std::mt19937_64 random(3);
  std::normal_distribution error(0.0, 1.0);
  DeconSpectrum spectrum;
  for (int i = 0; i < seriesCount; ++i) {
    CSSeriesInfo& series = spectrum.Series.emplace_back();
    series.Series = {type, static_cast<std::uint32_t>(i + 1)};
    for (int k = 0; k < isotopes; ++k) {
      CSSeriesPeakInfo& member = series.Peaks.emplace_back();
      member.Charge = 2;
      member.MZ = (500.0 + 20.0 * i + 1.0028 / 2 * k) * (1.0 + scatter * error(random));
    }
  }
  return spectrum;
}

TEST(IsotopeScatter, IsTheErrorOfOnePeak) {
  for (const double scatter : {1e-6, 5e-6, 3e-5})
    for (const int isotopes : {3, 4, 8})
      EXPECT_NEAR(IsotopeScatter(With(300, isotopes, scatter)), scatter, 0.12 * scatter) << isotopes;
}

TEST(IsotopeScatter, DoesNotCountAFewThatAreSomethingElse) {
  DeconSpectrum spectrum = With(300, 4, 5e-6);
  for (std::size_t i = 0; i < spectrum.Series.size(); i += 10) spectrum.Series[i].Peaks[1].MZ += 0.1;
  EXPECT_NEAR(IsotopeScatter(spectrum), 5e-6, 1e-6);
}

TEST(IsotopeScatter, TakesMissingIsotopesForMissing) {
  DeconSpectrum spectrum = With(300, 5, 5e-6);
  for (CSSeriesInfo& series : spectrum.Series) series.Peaks.erase(series.Peaks.begin() + 2);
  EXPECT_NEAR(IsotopeScatter(spectrum), 5e-6, 1e-6);
}

TEST(IsotopeScatter, IsUnknownOfTooFewIsotopes) {
  EXPECT_FALSE(std::isnan(IsotopeScatter(With(6, 3, 1e-5))));
  EXPECT_TRUE(std::isnan(IsotopeScatter(With(5, 3, 1e-5))));
  EXPECT_TRUE(std::isnan(IsotopeScatter(With(50, 2, 1e-5))));
  EXPECT_TRUE(std::isnan(IsotopeScatter(DeconSpectrum())));
}

TEST(IsotopeScatter, HasNoPartOfUnresolvedSeries) {
  EXPECT_TRUE(std::isnan(IsotopeScatter(With(50, 5, 1e-5, CSSeries::Unresolved))));
}

}  // namespace
