#include <tslbl/closed/math/peak/Features.h>

#include <OracleTable.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>

using testing::ElementsAre;
using testing::IsEmpty;
using TslMath::CurvePt;
using TslMath::FindFeatures;
using TslMath::FindOneFeature;

namespace {

using Samples = std::vector<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint32_t kMaxIndex = std::numeric_limits<std::uint32_t>::max();

std::uint32_t Size(const Samples& y) { return static_cast<std::uint32_t>(y.size()); }

std::vector<CurvePt> Features(const Samples& y, std::uint32_t start, std::uint32_t count) {
  std::vector<CurvePt> found{{99, 99.0}};
  FindFeatures(y.data(), Size(y), start, count, found);
  return found;
}

std::vector<std::uint32_t> Indexes(const Samples& y, std::uint32_t start = 0,
                                   std::uint32_t count = kMaxIndex) {
  std::vector<std::uint32_t> indexes;
  for (const CurvePt& point : Features(y, start, count)) indexes.push_back(point.first);
  return indexes;
}

// The index climbed to, -1 if there is none.
int Climb(const Samples& y, std::uint32_t idx) {
  CurvePt found;
  return FindOneFeature(y.data(), Size(y), idx, found) ? static_cast<int>(found.first) : -1;
}

// Few levels, so that plateaus of all lengths occur.
Samples Steps(std::uint32_t seed, std::size_t n, int levels) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> level(0, levels - 1);
  Samples y(n);
  for (double& value : y) value = level(random);
  return y;
}

TEST(FindFeatures, FindsMaximaWithTheirAmplitude) {
  EXPECT_THAT(Features({0, 1, 5, 3, 4, 1}, 0, 6), ElementsAre(CurvePt{2, 5.0}, CurvePt{4, 4.0}));
}

TEST(FindFeatures, ReportsTheMiddleOfAPlateauRoundedDown) {
  EXPECT_THAT(Indexes({0, 5, 5, 0}), ElementsAre(1));
  EXPECT_THAT(Indexes({0, 5, 5, 5, 0}), ElementsAre(2));
  EXPECT_THAT(Indexes({0, 5, 5, 5, 5, 0}), ElementsAre(2));
}

TEST(FindFeatures, TakesAStepForNoFeature) {
  EXPECT_THAT(Indexes({0, 5, 5, 7, 8, 9}), IsEmpty());
  EXPECT_THAT(Indexes({9, 5, 5, 4, 4, 1}), IsEmpty());
}

TEST(FindFeatures, TakesAPeakCutByAnEndForNoFeature) {
  EXPECT_THAT(Indexes({5, 1, 0, 1, 5}), IsEmpty());
  EXPECT_THAT(Indexes({5, 5, 1, 0, 1, 5, 5}), IsEmpty());
}

TEST(FindFeatures, FindsNothingOnFlatOrShortCurves) {
  EXPECT_THAT(Indexes({}), IsEmpty());
  EXPECT_THAT(Indexes({1}), IsEmpty());
  EXPECT_THAT(Indexes({1, 2}), IsEmpty());
  EXPECT_THAT(Indexes({3, 3, 3, 3}), IsEmpty());
  EXPECT_THAT(Indexes({1, 2, 1}), ElementsAre(1));
}

TEST(FindFeatures, ClearsWhatWasFoundBefore) { EXPECT_THAT(Features({1, 1, 1}, 0, 3), IsEmpty()); }

TEST(FindFeatures, NeverReportsNaNOrItsNeighbours) {
  EXPECT_THAT(Indexes({0, 1, kNaN, 1, 0}), IsEmpty());
  EXPECT_THAT(Indexes({0, kNaN, 5, 0, 7, 0}), ElementsAre(4));
}

TEST(FindFeatures, AgreesWithScipy) {  // tests/oracles/features.py
  const tests::OracleTable oracle("features.csv");
  std::vector<std::uint32_t> expected;
  for (std::uint32_t i = 0; i < Size(oracle["y"]); ++i) {
    if (oracle["feature"][i] == 1) expected.push_back(i);
  }
  ASSERT_EQ(102U, expected.size());
  EXPECT_EQ(expected, Indexes(oracle["y"]));
}

TEST(FindFeatures, ReportsOnlyIndexesInItsStretchButLooksBeyond) {
  const Samples y = {0, 5, 5, 5, 0, 7, 0};
  EXPECT_THAT(Indexes(y, 2, 1), ElementsAre(2));
  EXPECT_THAT(Indexes(y, 1, 1), IsEmpty());
  EXPECT_THAT(Indexes(y, 3, 2), IsEmpty());
  EXPECT_THAT(Indexes(y, 5, 1), ElementsAre(5));
  EXPECT_THAT(Indexes(y, 2, 0), IsEmpty());
  EXPECT_THAT(Indexes(y, 7, 5), IsEmpty());
}

TEST(FindFeatures, TakesACountBeyondTheCurveForItsEnd) {
  EXPECT_THAT(Indexes({0, 5, 0, 6, 0}, 2, kMaxIndex), ElementsAre(3));
}

TEST(FindFeatures, FindsEachFeatureOnceInAdjoiningStretches) {
  for (std::uint32_t seed = 0; seed < 200; ++seed) {
    const Samples y = Steps(seed, 150, 2 + static_cast<int>(seed % 3));
    const std::uint32_t step = 1 + seed % 70;
    std::vector<CurvePt> joined;
    for (std::uint32_t start = 0; start < Size(y); start += step) {
      for (const CurvePt& point : Features(y, start, step)) joined.push_back(point);
    }
    ASSERT_EQ(Features(y, 0, Size(y)), joined) << "seed " << seed;
  }
}

