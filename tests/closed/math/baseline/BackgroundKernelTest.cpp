// The kernel, held against fits of each segment by itself. With means over one point nothing of a segment's
// neighbours comes into its fit.
#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/BackgroundKernel.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;
using testing::Each;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// Odd, so that the centre of a segment is a point.
constexpr std::size_t kLength = 251;

struct Background {
  Samples baseline, noise;

  Background(const Samples& y, std::uint32_t segSize) : baseline(y.size()), noise(y.size()) {
    FitBackground(y.data(), nullptr, Size(y), SmallestStep(y.data(), y.size()), {segSize, 1, 3},
                  {baseline.data(), noise.data()});
  }
};

// The line of one segment, with its place on the curve.
struct PlainFit {
  double centre, level, slope, noise;

  double At(double i) const { return level + slope * (i - centre); }
};

// `begin` is where the segment stands on the curve.
PlainFit FitAlone(const Samples& segment, std::size_t begin) {
  const Background alone(segment, Size(segment));
  const std::size_t middle = segment.size() / 2;
  const double rise = alone.baseline.back() - alone.baseline.front();
  const double slope = rise / static_cast<double>(segment.size() - 1);
  return {static_cast<double>(begin + middle), alone.baseline[middle], slope, alone.noise[0]};
}

// A curve in segments. Those that are left out have no fit.
struct Curve {
  Samples y;
  std::vector<PlainFit> fits;

  void Add(const Samples& segment) {
    fits.push_back(FitAlone(segment, y.size()));
    y.insert(y.end(), segment.begin(), segment.end());
  }
  void AddLeftOut(const Samples& segment) { y.insert(y.end(), segment.begin(), segment.end()); }
};

Samples NoisySegment(double level, double slope, double sd, std::uint64_t seed,
                     std::size_t length = kLength) {
  std::mt19937_64 random(seed);
  std::normal_distribution<double> normal(0, sd);
  Samples y(length);
  for (std::size_t i = 0; i < length; ++i)
    y[i] = level + slope * (static_cast<double>(i) - static_cast<double>(length / 2)) + normal(random);
  return y;
}

// Neighbours' lines weighed by the distance to their centres; across what is left out level joins level.
void ExpectBlended(const Curve& curve, std::size_t length = kLength) {
  const Background found(curve.y, static_cast<std::uint32_t>(length));
  for (std::size_t i = 0; i < curve.y.size(); ++i) {
    const auto x = static_cast<double>(i);
    const auto right =
        std::find_if(curve.fits.begin(), curve.fits.end(), [=](const PlainFit& f) { return f.centre >= x; });
    PlainFit a = right == curve.fits.begin() ? *right : *(right - 1);
    PlainFit b = right == curve.fits.end() ? *(right - 1) : *right;
    const double share = b.centre > a.centre ? (x - a.centre) / (b.centre - a.centre) : 0;
    if (b.centre - a.centre > static_cast<double>(length)) a.slope = b.slope = 0;
    ASSERT_NEAR(found.baseline[i], (1 - share) * a.At(x) + share * b.At(x), 1e-9) << i;
    ASSERT_NEAR(found.noise[i], (1 - share) * a.noise + share * b.noise, 1e-9) << i;
  }
}

// A noise that rises along the curve.
TEST(BackgroundKernel, HasTheLineAndTheNoiseOfEachSegment) {
  Curve curve;
  for (int k = 0; k < 9; ++k)
    curve.Add(NoisySegment(100 + k, 0.01 * (k - 4), 1 + k, static_cast<std::uint64_t>(k)));
  ExpectBlended(curve);
}

TEST(BackgroundKernel, OfOneSegmentIsItsLine) {
  Curve curve;
  curve.Add(NoisySegment(100, 0.1, 2, 1));
  ExpectBlended(curve);
}

