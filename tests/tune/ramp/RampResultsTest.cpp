#include <tslbl/tune/ramp/RampResults.h>

#include <gtest/gtest.h>

#include <tslbl/closed/math/Normalize.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <tuple>

namespace {

using namespace TslBL;

struct Step {
  double ampl;
  double resolution;
};
using Range = std::vector<SpectrumBasePeak>;

Range RangeOf(const std::vector<Step>& steps) {
  Range range;
  for (const Step& step : steps) {
    SpectrumBasePeak& base = range.emplace_back();
    base.Peak.Ampl = step.ampl;
    WMZPeakField(base.Peak, MZPeakField::Res, step.resolution);
  }
  return range;
}

RampAlgorithmParams Params(std::uint32_t type, std::uint32_t percent = 1) {
  RampAlgorithmParams params;
  params.Type = type;
  params.Percent = percent;
  return params;
}

std::uint32_t BestOf(const std::vector<Step>& steps, std::uint32_t type, std::uint32_t percent = 1) {
  return RampCalcMZRangeBestIndexes({RangeOf(steps)}, Params(type, percent)).at(0);
}

std::uint32_t OverallBest(const std::vector<std::vector<Step>>& ranges, std::uint32_t type,
                          std::uint32_t percent = 1) {
  std::vector<Range> peaks;
  for (const auto& steps : ranges) peaks.push_back(RangeOf(steps));
  return RampCalcOverallBestIndex(peaks, Params(type, percent));
}

const std::vector<Step> kSteps = {{100, 1000}, {99.5, 1200}, {98, 1500}};

TEST(BestStepOfARange, IsChosenByItsType) {
  EXPECT_EQ(BestOf(kSteps, 0), 0u) << "highest amplitude";
  EXPECT_EQ(BestOf(kSteps, 1), 2u) << "highest resolution";
  EXPECT_EQ(BestOf(kSteps, 2), 2u) << "amplitude of those within 1 % of 1500";
  EXPECT_EQ(BestOf(kSteps, 3), 1u) << "resolution of those within 1 % of 100";
}

TEST(BestStepOfARange, WithoutAKnownTypeIsThatOfType3) {
  for (const std::uint32_t type : {4u, 7u, 4294967295u}) EXPECT_EQ(BestOf(kSteps, type), 1u);
}

TEST(BestStepOfARange, MayLieAsFarBelowTheBestAsThePercentAllow) {
  EXPECT_EQ(BestOf(kSteps, 3, 0), 0u);
  EXPECT_EQ(BestOf(kSteps, 3, 2), 2u) << "98 is within 2 %";
  EXPECT_EQ(BestOf(kSteps, 3, 100), 2u);
}

TEST(BestStepOfARange, IsTheFirstOfTheOrderWhereNoneReachesTheThreshold) {
  EXPECT_EQ(BestOf(kSteps, 3, 101), 2u) << "100 - 101 counts without a sign";
}

TEST(BestStepOfARange, IsTheHighestAmplitudeWhereThereIsNoResolution) {
  EXPECT_EQ(BestOf({{5, 0}, {7, 0}, {6, 0}}, 2), 1u);
}

TEST(BestStepOfARange, HasAThresholdOf0WhereNothingIsAbove) {
  EXPECT_EQ(BestOf({{-5, 10}, {-3, 20}, {0, 5}}, 3), 2u);
}

TEST(BestStepOfARange, IsTheFirstOfEqualOnes) {
  for (std::uint32_t type = 0; type < 4; ++type) {
    EXPECT_EQ(BestOf({{5, 9}, {5, 9}, {5, 9}}, type), 0u) << type;
    EXPECT_EQ(BestOf({{1, 1}, {5, 9}, {5, 9}}, type), 1u) << type;
  }
}

TEST(BestStepOfARange, OfEqualOnesIsTheBestInTheOther) {
  EXPECT_EQ(BestOf({{99.5, 9}, {100, 9}, {99.9, 9}}, 3), 1u);
  EXPECT_EQ(BestOf({{9, 99.5}, {9, 100}, {9, 99.9}}, 2), 1u);
}

TEST(BestStepOfARange, IsNeverOneWithoutANumber) {
  const double nan = std::nan("");
  for (std::uint32_t type = 0; type < 4; ++type) EXPECT_EQ(BestOf({{nan, nan}, {5, 9}}, type), 1u) << type;
}

TEST(BestStepOfARange, IsFoundForEachRange) {
  EXPECT_EQ(RampCalcMZRangeBestIndexes({RangeOf(kSteps), RangeOf({{1, 1}, {2, 1}, {3, 1}})}, Params(0)),
            (std::vector<std::uint32_t>{0, 2}));
  EXPECT_TRUE(RampCalcMZRangeBestIndexes({}, Params(0)).empty());
}

TEST(OverallBestStep, IsTheBestOfTheSum) {
  EXPECT_EQ(OverallBest({{{10, 0}, {9, 0}}, {{1, 0}, {5, 0}}}, 0, 100), 1u);
  EXPECT_EQ(OverallBest({{{0, 10}, {0, 9}}, {{0, 1}, {0, 5}}}, 1, 100), 1u);
}

TEST(OverallBestStep, LeavesNoRangeFarBehind) {
  // The first step has the larger sum, but a hundredth of what the second range can give.
  const std::vector<std::vector<Step>> ranges = {{{1000, 0}, {900, 0}}, {{1, 0}, {100, 0}}};
  EXPECT_EQ(OverallBest(ranges, 0, 20), 1u);
  EXPECT_EQ(OverallBest(ranges, 0, 99), 0u);
}

TEST(OverallBestStep, WithoutAKnownTypeIsThatOfType0) {
  const std::vector<std::vector<Step>> ranges = {kSteps, {{100, 10}, {99.5, 20}, {98, 30}}};
  EXPECT_EQ(OverallBest(ranges, 0), 0u);
  EXPECT_EQ(OverallBest(ranges, 3), 1u);
  for (const std::uint32_t type : {4u, 7u, 4294967295u}) EXPECT_EQ(OverallBest(ranges, type), 0u);
}

TEST(OverallBestStep, IsTheBestOfTheSumWhereNoneReachesTheThreshold) {
  EXPECT_EQ(OverallBest({{{10, 0}, {1, 0}}, {{1, 0}, {9, 0}}}, 0, 1), 0u);
}

TEST(OverallBestStep, IsTheFirstOfEqualOnes) {
  EXPECT_EQ(OverallBest({{{5, 9}, {5, 9}}, {{5, 9}, {5, 9}}}, 3), 0u);
}

TEST(OverallBestStep, IsTheBestOfTheSumWhereNoShareIsLeft) {
  EXPECT_EQ(OverallBest({{{10, 0}, {12, 0}}, {{1, 0}, {1, 0}}}, 0, 101), 1u);
}

TEST(OverallBestStep, IsNeverOneWithoutANumber) {
  const double nan = std::nan("");
  EXPECT_EQ(OverallBest({{{nan, nan}, {5, 9}}, {{7, 7}, {6, 6}}}, 0, 50), 1u);
}

TEST(RampResults, OfRangesOfDifferentLengthAreRefused) {
  const std::vector<Range> peaks = {RangeOf(kSteps), RangeOf({{1, 1}})};
  EXPECT_THROW(RampCalcMZRangeBestIndexes(peaks, Params(0)), std::invalid_argument);
  EXPECT_THROW(RampCalcOverallBestIndex(peaks, Params(0)), std::invalid_argument);
}

TEST(RampResults, WithoutStepsAreRefused) {
  EXPECT_THROW(RampCalcMZRangeBestIndexes({{}}, Params(0)), std::invalid_argument);
  EXPECT_THROW(RampCalcOverallBestIndex({{}}, Params(0)), std::invalid_argument);
  EXPECT_THROW(RampCalcOverallBestIndex({}, Params(0)), std::invalid_argument);
}

// ---- Held against the choice by an ordered set --------------------------------------------

using Values = std::vector<double>;

std::uint32_t SlowSelect(const Values& x, const Values& y, double threshold) {
  std::set<std::tuple<double, double, std::uint32_t>> ordered;
  for (std::uint32_t i = 0; i < x.size(); ++i) ordered.insert({-x[i], -y[i], i});
  for (const auto& [minusX, minusY, index] : ordered)
    if (!(-minusY < threshold)) return index;
  return std::get<2>(*ordered.begin());
}

Values Part(const Range& range, bool resolution) {
  Values values;
  for (const SpectrumBasePeak& step : range)
    values.push_back(QMZPeakField(step.Peak, resolution ? MZPeakField::Res : MZPeakField::Ampl));
  return values;
}

std::uint32_t SlowOverall(const std::vector<Range>& peaks, std::uint32_t type, std::uint32_t percent) {
  const bool summed = type == 1 || type == 3;
  const bool floored = type == 1 || type == 2;
  Values sum(peaks[0].size(), 0.0);
  Values floor(peaks[0].size(), std::numeric_limits<double>::infinity());
  for (const Range& range : peaks) {
    const Values p = Part(range, summed);
    const Values q = TslMath::Normalize(Part(range, floored));
    for (std::size_t i = 0; i < sum.size(); ++i) {
      sum[i] += p[i];
      floor[i] = std::min(floor[i], q[i]);
    }
  }
  return SlowSelect(sum, floor, (100 - percent) / 100.0);
}

std::uint32_t SlowRange(const Range& range, std::uint32_t type, std::uint32_t percent) {
  const Values a = Part(range, false);
  const Values r = Part(range, true);
  if (type == 0) return SlowSelect(a, Values(a.size(), 0.0), 0.0);
  if (type == 1) return SlowSelect(r, Values(r.size(), 0.0), 0.0);
  const Values& x = type == 2 ? a : r;
  const Values& y = type == 2 ? r : a;
  double largest = 0.0;
  for (const double value : y) largest = std::max(largest, value);
  return SlowSelect(x, y, largest * (100 - percent) / 100);
}

TEST(RampResults, AreThoseOfAnOrderedSet) {
  std::mt19937 random(20);
  const auto below = [&](std::uint32_t n) { return static_cast<std::uint32_t>(random() % n); };
  for (int trial = 0; trial < 5000; ++trial) {
    std::vector<Range> peaks(1 + below(4));
    const std::uint32_t steps = 1 + below(8);
    for (Range& range : peaks) {
      std::vector<Step> values(steps);
      // Few values, so that many are equal.
      for (Step& step : values) step = {90.0 + below(11), 1000.0 + 10 * below(11)};
      range = RangeOf(values);
    }
    const std::uint32_t type = below(4);
    const std::uint32_t percent = below(12);
    const auto best = RampCalcMZRangeBestIndexes(peaks, Params(type, percent));
    for (std::size_t r = 0; r < peaks.size(); ++r)
      ASSERT_EQ(best[r], SlowRange(peaks[r], type, percent)) << "trial " << trial;
    ASSERT_EQ(RampCalcOverallBestIndex(peaks, Params(type, percent)), SlowOverall(peaks, type, percent))
        << "trial " << trial;
  }
}

}  // namespace
