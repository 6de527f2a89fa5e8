#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/baseline/ShotBackground.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace TslMath;
using namespace tests;

namespace {

constexpr std::uint32_t kSegment = 480;
// What an algorithm is said to have found; neither is a figure of shots.
constexpr double kBaseline = -1.5;
constexpr double kNoise = 0.0625;

struct Figures {
  Samples baseline;
  Samples noise;
};

void Take(const Samples& y, const BaselineAndNoise& out) {
  TakeShotBackground(y.data(), Size(y), kSegment, SmallestStep(y.data(), y.size()), out);
}

Figures FiguresOf(const Samples& y, double noise = kNoise) {
  Figures f{Samples(y.size(), kBaseline), Samples(y.size(), noise)};
  Take(y, {f.baseline.data(), f.noise.data()});
  return f;
}

double MeanOf(const Samples& values) {
  double sum = 0.0;
  for (const double value : values) sum += value;
  return sum / static_cast<double>(values.size());
}

// Magnitudes of noise of standard deviation `sd` in both its parts, with 40 peaks 5 points wide, of which
// what is below `threshold` is left out; between what is left are as many zeros as there were points, or
// `zeros` at most.
Samples Thresholded(double threshold, double sd, std::size_t zeros = 1000000) {
  std::mt19937_64 random(3);
  std::normal_distribution<double> noise(0.0, sd);
  Samples kept;
  std::size_t gap = 0;
  for (int i = 0; i < 20000; ++i) {
    const double line =
        sd * 20.0 * std::pow(1.15, i / 500) * std::exp(-0.5 * std::pow((i % 500 - 250) / 2.12, 2.0));
    const double y = std::hypot(line + noise(random), noise(random));
    gap = y < threshold ? gap + 1 : 0;
    if (gap == 0 || gap <= zeros) kept.push_back(gap == 0 ? y : 0.0);
  }
  return kept;
}

bool Stay(const Figures& f) {
  return f.baseline == Samples(f.baseline.size(), kBaseline) && f.noise == Samples(f.noise.size(), kNoise);
}

}  // namespace

TEST(ShotBackground, AnIonAloneHasASignalToNoiseRatioOfOne) {
  for (const std::uint32_t width : {7U, 15U}) {
    const Samples noise = FiguresOf(Filtered(Shots(0.001, 20000, 1), width)).noise;
    EXPECT_NEAR(HeightOfAnIon(width) / MeanOf(noise), 1.0, 0.05) << width;
  }
}

TEST(ShotBackground, ItsNoiseIsThatOfOneIonMoreThanThereAre) {
  for (const double mean : {0.01, 0.05, 0.1}) {
    const double height = HeightOfAnIon(15);
    const double expected = std::sqrt(height * (mean + height));
    const Samples y = Filtered(Shots(mean, 20000, 2), 15);
    EXPECT_NEAR(MeanOf(FiguresOf(y).noise), expected, 0.05 * expected) << mean;
    const double cut = MeanOf(FiguresOf(WithoutNegatives(y)).noise);
    EXPECT_LT(cut, expected) << mean;
    EXPECT_GT(cut, 0.8 * expected) << mean;
  }
}

TEST(ShotBackground, ItsBaselineIsTheMean) {
  for (const double offset : {0.0, 20.0}) {
    const Samples baseline = FiguresOf(Filtered(Shots(0.05, 20000, 3), 15, offset)).baseline;
    EXPECT_NEAR(MeanOf(baseline), offset + 0.05, 0.005);
  }
}

// In each half one ion at every tenth or fifth point. Straight lines lead from segment to segment.
TEST(ShotBackground, OfEvenIonsIsExact) {
  Samples y = EvenIons(2400, 10);
  const Samples right = EvenIons(2400, 5);
  y.insert(y.end(), right.begin(), right.end());
  const double height = (0.1 * 0.9 + 0.2 * 0.8) / (0.1 + 0.2);
  const double left = std::sqrt(height * (0.1 + height));
  const double step = std::sqrt(height * (0.2 + height)) - left;
  const Figures f = FiguresOf(y);
  for (std::size_t i = 0; i < y.size(); ++i) {
    const double share = std::clamp((static_cast<double>(i) - (1920 + 239.5)) / 480, 0.0, 1.0);
    ASSERT_NEAR(f.baseline[i], 0.1 + 0.1 * share, 1e-12) << i;
    ASSERT_NEAR(f.noise[i], left + step * share, 1e-12) << i;
  }
}

