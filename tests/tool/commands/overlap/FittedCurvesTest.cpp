#include <tool/commands/overlap/FittedCurves.h>

#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>
#include <algorithm>

namespace tests {
namespace {

using TslTool::FittedGroup;
using TslTool::FittedGroups;

TEST(FittedGroups, StandOnTheirDataPeaks) {
  const TslTool::LoadedSpectrum loaded = Deconvolved();
  const std::vector<FittedGroup> groups = FittedGroups(*loaded.spectrum);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].number, 1U);
  EXPECT_EQ(groups[0].first, loaded.spectrum->peaks[0].startIdx);
  EXPECT_EQ(groups[0].first + groups[0].sum.size() - 1, loaded.spectrum->peaks[0].endIdx);
  EXPECT_EQ(groups[0].peaks.size(), 2U);
}

TEST(FittedGroups, SumUpToTheCurve) {
  const TslTool::LoadedSpectrum loaded = Deconvolved();
  const FittedGroup group = FittedGroups(*loaded.spectrum).at(0);
  for (std::size_t i = 0; i < group.sum.size(); ++i)
    EXPECT_NEAR(group.sum[i], loaded.spectrum->yAxis[group.first + i], 250.0) << i;
}

TEST(FittedGroups, HaveEachPeakOnTheBaseline) {
  const TslTool::LoadedSpectrum loaded = Deconvolved();
  const FittedGroup group = FittedGroups(*loaded.spectrum).at(0);
  const auto& fits = loaded.spectrum->overlapPeaks;
  for (std::size_t k = 0; k < 2; ++k)
    EXPECT_NEAR(std::ranges::max(group.peaks[k]), fits[k].Baseline + fits[k].Height, 0.01 * fits[k].Height);
  for (std::size_t i = 0; i < group.sum.size(); ++i)
    EXPECT_NEAR(group.sum[i], group.peaks[0][i] + group.peaks[1][i] - fits[0].Baseline, 1e-9 * group.sum[i]);
}

TEST(FittedGroups, AreNoneWhereNothingWasFitted) { EXPECT_TRUE(FittedGroups(*WithPeaks().spectrum).empty()); }

}  // namespace
}  // namespace tests
