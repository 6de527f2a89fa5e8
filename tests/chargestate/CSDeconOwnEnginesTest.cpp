// The library's own engines, by way of a whole run and of edits.
// Tests: CSDecon.cpp, CSDeconEdit.cpp.
#include <gtest/gtest.h>

#include <tslbl/chargestate/CSDecon.h>
#include <tslbl/chargestate/CSDeconEdit.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <cmath>

using namespace TslBL;

namespace {

constexpr double kMass = 10000.0;
constexpr double kProton = 1.007398;

// Gaussian peaks of one molecule with charges 5 to 12, on a background that a baseline can follow.
DeconSpectrum Molecule() {
  DeconSpectrum s;
  for (std::size_t i = 0; i < 30000; ++i) {
    const double mz = 700.0 + 0.05 * static_cast<double>(i);
    double y = 20.0 + static_cast<double>(i * 7919 % 11);
    for (int charge = 5; charge <= 12; ++charge) {
      const double t = (mz - kMass / charge - kProton) / 0.4;
      y += 2000.0 * std::exp(-0.5 * t * t);
    }
    s.xAxis.push_back(mz);
    s.yAxis.push_back(std::floor(y));
  }
  s.AddStatus(Curve::STATUS_X);
  s.AddStatus(Curve::STATUS_Y);
  s.CSParams.Method = ChargeStateParams::UnresolvedOnly;
  return s;
}

DeconSpectrum Deconvolved() {
  DeconSpectrum s = Molecule();
  Changed changed;
  std::wstring error;
  EXPECT_TRUE(ExecuteCSDecon(s, changed, error)) << TslCommon::ToUtf8(error);
  return s;
}

std::vector<std::uint32_t> PeakIds(const CSSeriesInfo& series) {
  std::vector<std::uint32_t> ids;
  for (const CSSeriesPeakInfo& peak : series.Peaks) ids.push_back(peak.PeakId);
  return ids;
}

}  // namespace

TEST(OwnDeconEngines, FindTheMassOfAMoleculeByItsCharges) {
  const DeconSpectrum s = Deconvolved();
  ASSERT_EQ(s.Series.size(), 1u);
  EXPECT_NEAR(s.Series[0].AvgMass, kMass, 0.5);
  for (std::uint32_t charge = 5; charge <= 12; ++charge)
    EXPECT_EQ(s.QCSSeriesChargePeakIds(s.Series[0].Series, charge).size(), 1u) << charge;
}

TEST(OwnDeconEngines, DrawTheMolecule) {
  const DeconSpectrum s = Deconvolved();
  ASSERT_FALSE(s.MassX.empty());
  ASSERT_EQ(s.MassX.size(), s.MassY.size());
  EXPECT_TRUE(std::ranges::is_sorted(s.MassX));
  const auto top = std::ranges::max_element(s.MassY) - s.MassY.begin();
  EXPECT_NEAR(s.MassX[static_cast<std::size_t>(top)], kMass, 1.0);
}

TEST(OwnDeconEngines, FindASeriesAgainFromItsPeaks) {
  DeconSpectrum s = Deconvolved();
  ASSERT_EQ(s.Series.size(), 1u);
  const CSSeriesInfo found = s.Series[0];
  std::wstring error;
  EXPECT_TRUE(CSDeconAddSeries(s, CSSeries::Unresolved, PeakIds(found), error)) << TslCommon::ToUtf8(error);
  ASSERT_EQ(s.Series.size(), 2u);
  EXPECT_NEAR(s.Series[1].AvgMass, kMass, 0.5);
}

TEST(OwnDeconEngines, WorkASeriesOutAnewWithoutAPeak) {
  DeconSpectrum s = Deconvolved();
  ASSERT_EQ(s.Series.size(), 1u);
  const CSSeriesInfo found = s.Series[0];
  std::wstring error;
  EXPECT_TRUE(CSDeconDeleteSeriesPeaks(s, found.Series, {found.Peaks[0].PeakId}, error))
      << TslCommon::ToUtf8(error);
  ASSERT_EQ(s.Series.size(), 1u);
  EXPECT_EQ(s.Series[0].Peaks.size(), found.Peaks.size() - 1);
  EXPECT_NEAR(s.Series[0].AvgMass, kMass, 0.5);
}