TEST(ShotBackground, ALargerNoiseStaysWhereAtMostHalfOfThePointsAreEmpty) {
  const Samples y = Shots(1.0, 20000, 4);  // 37 % are
  EXPECT_EQ(FiguresOf(y, 9.0).noise, Samples(y.size(), 9.0));
  EXPECT_LT(MeanOf(FiguresOf(Shots(0.1, 20000, 4), 9.0).noise), 2.0);
}

// A filter of few weights has so few values that one step above the floor is as common as the floor.
TEST(ShotBackground, FilteredIonsAreNotTakenForDenseCounts) {
  for (const std::uint32_t width : {7U, 13U, 15U})
    for (const double mean : {0.3, 0.5, 0.7}) {
      const double height = HeightOfAnIon(width);
      const double expected = std::sqrt(height * (mean + height));
      const Samples y = WithoutNegatives(Filtered(Shots(mean, 20000, 5), width));
      EXPECT_NEAR(MeanOf(FiguresOf(y).noise), expected, 0.15 * expected) << width << " points, " << mean;
    }
}

TEST(ShotBackground, DenseCountsKeepTheirBits) {
  for (const double mean : {5.0, 20.0, 200.0}) {
    EXPECT_TRUE(Stay(FiguresOf(Shots(mean, 20000, 5)))) << mean;
    EXPECT_TRUE(Stay(FiguresOf(Filtered(Shots(mean, 20000, 5), 15)))) << mean;
  }
}

TEST(ShotBackground, ADensePartKeepsItsBitsBesideASparseOne) {
  Samples y = Shots(0.02, 9600, 6);
  const Samples dense = Shots(40.0, 9600, 7);
  y.insert(y.end(), dense.begin(), dense.end());
  const Figures f = FiguresOf(y);
  EXPECT_TRUE(Stay({{f.baseline.begin() + 9600, f.baseline.end()}, {f.noise.begin() + 9600, f.noise.end()}}));
  EXPECT_GT(f.noise.front(), 0.5);
}

TEST(ShotBackground, ConstantsKeepTheirBits) {
  for (const double level : {0.0, 3.0}) EXPECT_TRUE(Stay(FiguresOf(Samples(5000, level)))) << level;
}

TEST(ShotBackground, TwoPeaksWithoutNoiseKeepTheirBits) {
  Samples y(5000, 0.0);
  for (int i = -60; i <= 60; ++i) {
    y[static_cast<std::size_t>(1500 + i)] = 100.0 * std::exp(-0.5 * i * i / 100.0);
    y[static_cast<std::size_t>(3500 + i)] = 50.0 * std::exp(-0.5 * i * i / 100.0);
  }
  EXPECT_TRUE(Stay(FiguresOf(y)));
}

TEST(ShotBackground, OfNoiseAboveAThresholdTheNoiseIsThatOfTheThreshold) {
  for (const double sd : {1.0, 250.0})
    for (const double threshold : {2.0, 2.5, 3.0})
      EXPECT_NEAR(MeanOf(FiguresOf(Thresholded(threshold * sd, sd)).noise) / sd, threshold / 2.5, 0.1)
          << threshold << " of " << sd;
}

// As Fourier transforms leave it: what rises above a threshold stands with its flanks on zeros.
TEST(ShotBackground, OfNoiseWithFlanksTheNoiseIsThatOfTheThresholdHoweverMuchThereIs) {
  std::mt19937_64 random(1);
  std::exponential_distribution<double> above(1.0);
  for (const int bumps : {90, 300, 900}) {
    Samples y(40000, 0.0);
    for (int k = 0; k < bumps; ++k) {
      const double height = 250.0 * (1.0 + 0.6 * above(random) + (k % 10 == 0 ? 20.0 * above(random) : 0.0));
      for (int i = -4; i <= 4; ++i)
        y[static_cast<std::size_t>(40000.0 * (k + 0.5) / bumps + i)] = height * std::exp(-0.5 * i * i / 2.0);
    }
    EXPECT_NEAR(FiguresOf(y).noise[20000], 100.0, 10.0) << bumps;
  }
}

