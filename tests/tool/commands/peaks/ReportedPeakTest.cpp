#include <gtest/gtest.h>

#include <tool/commands/peaks/Evaluated.h>
#include <tool/commands/peaks/ReportedPeak.h>
#include <tslbl/curve/PeakArea.h>
#include <tslbl/spectrum/PeakTable.h>

namespace tests {
namespace {

using TslTool::ReportedPeaks;

TEST(ReportedPeak, HasTheAreaOfTheWholePeak) {
  const auto loaded = EvaluatedScan(3);
  const auto peaks = ReportedPeaks(loaded);
  ASSERT_FALSE(peaks.empty());
  for (std::uint32_t i = 0; i < peaks.size(); ++i) {
    EXPECT_EQ(peaks[i].area, TslBL::QWholePeakArea(*loaded.spectrum, i));
    EXPECT_GT(peaks[i].area, peaks[i].row.Area);
  }
}

TEST(ReportedPeak, IsTheRowOfTheTable) {
  const auto loaded = EvaluatedScan(3);
  const auto rows = TslBL::CreateMZPeakTable(*loaded.spectrum);
  const auto peaks = ReportedPeaks(loaded);
  ASSERT_EQ(peaks.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(peaks[i].row, rows[i]);
}

TEST(ReportedPeak, OfAFitHasTheAreaOfItsGaussian) {
  auto loaded = EvaluatedScan(3);
  TslBL::OverlapPeakInfo fit;
  fit.Position = 100.0;
  fit.Height = 50.0;
  fit.FWHM = 12.0;
  loaded.spectrum->overlapPeaks.push_back(fit);
  const auto peaks = ReportedPeaks(loaded);
  EXPECT_GT(peaks.back().area, 0.0);
  EXPECT_EQ(peaks.back().area, peaks.back().row.Area);
}

}  // namespace
}  // namespace tests
