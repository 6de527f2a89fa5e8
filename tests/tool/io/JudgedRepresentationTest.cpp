#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include <tool/io/JudgedRepresentation.h>

namespace tests {
namespace {

using TslTool::JudgedRepresentation;
using TslTool::Scan;

Scan Marked(Scan scan, Scan::Representation mark) {
  scan.representation = mark;
  return scan;
}

// `step` gives the step behind an m/z.
template <class Step>
Scan Profile(double from, std::size_t points, Step step) {
  Scan scan;
  double mz = from;
  for (std::size_t i = 0; i < points; ++i, mz += step(mz)) {
    scan.mz.push_back(mz);
    scan.amplitude.push_back(1.0 +
                             100.0 * std::exp(-0.01 * std::pow(static_cast<double>(i % 100) - 50.0, 2.0)));
  }
  return scan;
}

// Peaks at random.
Scan Centroid(std::size_t peaks, double from = 100.0, double to = 1000.0) {
  std::mt19937_64 random(1);
  Scan scan;
  for (std::size_t i = 0; i < peaks; ++i) {
    scan.mz.push_back(std::uniform_real_distribution(from, to)(random));
    scan.amplitude.push_back(std::exp(std::uniform_real_distribution(0.0, 9.0)(random)));
  }
  std::ranges::sort(scan.mz);
  return scan;
}

// Of the groups of points around peaks that are left when zeros are cut away.
Scan WithoutZeros() {
  const Scan whole = Profile(200.0, 20000, [](double) { return 0.002; });
  Scan scan;
  for (std::size_t i = 0; i < whole.mz.size(); ++i)
    if (whole.amplitude[i] > 2.0 || i % 37 == 0) {
      scan.mz.push_back(whole.mz[i]);
      scan.amplitude.push_back(whole.amplitude[i]);
    }
  return scan;
}

TEST(JudgedRepresentation, PeaksBetweenZerosOfTheirOwnAreCentroids) {
  const Scan peaks = Centroid(200);
  Scan drawn;
  for (std::size_t i = 0; i < peaks.mz.size(); ++i) {
    drawn.mz.insert(drawn.mz.end(), {peaks.mz[i] - 1e-3, peaks.mz[i], peaks.mz[i] + 1e-3});
    drawn.amplitude.insert(drawn.amplitude.end(), {0.0, peaks.amplitude[i], 0.0});
  }
  for (const auto mark : {Scan::Unknown, Scan::Profile, Scan::Centroid})
    EXPECT_EQ(JudgedRepresentation(Marked(drawn, mark)), Scan::Centroid);
}

TEST(JudgedRepresentation, EvenPointsAreAProfile) {
  EXPECT_EQ(JudgedRepresentation(Profile(100, 2000, [](double) { return 0.05; })), Scan::Profile);
  EXPECT_EQ(JudgedRepresentation(Profile(100, 10, [](double) { return 0.2; })), Scan::Profile);
}

TEST(JudgedRepresentation, StepsThatGrowWithTheMassAreAProfile) {
  EXPECT_EQ(
      JudgedRepresentation(Profile(200, 9000, [](double mz) { return 1e-8 * std::pow(mz, 1.5) / 200; })),
      Scan::Profile);
  EXPECT_EQ(JudgedRepresentation(Profile(5000, 9000, [](double mz) { return 2e-4 * mz; })), Scan::Profile);
}

TEST(JudgedRepresentation, GroupsOfPointsAreAProfile) {
  EXPECT_EQ(JudgedRepresentation(WithoutZeros()), Scan::Profile);
}

TEST(JudgedRepresentation, PointsHereAndThereAreCentroid) {
  for (const std::size_t peaks : {3U, 5U, 50U, 5000U})
    EXPECT_EQ(JudgedRepresentation(Centroid(peaks)), Scan::Centroid) << peaks;
}

// Isotopes of many charge states, and with them peaks of others: as close as the points of a profile, but
// anywhere.
Scan DenseList() {
  std::mt19937_64 random(1);
  std::exponential_distribution gap(1.0 / 0.05);
  Scan scan;
  for (double mz = 500.0; mz < 900.0; mz += 0.012 + gap(random)) {
    scan.mz.push_back(mz);
    scan.amplitude.push_back(1e5 + 1e8 * std::exp(-0.5 * std::pow((mz - 700.0) / 1.0, 2.0)));
  }
  return scan;
}

TEST(JudgedRepresentation, ADenseListIsCentroidUnlessItIsMarked) {
  EXPECT_EQ(JudgedRepresentation(DenseList()), Scan::Centroid);
  EXPECT_EQ(JudgedRepresentation(Marked(DenseList(), Scan::Profile)), Scan::Profile);
}

// Lines of 6 points at half height, and of the noise what rises above so many standard deviations.
Scan WithCutNoise(double threshold) {
  std::mt19937_64 random(1);
  std::normal_distribution noise(0.0, 1.0);
  Scan scan;
  double mz = 200.0;
  for (int i = 0; i < 60000; ++i, mz += 1.7e-6 * mz) {
    const double u = (i % 2000 - 1000) / 2.55;
    const double amplitude = 100.0 * std::exp(-0.5 * u * u) + noise(random);
    if (amplitude < threshold) continue;
    scan.mz.push_back(mz);
    scan.amplitude.push_back(amplitude);
  }
  return scan;
}

TEST(JudgedRepresentation, WhatIsLeftOfTheNoiseBetweenLinesDoesNotMatter) {
  for (const double threshold : {0.5, 1.0, 1.5, 2.0, 2.5})
    EXPECT_EQ(JudgedRepresentation(WithCutNoise(threshold)), Scan::Profile) << threshold;
}

TEST(JudgedRepresentation, NoiseAloneOfWhichThePointsAboveAThresholdAreLeftIsNoProfile) {
  Scan scan = WithCutNoise(1.5);
  std::mt19937_64 random(2);
  std::ranges::shuffle(scan.amplitude, random);
  EXPECT_EQ(JudgedRepresentation(scan), Scan::Centroid);
}

TEST(JudgedRepresentation, AListOfIsotopesThatIsMarkedStaysCentroid) {
  std::mt19937_64 random(1);
  std::normal_distribution error(0.0, 3e-4);
  Scan scan;
  for (int i = 0; i < 200; ++i) {
    scan.mz.push_back(800.0 + i * 1.00335 / 12.0 + error(random));
    scan.amplitude.push_back(1e6 * std::exp(-0.5 * std::pow((i % 20 - 9.0) / 3.0, 2.0)));
  }
  EXPECT_EQ(JudgedRepresentation(Marked(scan, Scan::Centroid)), Scan::Centroid);
}

// Rows of isotopes of many peptides, off by 3 ppm.
Scan Isotopes(const std::vector<int>& charges) {
  std::mt19937_64 random(1);
  std::normal_distribution error(0.0, 3e-6);
  Scan scan;
  double begin = 500.0;
  for (int i = 0; i < 20; ++i, begin += 20.0) {
    const int charge = charges[static_cast<std::size_t>(i) % charges.size()];
    for (int isotope = 0; isotope < 8; ++isotope) {
      scan.mz.push_back((begin + 1.00286 * isotope / charge) * (1.0 + error(random)));
      scan.amplitude.push_back(1e4 * std::exp(-0.5 * std::pow((isotope - 2.0) / 2.0, 2.0)));
    }
  }
  return scan;
}

TEST(JudgedRepresentation, IsotopesOfSeveralChargesAreCentroidWhateverTheMark) {
  const Scan scan = Isotopes({4, 5, 6});
  EXPECT_EQ(JudgedRepresentation(scan), Scan::Centroid);
  EXPECT_EQ(JudgedRepresentation(Marked(scan, Scan::Profile)), Scan::Centroid);
}

TEST(JudgedRepresentation, IsotopesOfOneChargeAreCentroidAsTheyAreNotEven) {
  EXPECT_EQ(JudgedRepresentation(Isotopes({5})), Scan::Centroid);
}

TEST(JudgedRepresentation, GroupsAtAWideStepThatGrowsAreAProfile) {
  for (const double digit : {1e-3, 1e-4, 1e-6}) {
    Scan whole = Profile(2000, 20000, [](double mz) { return 1.7e-5 * mz; });
    Scan scan;
    for (std::size_t i = 0; i < whole.mz.size(); ++i) {
      if (whole.amplitude[i] < 2.0) continue;
      scan.mz.push_back(digit * std::round(whole.mz[i] / digit));
      scan.amplitude.push_back(whole.amplitude[i]);
    }
    EXPECT_EQ(JudgedRepresentation(scan), Scan::Profile) << digit;
  }
}

TEST(JudgedRepresentation, AProfileWithRoundedMassesIsOne) {
  for (const double digit : {1e-3, 1e-4}) {
    Scan scan = Profile(200, 20000, [](double mz) { return 1.1e-5 * mz; });
    for (double& mz : scan.mz) mz = digit * std::round(mz / digit);
    EXPECT_EQ(JudgedRepresentation(scan), Scan::Profile) << digit;
  }
}

TEST(JudgedRepresentation, AMarkHoldsWherePointsAreNotPlain) {
  const Scan pair = Profile(100, 2, [](double) { return 0.1; });
  for (const auto mark : {Scan::Profile, Scan::Centroid}) {
    EXPECT_EQ(JudgedRepresentation(Marked(Centroid(20), mark)), mark);
    EXPECT_EQ(JudgedRepresentation(Marked(pair, mark)), mark);
  }
  EXPECT_EQ(JudgedRepresentation(Marked(WithoutZeros(), Scan::Profile)), Scan::Profile);
}

TEST(JudgedRepresentation, PlainPointsOverruleTheMark) {
  const Scan profile = Profile(100, 2000, [](double) { return 0.05; });
  EXPECT_EQ(JudgedRepresentation(Marked(profile, Scan::Centroid)), Scan::Profile);
  EXPECT_EQ(JudgedRepresentation(Marked(Centroid(500), Scan::Profile)), Scan::Centroid);
}

TEST(JudgedRepresentation, TooFewPointsAreAProfileUnlessMarked) {
  EXPECT_EQ(JudgedRepresentation(Centroid(2)), Scan::Profile);
  EXPECT_EQ(JudgedRepresentation(Scan()), Scan::Profile);
}

// A trace of 1800 s with a point each half second, peaks 8 s wide in some noise.
Scan Trace() {
  std::mt19937_64 random(1);
  Scan scan;
  for (int i = 0; i < 3600; ++i) {
    const double peak = std::exp(-0.5 * std::pow((i % 200 - 100) * 0.5 / 3.4, 2.0));
    scan.mz.push_back(0.5 * i);
    scan.amplitude.push_back(500.0 + 1000.0 * peak + std::normal_distribution(0.0, 10.0)(random));
  }
  return scan;
}

// Every mass from 40, as electron ionization fills them: clusters that end in a tall fragment with its
// isotope.
Scan NominalMasses() {
  std::mt19937_64 random(1);
  Scan scan;
  for (int mass = 40; mass < 440; ++mass) {
    const int place = mass % 14;
    const double share = place == 9 ? 1.0 : place == 8 ? 0.2 : place == 10 ? 0.12 : place == 7 ? 0.3 : 0.02;
    scan.mz.push_back(mass);
    scan.amplitude.push_back(share * std::uniform_real_distribution(100.0, 9000.0)(random));
  }
  return scan;
}

TEST(JudgedRepresentation, ACoarseGridIsAProfileIfItsPeaksAreWide) {
  EXPECT_EQ(JudgedRepresentation(Trace()), Scan::Profile);
  EXPECT_EQ(JudgedRepresentation(Marked(Trace(), Scan::Profile)), Scan::Profile);
}

TEST(JudgedRepresentation, AListOfEachNominalMassIsCentroid) {
  EXPECT_EQ(JudgedRepresentation(NominalMasses()), Scan::Centroid);
  EXPECT_EQ(JudgedRepresentation(Marked(NominalMasses(), Scan::Profile)), Scan::Centroid);
}

// As many of each length as a polymer has.
TEST(JudgedRepresentation, AListOfOligomersIsCentroid) {
  Scan scan;
  for (int units = 20; units < 80; ++units) {
    scan.mz.push_back(41.0 + 44.0262 * units);
    scan.amplitude.push_back(1e4 * std::exp(-0.5 * std::pow((units - 50.0) / 10.0, 2.0)));
  }
  EXPECT_EQ(JudgedRepresentation(scan), Scan::Centroid);
}

TEST(JudgedRepresentation, AnEvenGridThatIsMarkedAsAProfileIsOne) {
  Scan scan = Profile(100, 1000, [](double) { return 0.4; });
  for (std::size_t i = 0; i < scan.mz.size(); ++i) scan.amplitude[i] = i % 7 == 3 ? 90.0 : 1.0;
  EXPECT_EQ(JudgedRepresentation(Marked(scan, Scan::Profile)), Scan::Profile);
  EXPECT_EQ(JudgedRepresentation(scan), Scan::Centroid);
}

}  // namespace
}  // namespace tests
