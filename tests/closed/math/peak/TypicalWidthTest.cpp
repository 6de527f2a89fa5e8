#include <tslbl/closed/math/peak/TypicalWidth.h>

#include <gtest/gtest.h>

#include <OracleTable.h>
#include <closed/math/SampleArray.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <limits>
#include <random>

using namespace TslMath;
using namespace tests;

namespace {

constexpr std::size_t kPoints = 20003;

double WidthOf(const Samples& y) { return TypicalPeakWidth(y.data(), Size(y)); }

void AddLine(Samples& y, double centre, double height, double width) {
  const auto from = static_cast<std::size_t>(std::max(0.0, centre - 4.0 * width));
  const auto to = std::min(y.size(), static_cast<std::size_t>(centre + 4.0 * width));
  for (std::size_t i = from; i < to; ++i) {
    const double u = (static_cast<double>(i) - centre) / width;
    y[i] += height * std::exp(-4.0 * std::log(2.0) * u * u);
  }
}

using Random = std::mt19937_64;

void MakeCounts(Samples& means, Random& random) {
  std::poisson_distribution<long> count(1.0);
  for (double& value : means) {
    if (value <= 0.0) continue;
    // To set one up takes longer than to draw from it.
    if (value != count.mean()) count = std::poisson_distribution<long>(value);
    value = static_cast<double>(count(random));
  }
}

void AddNoise(Samples& y, Random& random) {
  std::normal_distribution<double> noise;
  for (double& value : y) value += noise(random);
}

// Counts of lines with heights that rise from `least` to `most` over a level background.
Samples Counts(double background, double width, double least, double most, std::uint64_t seed) {
  Samples mean(kPoints, background);
  const int lines = std::min(30, static_cast<int>(kPoints / (8.0 * width)));
  Random random(seed);
  std::uniform_real_distribution<double> shift(-width, width);
  for (int k = 0; k < lines; ++k) {
    const double height = least * std::pow(most / least, static_cast<double>(k) / lines);
    AddLine(mean, (k + 0.5) * static_cast<double>(kPoints) / lines + shift(random), height, width);
  }
  MakeCounts(mean, random);
  return mean;
}

// How many of so many curves without a peak are said to have one.
int ToldOfNoise(std::size_t points, int curves, const std::function<void(Samples&, Random&)>& make) {
  Random random(points);
  int told = 0;
  for (int k = 0; k < curves; ++k) {
    Samples y(points, 0.0);
    make(y, random);
    if (WidthOf(y) > 0.0) ++told;
  }
  return told;
}

// The same for long curves and short ones.
int ToldOfNoise(const std::function<void(Samples&, Random&)>& make) {
  return ToldOfNoise(66, 200, make) + ToldOfNoise(500, 200, make) + ToldOfNoise(5000, 20, make) +
         ToldOfNoise(kPoints, 5, make);
}

struct Told {
  int right = 0;  // within 20 %
  int wrong = 0;
};

// Of curves with a line alone, so many standard deviations of the noise high. A background of 0: Gaussian
// noise.
Told ToldOfLinesAlone(double background, double width, double height) {
  Told told;
  Random random(1);
  for (int k = 0; k < 20; ++k) {
    Samples y(2001, background);
    AddLine(y, 1000.0 + 0.05 * k * width, height * (background > 0.0 ? std::sqrt(background) : 1.0), width);
    background > 0.0 ? MakeCounts(y, random) : AddNoise(y, random);
    if (const double seen = WidthOf(y); seen > 0.0)
      ++(std::abs(seen / width - 1.0) <= 0.2 ? told.right : told.wrong);
  }
  return told;
}

struct Lines {
  int count;
  double height;
  double width;
};

// Without noise and 200 points apart, each a little lower than the one before.
double WidthOfLines(std::initializer_list<Lines> groups) {
  Samples y(20000, 0.0);
  double centre = 100.0;
  for (const Lines& group : groups)
    for (int k = 0; k < group.count; ++k, centre += 200.0)
      AddLine(y, centre, group.height - 0.01 * k, group.width);
  return WidthOf(y);
}

}  // namespace

