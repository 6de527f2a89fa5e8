#include <tool/commands/peaks/SignalNoise.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include <tool/commands/peaks/ErrorBars.h>
#include <tool/commands/peaks/Evaluation.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>

namespace tests {
namespace {

using TslBL::CurveEval;
using TslTool::LoadedSpectrum;
using TslTool::SignalNoiseOf;

struct Lines {
  double width = 10.0;       // points at half height
  double noise = 1.0;        // of the background
  double ofSignal = 0.0;     // variance over amplitude
  double background = 50.0;  // amplitude
  int count = 40;
};

LoadedSpectrum Chained(LoadedSpectrum loaded, std::vector<CurveEval> chain = {}) {
  loaded.measured = loaded.spectrum->yAxis;
  for (const CurveEval& eval : {CurveEval(TslBL::BaselineParams()), CurveEval(TslBL::NoiseParams()),
                                CurveEval(TslBL::PeakDetectParams::DefaultMS())})
    chain.push_back(eval);
  TslTool::Evaluation{"a.txt", chain}.Run(loaded);
  return loaded;
}

// Gaussian lines from 30 to 10 000 high, the noise of whose points is normal; not smoothed.
LoadedSpectrum Evaluated(const Lines& lines) {
  std::mt19937_64 random(11);
  std::normal_distribution<double> normal;
  LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  for (int i = 0; i < 150 * lines.count; ++i) {
    const double u = (i % 150 - 75.2) / lines.width;
    const double height = 30.0 * std::pow(333.0, static_cast<double>(i / 150) / lines.count);
    const double signal = height * std::exp(-4.0 * std::log(2.0) * u * u);
    const double variance = lines.noise * lines.noise + lines.ofSignal * signal;
    loaded.spectrum->xAxis.push_back(100.0 + 0.05 * i);
    loaded.spectrum->yAxis.push_back(lines.background + signal + std::sqrt(variance) * normal(random));
  }
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  return Chained(std::move(loaded));
}

TEST(SignalNoise, IsWhatGrowsWithTheSignal) {
  for (const double ofSignal : {0.5, 3.0, 20.0})
    for (const double width : {6.0, 10.0, 20.0})
      EXPECT_NEAR(SignalNoiseOf(Evaluated({.width = width, .ofSignal = ofSignal}), 1.0) / ofSignal, 1.0, 0.2)
          << ofSignal << ' ' << width;
}

TEST(SignalNoise, IsNoneWhereAllPointsScatterAlike) {
  for (const double width : {10.0, 20.0}) EXPECT_LT(SignalNoiseOf(Evaluated({.width = width}), 1.0), 0.01);
}

TEST(SignalNoise, IsNotTheShapeOfNarrowPeaks) {
  for (const double width : {3.0, 4.0, 5.0}) EXPECT_LT(SignalNoiseOf(Evaluated({.width = width}), 1.0), 0.1);
}

TEST(SignalNoise, IsThatOfMeasuredPointsBehindAFilter) {
  const LoadedSpectrum loaded = Evaluated({.noise = 2.0, .ofSignal = 3.0});
  LoadedSpectrum filtered = Evaluated({.noise = 2.0, .ofSignal = 3.0});
  for (double& noise : filtered.spectrum->noise) noise *= 0.5;
  EXPECT_NEAR(SignalNoiseOf(filtered, 0.25), SignalNoiseOf(loaded, 1.0), 1e-9);
}

TEST(SignalNoise, IsNotToldByAFewPoints) {
  LoadedSpectrum loaded = Evaluated({.ofSignal = 3.0});
  loaded.spectrum->peaks.clear();
  EXPECT_EQ(SignalNoiseOf(loaded, 1.0), 0.0);
  EXPECT_EQ(SignalNoiseOf({1, 0.0, std::make_unique<TslBL::Spectrum>()}, 1.0), 0.0);
}

// How far off lines are that stand at 75.2 of each 150 points, times `scale`, in their standard errors; the
// root of the mean of the squares.
double DeviationInErrors(const LoadedSpectrum& loaded, double scale, int lines) {
  TslTool::ErrorBars errors(loaded);
  double squares = 0.0;
  int found = 0;
  for (std::uint32_t k = 0; k < loaded.spectrum->peaks.size(); ++k) {
    const TslTool::ErrorBar bar = errors.Of(k);
    EXPECT_FALSE(bar.isCounted);
    const double distance =
        std::remainder(loaded.spectrum->peaks[k].ReportedIdx() - 75.2 * scale, 150.0 * scale);
    if (std::abs(distance) > 5.0 * scale) continue;
    squares += distance * distance / (bar.mz * bar.mz);
    ++found;
  }
  EXPECT_EQ(found, lines);
  return std::sqrt(squares / found);
}

// `steps` points for one, on the lines between them, evaluated behind a smoothing.
LoadedSpectrum Interpolated(const LoadedSpectrum& loaded, int steps) {
  LoadedSpectrum finer{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  const std::vector<double>& y = loaded.measured;
  for (std::size_t i = 0; i + 1 < y.size(); ++i)
    for (int k = 0; k < steps; ++k) {
      finer.spectrum->xAxis.push_back(static_cast<double>(finer.spectrum->xAxis.size()));
      finer.spectrum->yAxis.push_back(y[i] + (y[i + 1] - y[i]) * k / steps);
    }
  finer.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  finer.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  TslBL::SmoothParams smooth;
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, static_cast<std::uint32_t>(10 * steps + 1)}};
  return Chained(std::move(finer), {CurveEval(smooth)});
}

TEST(SignalNoise, OfACurveThatWasInterpolatedMakesStandardErrorsHold) {
  const LoadedSpectrum loaded = Evaluated({.ofSignal = 3.0, .count = 200});
  for (const int steps : {2, 3})
    EXPECT_NEAR(DeviationInErrors(Interpolated(loaded, steps), steps, 200), 1.0, 0.25) << steps;
}

// Each ion gives a pulse of another height, on an empty background.
TEST(SignalNoise, OfConvertedIonsMakesStandardErrorsHold) {
  std::mt19937_64 random(7);
  std::normal_distribution<double> normal;
  LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  for (int i = 0; i < 150 * 200; ++i) {
    const double u = (i % 150 - 75.2) / 10.0;
    const double mean = 0.2 + 1000.0 * std::exp(-4.0 * std::log(2.0) * u * u);
    const double ions = std::poisson_distribution<int>(mean)(random);
    loaded.spectrum->xAxis.push_back(i);
    loaded.spectrum->yAxis.push_back(
        std::max(0.0, std::round(8.0 * ions + 4.0 * std::sqrt(ions) * normal(random))));
  }
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  loaded = Chained(std::move(loaded));
  EXPECT_NEAR(DeviationInErrors(loaded, 1.0, 200), 1.0, 0.15);
}

TEST(SignalNoise, IsInTheStandardErrors) {
  const auto errorOfLast = [](const LoadedSpectrum& loaded) {
    return TslTool::ErrorBars(loaded)
        .Of(static_cast<std::uint32_t>(loaded.spectrum->peaks.size() - 1))
        .amplitude;
  };
  EXPECT_GT(errorOfLast(Evaluated({.ofSignal = 3.0})), 20.0 * errorOfLast(Evaluated({})));
}

// Without noise there is no telling how sure a peak is; an error of 1e-17 would be a lie.
TEST(SignalNoise, OfCurvesWithoutAnyLeavesStandardErrorsUnknown) {
  LoadedSpectrum loaded = Evaluated({});
  for (double& noise : loaded.spectrum->noise) noise = 1e-12;
  loaded.spectrum->baseline.clear();  // without which the noise of the signal cannot be told either
  ASSERT_FALSE(loaded.spectrum->peaks.empty());
  EXPECT_TRUE(std::isnan(TslTool::ErrorBars(loaded).Of(0).mz));
}

}  // namespace
}  // namespace tests
