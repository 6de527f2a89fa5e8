#include <tool/commands/overlap/OverlapRows.h>

#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>
#include <tool/commands/peaks/ReportedPeak.h>
#include <cmath>

namespace tests {
namespace {

using TslTool::MzPerPoint;
using TslTool::OverlapRow;
using TslTool::OverlapRows;

TEST(OverlapRows, HaveTheFittedPeaksBehindTheDataPeakThatTheyReplace) {
  const std::vector<OverlapRow> rows = OverlapRows(Deconvolved());
  ASSERT_EQ(rows.size(), 4U);
  const std::uint32_t groups[] = {1, 1, 1, 0};
  const bool isFitted[] = {false, true, true, false};
  const std::size_t numbers[] = {1, 3, 4, 2};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].group, groups[i]) << i;
    EXPECT_EQ(rows[i].isFitted, isFitted[i]) << i;
    EXPECT_EQ(rows[i].peak, numbers[i]) << i;
  }
}

TEST(OverlapRows, TellTheTruthOfTheDoublet) {
  const std::vector<OverlapRow> rows = OverlapRows(Deconvolved());
  const KnownPeak truth[] = {kLeft, kRight};
  for (std::size_t i = 0; i < 2; ++i) {
    const OverlapRow& row = rows.at(1 + i);
    EXPECT_NEAR(row.mz, truth[i].mz, 5 * row.mzError);
    EXPECT_NEAR(row.area, truth[i].Area(), 0.03 * truth[i].Area());
    EXPECT_NEAR(row.amplitude, truth[i].height + 20, 0.05 * truth[i].height);
    EXPECT_NEAR(row.width, 0.6, 0.03);
    EXPECT_GT(row.mzError, 1e-4);
    EXPECT_LT(row.mzError, 0.02);
    EXPECT_GT(row.areaError, 0.002 * row.area);
    EXPECT_LT(row.areaError, 0.1 * row.area);
    EXPECT_GT(row.chiSquare, 0.4);
    EXPECT_LT(row.chiSquare, 2.0);
  }
}

TEST(OverlapRows, HaveTheFittedPeaksBehindAllDataPeaksOfTheirGroup) {
  TslTool::LoadedSpectrum loaded = Deconvolved();
  loaded.spectrum->peaks[1].overlapGroup = 1;
  std::string kinds;
  for (const OverlapRow& row : OverlapRows(loaded)) kinds += row.isFitted ? '+' : '-';
  EXPECT_EQ(kinds, "--++");
}

TEST(OverlapRows, KnowNoErrorsOfDataPeaksThatAreMerges) {
  const std::vector<OverlapRow> rows = OverlapRows(Deconvolved());
  EXPECT_TRUE(std::isnan(rows.at(0).mzError));
  EXPECT_TRUE(std::isnan(rows.at(0).areaError));
  EXPECT_TRUE(std::isnan(rows.at(0).chiSquare));
  EXPECT_TRUE(std::isfinite(rows.at(3).mzError));
  EXPECT_TRUE(std::isnan(rows.at(3).chiSquare));
}

TEST(MzPerPoint, IsTheSpacingAtThePeak) {
  TslBL::Spectrum spectrum;
  for (int i = 0; i < 100; ++i) spectrum.xAxis.push_back(i < 50 ? 0.1 * i : 5.0 + 0.2 * (i - 50));
  spectrum.AddStatus(TslBL::Curve::STATUS_X);
  TslBL::OverlapPeakInfo peak;
  peak.FWHM = 4.0;
  for (const auto& [position, step] : {std::pair{20.0, 0.1}, {80.0, 0.2}, {0.5, 0.1}, {98.5, 0.2}}) {
    peak.Position = position;
    EXPECT_NEAR(MzPerPoint(spectrum, peak), step, 1e-9) << position;
  }
  peak.FWHM = 0.0;
  EXPECT_NEAR(MzPerPoint(spectrum, peak), 0.2, 1e-9);
}

}  // namespace
}  // namespace tests