TEST(ShotBackground, TheNoiseRisesWithTheThreshold) {
  std::mt19937_64 random(1);
  std::exponential_distribution<double> above(1.0);
  Samples y(40000, 0.0);
  for (int k = 0; k < 900; ++k) {
    const double height = 250.0 * std::pow(10.0, k / 900.0) * (1.0 + 0.6 * above(random));
    for (int i = -4; i <= 4; ++i)
      y[static_cast<std::size_t>(40000.0 * (k + 0.5) / 900 + i)] = height * std::exp(-0.5 * i * i / 2.0);
  }
  const Figures figures = FiguresOf(y);
  for (const std::size_t point : {5000U, 20000U, 35000U}) {
    const double there = 100.0 * std::pow(10.0, static_cast<double>(point) / 40000.0);
    EXPECT_NEAR(figures.noise[point], there, 0.2 * there) << point;
  }
}

TEST(ShotBackground, HowManyZerosStandInGapsDoesNotMatter) {
  const double all = FiguresOf(Thresholded(2.5, 1.0)).noise[1000];
  for (const std::size_t zeros : {20U, 50U})
    EXPECT_NEAR(FiguresOf(Thresholded(2.5, 1.0, zeros)).noise[1000], all, 0.02 * all) << zeros;
}

// Twenty ions in all, beside lines of 0.3 to 700 counts: mostly enough.
TEST(ShotBackground, AFewIonsBesideWeakLinesTellTheNoise) {
  int without = 0;
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    Samples y = Shots(0.001, 20000, seed);
    for (std::uint64_t k = 0; k < 20; ++k)
      AddShotPeak(y, 500.0 + 970.0 * static_cast<double>(k), 0.3 * std::pow(1.5, k), 100 * seed + k);
    for (const Samples& curve : {y, WithoutNegatives(Filtered(y, 13))})
      without += FiguresOf(curve, 0.0).noise[10000] > 0.0 ? 0 : 1;
  }
  EXPECT_LE(without, 12);
}

TEST(ShotBackground, PeaksOfAllHeightsOnZerosAreNoNoise) {
  Samples y(20000, 0.0);
  for (int k = 0; k < 60; ++k)
    for (int i = -10; i <= 10; ++i)
      y[static_cast<std::size_t>(200 + 320 * k + i)] =
          100.0 * std::pow(1.12, k) * std::exp(-0.5 * i * i / 4.5);
  EXPECT_TRUE(Stay(FiguresOf(y)));
}

TEST(ShotBackground, WhatIsNotFiniteDoesNoHarm) {
  Samples y = Shots(0.05, 20000, 8);
  y[100] = std::nan("");
  y[5000] = std::numeric_limits<double>::infinity();
  y[9000] = -std::numeric_limits<double>::infinity();
  const double noise = FiguresOf(y).noise[15000];
  EXPECT_NEAR(noise, 1.02, 0.1);
}

TEST(ShotBackground, OneOfTheFiguresMayBeLeftOut) {
  const Samples y = Shots(0.05, 5000, 9);
  const auto n = static_cast<std::uint32_t>(y.size());
  const Figures both = FiguresOf(y);
  Samples baseline(n, kBaseline);
  Samples noise(n, kNoise);
  Take(y, {baseline.data(), nullptr});
  Take(y, {nullptr, noise.data()});
  EXPECT_EQ(baseline, both.baseline);
  EXPECT_EQ(noise, both.noise);
}

TEST(ShotBackground, EveryAlgorithmHasItsFigures) {
  Samples y = Filtered(Shots(0.02, 20000, 10), 15);
  const auto n = static_cast<std::uint32_t>(y.size());
  const double height = HeightOfAnIon(15);
  const double expected = std::sqrt(height * (0.02 + height));
  Samples found(n);
  LinearFitSDNoise(y.data(), n, kSegment, 5, 3, found.data());
  EXPECT_NEAR(MeanOf(found), expected, 0.05 * expected);
  VFNoise(y.data(), n, kSegment, found.data());
  EXPECT_NEAR(MeanOf(found), expected, 0.05 * expected);
  APBNoise(nullptr, y.data(), n, kSegment, 0, found.data());
  EXPECT_NEAR(MeanOf(found), expected, 0.05 * expected);
  LinearFitSDBaseline(y.data(), n, kSegment, 5, 3, found.data());
  EXPECT_NEAR(MeanOf(found), 0.02, 0.003);
  VFBaseline(y.data(), n, kSegment, found.data());
  EXPECT_NEAR(MeanOf(found), 0.02, 0.003);
  APBMorph(y.data(), n, kSegment, 25, found.data());
  EXPECT_NEAR(MeanOf(found), 0.02, 0.003);
}
