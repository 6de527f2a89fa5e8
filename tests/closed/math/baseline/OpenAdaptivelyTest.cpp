// The adaptive opening, on curves without noise: what is left of them shows what was taken off.
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include <closed/math/SampleArray.h>

using namespace TslMath;
using namespace tests;

namespace {

Samples Opened(const Samples& y, std::uint32_t segSize = 250, std::uint32_t window = 25) {
  Samples out(y.size());
  APBMorph(y.data(), Size(y), segSize, window, out.data());
  return out;
}

void Raise(Samples& y, std::size_t begin, std::size_t end, double by) {
  for (std::size_t i = begin; i < end; ++i) y[i] += by;
}

// Flat at 10 with a step of 1 that sets the quantum.
Samples Flat() {
  Samples y(6000, 10.0);
  y[5900] = 11;
  return y;
}

// Of 20 curves with a low group at every nine segments, on 20 counts: how many groups come off.
int GroupsTakenOff(std::uint32_t segSize, double height, std::size_t width) {
  std::mt19937_64 random(3);
  const std::size_t distance = 9 * segSize;
  int off = 0;
  for (int curve = 0; curve < 20; ++curve) {
    Samples y;
    for (std::size_t i = 0; i < 20000; ++i) {
      const std::size_t at = i % distance;
      const bool inside = at >= 4 * segSize && at < 4 * segSize + width;
      y.push_back(std::poisson_distribution<int>(inside ? 20 + height : 20)(random));
    }
    const Samples found = Opened(y, segSize);
    for (std::size_t middle = 4 * segSize + width / 2; middle + 4 * segSize < y.size(); middle += distance)
      off += found[middle] < 20 + 0.5 * height ? 1 : 0;
  }
  return off;
}

double Highest(const Samples& y) { return *std::max_element(y.begin(), y.end()); }

TEST(OpenAdaptively, TakesOffWhatIsNarrowerThanASegment) {
  for (const std::size_t width : {1U, 30U, 100U, 230U}) {
    Samples y = Flat();
    Raise(y, 3000, 3000 + width, 500);
    EXPECT_NEAR(Highest(Opened(y)), 10, 0.01) << width;
  }
}

TEST(OpenAdaptively, TakesOffGroupsUpToFourTimesAsWide) {
  for (const std::size_t width : {260U, 480U, 700U, 950U}) {
    Samples y = Flat();
    Raise(y, 2500, 2500 + width, 500);
    EXPECT_NEAR(Highest(Opened(y)), 10, 0.01) << width;
  }
}

TEST(OpenAdaptively, TakesOffGroupsInWhateverUnit) {
  for (const double unit : {1e-3, 1e3}) {
    Samples y = Flat();
    Raise(y, 2500, 3400, 500);
    for (double& value : y) value *= unit;
    EXPECT_NEAR(Highest(Opened(y)), 10 * unit, 0.01 * unit) << unit;
  }
}

// A group of 140 points with feet of 15 points on both sides, which are near enough to the background not to
// be taken off with it, but narrower than a segment of 100 points.
TEST(OpenAdaptively, TakesOffTheFeetOfAGroupToo) {
  Samples y = Flat();
  Raise(y, 2560, 2700, 1);
  Raise(y, 2575, 2685, 500);
  EXPECT_NEAR(Highest(Opened(y, 100, 5)), 10, 0.15);
}

// A group is told from the background by the noise of two segments. Where these hold its edges they see more
// noise: of 80 groups of four and a half standard deviations a quarter comes off, but half by the noise of
// one.
TEST(OpenAdaptively, MeasuresNoiseOverTwoSegments) {
  const int off = GroupsTakenOff(500, 20, 1250);
  EXPECT_GT(off, 10);
  EXPECT_LT(off, 30);
}

// More than 65 536 cells of five points. A wave within two segments is more than the lines follow.
TEST(OpenAdaptively, OfALongCurveIsThatOfItsParts) {
  Samples y(400000);
  for (std::size_t i = 0; i < y.size(); ++i)
    y[i] = 200 * std::cos(static_cast<double>(i % 1000) / 500 * 3.141592653589793);
  const auto opened = [](const Samples& curve) {
    Samples out(curve.size());
    OpenAdaptively(curve.data(), Size(curve), 100, 25, {out.data(), nullptr});
    return out;
  };
  const Samples whole = opened(y);
  const Samples last = opened(Samples(y.end() - 8000, y.end()));
  for (std::size_t i = 3000; i < 5000; ++i) ASSERT_NEAR(whole[y.size() - i], last[8000 - i], 1e-9) << i;
}

TEST(OpenAdaptively, FollowsAStepOfTheBackground) {
  Samples y = Flat();
  Raise(y, 3000, 6000, 40);
  const Samples found = Opened(y);
  EXPECT_NEAR(found[2000], 10, 0.1);
  EXPECT_NEAR(found[4500], 50, 0.1);
}

TEST(OpenAdaptively, OfTheMirroredCurveIsMirrored) {
  Samples y = Flat();
  Raise(y, 700, 900, 30);
  Raise(y, 2560, 2700, 1);
  Raise(y, 2575, 2685, 500);
  Raise(y, 4000, 6000, 3);
  const Samples found = Opened(y);
  std::reverse(y.begin(), y.end());
  const Samples mirrored = Opened(y);
  for (std::size_t i = 0; i < y.size(); ++i) ASSERT_NEAR(found[i], mirrored[y.size() - 1 - i], 0.02) << i;
}

}  // namespace
