#include <tool/io/FillGrid.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

using TslTool::FillGrid;

namespace {

struct Points {
  std::vector<double> mz;
  std::vector<double> amplitude;

  bool operator==(const Points&) const = default;
};

// Counts of a line of 40 every 10 m/z over a background, with a step of 0.05, to three decimals.
Points Counted(double decimals = 1000.0, double background = 0.05) {
  std::mt19937_64 random(1);
  Points all;
  for (int i = 0; i < 4000; ++i) {
    const double mz = 100.0 + 0.05 * i;
    const double u = std::remainder(mz - 105.0, 10.0) / 0.25;
    all.mz.push_back(std::round(mz * decimals) / decimals);
    all.amplitude.push_back(
        std::poisson_distribution<int>(background + 40.0 * std::exp(-0.5 * u * u))(random));
  }
  return all;
}

// From the first point with a count to the last.
Points Between(Points all) {
  const auto isEmpty = [](double amplitude) { return amplitude == 0.0; };
  while (isEmpty(all.amplitude.back())) all.mz.pop_back(), all.amplitude.pop_back();
  while (isEmpty(all.amplitude.front()))
    all.mz.erase(all.mz.begin()), all.amplitude.erase(all.amplitude.begin());
  return all;
}

Points WithoutZeros(const Points& all) {
  Points kept;
  for (std::size_t i = 0; i < all.mz.size(); ++i) {
    if (all.amplitude[i] == 0.0) continue;
    kept.mz.push_back(all.mz[i]);
    kept.amplitude.push_back(all.amplitude[i]);
  }
  return kept;
}

TEST(FillGrid, PutsEveryZeroBack) {
  const Points all = Between(Counted());
  Points points = WithoutZeros(all);
  ASSERT_LT(points.mz.size(), all.mz.size() / 2);
  EXPECT_TRUE(FillGrid(points.mz, points.amplitude));
  EXPECT_EQ(points.amplitude, all.amplitude);
  ASSERT_EQ(points.mz.size(), all.mz.size());
  for (std::size_t i = 0; i < all.mz.size(); ++i) EXPECT_NEAR(points.mz[i], all.mz[i], 1e-9);
}

TEST(FillGrid, StepsMayBeRounded) {
  const Points all = Between(Counted(100.0));
  Points points = WithoutZeros(all);
  for (double& mz : points.mz) mz = std::round((mz + 0.013 * (mz - 100.0)) * 100.0) / 100.0;
  EXPECT_TRUE(FillGrid(points.mz, points.amplitude));
  EXPECT_EQ(points.amplitude, all.amplitude);
}

void ExpectUntouched(const Points& points, const char* what) {
  Points after = points;
  EXPECT_FALSE(FillGrid(after.mz, after.amplitude)) << what;
  EXPECT_EQ(after, points) << what;
}

TEST(FillGrid, LeavesWholeAxesAndWindowsAlone) {
  ExpectUntouched(Counted(), "nothing is left out");
  Points windows;
  const Points all = Counted();
  for (std::size_t i = 0; i < all.mz.size(); ++i) {
    if (std::abs(std::remainder(all.mz[i] - 105.0, 10.0)) > 0.5) continue;
    windows.mz.push_back(all.mz[i]);
    windows.amplitude.push_back(all.amplitude[i]);
  }
  ExpectUntouched(windows, "windows of selected ions");
}

TEST(FillGrid, LeavesUnevenAxesAlone) {
  Points points = WithoutZeros(Counted());
  for (double& mz : points.mz) mz = mz * mz / 100.0;
  ExpectUntouched(points, "steps that grow with m/z");
}

// Lines over a background of these counts, every 0.125 but written with one decimal.
Points RoundedAway(double background) {
  std::mt19937_64 random(1);
  Points all;
  for (int i = 0; i < 6000; ++i) {
    const double mz = 50.0 + 0.125 * i;
    const double u = std::remainder(mz - 105.0, 37.1) / 0.3;
    all.mz.push_back(std::round(mz * 10.0) / 10.0);
    all.amplitude.push_back(
        std::poisson_distribution<int>(background + 2000.0 * std::exp(-0.5 * u * u))(random));
  }
  return all;
}

TEST(FillGrid, LeavesHolesThatRoundingMakesAlone) {
  for (const double background : {0.05, 1.0, 4.0, 20.0, 100.0})
    ExpectUntouched(RoundedAway(background), std::to_string(background).c_str());
}

// A line of 200 every 10 m/z over a background of these counts, in segments of two steps.
Points InSegments(double fine, double coarse, double background) {
  std::mt19937_64 random(1);
  Points all;
  for (double mz = 100.0; mz < 800.0; mz += mz < 450.0 ? fine : coarse) {
    const double u = std::remainder(mz - 105.0, 10.0) / 0.25;
    all.mz.push_back(mz);
    all.amplitude.push_back(
        std::poisson_distribution<int>(background + 200.0 * std::exp(-0.5 * u * u))(random));
  }
  return all;
}

TEST(FillGrid, LeavesSegmentsOfOtherStepsAlone) {
  for (const double fine : {0.05, 0.0625})
    for (const double ratio : {2.0, 3.0})
      for (const double background : {0.05, 1.0, 20.0}) {
        const std::string what = std::to_string(background);
        ExpectUntouched(InSegments(fine, ratio * fine, background), what.c_str());
      }
}

TEST(FillGrid, PutsZerosBackWhereOnlyThoseBetweenZerosAreLeftOut) {
  const Points all = Counted(1000.0, 0.3);
  Points points;
  for (std::size_t i = 0; i < all.mz.size(); ++i) {
    const bool isInner = i > 0 && i + 1 < all.mz.size();
    if (isInner && all.amplitude[i - 1] + all.amplitude[i] + all.amplitude[i + 1] == 0.0) continue;
    points.mz.push_back(all.mz[i]);
    points.amplitude.push_back(all.amplitude[i]);
  }
  ASSERT_LT(points.mz.size(), all.mz.size());
  ASSERT_TRUE(FillGrid(points.mz, points.amplitude));
  EXPECT_EQ(points.amplitude, all.amplitude);
}

TEST(FillGrid, LeavesAFewPointsAndTooManyPlacesAlone) {
  ExpectUntouched({{1, 2, 3, 5}, {1, 1, 1, 1}}, "a few points");
  Points points = WithoutZeros(Counted());
  points.mz.push_back(1e6);
  points.amplitude.push_back(1.0);
  ExpectUntouched(points, "two million places");
  ExpectUntouched({std::vector<double>(30, 100.0), std::vector<double>(30, 1.0)}, "one place for all");
}

}  // namespace
