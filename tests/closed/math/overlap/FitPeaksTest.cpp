// Tests: FitPeaks.cpp, GroupFit.cpp.
#include <tslbl/closed/math/overlap/FitPeaks.h>

#include <gtest/gtest.h>

#include <OracleTable.h>
#include <limits>
#include <thread>

#include "SimulatedGroup.h"

using namespace TslMath;
using namespace tests;

namespace {

using Values = std::vector<double>;
using Apexes = std::vector<std::int32_t>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

SimulatedGroup Group(const GroupRecipe& recipe, std::uint64_t seed = 1) {
  Random random(seed);
  return SimulateGroup(recipe, random);
}

Apexes ApexesOf(const SimulatedGroup& group) {
  Apexes apexes;
  for (const double centre : group.centres) apexes.push_back(static_cast<std::int32_t>(std::lround(centre)));
  return apexes;
}

OverlapFit Fit(const SimulatedGroup& group, FitMethod method = FitMethod::LevenbergMarquardt) {
  const auto fit = FitOverlap(method, {group.x, group.y, ApexesOf(group), group.level, 5});
  EXPECT_TRUE(fit);
  return fit.value_or(OverlapFit{});
}

TEST(FitPeaks, TakesPeaksApart) {
  const SimulatedGroup group = Group({.peaks = 3, .spacing = 1.25, .signalToNoise = 100});
  for (const bool hookeJeeves : {false, true}) {
    std::vector<FittedGaussian> results(3);
    ASSERT_TRUE(FitPeaks(hookeJeeves, group.x, group.y, ApexesOf(group), group.level, 5, results));
    for (std::size_t k = 0; k < 3; ++k) {
      const double area = results[k].height * results[k].a3 * std::sqrt(2 * std::numbers::pi);
      EXPECT_NEAR(results[k].centre, group.centres[k], 4 * results[k].fit5);
      EXPECT_NEAR(area, group.areas[k], 4 * results[k].fit6);
      EXPECT_NEAR(results[k].baseline, group.level, 5);
      EXPECT_NEAR(results[k].fit4, 1, 0.7);
    }
  }
}

// tests/oracles/overlap_fit.py: the same weighted squares, made as small as they can be by SciPy.
TEST(FitPeaks, AgreesWithSciPy) {
  const OracleTable points("overlap_samples.csv");
  const OracleTable fits("overlap_fits.csv");
  for (std::size_t first = 0; first < fits["group"].size();) {
    SimulatedGroup group;
    for (std::size_t i = 0; i < points["group"].size(); ++i) {
      if (points["group"][i] != fits["group"][first]) continue;
      group.x.push_back(points["x"][i]);
      group.y.push_back(points["y"][i]);
    }
    std::size_t end = first;
    for (; end < fits["group"].size() && fits["group"][end] == fits["group"][first]; ++end)
      group.centres.push_back(std::round(fits["centre"][end]));
    const OverlapFit fit = Fit(group);
    for (std::size_t k = first; k < end; ++k) {
      const std::size_t peak = k - first;
      EXPECT_NEAR(fit.sum.tops[peak], fits["centre"][k], 0.05 * fits["centre_se"][k]);
      EXPECT_NEAR(fit.sum.Area(peak), fits["area"][k], 0.05 * fits["area_se"][k]);
      EXPECT_NEAR(fit.sum.widths[peak], fits["width"][k], 1e-3 * fits["width"][k]);
      EXPECT_NEAR(fit.errors[peak].centroid / fit.errors[peak].area,
                  fits["centre_se"][k] / fits["area_se"][k],
                  0.01 * fits["centre_se"][k] / fits["area_se"][k]);
    }
    first = end;
  }
}

TEST(FitPeaks, OfCurvesWithoutNoiseIsExact) {
  SimulatedGroup group = Group({.peaks = 4, .spacing = 1.2, .left = 0.9, .right = 1.1});
  group.y = group.mean;
  const OverlapFit fit = Fit(group);
  EXPECT_NEAR(fit.sum.skew, 0.1, 1e-4);
  for (std::size_t k = 0; k < 4; ++k) {
    EXPECT_NEAR(fit.sum.Centroid(k), group.centres[k], 1e-3);
    EXPECT_NEAR(fit.sum.Area(k) / group.areas[k], 1, 1e-3);
  }
  for (std::size_t i = 0; i < group.x.size(); ++i)
    EXPECT_NEAR(fit.sum.At(group.x[i]), group.mean[i], 1e-3 * group.mean[i]);
}

TEST(FitPeaks, TakesASkewInOnlyWhereThePointsAskForIt) {
  int straight = 0;
  int skewed = 0;
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    straight += Fit(Group({.signalToNoise = 100}, seed)).sum.skew == 0;
    skewed += Fit(Group({.signalToNoise = 100, .left = 0.9, .right = 1.15}, seed)).sum.skew > 0.05;
  }
  EXPECT_GE(straight, 97);
  EXPECT_EQ(skewed, 100);
}

