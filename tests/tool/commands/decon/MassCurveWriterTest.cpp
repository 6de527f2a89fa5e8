#include <tool/commands/decon/MassCurveWriter.h>

#include <gtest/gtest.h>

#include <limits>

#include <tool/ToolRun.h>
#include <tool/commands/decon/Proteins.h>
#include <tool/commands/decon/SeriesRows.h>

namespace tests {
namespace {

TEST(MassCurve, HasARowForEachPoint) {
  const auto loaded = WithSeries();
  const auto rows = RowsOf(TslTool::MassCurveHead() + TslTool::MassCurvePart(loaded));
  const TslBL::DeconSpectrum& spectrum = TslTool::DeconvolvedOf(loaded);
  ASSERT_EQ(rows.size(), spectrum.MassX.size());
  ASSERT_GT(rows.size(), 10U);
  EXPECT_EQ(rows[5].at("scan"), "4");
  EXPECT_EQ(rows[5].at("rt_s"), "2.5");
  EXPECT_EQ(ColumnOf(rows, "mass"), spectrum.MassX);
  EXPECT_EQ(ColumnOf(rows, "density"), spectrum.MassY);
}

TEST(MassCurve, LeavesATimeThatIsNotKnownEmpty) {
  auto loaded = WithSeries(PeptideList());
  loaded.rtSeconds = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(TslTool::MassCurvePart(loaded).substr(0, 3), "4\t\t");
}

}  // namespace
}  // namespace tests