// `/usr/bin/python3 tests/oracles/typical_width.py`
TEST(TypicalPeakWidth, AgreesWithScipy) {
  const OracleTable samples("typical_width_samples.csv");
  const OracleTable results("typical_width_results.csv");
  for (const std::string& curve : samples.Names()) {
    const Samples& y = samples[curve];
    const PeakWidth width = MeasurePeakWidth(y.data(), Size(y));
    EXPECT_NEAR(width.points, results["width"][std::stoul(curve)], 1e-3) << curve;
    EXPECT_NEAR(width.strength, results["strength"][std::stoul(curve)], 1e-3) << curve;
  }
}

TEST(TypicalPeakWidth, IsThatOfTheThirtyTwoMostProminentLines) {
  EXPECT_NEAR(WidthOfLines({{17, 1000, 20}, {15, 990, 30}, {40, 900, 30}}), 20.0, 0.1);
  EXPECT_NEAR(WidthOfLines({{15, 1000, 20}, {17, 990, 30}, {40, 900, 20}}), 30.0, 0.1);
}

TEST(TypicalPeakWidth, LeavesOutLinesBelowAFourHundredthOfTheTallest) {
  EXPECT_NEAR(WidthOfLines({{1, 1000, 20}, {25, 2.3, 30}}), 20.0, 0.1);
  EXPECT_NEAR(WidthOfLines({{1, 1000, 20}, {25, 3, 30}}), 30.0, 0.1);
}

TEST(TypicalPeakWidth, IsThatOfNarrowLinesBesideAStrongWideOne) {
  Random random(1);
  for (const double height : {300.0, 1000.0}) {
    Samples y(kPoints, 5.0);
    AddLine(y, 10000.0, 20000.0, 60.0);
    for (double centre = 2000.0; centre < 9000.0; centre += 2000.0) AddLine(y, centre, height, 6.0);
    MakeCounts(y, random);
    EXPECT_NEAR(WidthOf(y), 6.0, 0.5) << height;
  }
}

TEST(TypicalPeakWidth, OfAStrongWideLineIsNotThatOfTheNoiseOnItsFlanks) {
  Random random(1);
  for (int k = 0; k < 20; ++k) {
    Samples y(kPoints, 5.0);
    AddLine(y, 10000.0, 20000.0, 60.0);
    MakeCounts(y, random);
    EXPECT_NEAR(WidthOf(y), 60.0, 2.0);
  }
}

TEST(TypicalPeakWidth, WeighsALineByTheRootOfItsProminence) {
  EXPECT_NEAR(WidthOfLines({{1, 1000, 20}, {3, 100, 30}}), 20.0, 0.1);
  EXPECT_NEAR(WidthOfLines({{1, 1000, 20}, {4, 100, 30}}), 30.0, 0.1);
}

TEST(TypicalPeakWidth, IsThatOfStrongLines) {
  for (const double background : {0.01, 5.0, 100.0})
    for (const double width : {3.0, 4.0, 5.0, 8.0, 12.0, 30.0, 60.0, 100.0})
      EXPECT_NEAR(WidthOf(Counts(background, width, 30, 10000, 1)), width, 0.05 * width) << background;
}

TEST(TypicalPeakWidth, IsThatOfWeakLinesAboutBumpsOfNoise) {
  for (const double width : {5.0, 12.0, 30.0, 100.0})
    EXPECT_NEAR(WidthOf(Counts(0.01, width, 2, 10, 1)), width, 0.3 * width);
}

TEST(TypicalPeakWidth, IsZeroForCountsAlone) {
  for (const double mean : {0.003, 0.01, 0.05, 0.3, 1.0, 5.0, 20.0, 100.0, 1000.0})
    EXPECT_EQ(ToldOfNoise([&](Samples& y, Random& random) {
                y.assign(y.size(), mean);
                MakeCounts(y, random);
              }),
              0)
        << mean;
}

