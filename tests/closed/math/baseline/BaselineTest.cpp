// Tests: BaselineAndNoise.cpp.
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>

#include <gmock/gmock.h>

#include <OracleTable.h>

#include <closed/math/baseline/BaselineCheck.h>

using namespace tests;
using namespace TslMath;
using testing::Each;
using testing::ElementsAre;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::uint32_t kHuge = std::numeric_limits<std::uint32_t>::max();
// Standard deviation of the usual spectrum's background.
const double kUsualNoise = std::sqrt(5.0);

class EveryBaseline : public testing::TestWithParam<Algorithm> {
 protected:
  Samples Of(const Samples& y) const { return GetParam().run(y); }
};
INSTANTIATE_TEST_SUITE_P(Baseline, EveryBaseline, testing::ValuesIn(kBaselines), NameOf);

TEST_P(EveryBaseline, OfAConstantIsTheConstant) {
  for (double level : AnyLevels()) {
    for (std::size_t n : {3U, 14U, 251U, 3000U}) EXPECT_THAT(Of(Samples(n, level)), Each(level)) << n;
  }
}

TEST_P(EveryBaseline, OfAStraightLineIsTheLine) {
  for (std::size_t n : {3U, 4U, 5U, 7U, 9U, 14U, 40U, 251U, 3000U}) {
    const Samples line = Line(n, 5, 0.01);
    EXPECT_LE(WorstDifference(Of(line), line), 1e-12) << n << " points";
  }
}

TEST_P(EveryBaseline, OfAFallingLineIsTheLine) {
  const Samples line = Line(3000, 100, -0.03);
  EXPECT_LE(WorstDifference(Of(line), line), 1e-12);
}

TEST_P(EveryBaseline, OfTwoPointsIsTheirMinimum) { EXPECT_THAT(Of({4, 3}), ElementsAre(3, 3)); }

TEST_P(EveryBaseline, OfOnePointIsThePoint) { EXPECT_THAT(Of({4}), ElementsAre(4)); }

TEST_P(EveryBaseline, OfNoPointsIsEmpty) { EXPECT_TRUE(Of({}).empty()); }

TEST_P(EveryBaseline, RisesWithAConstant) {
  Samples y = UsualSpectrum().y;
  Samples expected = Of(y);
  for (double& v : y) v += 1000;
  for (double& v : expected) v += 1000;
  EXPECT_LE(WorstDifference(Of(y), expected), 1e-10);
}

TEST_P(EveryBaseline, ScalesWithTheData) {
  for (double factor : {0.01, 1000.0}) {
    Samples y = UsualSpectrum().y;
    Samples expected = Of(y);
    for (double& v : y) v *= factor;
    for (double& v : expected) v *= factor;
    EXPECT_LE(WorstDifference(Of(y), expected), 1e-12 * factor * 20000) << factor;
  }
}

// Its shape sees a tilted spectrum otherwise, but only within the noise.
TEST_P(EveryBaseline, TiltsWithALineWithinAFractionOfTheNoise) {
  Samples y = UsualSpectrum().y;
  Samples expected = Of(y);
  const Samples line = Line(y.size(), 0, 0.01);
  for (std::size_t i = 0; i < y.size(); ++i) {
    y[i] += line[i];
    expected[i] += line[i];
  }
  EXPECT_LE(RmsDifference(Of(y), expected), 0.15 * kUsualNoise);
}

TEST(LinearFitSDBaseline, TiltsExactlyWithALine) {
  Samples y = UsualSpectrum().y;
  Samples expected = LinearFit(y);
  const Samples line = Line(y.size(), 0, 0.01);
  for (std::size_t i = 0; i < y.size(); ++i) {
    y[i] += line[i];
    expected[i] += line[i];
  }
  EXPECT_LE(WorstDifference(LinearFit(y), expected), 1e-6);
}

TEST_P(EveryBaseline, OfTheMirroredSpectrumIsMirrored) {
  const Samples& y = UsualSpectrum().y;
  EXPECT_LE(WorstDifference(Mirrored(Of(Mirrored(y))), Of(y)), 0.05 * kUsualNoise);
}

TEST_P(EveryBaseline, OfALongCurveIsThatOfItsParts) { EXPECT_LE(DifferenceOnLastPoints(GetParam()), 1e-9); }