TEST(BackgroundKernel, JoinsLevelsAcrossSegmentsThatAreLeftOutAndNothingElse) {
  for (const int leftOut : {1, 2, 3}) {
    Curve curve;
    for (int k = 0; k < 4; ++k) curve.Add(NoisySegment(100 + 10 * k, 0.04, 3, static_cast<std::uint64_t>(k)));
    for (int k = 0; k < leftOut; ++k) curve.AddLeftOut(Samples(kLength, kNaN));
    for (int k = 5; k < 9; ++k) curve.Add(NoisySegment(100 + 10 * k, 0.04, 3, static_cast<std::uint64_t>(k)));
    ExpectBlended(curve);
  }
}

TEST(BackgroundKernel, FollowsTheOutermostLineThatIsLeft) {
  Curve curve;
  curve.AddLeftOut(Samples(kLength, kNaN));
  for (int k = 1; k < 5; ++k) curve.Add(NoisySegment(100 + 10 * k, 0.04, 3, static_cast<std::uint64_t>(k)));
  curve.AddLeftOut(Samples(kLength, kNaN));
  ExpectBlended(curve);
}

// A steep end is as far above its neighbour as a peak would be, and goes on where that begins.
TEST(BackgroundKernel, KeepsASteepEndThatMeetsItsNeighbour) {
  const double slope = 0.5;
  const double rise = slope * (kLength / 2);
  Curve first;
  first.Add(NoisySegment(100 + rise, -slope, 3, 0));
  for (int k = 1; k < 5; ++k) first.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  ExpectBlended(first);
  Curve last;
  for (int k = 1; k < 5; ++k) last.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  last.Add(NoisySegment(100 + rise, slope, 3, 0));
  ExpectBlended(last);
}

TEST(BackgroundKernel, KeepsASteepEndOppositeToOneThatIsLeftOut) {
  const double slope = 0.5;
  const double rise = slope * (kLength / 2);
  Curve first;
  first.Add(NoisySegment(100 + rise, -slope, 3, 0));
  for (int k = 1; k < 5; ++k) first.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  first.AddLeftOut(Samples(kLength, kNaN));
  ExpectBlended(first);
  Curve last;
  last.AddLeftOut(Samples(kLength, kNaN));
  for (int k = 1; k < 5; ++k) last.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  last.Add(NoisySegment(100 + rise, slope, 3, 0));
  ExpectBlended(last);
}

TEST(BackgroundKernel, LeavesOutAnEndThatDoesNotMeetItsNeighbour) {
  Curve first;
  first.AddLeftOut(NoisySegment(160, 0, 3, 0));
  for (int k = 1; k < 5; ++k) first.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  ExpectBlended(first);
  Curve last;
  for (int k = 1; k < 5; ++k) last.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  last.AddLeftOut(NoisySegment(160, 0, 3, 0));
  ExpectBlended(last);
}

// A line that meets a neighbour of 100 to its left; but only 24 points are on it, in groups of three, and the
// others wherever peaks may be.
Samples SparseSteepSegment() {
  Samples y = NoisySegment(162.75, 0.5, 0, 0);
  for (std::size_t i = 0; i < kLength; ++i) {
    const std::size_t place = i % 25;
    const bool onLine = i < 200 && place >= 10 && place <= 12;
    y[i] += onLine ? (place == 11 ? -0.5 : 0.25) : static_cast<double>(1000 + i * 7919 % 1000);
  }
  return y;
}

TEST(BackgroundKernel, LeavesOutAnUntrustedEndThatMeetsItsNeighbour) {
  Curve last;
  for (int k = 1; k < 5; ++k) last.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  last.AddLeftOut(SparseSteepSegment());
  ExpectBlended(last);
  Curve first;
  const Samples sparse = SparseSteepSegment();
  first.AddLeftOut(Samples(sparse.rbegin(), sparse.rend()));
  for (int k = 1; k < 5; ++k) first.Add(NoisySegment(100, 0, 3, static_cast<std::uint64_t>(k)));
  ExpectBlended(first);
}

