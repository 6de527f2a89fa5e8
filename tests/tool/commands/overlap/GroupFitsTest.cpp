#include <tool/commands/overlap/GroupFits.h>

#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>

namespace tests {
namespace {

using TslTool::FitOfGroup;
using TslTool::LoadedSpectrum;
using TslTool::VariancePerMeanOf;

LoadedSpectrum NotCounted() {
  LoadedSpectrum loaded = CountedSpectrum();
  loaded.countAmpl = 0.0;
  for (double& value : loaded.spectrum->yAxis) value *= 3.7;
  for (std::size_t i = 0; i < loaded.spectrum->yAxis.size(); ++i)
    loaded.spectrum->yAxis[i] += 0.01 * static_cast<double>(i % 7);
  return Deconvolved(WithPeaks(std::move(loaded)));
}

TEST(GroupFits, SpanTheDataPeaks) {
  const LoadedSpectrum loaded = Deconvolved();
  const TslTool::GroupSpan span = TslTool::SpanOf(*loaded.spectrum, 1);
  EXPECT_EQ(span.first, loaded.spectrum->peaks[0].startIdx);
  EXPECT_EQ(span.last, loaded.spectrum->peaks[0].endIdx);
}

TEST(GroupFits, KnowTheNoiseOfCounts) {
  EXPECT_EQ(VariancePerMeanOf(Deconvolved()), 1.0);
  EXPECT_EQ(VariancePerMeanOf(NotCounted()), 0.0);
}

TEST(GroupFits, AgreeWithTheRows) {
  const LoadedSpectrum loaded = Deconvolved();
  const auto fit = FitOfGroup(loaded, 1, 1.0);
  ASSERT_TRUE(fit);
  const auto& rows = loaded.spectrum->overlapPeaks;
  const double first = loaded.spectrum->peaks[0].startIdx;
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_NEAR(first + fit->sum.Centroid(k), rows[k].Position, 0.01);
    EXPECT_NEAR(fit->errors[k].area, rows[k].Fit6, 0.02 * rows[k].Fit6);
  }
}

// A chi-square of so many points scatters by a fifth; by their own scatter, by twice that.
TEST(GroupFits, MeasureWhatIsLeftInCounts) {
  const LoadedSpectrum loaded = Deconvolved();
  const auto span = TslTool::SpanOf(*loaded.spectrum, 1);
  const auto fit = FitOfGroup(loaded, 1, 1.0);
  ASSERT_TRUE(fit);
  double squares = 0.0;
  for (std::size_t i = span.first; i <= span.last; ++i) {
    const double mean = fit->sum.At(static_cast<double>(i - span.first));
    squares += (loaded.measured[i] - mean) * (loaded.measured[i] - mean) / mean;
  }
  const double freedom = static_cast<double>(span.last - span.first + 1) - 6.0;
  EXPECT_NEAR(loaded.spectrum->overlapPeaks[0].Fit4, squares / freedom, 0.05);
}

TEST(GroupFits, AreByTheMethodOfTheSpectrum) {
  LoadedSpectrum loaded = Deconvolved();
  const auto byDerivatives = FitOfGroup(loaded, 1, 1.0);
  loaded.spectrum->opdParams.FittingFunc = TslBL::OPDParams::HookeJeeves;
  const auto direct = FitOfGroup(loaded, 1, 1.0);
  ASSERT_TRUE(byDerivatives && direct);
  EXPECT_NE(direct->sum.tops, byDerivatives->sum.tops);
  EXPECT_NEAR(direct->sum.tops[0], byDerivatives->sum.tops[0], 0.01);
}

TEST(GroupFits, ThatLeadElsewhereAreNone) {
  LoadedSpectrum loaded = Deconvolved();
  loaded.spectrum->overlapPeaks[0].Position -= 8.0;
  EXPECT_FALSE(FitOfGroup(loaded, 1, 1.0));
}

TEST(GroupFits, LeaveRowsAloneWhereTheNoiseIsNotKnown) {
  LoadedSpectrum loaded = NotCounted();
  const double before = loaded.spectrum->overlapPeaks[0].Fit6;
  TslTool::FitWithKnownNoise(loaded);
  EXPECT_EQ(loaded.spectrum->overlapPeaks[0].Fit6, before);
}

}  // namespace
}  // namespace tests