TEST_P(EveryBaseline, StaysAtTheLevelBelowAPeakWiderThanASegment) {
  Samples y(5000, 5.0);
  for (double& v : y) v += static_cast<double>((&v - y.data()) % 2);
  const Samples quiet = y;
  for (std::size_t i = 2480; i < 2780; ++i) y[i] += 1000;
  EXPECT_LE(WorstDifference(Of(y), Of(quiet)), 0.5);
}

TEST_P(EveryBaseline, FollowsASteepStart) {
  std::mt19937_64 random(5);
  Samples truth, y;
  for (int i = 0; i < 6000; ++i) {
    truth.push_back(5 + 600 * std::exp(-i / 400.0));
    y.push_back(std::poisson_distribution<int>(truth.back())(random));
  }
  const Samples found = Of(y);
  for (std::size_t i = 0; i < y.size(); ++i) {
    ASSERT_LE(std::abs(found[i] - truth[i]), 1.5 * std::sqrt(truth[i])) << "point " << i;
  }
}

TEST_P(EveryBaseline, StaysFiniteAroundSamplesThatAreNotFinite) {
  for (double bad : {kNaN, kInfinity, -kInfinity}) {
    Samples y = UsualSpectrum().y;
    y[3] = y[10000] = y[10001] = bad;
    const Samples found = Of(y);
    EXPECT_TRUE(AllFinite(found)) << bad;
    EXPECT_NEAR(found[15000], Of(UsualSpectrum().y)[15000], kUsualNoise) << bad;
  }
}

TEST_P(EveryBaseline, SurvivesACurveOfNothingFinite) {
  for (double bad : {kNaN, kInfinity, -kInfinity, 1e308}) {
    EXPECT_EQ(Of(Samples(700, bad)).size(), 700U);
  }
}

TEST(LinearFitSDBaseline, FindsTheLineUnderPeaks) {
  const Samples line = Line(3000, 5, 0.01);
  EXPECT_LE(WorstDifference(LinearFit(WithPeaks(line)), line), 2e-4);
}

// Their shapes are steps or a polygon, and without noise nothing tells how far to correct them: the line
// rises by 1.25 within half a segment.
TEST(APBMorph, IsWithinHalfASegmentsRiseUnderPeaksWithoutNoise) {
  const Samples line = Line(3000, 5, 0.01);
  EXPECT_LE(WorstDifference(Adaptive(WithPeaks(line)), line), 1.25);
}

TEST(VFBaseline, IsWithinHalfASegmentsRiseUnderPeaksWithoutNoise) {
  const Samples line = Line(3000, 5, 0.01);
  EXPECT_LE(WorstDifference(ValleyFollowing(WithPeaks(line)), line), 1.25);
}

// One segment and no rejection. `/usr/bin/python3 tests/oracles/baseline_noise.py`
TEST(LinearFitSDBaseline, OfOneSegmentWithoutRejectionIsTheLeastSquaresLine) {
  const OracleTable oracle("line_fit.csv");
  const Samples& y = oracle["y"];
  Samples found(y.size());
  LinearFitSDBaseline(y.data(), Size(y), 1000, 5, 1000000, found.data());
  EXPECT_LE(WorstDifference(found, oracle["line"]), 1e-11);
}

TEST(LinearFitSDBaseline, IsContinuous) {
  const Samples found = LinearFit(Simulate({Background::Hump, 0, 0.3}, 5).y);
  for (std::size_t i = 1; i < found.size(); ++i) ASSERT_LE(std::abs(found[i] - found[i - 1]), 0.5) << i;
}

TEST(LinearFitSDBaseline, CountsAnEvenNumberOfPointsAsTheNextOddOne) {
  const Samples& y = UsualSpectrum().y;
  Samples even(y.size()), odd(y.size());
  LinearFitSDBaseline(y.data(), Size(y), 250, 4, 3, even.data());
  LinearFitSDBaseline(y.data(), Size(y), 250, 5, 3, odd.data());
  EXPECT_EQ(even, odd);
}

TEST(LinearFitSDBaseline, LengthensSegmentsThatAreTooShortToJudge) {
  const Samples& y = UsualSpectrum().y;
  Samples tooShort(y.size()), shortest(y.size());
  LinearFitSDBaseline(y.data(), Size(y), 3, 25, 3, tooShort.data());
  LinearFitSDBaseline(y.data(), Size(y), 50, 25, 3, shortest.data());
  EXPECT_EQ(tooShort, shortest);
}

