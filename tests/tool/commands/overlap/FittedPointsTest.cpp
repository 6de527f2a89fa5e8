#include <tool/commands/overlap/FittedPoints.h>

#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>

namespace tests {
namespace {

using TslBL::Curve;
using TslTool::FittedPoints;
using TslTool::WithFittedPoints;

TEST(FittedPoints, AreThoseThatWereMeasured) {
  const TslTool::LoadedSpectrum loaded = WithPeaks();
  EXPECT_EQ(&FittedPoints(loaded), &loaded.measured);
}

TEST(FittedPoints, AreOfTheEvaluatedCurveWhereTheChainTookSomethingOff) {
  TslTool::LoadedSpectrum loaded = WithPeaks();
  loaded.spectrum->evals.emplace_back(TslBL::CurveEval::BaselineSubtract());
  EXPECT_EQ(&FittedPoints(loaded), &loaded.spectrum->yAxis);
}

TEST(FittedPoints, AreOfTheEvaluatedCurveWhereTheMeasuredAreNotKept) {
  TslTool::LoadedSpectrum loaded = WithPeaks();
  loaded.measured.clear();
  EXPECT_EQ(&FittedPoints(loaded), &loaded.spectrum->yAxis);
}

TEST(WithFittedPoints, LendsThemToTheSpectrum) {
  TslTool::LoadedSpectrum loaded = WithPeaks();
  const std::vector<double> smoothed = loaded.spectrum->yAxis;
  const std::vector<double> measured = loaded.measured;
  {
    const WithFittedPoints lent(loaded);
    EXPECT_EQ(loaded.spectrum->yAxis, measured);
    EXPECT_FALSE(loaded.spectrum->CheckAllStatus(Curve::STATUS_SMOOTHED));
  }
  EXPECT_EQ(loaded.spectrum->yAxis, smoothed);
  EXPECT_EQ(loaded.measured, measured);
  EXPECT_TRUE(loaded.spectrum->CheckAllStatus(Curve::STATUS_SMOOTHED));
}

TEST(WithFittedPoints, LeavesASpectrumThatWasNotSmoothedSo) {
  TslTool::LoadedSpectrum loaded = WithPeaks();
  loaded.spectrum->status &= ~Curve::STATUS_SMOOTHED;
  { const WithFittedPoints lent(loaded); }
  EXPECT_FALSE(loaded.spectrum->CheckAllStatus(Curve::STATUS_SMOOTHED));
}

}  // namespace
}  // namespace tests