TEST(FitPeaks, GivesPeaksWidthsOfTheirOwnOnlyWhereThePointsAskForIt) {
  int common = 0;
  int own = 0;
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    const PeakSum equal = Fit(Group({.spacing = 2, .signalToNoise = 100}, seed)).sum;
    const PeakSum different = Fit(Group({.spacing = 2, .signalToNoise = 100, .widthChange = 0.05}, seed)).sum;
    common += equal.widths[0] == equal.widths[1];
    own += different.widths[0] < different.widths[1];
  }
  EXPECT_GE(common, 95);
  EXPECT_EQ(own, 100);
}

TEST(FitPeaks, DoesNotDependOnAFactor) {
  const SimulatedGroup group = Group({.peaks = 3});
  const OverlapFit fit = Fit(group);
  for (const double factor : {0.01, 0x1p-1000, 0x1p900}) {
    SimulatedGroup scaled = group;
    for (double& value : scaled.y) value *= factor;
    const OverlapFit other = Fit(scaled);
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_NEAR(other.sum.tops[k], fit.sum.tops[k], 1e-9);
      EXPECT_NEAR(other.sum.heights[k] / factor, fit.sum.heights[k], 1e-7 * fit.sum.heights[k]);
      EXPECT_NEAR(other.errors[k].area / factor, fit.errors[k].area, 1e-7 * fit.errors[k].area);
    }
    EXPECT_NEAR(other.reducedSquares, fit.reducedSquares, 1e-7);
  }
}

TEST(FitPeaks, FollowsTheAxis) {
  const SimulatedGroup group = Group({.peaks = 3, .left = 0.9, .right = 1.1});
  SimulatedGroup moved = group;
  for (double& x : moved.x) x = 500 + x / 20;
  const OverlapFit fit = Fit(group);
  const auto other =
      FitOverlap(FitMethod::LevenbergMarquardt, {moved.x, moved.y, ApexesOf(group), group.level, 5.0 / 20});
  ASSERT_TRUE(other);
  for (std::size_t k = 0; k < 3; ++k) {
    EXPECT_NEAR(other->sum.tops[k], 500 + fit.sum.tops[k] / 20, 1e-6);
    EXPECT_NEAR(other->sum.Area(k) * 20, fit.sum.Area(k), 1e-5 * fit.sum.Area(k));
    EXPECT_NEAR(other->errors[k].centroid * 20, fit.errors[k].centroid, 1e-5 * fit.errors[k].centroid);
  }
}

TEST(FitPeaks, OfTheMirroredGroupIsMirrored) {
  const SimulatedGroup group = Group({.peaks = 3, .signalToNoise = 100, .left = 0.9, .right = 1.1});
  SimulatedGroup mirrored = group;
  std::ranges::reverse(mirrored.y);
  const double last = group.x.back();
  for (double& centre : mirrored.centres) centre = last - std::round(centre);
  const OverlapFit fit = Fit(group);
  const OverlapFit other = Fit(mirrored);
  EXPECT_NEAR(other.sum.skew, -fit.sum.skew, 1e-4);
  for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(last - other.sum.tops[2 - k], fit.sum.tops[k], 1e-3);
}

