#include <tool/commands/decon/SeriesRows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include <tool/commands/decon/Proteins.h>

namespace tests {
namespace {

using TslTool::SeriesRow;
using TslTool::SeriesRows;

TEST(SeriesRows, HaveTheMostIntenseFirst) {
  const auto loaded = WithSeries();
  const std::vector<SeriesRow> rows = SeriesRows(loaded);
  ASSERT_GE(rows.size(), 2U);
  EXPECT_EQ(rows[0].label, "UA");
  EXPECT_FALSE(rows[0].isResolved);
  EXPECT_NEAR(rows[0].mass, kLarge.mass, 0.1);
  EXPECT_GE(rows[0].lowCharge, 12U);
  EXPECT_LE(rows[0].highCharge, 22U);
  EXPECT_EQ(rows[0].peaks.size(), rows[0].highCharge - rows[0].lowCharge + 1U);
  for (std::size_t i = 1; i < rows.size(); ++i) EXPECT_LE(rows[i].intensity, rows[i - 1].intensity);
}

TEST(SeriesRows, AddUpTheAreasOfTheWholePeaks) {
  const std::vector<SeriesRow> rows = SeriesRows(WithSeries());
  double expected = 0.0;
  for (std::uint32_t charge = rows[0].lowCharge; charge <= rows[0].highCharge; ++charge)
    expected += kLarge.Height(static_cast<int>(charge)) * 0.7 * 1.0644670194312262;
  EXPECT_NEAR(rows[0].intensity, expected, 0.03 * expected);
  double sum = 0.0;
  for (const auto& member : rows[0].peaks) sum += member.intensity;
  EXPECT_DOUBLE_EQ(rows[0].intensity, sum);
}

TEST(SeriesRows, AddUpHeightsAboveTheBaselineIfTheyAreAskedFor) {
  TslTool::DeconWishes wishes = DefaultWishes();
  wishes.params.PkIntensity = TslBL::ChargeStateParams::Amplitude;
  const std::vector<SeriesRow> rows = SeriesRows(WithSeries(WithProteinPeaks(), wishes));
  double expected = 0.0;
  for (std::uint32_t charge = rows[0].lowCharge; charge <= rows[0].highCharge; ++charge)
    expected += kLarge.Height(static_cast<int>(charge));
  EXPECT_NEAR(rows[0].intensity, expected, 0.05 * expected);
}

TEST(SeriesRows, OfAListAddUpItsIntensities) {
  const std::vector<SeriesRow> rows = SeriesRows(WithSeries(PeptideList()));
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].label, "RA");
  EXPECT_TRUE(rows[0].isResolved);
  EXPECT_NEAR(rows[0].mass, kPeptide.monoMass, 0.02);
  EXPECT_NEAR(rows[0].intensity, 2360.0, 1e-9);
  EXPECT_EQ(rows[0].lowCharge, 2U);
  EXPECT_EQ(rows[0].highCharge, 2U);
  EXPECT_TRUE(std::isnan(rows[0].deviation));
  EXPECT_TRUE(std::isnan(rows[0].massError));
}

TEST(SeriesRows, NamePeaksByTheirNumberInTheTable) {
  const auto loaded = WithSeries();
  for (const SeriesRow& row : SeriesRows(loaded))
    for (const auto& member : row.peaks)
      EXPECT_EQ(member.mz, loaded.spectrum->FractionalIndexToXAxisVal(
                               loaded.spectrum->peaks.at(member.peak - 1).ReportedIdx()));
}

}  // namespace
}  // namespace tests
