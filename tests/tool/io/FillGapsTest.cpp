#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>

#include <tool/io/FillGaps.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslTool::FillGaps;
using Values = std::vector<double>;

struct Curve {
  Values mz;
  Values amplitude;
};

// Groups of points 0.1 apart with these amplitudes, one group every 10 m/z.
Curve Groups(std::size_t count, const Values& amplitudes) {
  Curve curve;
  for (std::size_t k = 0; k < count; ++k)
    for (std::size_t i = 0; i < amplitudes.size(); ++i) {
      curve.mz.push_back(100.0 + 10.0 * static_cast<double>(k) + 0.1 * static_cast<double>(i));
      curve.amplitude.push_back(amplitudes[i]);
    }
  return curve;
}

TEST(FillGaps, LeavesAnAxisWithoutGapsAlone) {
  Curve even;
  Curve growing;
  for (int i = 0; i < 1000; ++i) {
    even.mz.push_back(100 + 0.05 * i);
    growing.mz.push_back(200 + 2e-3 * i + 1e-6 * i * i);
    even.amplitude.push_back(i % 5);
  }
  for (Curve curve : {even, Curve{growing.mz, even.amplitude}}) {
    const Values before = curve.mz;
    EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 0U);
    EXPECT_EQ(curve.mz, before);
  }
}

TEST(FillGaps, ZerosTakeBothSidesAStepApart) {
  Curve curve = Groups(2, {1, 9, 4, 1});
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 1U);
  ASSERT_EQ(curve.mz.size(), 8U + 32U);
  for (std::size_t k = 0; k < 16; ++k) {
    EXPECT_NEAR(curve.mz[4 + k], 100.3 + 0.1 * static_cast<double>(k + 1), 1e-9);
    EXPECT_NEAR(curve.mz[20 + k], 110.0 - 0.1 * static_cast<double>(16 - k), 1e-9);
    EXPECT_EQ(curve.amplitude[4 + k], 0.0);
  }
  EXPECT_EQ(curve.amplitude[36], 1.0);
}

TEST(FillGaps, AShortGapIsFilledOnce) {
  Curve curve{{100, 100.1, 100.2, 100.8, 100.9, 101.0}, {1, 9, 1, 1, 9, 1}};
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 1U);
  EXPECT_NEAR(static_cast<double>(curve.mz.size()), 11.0, 1.0);  // rounding decides on a zero in the middle
  EXPECT_TRUE(std::ranges::is_sorted(curve.mz, std::less_equal<>()));
}

TEST(FillGaps, AMissingPointOrTwoIsNoGap) {
  Curve curve{{100, 100.1, 100.2, 100.5, 100.6, 100.7}, {1, 9, 1, 1, 9, 1}};
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 0U);
}

TEST(FillGaps, FewWindowsWhoseAmplitudeDoesNotFallStay) {
  Curve curve = Groups(5, {9, 8, 9, 10, 9});
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 0U);
}

TEST(FillGaps, OfManyGapsAllAreFilled) {
  Curve curve = Groups(30, {9, 8, 9, 10, 9});
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 29U);
}

TEST(FillGaps, APointAloneIsAGroup) {
  Curve curve = Groups(30, {1, 9, 4, 1});
  curve.mz.insert(curve.mz.begin() + 4, 105.0);
  curve.amplitude.insert(curve.amplitude.begin() + 4, 7.0);
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 30U);
}

TEST(FillGaps, KeepTheSumAndTheOrder) {
  Curve curve = Groups(40, {1, 9, 4, 1, 0, 2});
  const double sum = std::accumulate(curve.amplitude.begin(), curve.amplitude.end(), 0.0);
  FillGaps(curve.mz, curve.amplitude);
  EXPECT_EQ(std::accumulate(curve.amplitude.begin(), curve.amplitude.end(), 0.0), sum);
  EXPECT_EQ(std::ranges::adjacent_find(curve.mz, std::greater_equal<>()), curve.mz.end());
  EXPECT_EQ(curve.mz.size(), curve.amplitude.size());
}

TEST(FillGaps, ShortCurvesStay) {
  for (std::size_t n = 0; n < 3; ++n) {
    Values mz(n), amplitude(n, 1.0);
    std::iota(mz.begin(), mz.end(), 1.0);
    EXPECT_EQ(FillGaps(mz, amplitude), 0U);
  }
}

