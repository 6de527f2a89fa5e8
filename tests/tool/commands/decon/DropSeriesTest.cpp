#include <tool/commands/decon/DropSeries.h>

#include <gtest/gtest.h>

#include <tool/commands/decon/Proteins.h>
#include <tool/commands/decon/SeriesRows.h>

namespace tests {
namespace {

using TslBL::CSSeriesInfo;
using TslBL::DeconSpectrum;

TEST(DropSeries, TakesOutWhatIsUnwantedAndDrawsTheCurveAnew) {
  const auto loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  const std::size_t all = spectrum.Series.size();
  TslTool::DropSeries(spectrum, [](const CSSeriesInfo& series) { return series.AvgMass > 15000; });
  EXPECT_EQ(spectrum.Series.size(), all - 1);
  EXPECT_LT(spectrum.MassX.back(), 15000.0);
}

TEST(DropSeries, LeavesNothingWhereAllAreUnwanted) {
  const auto loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  TslTool::DropSeries(spectrum, [](const CSSeriesInfo&) { return true; });
  EXPECT_TRUE(spectrum.Series.empty());
  EXPECT_TRUE(spectrum.MassX.empty());
}

TEST(DropSeries, ChangesNothingWhereAllAreWanted) {
  const auto loaded = WithSeries();
  DeconSpectrum spectrum = TslTool::DeconvolvedOf(loaded);
  TslTool::DropSeries(spectrum, [](const CSSeriesInfo&) { return false; });
  EXPECT_EQ(spectrum, TslTool::DeconvolvedOf(loaded));
}

}  // namespace
}  // namespace tests
