#include <tool/commands/decon/Companions.h>

#include <gtest/gtest.h>

namespace tests {
namespace {

using TslBL::CSSeries;
using TslBL::DeconSpectrum;
using TslBL::OverlapPeakInfo;
using TslTool::MergeCompanions;

constexpr double kStep = 0.01;  // m/z
constexpr double kWidth = 0.6;  // m/z, of each line
constexpr double kMain = 1000.0;
constexpr double kCharge = 12.0;

struct Line {
  double mz;
  double height;
};

// Lines that were fitted under one data peak, the first of an unresolved series of 12 000 Da.
DeconSpectrum Fitted(const std::vector<Line>& lines, CSSeries::Types type = CSSeries::Unresolved) {
  DeconSpectrum spectrum;
  for (int i = 0; i < 2000; ++i) spectrum.xAxis.push_back(990.0 + kStep * i);
  spectrum.peaks.resize(1);
  for (const Line& line : lines) {
    OverlapPeakInfo& peak = spectrum.overlapPeaks.emplace_back();
    peak.GroupId = 1;
    peak.Position = (line.mz - 990.0) / kStep;
    peak.Height = line.height;
    peak.FWHM = kWidth / kStep;
  }
  spectrum.SyncOverlapGroups();
  TslBL::CSSeriesInfo& series = spectrum.Series.emplace_back();
  series.Series = {type, 1};
  series.AvgMass = kCharge * kMain;
  TslBL::CSSeriesPeakInfo& member = series.Peaks.emplace_back();
  member.PeakId = 1;  // the first behind the data peak
  member.Charge = static_cast<std::uint32_t>(kCharge);
  member.MZ = kMain;
  return spectrum;
}

std::vector<double> PlacesAfter(DeconSpectrum spectrum) {
  MergeCompanions(spectrum, spectrum);
  std::vector<double> places;
  for (const OverlapPeakInfo& peak : spectrum.overlapPeaks) places.push_back(990.0 + kStep * peak.Position);
  return places;
}

TEST(Companions, OfALineLeaveItsDataPeak) {
  DeconSpectrum spectrum = Fitted({{kMain, 100.0}, {kMain + 0.45, 15.0}});
  EXPECT_EQ(spectrum.peaks[0].overlapGroup, 1U);
  EXPECT_TRUE(MergeCompanions(spectrum, spectrum));
  EXPECT_TRUE(spectrum.overlapPeaks.empty());
  EXPECT_EQ(spectrum.peaks[0].overlapGroup, TslBL::NoOverlapGroupId);
}

TEST(Companions, GoToTheirLineWhereOthersAreFittedBeside) {
  DeconSpectrum spectrum = Fitted({{kMain, 100.0}, {kMain + 0.45, 25.0}, {kMain + 2.0, 90.0}});
  EXPECT_TRUE(MergeCompanions(spectrum, spectrum));
  ASSERT_EQ(spectrum.overlapPeaks.size(), 2U);
  const OverlapPeakInfo& both = spectrum.overlapPeaks[0];
  EXPECT_NEAR(990.0 + kStep * both.Position, kMain + 0.45 * 0.2, 1e-9);
  EXPECT_NEAR(both.Height * both.FWHM, 125.0 * kWidth / kStep, 1e-6);
  EXPECT_GT(both.FWHM, kWidth / kStep);
  EXPECT_EQ(spectrum.peaks[0].overlapGroup, 1U);
}

TEST(Companions, AreFitsThatStandTooCloseToBeTwoLines) {
  EXPECT_TRUE(PlacesAfter(Fitted({{kMain, 100.0}, {kMain + 0.3, 90.0}})).empty());
  EXPECT_EQ(PlacesAfter(Fitted({{kMain, 100.0}, {kMain + 0.4, 90.0}})).size(), 2U);
}

// 0.25 of 13 Da beside 12 000: a third moment of 250 Da^3, where isotopes have 7.
TEST(Companions, AreNoOtherProteins) {
  EXPECT_EQ(PlacesAfter(Fitted({{kMain, 100.0}, {kMain + 0.65, 25.0}})).size(), 2U);
  EXPECT_EQ(PlacesAfter(Fitted({{kMain, 100.0}, {kMain + 0.6, 60.0}})).size(), 2U);
}

TEST(Companions, AreOfUnresolvedSeriesAlone) {
  DeconSpectrum resolved = Fitted({{kMain, 100.0}, {kMain + 0.3, 15.0}}, CSSeries::Resolved);
  EXPECT_FALSE(MergeCompanions(resolved, resolved));
  EXPECT_EQ(resolved.overlapPeaks.size(), 2U);
}

}  // namespace
}  // namespace tests