// Of short segments several are compared at a time, and two may be too high.
TEST(BackgroundKernel, LeavesOutASteepEndWhoseNeighbourIsLeftOut) {
  constexpr std::size_t kShort = 125;
  Curve last;
  for (int k = 1; k < 8; ++k) last.Add(NoisySegment(100, 0, 1, static_cast<std::uint64_t>(k), kShort));
  last.AddLeftOut(NoisySegment(131.5, 0.5, 1, 8, kShort));
  last.AddLeftOut(NoisySegment(194, 0.5, 1, 9, kShort));
  ExpectBlended(last, kShort);
  Curve first;
  first.AddLeftOut(NoisySegment(194, -0.5, 1, 9, kShort));
  first.AddLeftOut(NoisySegment(131.5, -0.5, 1, 8, kShort));
  for (int k = 1; k < 8; ++k) first.Add(NoisySegment(100, 0, 1, static_cast<std::uint64_t>(k), kShort));
  ExpectBlended(first, kShort);
}

TEST(BackgroundKernel, LeavesOutASegmentThatAPeakFills) {
  Curve curve;
  for (int k = 0; k < 4; ++k) curve.Add(NoisySegment(100, 0.02, 3, static_cast<std::uint64_t>(k)));
  curve.AddLeftOut(NoisySegment(200, 0, 3, 4));
  for (int k = 5; k < 9; ++k) curve.Add(NoisySegment(100, 0.02, 3, static_cast<std::uint64_t>(k)));
  ExpectBlended(curve);
}

TEST(BackgroundKernel, AddsTheShapeAgain) {
  Curve curve;
  for (int k = 0; k < 4; ++k) curve.Add(NoisySegment(100, 0.02, 3, static_cast<std::uint64_t>(k)));
  const Background plain(curve.y, kLength);
  Samples shape(curve.y.size()), y = curve.y;
  for (std::size_t i = 0; i < y.size(); ++i) y[i] += shape[i] = 1024 * std::sin(static_cast<double>(i) / 300);
  Samples baseline(y.size()), noise(y.size());
  FitBackground(y.data(), shape.data(), Size(y), SmallestStep(curve.y.data(), y.size()), {kLength, 1, 3},
                {baseline.data(), noise.data()});
  for (std::size_t i = 0; i < y.size(); ++i) {
    ASSERT_NEAR(baseline[i], plain.baseline[i] + shape[i], 1e-9) << i;
    ASSERT_NEAR(noise[i], plain.noise[i], 1e-9) << i;
  }
}

TEST(BackgroundKernel, OfUpToTwoPointsIsTheirLeastAboveTheShape) {
  const Samples y{4, 9}, shape{1, 7};
  Samples baseline(2), noise(2);
  FitBackground(y.data(), shape.data(), 2, 3, {250, 5, 3}, {baseline.data(), noise.data()});
  EXPECT_EQ(baseline, Samples({3, 9}));
  EXPECT_EQ(noise, Samples({1.5, 1.5}));
  FitBackground(y.data(), shape.data(), 1, 0, {250, 5, 3}, {baseline.data(), noise.data()});
  EXPECT_EQ(baseline, Samples({4, 9}));
  EXPECT_EQ(noise, Samples({0, 1.5}));
}

TEST(BackgroundKernel, OfNoPointsDoesNothing) {
  FitBackground(nullptr, nullptr, 0, 0, {250, 5, 3}, {nullptr, nullptr});
  DrawFlat(nullptr, 0, 0, {nullptr, nullptr});
}

TEST(BackgroundKernel, TakesEqualPointsForAFlatCurve) {
  const Samples equal(100, 0.1);
  EXPECT_TRUE(IsFlat(equal.data(), 100, 0));
  Samples but = equal;
  but[70] = kNaN;
  EXPECT_FALSE(IsFlat(but.data(), 100, 0)) << "a gap in the data has no step either";
  const Samples infinite(100, std::numeric_limits<double>::infinity());
  EXPECT_FALSE(IsFlat(infinite.data(), 100, 0));
  EXPECT_FALSE(IsFlat(equal.data(), 100, 1));
  EXPECT_TRUE(IsFlat(equal.data(), 2, 1));
}

}  // namespace