TEST(TypicalPeakWidth, IsZeroForGaussianNoiseAlone) { EXPECT_EQ(ToldOfNoise(AddNoise), 0); }

TEST(TypicalPeakWidth, IsZeroForNoiseThatFallsAlongTheCurve) {
  EXPECT_EQ(ToldOfNoise([](Samples& y, Random& random) {
              for (std::size_t i = 0; i < y.size(); ++i)
                y[i] = 5.0 + 300.0 * std::exp(-5.0 * static_cast<double>(i) / static_cast<double>(y.size()));
              MakeCounts(y, random);
            }),
            0);
}

TEST(TypicalPeakWidth, IsZeroForNoiseOfWhichTheLowPartIsLeftOut) {
  EXPECT_EQ(ToldOfNoise([](Samples& y, Random& random) {
              std::normal_distribution<double> part;
              for (double& value : y) {
                const double amplitude = std::hypot(part(random), part(random));
                value = amplitude > 2.5 ? amplitude : 0.0;
              }
            }),
            0);
}

TEST(TypicalPeakWidth, IsZeroForIonsOfAnyAmplitude) {
  EXPECT_EQ(ToldOfNoise([](Samples& y, Random& random) {
              std::poisson_distribution<int> ions(0.05);
              std::exponential_distribution<double> amplitude;
              for (double& value : y)
                for (int k = ions(random); k > 0; --k) value += amplitude(random);
            }),
            0);
}

TEST(TypicalPeakWidth, IsZeroForNoiseThatWasSmoothed) {
  EXPECT_EQ(ToldOfNoise([](Samples& y, Random& random) {
              AddNoise(y, random);
              for (std::size_t i = 0; i + 2 < y.size(); ++i) y[i] = (y[i] + y[i + 1] + y[i + 2]) / 3.0;
            }),
            0);
}

TEST(TypicalPeakWidth, OfAWeakLineAloneIsRightOrZero) {
  Told all;
  for (const double background : {0.0, 1.0, 5.0, 20.0, 100.0})
    for (const double width : {4.0, 6.0, 12.0, 30.0})
      for (const double height : {5.0, 7.0, 10.0}) {
        const Told told = ToldOfLinesAlone(background, width, height);
        all.right += told.right;
        all.wrong += told.wrong;
      }
  RecordProperty("right", all.right);
  RecordProperty("wrong", all.wrong);
  EXPECT_GT(all.right, 200);
  EXPECT_LE(all.wrong, all.right / 50);
}

TEST(TypicalPeakWidth, OfAStrongLineAloneIsRight) {
  for (const double background : {0.0, 1.0, 5.0, 20.0, 100.0})
    for (const double width : {4.0, 6.0, 12.0, 30.0})
      EXPECT_EQ(ToldOfLinesAlone(background, width, 100.0).right, 20) << width << " over " << background;
}

TEST(TypicalPeakWidth, IsThatOfLinesOfManyHeightsSideBySide) {
  Random random(1);
  std::lognormal_distribution<double> height(4.0, 1.2);
  Samples y(kPoints, 5.0);
  for (double centre = 20.0; centre < kPoints - 20.0; centre += 10.0) AddLine(y, centre, height(random), 6.0);
  MakeCounts(y, random);
  EXPECT_NEAR(WidthOf(y), 6.0, 0.5);
}

TEST(TypicalPeakWidth, OfGroupsOfLinesIsThatOfALine) {
  // Isotopes 10 points apart, where filters merge the lines and agree on the width of their group.
  for (const double width : {5.0, 6.0})
    for (const int lines : {2, 4, 6}) {
      Samples mean(5000, 2.0);
      for (int group = 0; group < 9; ++group)
        for (int k = 0; k < lines; ++k)
          AddLine(mean, 300.0 + 500.0 * group + 10.0 * k, 3000.0 * std::pow(0.75, k), width);
      Random random(5);
      MakeCounts(mean, random);
      EXPECT_NEAR(WidthOf(mean), width, 0.1 * width) << lines;
    }
}

