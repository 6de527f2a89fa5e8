#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/IonCounter.h>

#include <gtest/gtest.h>

#include <closed/math/baseline/Shots.h>

using namespace TslMath;
using namespace tests;

namespace {

constexpr std::size_t kSegment = 500;

struct Ions {
  double height = 0.0;
  std::vector<IonBackground> segments;

  double Mean() const {
    double sum = 0.0;
    for (const IonBackground& segment : segments) sum += segment.mean;
    return sum / static_cast<double>(segments.size());
  }
};

Ions CountIn(const Samples& y, double floor = 0.0, double onFloor = 0.0) {
  Ions ions;
  for (std::size_t begin = 0; begin < y.size(); begin += kSegment)
    ions.segments.push_back({begin, std::min(y.size(), begin + kSegment), onFloor, 0.0});
  ions.height =
      JudgeBumps(y.data(), y.size(), {floor, 1e-9}, kSegment, SmallestStep(y.data(), y.size()), ions.segments)
          .ion;
  return ions;
}

Samples ShotsWithPeaks(double mean) {
  Samples y = Shots(mean, 20000, 3);
  for (int k = 0; k < 20; ++k)
    AddShotPeak(y, 500.0 + 970.0 * k, 3.0 * std::pow(1.3, k), static_cast<std::uint64_t>(40 + k));
  return y;
}

}  // namespace

TEST(IonCounter, FindsTheHeightOfAnIonBesidePeaks) {
  for (const double mean : {0.01, 0.05, 0.2, 1.0, 5.0}) {
    const Samples y = ShotsWithPeaks(mean);
    EXPECT_NEAR(CountIn(y).height, 1.0, 0.1) << mean << " raw";
    for (const std::uint32_t width : {7U, 15U}) {
      const double height = HeightOfAnIon(width);
      EXPECT_NEAR(CountIn(Filtered(y, width)).height, height, 0.1 * height) << mean << ", width " << width;
    }
  }
}

TEST(IonCounter, FindsHowManyThereAreBesidePeaks) {
  for (const double mean : {0.05, 0.2, 1.0, 5.0})
    EXPECT_NEAR(CountIn(ShotsWithPeaks(mean)).Mean(), mean, 0.1 * mean) << mean;
}

TEST(IonCounter, CountsAboveTheFloor) {
  const Samples y = Filtered(ShotsWithPeaks(0.2), 15, 20.0);
  EXPECT_NEAR(CountIn(y, 20.0).Mean(), 0.2, 0.02);
}

TEST(IonCounter, FollowsTheUnitOfTheCurve) {
  Samples y = ShotsWithPeaks(0.1);
  const double height = CountIn(y).height;
  for (double& value : y) value *= 1234.5;
  EXPECT_NEAR(CountIn(y).height, 1234.5 * height, 1e-6 * 1234.5);
}

TEST(IonCounter, CountsEachSegmentForItself) {
  Samples y = Shots(0.05, 10000, 5);
  const Samples right = Shots(0.5, 10000, 6);
  y.insert(y.end(), right.begin(), right.end());
  const Ions ions = CountIn(y);
  EXPECT_NEAR(ions.segments[5].mean, 0.05, 0.04);
  EXPECT_NEAR(ions.segments[35].mean, 0.5, 0.12);
}

TEST(IonCounter, SevenBumpsAreNoEvidence) {
  Samples y(5000, 0.0);
  for (std::size_t k = 0; k < 7; ++k) y[300 + 600 * k] = 1.0;
  EXPECT_EQ(CountIn(y).height, 0.0);
  y[4700] = 1.0;
  EXPECT_GT(CountIn(y).height, 0.0);
}

TEST(IonCounter, PeaksOfAllHeightsWithoutNoiseAreNoIons) {
  Samples y(20000, 0.0);
  for (int k = 0; k < 40; ++k) {
    const double height = 2.0 * std::pow(1.17, k);
    for (int i = -40; i <= 40; ++i)
      y[static_cast<std::size_t>(300 + 490 * k + i)] += height * std::exp(-0.5 * i * i / 26.0);
  }
  EXPECT_EQ(CountIn(y).height, 0.0);
}

TEST(IonCounter, SomeLinesOfSimilarHeightsWithoutNoiseAreNoIons) {
  std::mt19937_64 random(1);
  for (const int lines : {8, 12, 18, 40, 100})
    for (int trial = 0; trial < 20; ++trial) {
      Samples y(20000, 0.0);
      for (int k = 0; k < lines; ++k) {
        const double centre = 20000.0 * (k + 0.5) / lines;
        const double height = std::uniform_real_distribution(1000.0, 4000.0)(random);
        for (int i = -40; i <= 40; ++i)
          y[static_cast<std::size_t>(centre + i)] += height * std::exp(-0.5 * i * i / 26.0);
      }
      EXPECT_EQ(CountIn(y, 0.0, 0.9).height, 0.0) << lines;
    }
}

// Variance / mean is 2.6 here.
TEST(IonCounter, BesideWeakLinesAnIonIsAsHighAsTheLowBumps) {
  Samples y(20000, 0.0);
  for (std::size_t k = 0; k < 1000; ++k)
    y[20 * k + 10] = k % 10 < 7 ? 1.0 : k % 10 == 7 ? 2.0 : k % 10 == 8 ? 3.0 : 5.0;
  EXPECT_EQ(CountIn(y, 0.0, 0.95).height, 1.0);
}

TEST(IonCounter, OfEvenIonsIsExact) {
  const Ions ions = CountIn(EvenIons(5000, 10));
  EXPECT_NEAR(ions.height, 0.9, 1e-12);
  for (const IonBackground& segment : ions.segments) EXPECT_NEAR(segment.mean, 0.1, 1e-12);
}

// Ions of 3 are no peaks. Those within 25 points of one are left out with it.
TEST(IonCounter, LeavesOutPeaksAndATwentiethOfASegmentOnEitherSide) {
  Samples y = EvenIons(5000, 10);
  y[2500] = 1000;
  for (std::size_t d = 1; d <= 26; ++d) y[2500 - d] = y[2500 + d] = 3;
  const Ions ions = CountIn(y);
  EXPECT_NEAR(ions.segments[4].mean, MeanOf(y, 2000, 2475), 1e-12);
  EXPECT_NEAR(ions.segments[5].mean, MeanOf(y, 2526, 3000), 1e-12);
}

TEST(IonCounter, LeavesOutWhatIsBetweenTwoPeaksThatAreNear) {
  Samples y = EvenIons(5000, 10);
  y[2200] = y[2250] = 1000;
  EXPECT_NEAR(CountIn(y).segments[4].mean, (17 + 22) / (175.0 + 224), 1e-12);
}

TEST(IonCounter, WantsMoreThanFiftyPointsOfBackgroundInASegment) {
  for (const std::size_t clean : {50U, 51U}) {
    Samples y = EvenIons(5000, 10);
    for (std::size_t i = 2500; i < 2975 - clean; ++i) y[i] = 1000;
    const double mean = CountIn(y).segments[5].mean;
    EXPECT_NEAR(mean, clean == 50 ? 0.0 : MeanOf(y, 3000 - clean, 3000), 1e-12) << clean;
  }
}

TEST(IonCounter, AnEmptyCurveHasNone) { EXPECT_EQ(CountIn(Samples(2000, 0.0)).height, 0.0); }
