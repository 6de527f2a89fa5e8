// Tests: CountVariance.cpp.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include <tool/commands/peaks/CountVariance.h>
#include <tool/commands/peaks/ErrorBars.h>
#include <tool/commands/peaks/Evaluation.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>

namespace tests {
namespace {

using TslBL::CurveEval;
using TslBL::SmoothParams;
using TslTool::CountAmplOf;
using TslTool::ErrorBars;
using TslTool::LoadedSpectrum;

constexpr double kFilter[] = {1.0};

SmoothParams Smooth(SmoothParams::Algs alg) {
  SmoothParams p;
  p.Alg = alg;
  p.Steps = {{0.0, 7}};
  return p;
}

// Lines over a background of 5 counts, each count `unit` high, spread by `spread` times the noise of counts.
LoadedSpectrum Evaluated(double unit, double spread = 1.0, const std::vector<CurveEval>& before = {}) {
  std::mt19937_64 random(3);
  LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  for (int i = 0; i < 3000; ++i) {
    const double u = (i % 300 - 150) / 4.0;
    const double mean = 20.0 + 400.0 * std::exp(-0.5 * u * u);
    const double count = std::poisson_distribution<int>(mean)(random);
    loaded.spectrum->xAxis.push_back(100.0 + 0.05 * i);
    loaded.spectrum->yAxis.push_back(unit * std::max(0.0, std::round(mean + spread * (count - mean))));
  }
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_X);
  loaded.spectrum->AddStatus(TslBL::Curve::STATUS_Y);
  loaded.measured = loaded.spectrum->yAxis;
  std::vector<CurveEval> chain = before;
  for (const CurveEval& eval : {CurveEval(TslBL::BaselineParams()), CurveEval(TslBL::NoiseParams()),
                                CurveEval(TslBL::PeakDetectParams::DefaultMS())})
    chain.push_back(eval);
  TslTool::Evaluation{"a.txt", chain}.Run(loaded);
  return loaded;
}

// `between` points on the line from each point to the next.
LoadedSpectrum Interpolated(const LoadedSpectrum& loaded, std::size_t between) {
  LoadedSpectrum finer{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  const std::vector<double>& y = loaded.measured;
  const auto steps = static_cast<double>(between + 1);
  for (std::size_t i = 0; i + 1 < y.size(); ++i)
    for (std::size_t k = 0; k <= between; ++k)
      finer.measured.push_back(y[i] + (y[i + 1] - y[i]) * static_cast<double>(k) / steps);
  finer.spectrum->baseline.assign(finer.measured.size(), 20.0);
  return finer;
}

TEST(ErrorBars, InterpolatedCountsAreNoCounts) {
  for (const std::size_t between : {1U, 2U, 3U}) {
    LoadedSpectrum finer = Interpolated(Evaluated(1.0), between);
    // As that of counts so high would be.
    finer.spectrum->noise.assign(finer.measured.size(), std::sqrt(20.0 / static_cast<double>(between + 1)));
    EXPECT_EQ(CountAmplOf(finer, kFilter), 0.0) << between;
  }
  LoadedSpectrum same = Interpolated(Evaluated(1.0), 0);
  same.spectrum->noise.assign(same.measured.size(), std::sqrt(20.0));
  EXPECT_EQ(CountAmplOf(same, kFilter), 1.0);
}

TEST(ErrorBars, CountsAreKnownByTheirScatterWhereTheNoiseIsUnsure) {
  TslTool::LoadedSpectrum loaded = Evaluated(1.0);
  for (double& noise : loaded.spectrum->noise) noise *= 10.0;
  EXPECT_EQ(CountAmplOf(loaded, kFilter), 1.0);
}

TEST(ErrorBars, CountsAreKnownByTheirStepAndTheirNoise) {
  EXPECT_EQ(CountAmplOf(Evaluated(1.0), kFilter), 1.0);
  EXPECT_EQ(CountAmplOf(Evaluated(250.0), kFilter), 250.0);
}

TEST(ErrorBars, WholeNumbersWithAnotherNoiseAreNoCounts) {
  EXPECT_EQ(CountAmplOf(Evaluated(1.0, 4.0), kFilter), 0.0);
  EXPECT_EQ(CountAmplOf(Evaluated(1.0, 0.2), kFilter), 0.0);
}

// Whole numbers of normal noise, as high as that of the counts of their background, which lines of up to
// 20 000 leave as it is.
TEST(ErrorBars, NumbersOfAConverterAreNoCounts) {
  std::mt19937_64 random(3);
  std::normal_distribution noise(5.0, std::sqrt(5.0));
  std::poisson_distribution counts(5.0);
  LoadedSpectrum converted = Evaluated(1.0);
  LoadedSpectrum counted = Evaluated(1.0);
  for (std::size_t i = 0; i < counted.measured.size(); ++i) {
    const double u = (static_cast<double>(i % 300) - 150.0) / 4.0;
    const double line = 20000.0 * std::exp(-0.5 * u * u);
    converted.measured[i] = std::max(0.0, std::round(line + noise(random)));
    counted.measured[i] = counts(random) + std::poisson_distribution(line)(random);
  }
  for (LoadedSpectrum* loaded : {&converted, &counted}) {
    loaded->spectrum->baseline.assign(loaded->measured.size(), 5.0);
    loaded->spectrum->noise.assign(loaded->measured.size(), std::sqrt(5.0));
  }
  EXPECT_EQ(CountAmplOf(converted, kFilter), 0.0);
  EXPECT_EQ(CountAmplOf(counted, kFilter), 1.0);
}

TEST(ErrorBars, OtherNumbersAreNoCounts) {
  LoadedSpectrum loaded = Evaluated(1.0);
  loaded.measured[7] += 0.25;
  EXPECT_EQ(CountAmplOf(loaded, kFilter), 0.0);
}

TEST(ErrorBars, WhatIsToldOfCountsHolds) {
  LoadedSpectrum loaded = Evaluated(1.0, 4.0);
  loaded.countAmpl = 3.0;
  EXPECT_EQ(CountAmplOf(loaded, kFilter), 3.0);
}

TEST(ErrorBars, OfCountsGrowWithTheSignal) {
  const LoadedSpectrum loaded = Evaluated(1.0);
  const auto variance = TslTool::VarianceOf(loaded, kFilter).values;
  EXPECT_EQ(variance.size(), loaded.measured.size());
  EXPECT_GT(variance[150], 300.0);
  const TslBL::PeakInfo& peak = loaded.spectrum->peaks.front();
  EXPECT_LT(variance[peak.startIdx], 100.0);
  EXPECT_GT(variance[peak.startIdx], 5.0);
  EXPECT_EQ(variance[peak.startIdx - 20], 0.0);
}

// 16 times that of 420 counts.
TEST(ErrorBars, WithoutCountsAreThoseOfWhatPointsScatterBy) {
  const auto variance = TslTool::VarianceOf(Evaluated(1.0, 4.0), kFilter).values;
  EXPECT_NEAR(variance[150], 16.0 * 420.0, 0.2 * 16.0 * 420.0);
}

// Normal noise of 7, cut at 2.5 of these, of which the chain has found `found`.
double VarianceBesideAThreshold(double found) {
  std::mt19937_64 random(1);
  std::normal_distribution noise(0.0, 7.0);
  LoadedSpectrum loaded{1, 0.0, std::make_unique<TslBL::Spectrum>()};
  loaded.measured.resize(50000);
  for (double& y : loaded.measured) y = std::max(noise(random), 17.5);
  for (double& y : loaded.measured)
    if (y == 17.5) y = 0.0;
  for (std::size_t i = 25000; i < 25010; ++i) loaded.measured[i] = 1e5;
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  spectrum.yAxis = loaded.measured;
  spectrum.baseline.assign(loaded.measured.size(), 0.0);
  spectrum.noise.assign(loaded.measured.size(), found);
  TslBL::PeakInfo peak;
  peak.startIdx = 24998;
  peak.endIdx = 25012;
  spectrum.peaks.push_back(peak);
  return TslTool::VarianceOf(loaded, kFilter).values[25005];
}

TEST(ErrorBars, BesideAThresholdAreThoseOfItsNoise) {
  EXPECT_NEAR(VarianceBesideAThreshold(12.0), 49.0, 15.0);
  EXPECT_DOUBLE_EQ(VarianceBesideAThreshold(3.0), 9.0);
  EXPECT_DOUBLE_EQ(VarianceBesideAThreshold(100.0), 2500.0);
}

TEST(ErrorBars, TellWhetherTheyComeFromCounts) {
  EXPECT_TRUE(TslTool::VarianceOf(Evaluated(1.0), kFilter).isOfCounts);
  EXPECT_FALSE(TslTool::VarianceOf(Evaluated(1.0, 4.0), kFilter).isOfCounts);
}

TEST(ErrorBars, AreKnownOfEachPeakBehindAFilter) {
  const LoadedSpectrum loaded = Evaluated(1.0, 1.0, {CurveEval(Smooth(SmoothParams::SavitzkyGolay))});
  ErrorBars bars(loaded);
  ASSERT_GT(loaded.spectrum->peaks.size(), 5U);
  for (std::uint32_t i = 0; i < loaded.spectrum->peaks.size(); ++i) {
    const auto bar = bars.Of(i);
    EXPECT_GT(bar.mz, 0.0);
    EXPECT_GT(bar.amplitude, 0.0);
    EXPECT_GT(bar.area, 0.0);
    const TslBL::PeakInfo& peak = loaded.spectrum->peaks[i];
    EXPECT_GT(bar.height, peak.ReportedAmpl() - peak.baselineAmpl);
  }
}

TEST(ErrorBars, AreUnknownBehindAMedianAndTwoSmoothings) {
  const CurveEval median(Smooth(SmoothParams::Median));
  const CurveEval mean(Smooth(SmoothParams::Mean));
  for (const auto& before : {std::vector{median}, std::vector{mean, mean}}) {
    const LoadedSpectrum loaded = Evaluated(1.0, 1.0, before);
    ASSERT_FALSE(loaded.spectrum->peaks.empty());
    const auto bar = ErrorBars(loaded).Of(0);
    for (const double value : {bar.height, bar.mz, bar.amplitude, bar.area}) EXPECT_TRUE(std::isnan(value));
  }
}

TEST(ErrorBars, AreUnknownWithoutTheMeasuredAmplitudes) {
  LoadedSpectrum loaded = Evaluated(1.0);
  loaded.measured.clear();
  EXPECT_TRUE(std::isnan(ErrorBars(loaded).Of(0).mz));
  EXPECT_FALSE(std::isnan(ErrorBars(loaded).Of(0).height));
}

}  // namespace
}  // namespace tests