TEST(FindFeatures, FindsPlateausLongerThanItsStretches) {
  Samples y(1000, 1.0);
  y.front() = y.back() = 0;
  std::vector<std::uint32_t> joined;
  for (std::uint32_t start = 0; start < 1000; start += 10) {
    for (std::uint32_t index : Indexes(y, start, 10)) joined.push_back(index);
  }
  EXPECT_THAT(joined, ElementsAre(499));
}

TEST(FindFeatures, FindsThoseOfALongCurve) {
  const Samples y = Steps(9, 70100, 3);
  std::vector<CurvePt> expected;
  for (const CurvePt& point : Features(Samples(y.end() - 4000, y.end()), 100, 4000))
    expected.push_back({point.first + 66100, point.second});
  EXPECT_EQ(expected, Features(y, 66200, kMaxIndex));
}

TEST(FindOneFeature, ClimbsFarUpALongCurve) {
  Samples y(90000);
  for (std::size_t i = 0; i < y.size(); ++i) y[i] = -std::abs(static_cast<double>(i) - 80000.0);
  EXPECT_EQ(80000, Climb(y, 10));
  EXPECT_EQ(80000, Climb(y, 89990));
}

TEST(FindOneFeature, ClimbsToTheFeatureOnItsSlope) {
  const Samples y = {0, 1, 5, 3, 0, 2, 9, 1, 0};
  EXPECT_EQ(2, Climb(y, 1));
  EXPECT_EQ(2, Climb(y, 2));
  EXPECT_EQ(2, Climb(y, 3));
  EXPECT_EQ(6, Climb(y, 5));
  EXPECT_EQ(6, Climb(y, 7));
}

TEST(FindOneFeature, GivesIndexAndAmplitude) {
  const Samples y = {0, 1, 5, 3};
  CurvePt found;
  EXPECT_TRUE(FindOneFeature(y.data(), 4, 0, found));
  EXPECT_EQ((CurvePt{2, 5.0}), found);
}

TEST(FindOneFeature, LeavesAValleyOnTheHigherSide) {
  EXPECT_EQ(1, Climb({0, 5, 3, 0, 1, 4, 0}, 3));
  EXPECT_EQ(5, Climb({0, 5, 1, 0, 3, 4, 0}, 3));
}

TEST(FindOneFeature, LeavesASymmetricValleyOnTheLeft) { EXPECT_EQ(1, Climb({0, 5, 2, 0, 2, 4, 0}, 3)); }

TEST(FindOneFeature, WalksAlongPlateaus) {
  EXPECT_EQ(5, Climb({0, 1, 1, 1, 2, 3, 0}, 2));
  EXPECT_EQ(2, Climb({0, 6, 6, 6, 0}, 3));
}

TEST(FindOneFeature, ClimbsFromTheEnds) {
  EXPECT_EQ(2, Climb({0, 1, 5, 3, 2}, 0));
  EXPECT_EQ(2, Climb({0, 1, 5, 3, 2}, 4));
}

TEST(FindOneFeature, TakesAnIndexBeyondTheCurveForItsEnd) { EXPECT_EQ(2, Climb({0, 1, 5, 3, 2}, kMaxIndex)); }

TEST(FindOneFeature, FindsNothingWhereTheClimbEndsAtAnEnd) {
  EXPECT_EQ(-1, Climb({0, 1, 2, 3}, 1));
  EXPECT_EQ(-1, Climb({3, 2, 1, 0}, 2));
  EXPECT_EQ(-1, Climb({9, 9, 1, 5, 0}, 0));
}

TEST(FindOneFeature, FindsNothingOnFlatOrEmptyCurves) {
  EXPECT_EQ(-1, Climb({4, 4, 4, 4}, 2));
  EXPECT_EQ(-1, Climb({4}, 0));
  EXPECT_EQ(-1, Climb({}, 0));
  EXPECT_EQ(-1, Climb({}, 5));
}

TEST(FindOneFeature, StopsBesideNaN) {
  EXPECT_EQ(-1, Climb({0, 1, 2, kNaN, 1, 0}, 1));
  EXPECT_EQ(-1, Climb({0, 1, 2, kNaN, 1, 0}, 3));
}

TEST(FindOneFeature, LeavesItsResultAloneIfItFindsNothing) {
  const Samples y = {0, 1, 2};
  CurvePt found{7, 7.5};
  EXPECT_FALSE(FindOneFeature(y.data(), 3, 1, found));
  EXPECT_EQ((CurvePt{7, 7.5}), found);
}

TEST(FindOneFeature, FindsOnlyFeaturesOfTheWholeCurve) {
  for (std::uint32_t seed = 0; seed < 200; ++seed) {
    const Samples y = Steps(seed, 80, 2 + static_cast<int>(seed % 5));
    const std::vector<CurvePt> all = Features(y, 0, Size(y));
    for (std::uint32_t idx = 0; idx < Size(y); ++idx) {
      CurvePt found;
      if (!FindOneFeature(y.data(), Size(y), idx, found)) continue;
      ASSERT_THAT(all, testing::Contains(found)) << "seed " << seed;
    }
  }
}

TEST(FindOneFeature, FindsEveryFeatureFromItself) {
  const Samples y = Steps(1, 500, 4);
  for (std::uint32_t index : Indexes(y)) EXPECT_EQ(static_cast<int>(index), Climb(y, index));
}

}  // namespace