// More segments than 16 bits count.
TEST(LinearFitSDBaseline, OfAStraightLineInVeryManySegmentsIsTheLine) {
  const Samples line = Line(700000, 5, 0.001);
  Samples found(line.size());
  LinearFitSDBaseline(line.data(), Size(line), 8, 1, 3, found.data());
  EXPECT_LE(WorstDifference(found, line), 1e-9);
}

// A long neighbourhood is averaged by other means than a short one.
TEST(LinearFitSDBaseline, KeepsALineForAnyNeighbourhood) {
  const Samples line = Line(3000, 5, 0.01);
  for (std::uint32_t points : {1U, 3U, 15U, 17U, 64U, 101U, 999U, 1000U, 3000U, kHuge}) {
    Samples found(line.size());
    LinearFitSDBaseline(line.data(), Size(line), 250, points, 3, found.data());
    EXPECT_LE(WorstDifference(found, line), 1e-11) << points;
  }
}

// A result with a mark behind its end.
template <class Run>
bool IsFiniteAndInBounds(std::size_t n, Run run) {
  constexpr double kMark = -12345;
  Samples y(UsualSpectrum().y.begin(), UsualSpectrum().y.begin() + static_cast<std::ptrdiff_t>(n));
  Samples out(n + 1, kMark);
  run(y.data(), static_cast<std::uint32_t>(n), out.data());
  return AllFinite(out) && out.back() == kMark;
}

constexpr std::uint32_t kAnyParameter[] = {0, 1, 2, 3, 8, 250, 4000, kHuge - 1, kHuge};
constexpr std::size_t kAnyLength[] = {0, 1, 2, 3, 4, 5, 8, 9, 10, 16, 37, 600};

TEST(LinearFitSDBaseline, TakesAnyParameters) {
  for (std::size_t n : kAnyLength) {
    for (std::uint32_t segSize : kAnyParameter) {
      for (std::uint32_t points : kAnyParameter) {
        for (std::uint32_t width : kAnyParameter) {
          ASSERT_TRUE(IsFiniteAndInBounds(n,
                                          [&](const double* y, std::uint32_t size, double* out) {
                                            LinearFitSDBaseline(y, size, segSize, points, width, out);
                                          }))
              << n << " points: " << segSize << ", " << points << ", " << width;
        }
      }
    }
  }
}

TEST(APBMorph, TakesAnyParameters) {
  for (std::size_t n : kAnyLength) {
    for (std::uint32_t segSize : kAnyParameter) {
      for (std::uint32_t window : kAnyParameter) {
        ASSERT_TRUE(IsFiniteAndInBounds(n, [&](const double* y, std::uint32_t size,
                                               double* out) { APBMorph(y, size, segSize, window, out); }))
            << n << " points: " << segSize << ", " << window;
      }
    }
  }
}

TEST(VFBaseline, TakesAnyParameters) {
  for (std::size_t n : kAnyLength) {
    for (std::uint32_t segSize : kAnyParameter) {
      ASSERT_TRUE(IsFiniteAndInBounds(
          n, [&](const double* y, std::uint32_t size, double* out) { VFBaseline(y, size, segSize, out); }))
          << n << " points: " << segSize;
    }
  }
}

TEST(BaselineAndNoise, EqualTheSeparateResults) {
  const Samples& y = UsualSpectrum().y;
  const std::uint32_t n = Size(y);
  Samples baseline(n), noise(n);
  FitLinesSD(y.data(), n, 250, 5, 3, {baseline.data(), noise.data()});
  EXPECT_EQ(baseline, LinearFit(y));
  EXPECT_EQ(noise, LinearFitNoise(y));
  FollowValleys(y.data(), n, 250, {baseline.data(), noise.data()});
  EXPECT_EQ(baseline, ValleyFollowing(y));
  EXPECT_EQ(noise, ValleyFollowingNoise(y));
  OpenAdaptively(y.data(), n, 250, 25, {baseline.data(), noise.data()});
  EXPECT_EQ(baseline, Adaptive(y));
}

}  // namespace