TEST(FitPeaks, StartsFromAWidthThatIsFarOff) {
  const SimulatedGroup group = Group({.peaks = 3, .spacing = 1.5});
  const OverlapFit fit = Fit(group);
  for (const double a3 : {2.5, 9.0}) {
    const auto other =
        FitOverlap(FitMethod::LevenbergMarquardt, {group.x, group.y, ApexesOf(group), group.level, a3});
    ASSERT_TRUE(other);
    for (std::size_t k = 0; k < 3; ++k)
      EXPECT_NEAR(other->sum.tops[k], fit.sum.tops[k], 0.05 * fit.errors[k].centroid);
  }
}

// Counts through a filter of three points, whose noise is no longer independent.
TEST(FitPeaks, IsAsUncertainOfSmoothedCountsAsOfTheirSource) {
  double raw = 0;
  double smoothed = 0;
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    SimulatedGroup group = Group({.spacing = 1.5, .signalToNoise = 30}, seed);
    raw += Fit(group).errors[0].centroid;
    const Values y = group.y;
    for (std::size_t i = 1; i + 1 < y.size(); ++i) group.y[i] = (y[i - 1] + y[i] + y[i + 1]) / 3;
    smoothed += Fit(group).errors[0].centroid;
  }
  EXPECT_NEAR(smoothed / raw, 1, 0.3);
}

// Of three widths of points their own scatter is told within a third.
TEST(FitPeaks, KnowsWhatIsNoiseWhereItIsTold) {
  const auto spreadOf = [](double variancePerMean) {
    double squares = 0;
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
      const SimulatedGroup group = Group({.spacing = 1.25, .fwhm = 5}, seed);
      const auto fit = FitOverlap(FitMethod::LevenbergMarquardt,
                                  {group.x, group.y, ApexesOf(group), group.level, 2, variancePerMean});
      EXPECT_TRUE(fit);
      if (fit) squares += (fit->reducedSquares - 1) * (fit->reducedSquares - 1);
    }
    return std::sqrt(squares / 200);
  };
  EXPECT_LT(spreadOf(1), 0.4);
  EXPECT_LT(spreadOf(1), 0.6 * spreadOf(0));
}

TEST(FitPeaks, LeavesNoiseTwiceAsLargeInUnitsHalfAsLarge) {
  const SimulatedGroup group = Group({});
  const Apexes apexes = ApexesOf(group);
  OverlapGroup told{group.x, group.y, apexes, group.level, 5, 1};
  const auto once = FitOverlap(FitMethod::LevenbergMarquardt, told);
  told.variancePerMean = 0.5;
  const auto twice = FitOverlap(FitMethod::LevenbergMarquardt, told);
  ASSERT_TRUE(once && twice);
  EXPECT_NEAR(twice->reducedSquares, 2 * once->reducedSquares, 1e-3);
}

TEST(FitPeaks, DoesNotDependOnThreads) {
  const SimulatedGroup group = Group({.peaks = 4});
  const OverlapFit alone = Fit(group);
  std::vector<OverlapFit> fits(4);
  std::vector<std::thread> threads;
  for (OverlapFit& fit : fits) threads.emplace_back([&group, &fit] { fit = Fit(group); });
  for (std::thread& thread : threads) thread.join();
  for (const OverlapFit& fit : fits) EXPECT_EQ(fit.sum.tops, alone.sum.tops);
}

struct BadGroup {
  const char* name;
  Values y;
  Apexes apexes;
  double a3;
};

void PrintTo(const BadGroup& group, std::ostream* out) { *out << group.name; }

struct Refusals : testing::TestWithParam<BadGroup> {};

Values Good() { return Group({}).y; }

Values GoodWith(double value) {
  Values y = Good();
  y[30] = value;
  return y;
}

