#include <tool/commands/peaks/TopShape.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include <tool/commands/peaks/Evaluation.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>

namespace tests {
namespace {

using TslBL::CurveEval;
using TslTool::LoadedSpectrum;
using TslTool::TopShape;

constexpr double kWidth = 10.0;  // points at half height

// Counted lines exp(-ln 2 |2 u|^power), u in widths: 2 is a Gaussian, more have flat tops.
LoadedSpectrum Lines(double power, double height = 20000.0, int count = 20) {
  std::mt19937_64 random(5);
  LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  loaded.countAmpl = 1.0;
  for (int i = 0; i < 100 * count; ++i) {
    const double u = (i % 100 - 50.3) / kWidth;
    const double mean = 5.0 + height * std::exp(-std::log(2.0) * std::pow(std::abs(2.0 * u), power));
    loaded.spectrum->xAxis.push_back(100.0 + 0.05 * i);
    loaded.spectrum->yAxis.push_back(std::poisson_distribution<int>(mean)(random));
  }
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  loaded.measured = loaded.spectrum->yAxis;
  TslBL::SmoothParams smooth = TslBL::SmoothParams::DefaultMS();
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, 11}};
  TslTool::Evaluation{"a.txt",
                      {CurveEval(smooth), CurveEval(TslBL::BaselineParams()), CurveEval(TslBL::NoiseParams()),
                       CurveEval(TslBL::PeakDetectParams::DefaultMS())}}
      .Run(loaded);
  return loaded;
}

double ShareOf(const LoadedSpectrum& loaded) {
  return TopShape(loaded, *TslTool::FilterOf(*loaded.spectrum)).LossShare();
}

// Of the first peak, which the filter lowers, by all that is known.
double HeightOf(const LoadedSpectrum& loaded) {
  const auto filter = TslTool::FilterOf(*loaded.spectrum);
  const TslBL::PeakInfo& peak = loaded.spectrum->peaks.at(3);
  return TopShape(loaded, *filter)
      .HeightBefore(peak.ReportedAmpl() - peak.baselineAmpl, peak.halfHeightRightIdx - peak.halfHeightLeftIdx,
                    filter->gain);
}

// Of the same peak, points.
double WidthOf(const LoadedSpectrum& loaded) {
  const auto filter = TslTool::FilterOf(*loaded.spectrum);
  const TslBL::PeakInfo& peak = loaded.spectrum->peaks.at(3);
  return TopShape(loaded, *filter)
      .WidthBefore(peak.halfHeightRightIdx - peak.halfHeightLeftIdx, filter->gain);
}

TEST(TopShape, OfGaussiansIsThatOfGaussians) { EXPECT_EQ(ShareOf(Lines(2.0)), 1.0); }

TEST(TopShape, OfFlatTopsLosesNothing) { EXPECT_LT(ShareOf(Lines(4.0)), 0.5); }

TEST(TopShape, GivesHeightsOfEitherWithinFourPercent) {
  for (const double power : {2.0, 2.5, 3.0, 4.0, 8.0})
    EXPECT_NEAR(HeightOf(Lines(power)), 20000.0, 800.0) << power;
}

TEST(TopShape, GivesWidthsOfGaussiansWithinAPercentAndOfFlatTopsWithinFive) {
  EXPECT_NEAR(WidthOf(Lines(2.0)), kWidth, 0.01 * kWidth);
  for (const double power : {2.5, 3.0, 4.0, 8.0})
    EXPECT_NEAR(WidthOf(Lines(power)), kWidth, 0.05 * kWidth) << power;
}

TEST(TopShape, IsThatOfGaussiansWhereNothingTellsIt) {
  EXPECT_EQ(ShareOf(Lines(4.0, 20000.0, 4)), 1.0);
  EXPECT_EQ(ShareOf(Lines(4.0, 100.0)), 1.0);
}

TEST(TopShape, NeedsMeasuredPoints) {
  LoadedSpectrum loaded = Lines(4.0);
  loaded.measured.clear();
  EXPECT_EQ(ShareOf(loaded), 1.0);
}

}  // namespace
}  // namespace tests
