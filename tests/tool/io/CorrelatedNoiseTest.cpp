#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <tool/TempFile.h>
#include <tool/ToolRun.h>
#include <tool/io/CorrelatedNoise.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslTool::IsNoiseCorrelated;

constexpr int kPoints = 40000;
constexpr int kBetweenLines = 1000;

std::vector<double> White(std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::normal_distribution<double> noise;
  std::vector<double> y(kPoints);
  for (double& value : y) value = noise(random);
  return y;
}

// White noise of standard deviation 1 behind a Gaussian of this width, as a Fourier transform leaves it.
std::vector<double> Filtered(const std::vector<double>& white, double fwhm) {
  const double sigma = fwhm / 2.3548;
  std::vector<double> kernel;
  double squares = 0.0;
  for (int k = -12; k <= 12; ++k) kernel.push_back(std::exp(-0.5 * std::pow(k / sigma, 2.0)));
  for (const double weight : kernel) squares += weight * weight;
  std::vector<double> y(white.size());
  for (std::size_t i = 12; i + 12 < white.size(); ++i)
    for (std::size_t k = 0; k < kernel.size(); ++k)
      y[i] += kernel[k] * white[i + k - 12] / std::sqrt(squares);
  return y;
}

double Lines(int i, double fwhm, double height) {
  const double distance = (i % kBetweenLines - kBetweenLines / 2) / fwhm;
  return height * std::exp(-4.0 * std::log(2.0) * distance * distance);
}

// The magnitude of a complex spectrum.
std::vector<double> Fourier(double fwhm, double height, std::uint64_t seed) {
  const std::vector<double> real = Filtered(White(seed), fwhm);
  const std::vector<double> imaginary = Filtered(White(seed + 100), fwhm);
  std::vector<double> y;
  for (int i = 0; i < kPoints; ++i) {
    const auto at = static_cast<std::size_t>(i);
    y.push_back(std::hypot(real[at] + Lines(i, fwhm, height), imaginary[at]));
  }
  return y;
}

std::vector<double> Counts(double fwhm, double background) {
  std::mt19937_64 random(3);
  std::vector<double> y;
  for (int i = 0; i < kPoints; ++i)
    y.push_back(std::poisson_distribution<int>(background + Lines(i, fwhm, 1000.0))(random));
  return y;
}

TEST(CorrelatedNoise, IsThatOfFourierSpectra) {
  for (const double fwhm : {3.0, 4.0, 6.0, 9.0})
    EXPECT_TRUE(IsNoiseCorrelated(Fourier(fwhm, 100.0, 1), fwhm)) << fwhm;
}

TEST(CorrelatedNoise, IsNotThatOfCounts) {
  for (const double fwhm : {3.0, 12.0, 40.0})
    for (const double background : {0.02, 1.0, 3.0, 40.0})
      EXPECT_FALSE(IsNoiseCorrelated(Counts(fwhm, background), fwhm)) << fwhm << " over " << background;
}

TEST(CorrelatedNoise, IsNotABackgroundThatBends) {
  std::vector<double> y = White(5);
  for (int i = 0; i < kPoints; ++i) y[static_cast<std::size_t>(i)] += 500.0 * std::sin(i / 4000.0);
  EXPECT_FALSE(IsNoiseCorrelated(y, 12.0));
}

// Peaks of 16 points each 120, as those of a chromatogram.
TEST(CorrelatedNoise, IsNotThatOfPeaksWhichStandClose) {
  std::vector<double> y = White(6);
  for (int i = 0; i < kPoints; ++i) {
    const double distance = (i % 120 - 60) / 16.0;
    y[static_cast<std::size_t>(i)] += 1000.0 * std::exp(-4.0 * std::log(2.0) * distance * distance);
  }
  EXPECT_FALSE(IsNoiseCorrelated(y, 16.0));
}

// A line at each nominal mass, 15 points apart.
TEST(CorrelatedNoise, IsNotThatOfCountsWithALineAtEveryMass) {
  std::mt19937_64 random(4);
  std::vector<double> y;
  for (int i = 0; i < kPoints; ++i) {
    const double distance = (i % 15 - 7) / 8.0;
    const double mean = 5.0 + 80.0 * std::exp(-4.0 * std::log(2.0) * distance * distance);
    y.push_back(std::poisson_distribution<int>(mean)(random));
  }
  EXPECT_FALSE(IsNoiseCorrelated(y, 8.0));
}

TEST(CorrelatedNoise, CannotBeToldOfFewPoints) {
  std::vector<double> y = Fourier(4.0, 100.0, 1);
  y.resize(300);
  EXPECT_FALSE(IsNoiseCorrelated(y, 4.0));
  EXPECT_FALSE(IsNoiseCorrelated({}, 4.0));
}

std::string TextOf(const std::vector<double>& y) {
  std::string text;
  for (std::size_t i = 0; i < y.size(); ++i)
    text += fmt::format("{:.3f} {:.5f}\n", 200.0 + 0.005 * static_cast<double>(i), y[i]);
  return text;
}

TEST(CorrelatedNoise, HardlyPassesForPeaksAndIsTold) {
  std::size_t lines = 0;
  std::size_t rows = 0;
  for (const double fwhm : {4.0, 6.0})
    for (const std::uint64_t seed : {1U, 2U}) {
      const TempFile file("a.txt", TextOf(Fourier(fwhm, 40.0, seed)));
      const Outcome outcome = RunTool({"peaks", file.Path(), "--format", "tsv"});
      EXPECT_THAT(outcome.err, HasSubstr("--noise linear:1000 --sn 8"));
      EXPECT_THAT(outcome.err, HasSubstr("points wide, noise runs over neighbouring points)"));
      EXPECT_THAT(outcome.err, HasSubstr("standard errors are too small, those of areas up to sevenfold"));
      lines += kPoints / kBetweenLines;
      rows += LinesOf(outcome.out).size() - 1;
    }
  EXPECT_GE(rows, lines);
  EXPECT_LE(rows, lines + 2);
}

TEST(CorrelatedNoise, BarsNoPeaksOfSeriesWhichAgree) {
  const TempFile file("a.txt", TextOf(Fourier(6.0, 40.0, 1)));
  EXPECT_THAT(RunTool({"decon", file.Path()}).err, HasSubstr("--noise linear:250 --sn 6"));
}

}  // namespace
}  // namespace tests