INSTANTIATE_TEST_SUITE_P(Groups, Refusals,
                         testing::Values(BadGroup{"NoPoints", {}, {0}, 5}, BadGroup{"OnePoint", {9}, {0}, 5},
                                         BadGroup{"TooFewPoints", {1, 5, 3, 6, 2, 1}, {1, 3}, 5},
                                         BadGroup{"NoPeaks", Good(), {}, 5},
                                         BadGroup{"TooManyPeaks", Values(1000, 5.0), Apexes(201, 3), 5},
                                         BadGroup{"ApexBefore", Good(), {-1, 20}, 5},
                                         BadGroup{"ApexBehind", Good(), {20, 1000}, 5},
                                         BadGroup{"NoWidth", Good(), {20, 32}, 0},
                                         BadGroup{"WidthBelowZero", Good(), {20, 32}, -1},
                                         BadGroup{"WidthNaN", Good(), {20, 32}, kNaN},
                                         BadGroup{"WidthInfinite", Good(), {20, 32}, kInfinity},
                                         BadGroup{"NaN", GoodWith(kNaN), {20, 32}, 5},
                                         BadGroup{"Infinite", GoodWith(-kInfinity), {20, 32}, 5},
                                         BadGroup{"Zeros", Values(60, 0.0), {20, 32}, 5}),
                         [](const auto& group) { return std::string(group.param.name); });

TEST_P(Refusals, GiveTheStartBack) {
  const BadGroup& group = GetParam();
  Values x(group.y.size());
  std::iota(x.begin(), x.end(), 0.0);
  for (const bool hookeJeeves : {false, true}) {
    std::vector<FittedGaussian> results(group.apexes.size());
    EXPECT_FALSE(FitPeaks(hookeJeeves, x, group.y, group.apexes, 2, group.a3, results));
    for (std::size_t k = 0; k < results.size(); ++k) {
      EXPECT_EQ(results[k].baseline, 2);
      EXPECT_EQ(results[k].fit5, 0);
      const bool isPoint = group.apexes[k] >= 0 && static_cast<std::size_t>(group.apexes[k]) < x.size();
      EXPECT_EQ(results[k].centre, isPoint ? group.apexes[k] : 0);
    }
  }
}

// Whatever the points are: numbers that are finite, or none.
TEST(FitPeaks, IsFiniteOrNothing) {
  Random random(9);
  for (int k = 0; k < 400; ++k) {
    Values y(1 + random() % 50);
    for (double& value : y) value = random() % 4 ? std::floor(std::exp(Between(random, -2, 8))) : 0;
    if (k % 5 == 0) std::ranges::fill(y, 7.0);
    Values x(y.size());
    std::iota(x.begin(), x.end(), 0.0);
    Apexes apexes(1 + random() % 5);
    for (std::int32_t& apex : apexes) apex = static_cast<std::int32_t>(random() % y.size());
    std::ranges::sort(apexes);
    std::vector<FittedGaussian> results(apexes.size());
    FitPeaks(k % 20 == 0, x, y, apexes, 0, Between(random, 0.1, 20), results);
    for (const FittedGaussian& peak : results)
      for (const double value :
           {peak.height, peak.centre, peak.a3, peak.baseline, peak.fit4, peak.fit5, peak.fit6})
        EXPECT_TRUE(std::isfinite(value)) << k;
  }
}

TEST(FitPeaks, GivesNoNumberThatIsTooLargeForADouble) {
  const Values y = {0, 4.2e9, 0, 4.2e9, 0, 4.2e9, 0, -4e9, 0, 2.2e-308, 0, -1.37206e271, 250};
  Values x(y.size());
  std::iota(x.begin(), x.end(), 0.0);
  std::vector<FittedGaussian> results(1);
  EXPECT_FALSE(FitPeaks(false, x, y, Apexes{3}, 0.5, 3.25, results));
  EXPECT_EQ(results[0].fit6, 0);
}

TEST(FitPeaks, OfAMillionPointsComesToAnEnd) {
  Random random(10);
  Values x(1000000);
  std::iota(x.begin(), x.end(), 0.0);
  Values y(x.size());
  for (double& value : y) value = static_cast<double>(random() % 100);
  const Apexes apexes = {100, 300000, 500000, 900000};
  std::vector<FittedGaussian> results(4);
  FitPeaks(false, x, y, apexes, 0, 1e5, results);
  for (const FittedGaussian& peak : results) EXPECT_TRUE(std::isfinite(peak.centre));
}

}  // namespace