TEST(TypicalPeakWidth, OfLinesOfTwoKindsIsThatOfTheNarrowOnes) {
  Samples mean(20000, 2.0);
  for (int k = 0; k < 10; ++k) AddLine(mean, 1000.0 + 1800.0 * k, 3000.0, k % 3 == 0 ? 6.0 : 40.0);
  Random random(6);
  MakeCounts(mean, random);
  EXPECT_NEAR(WidthOf(mean), 6.0, 0.6);
}

TEST(TypicalPeakWidth, DoesNotSeeAHumpOfNoiseAlone) {
  Random random(1);
  Samples y(kPoints, 10.0);
  AddLine(y, 10000.0, 500.0, 6000.0);
  MakeCounts(y, random);
  EXPECT_EQ(WidthOf(y), 0.0);
}

TEST(MeasurePeakWidth, IsAsStrongAsTheRootOfItsIons) {
  const auto strength = [](double height) {
    Samples y(2000, 1.0);
    AddLine(y, 1000.0, height, 12.0);
    Random random(1);
    MakeCounts(y, random);
    return MeasurePeakWidth(y.data(), Size(y)).strength;
  };
  EXPECT_NEAR(strength(40000.0) / strength(10000.0), 2.0, 0.2);
  EXPECT_LE(strength(4e7), 100.0);
  EXPECT_EQ(strength(0.0), 0.0);
}

TEST(TypicalPeakWidth, OfALineWithoutNoiseIsExactToTheStraightLinesBetweenPoints) {
  Samples y(400, 0.0);
  AddLine(y, 200.0, 1000.0, 10.0);
  EXPECT_NEAR(WidthOf(y), 10.0, 0.05);
}

TEST(TypicalPeakWidth, DoesNotDependOnThePlaceOnALongCurve) {
  Samples y(90000, 0.0);
  AddLine(y, 80000.0, 1000.0, 10.0);
  EXPECT_NEAR(WidthOf(y), 10.0, 0.05);
}

TEST(TypicalPeakWidth, DoesNotSeeAHumpBelowTheLines) {
  Samples y(kPoints, 0.0);
  AddLine(y, 10000.0, 500.0, 6000.0);
  for (int k = 0; k < 20; ++k) AddLine(y, 500.0 + 990.0 * k, 100.0, 8.0);
  EXPECT_NEAR(WidthOf(y), 8.0, 0.4);
}

TEST(TypicalPeakWidth, DoesNotDependOnTheUnit) {
  Samples y = Counts(5, 12, 30, 10000, 2);
  const double width = WidthOf(y);
  for (double& value : y) value = 1e-9 * value - 3.0;
  EXPECT_NEAR(WidthOf(y), width, 1e-3);
}

TEST(TypicalPeakWidth, TakesWhatIsNotFiniteForTheLowestSample) {
  Samples y = Counts(5, 12, 30, 10000, 2);
  y[10] = std::nan("");
  y[5000] = std::numeric_limits<double>::infinity();
  y[15000] = -std::numeric_limits<double>::infinity();
  EXPECT_NEAR(WidthOf(y), 12.0, 0.6);
}

TEST(TypicalPeakWidth, IsZeroWithoutAPeak) {
  EXPECT_EQ(WidthOf({}), 0.0);
  EXPECT_EQ(WidthOf({1.0}), 0.0);
  EXPECT_EQ(WidthOf({1.0, 2.0}), 0.0);
  EXPECT_EQ(WidthOf(Samples(1000, 4.0)), 0.0);
  EXPECT_EQ(WidthOf(Samples(1000, std::nan(""))), 0.0);
  Samples ramp(1000);
  for (std::size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<double>(i);
  EXPECT_EQ(WidthOf(ramp), 0.0);
}