TEST(FillGaps, StepsThatAreLostInTheRoundingOfMzAreLeftAlone) {
  // A double near 1e15 is an eighth from the next.
  Curve curve;
  for (int k = 0; k < 40; ++k)
    for (const double step : {0.0, 0.125, 0.25})
      curve.mz.push_back(1e15 + 100.0 * k + step), curve.amplitude.push_back(step == 0.125 ? 9.0 : 1.0);
  FillGaps(curve.mz, curve.amplitude);
  EXPECT_EQ(std::ranges::adjacent_find(curve.mz, std::greater_equal<>()), curve.mz.end());
}

TEST(FillGaps, LeavesTheGapsBetweenWindowsOverABackgroundAlone) {
  // Two windows about a line each, whose ends happen to lie low.
  Curve curve = Groups(2, {4, 6, 5, 4, 7, 5, 60, 200, 60, 5, 6, 4, 5, 6, 5, 3});
  const Values before = curve.mz;
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 0U);
  EXPECT_EQ(curve.mz, before);
}

// Windows of 40 points about lines of the same width, over a background in noise.
Curve Windows(std::size_t count, double background, double scatter) {
  std::mt19937_64 random(1);
  std::normal_distribution noise(background, scatter);
  Curve curve = Groups(count, Values(40, 0.0));
  for (std::size_t i = 0; i < curve.mz.size(); ++i) {
    const double u = (static_cast<double>(i % 40) - 20.0) / 4.0;
    curve.amplitude[i] = std::max(0.0, 500.0 * std::exp(-0.5 * u * u) + noise(random));
  }
  return curve;
}

TEST(FillGaps, LeavesTheGapsBetweenManyWindowsOverABackgroundAlone) {
  for (const double background : {5.0, 100.0, 1000.0})
    for (const std::size_t count : {3U, 19U, 50U}) {
      Curve curve = Windows(count, background, std::sqrt(background));
      EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 0U) << background << " " << count;
      EXPECT_EQ(curve.mz.size(), 40 * count);
    }
}

// Windows of 20 to 40 points 0.05 apart about lines 10 points wide, which most windows hold.
Curve CountedWindows(std::uint64_t seed, std::size_t points, bool isEven, double background) {
  std::mt19937_64 random(seed);
  Curve curve;
  for (int k = 0; k < 10; ++k) {
    const std::size_t n = isEven ? points : points + static_cast<std::size_t>(random() % 10);
    const double height = k % 4 == 1 ? 0.0 : 400.0;
    for (std::size_t i = 0; i < n; ++i) {
      const double u = (static_cast<double>(i) - 0.5 * static_cast<double>(n)) / 4.1;
      curve.mz.push_back(100.0 + 50.0 * k + 0.05 * static_cast<double>(i));
      curve.amplitude.push_back(
          std::poisson_distribution<int>(background + height * std::exp(-0.5 * u * u))(random));
    }
  }
  return curve;
}

TEST(FillGaps, LeavesWindowsThatTheirLinesFillAlone) {
  for (const double background : {1.0, 2.0, 3.0, 10.0})
    for (const std::size_t points : {20U, 30U, 40U})
      for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        Curve curve = CountedWindows(seed, points, true, background);
        EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 0U) << background << " " << points << " " << seed;
      }
}

TEST(FillGaps, LeavesUnequalWindowsWithZerosInsideAlone) {
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    Curve curve = CountedWindows(seed, 30, false, 2.0);
    EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 0U) << seed;
  }
}

TEST(FillGaps, FillsManyGapsBetweenWindowsWithoutABackground) {
  Curve curve = Windows(50, 0.0, 0.0);
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 49U);
}

TEST(FillGaps, FillsManyGapsBetweenStretchesThatEndAtTheCut) {
  // Chemical noise at each of whose ends one zero was kept.
  Curve curve = Groups(50, {0, 9, 9, 8, 8, 9, 40, 60, 30, 8, 7, 8, 9, 9, 0});
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 49U);
}

TEST(FillGaps, FillsWhatIsLeftOutBesidePeaksThatStillFall) {
  Curve curve = Groups(2, {1, 2, 5, 12, 40, 90, 40, 12, 5, 2, 1, 1});
  EXPECT_EQ(FillGaps(curve.mz, curve.amplitude), 1U);
}

}  // namespace
}  // namespace tests
