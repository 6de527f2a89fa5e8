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
  const std::vector<FittedGroup> groups = FittedGroups(loaded);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].number, 1U);
  EXPECT_EQ(groups[0].first, loaded.spectrum->peaks[0].startIdx);
  EXPECT_EQ(groups[0].first + groups[0].sum.size() - 1, loaded.spectrum->peaks[0].endIdx);
  EXPECT_EQ(groups[0].peaks.size(), 2U);
}

TEST(FittedGroups, SumUpToTheCurve) {
  const TslTool::LoadedSpectrum loaded = Deconvolved();
  const FittedGroup group = FittedGroups(loaded).at(0);
  for (std::size_t i = 0; i < group.sum.size(); ++i)
    EXPECT_NEAR(group.sum[i], loaded.spectrum->yAxis[group.first + i], 250.0) << i;
}

TEST(FittedGroups, HaveEachPeakOnTheBaseline) {
  const TslTool::LoadedSpectrum loaded = Deconvolved();
  const FittedGroup group = FittedGroups(loaded).at(0);
  const auto& fits = loaded.spectrum->overlapPeaks;
  for (std::size_t k = 0; k < 2; ++k)
    EXPECT_NEAR(std::ranges::max(group.peaks[k]), fits[k].Baseline + fits[k].Height, 0.01 * fits[k].Height);
  for (std::size_t i = 0; i < group.sum.size(); ++i)
    EXPECT_NEAR(group.sum[i], group.peaks[0][i] + group.peaks[1][i] - fits[0].Baseline, 1e-9 * group.sum[i]);
}

// Gaussians of the same heights and widths would leave a tenth of the height.
TEST(FittedGroups, TailAsTheirPeaksDo) {
  TslTool::LoadedSpectrum counted = CountedSpectrum({});
  for (std::size_t i = 0; i < counted.spectrum->xAxis.size(); ++i)
    for (const KnownPeak& peak : {KnownPeak{503.0, 40000.0}, KnownPeak{504.0, 30000.0}}) {
      const double u = (counted.spectrum->xAxis[i] - peak.mz) / KnownPeak::kSigma;
      const double side = u < 0.0 ? 0.8 : 1.2;
      counted.spectrum->yAxis[i] += std::round(peak.height * std::exp(-0.5 * u * u / (side * side)));
    }
  const TslTool::LoadedSpectrum loaded = Deconvolved(WithPeaks(std::move(counted)));
  const FittedGroup group = FittedGroups(loaded).at(0);
  for (std::size_t i = 0; i < group.sum.size(); ++i)
    EXPECT_NEAR(group.sum[i], loaded.measured[group.first + i], 500.0) << i;
}

TEST(FittedGroups, AreNoneWhereNothingWasFitted) { EXPECT_TRUE(FittedGroups(WithPeaks()).empty()); }

}  // namespace
}  // namespace tests
