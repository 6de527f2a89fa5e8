// Tests: APBNoise.cpp, BaselineAndNoise.cpp, StandardDeviation.cpp.
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <gmock/gmock.h>

#include <OracleTable.h>
#include <numeric>

#include <closed/math/baseline/BaselineCheck.h>

using namespace tests;
using namespace TslMath;
using testing::Each;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint32_t kHuge = std::numeric_limits<std::uint32_t>::max();

Samples Ratios(const SimulatedSpectrum& spectrum, Samples noise) {
  for (std::size_t i = 0; i < noise.size(); ++i) noise[i] /= spectrum.TrueNoise(i);
  std::sort(noise.begin(), noise.end());
  return noise;
}

// Sorted values at a part of their way.
double Quantile(const Samples& sorted, double part) {
  return sorted[static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1))];
}

Samples NormalNoise(std::size_t n, double sd) {
  std::mt19937_64 random(9);
  std::normal_distribution<double> normal(100, sd);
  Samples y(n);
  for (double& v : y) v = normal(random);
  return y;
}

double Mean(const Samples& y) {
  return std::accumulate(y.begin(), y.end(), 0.0) / static_cast<double>(y.size());
}

class EveryNoise : public testing::TestWithParam<Algorithm> {
 protected:
  Samples Of(const Samples& y) const { return GetParam().run(y); }
};
INSTANTIATE_TEST_SUITE_P(Noise, EveryNoise, testing::ValuesIn(kNoises), NameOf);

TEST_P(EveryNoise, OfCountsIsThatOfTheirBackground) {
  for (const SpectrumRecipe& recipe : {SpectrumRecipe{Background::Flat, 5, 0.1},
                                       {Background::Flat, 5, 0.2},
                                       {Background::Slope, 0, 0.2},
                                       {Background::Hump, 0, 0.2}}) {
    const SimulatedSpectrum spectrum = Simulate(recipe, 2000);
    const Samples ratios = Ratios(spectrum, Of(spectrum.y));
    EXPECT_NEAR(Quantile(ratios, 0.5), 1, 0.07);
    EXPECT_GE(Quantile(ratios, 0.05), 0.85);
    EXPECT_LE(Quantile(ratios, 0.95), 1.2);
  }
}

TEST_P(EveryNoise, OfNormalNoiseIsItsStandardDeviation) {
  EXPECT_NEAR(Mean(Of(NormalNoise(20000, 2))), 2, 0.05);
}

TEST_P(EveryNoise, OfAConstantIsZero) {
  for (double level : AnyLevels()) EXPECT_THAT(Of(Samples(3000, level)), Each(0.0)) << level;
}

TEST_P(EveryNoise, OfNearlyEmptyCountsIsHalfACount) {
  Samples y(3000, 0.0);
  y[77] = y[1500] = 1;
  EXPECT_THAT(Of(y), Each(0.5));
}

TEST_P(EveryNoise, ScalesWithTheData) {
  Samples y = UsualSpectrum().y;
  Samples expected = Of(y);
  for (double& v : y) v *= 0.01;
  for (double& v : expected) v *= 0.01;
  EXPECT_LE(WorstDifference(Of(y), expected), 1e-12);
}

TEST_P(EveryNoise, DoesNotSeeAConstant) {
  Samples y = UsualSpectrum().y;
  const Samples expected = Of(y);
  for (double& v : y) v += 1000;
  EXPECT_LE(WorstDifference(Of(y), expected), 1e-10);
}

TEST_P(EveryNoise, OfALongCurveIsThatOfItsParts) { EXPECT_LE(DifferenceOnLastPoints(GetParam()), 1e-9); }

TEST_P(EveryNoise, OfNoPointsIsEmpty) { EXPECT_TRUE(Of({}).empty()); }

TEST_P(EveryNoise, OfOneAndTwoPointsIsHalfTheirStep) {
  EXPECT_THAT(Of({4}), Each(0.0));
  EXPECT_THAT(Of({4, 3}), Each(0.5));
}

TEST_P(EveryNoise, StaysFiniteAroundSamplesThatAreNotFinite) {
  Samples y = UsualSpectrum().y;
  y[3] = y[10000] = y[10001] = kNaN;
  EXPECT_TRUE(AllFinite(Of(y)));
}

TEST_P(EveryNoise, SurvivesACurveOfNothingFinite) { EXPECT_EQ(Of(Samples(700, kNaN)).size(), 700U); }

// One segment and no rejection. `/usr/bin/python3 tests/oracles/baseline_noise.py`
TEST(LinearFitSDNoise, OfOneSegmentWithoutRejectionIsTheSpreadAboutTheLeastSquaresLine) {
  const OracleTable oracle("line_fit.csv");
  const Samples& y = oracle["y"];
  Samples found(y.size());
  LinearFitSDNoise(y.data(), Size(y), 1000, 5, 1000000, found.data());
  EXPECT_LE(WorstDifference(found, oracle["sd"]), 1e-11);
}

TEST(LinearFitSDNoise, HoldsForEveryRejectionLimit) {
  const Samples y = NormalNoise(20000, 2);
  Samples found(y.size());
  for (std::uint32_t width : {2U, 3U, 4U, 5U}) {
    LinearFitSDNoise(y.data(), Size(y), 250, 5, width, found.data());
    EXPECT_NEAR(Mean(found), 2, 0.1) << width;
  }
}

// Neighbours agree after smoothing, and a limit for the mean of independent points would reject most of them.
TEST(LinearFitSDNoise, OfSmoothedNoiseIsItsOwnStandardDeviation) {
  const Samples y = NormalNoise(20000, 2);
  Samples smooth(y.size()), found(y.size());
  SmoothGaussian(y.data(), Size(y), 0, Size(y), 5, smooth.data());
  LinearFitSDNoise(smooth.data(), Size(y), 250, 5, 3, found.data());
  EXPECT_NEAR(Mean(found) / StandardDeviation(smooth.data(), Size(y)), 1, 0.08);
}

// Noise 2, and 6 in the points 2500 .. 2749, which are one segment.
Samples OneSpoiltSegment() {
  Samples y = NormalNoise(5000, 2);
  for (std::size_t i = 2500; i < 2750; ++i) y[i] = 100 + 3 * (y[i] - 100);
  return y;
}

TEST(APBNoise, DispersionShowsASpoiltSegment) {
  EXPECT_NEAR(DispersionNoise(OneSpoiltSegment())[2625], 6, 1);
}

TEST(APBNoise, MedianReachesEachOfManySegments) {
  Samples y = NormalNoise(700000, 2);
  Samples last(y.end() - 8000, y.end());
  Samples whole(y.size()), part(last.size());
  APBNoise(nullptr, y.data(), Size(y), 10, 5, whole.data());
  APBNoise(nullptr, last.data(), Size(last), 10, 5, part.data());
  for (std::size_t i = 3000; i < 5000; ++i)
    ASSERT_NEAR(whole[y.size() - i], part[last.size() - i], 1e-9) << i;
}

TEST(APBNoise, MedianTakesOutASpoiltSegment) { EXPECT_NEAR(MedianNoise(OneSpoiltSegment())[2625], 2, 0.3); }

// 5 counts up to the gap, 50 beyond.
struct GappedSpectrum {
  Samples x, y;
  explicit GappedSpectrum(double gap) {
    const SimulatedSpectrum low = Simulate({Background::Flat, 5, 0}, 1, 3000);
    const SimulatedSpectrum high = Simulate({Background::Flat, 50, 0}, 2, 3100);
    x = low.x;
    y = low.y;
    for (double v : high.x) x.push_back(low.x.back() + gap + v - 100);
    y.insert(y.end(), high.y.begin(), high.y.end());
  }
  Samples Noise() {
    Samples out(y.size());
    APBNoise(x.data(), y.data(), Size(y), 250, 0, out.data());
    return out;
  }
};

Samples NoiseOn(Samples x, Samples y) {
  Samples out(y.size());
  APBNoise(x.data(), y.data(), Size(y), 250, 0, out.data());
  return out;
}

// Steps of 1, and `gap` in front of the point `at`.
Samples AxisWithGap(std::size_t n, std::size_t at, double gap) {
  Samples x(n);
  for (std::size_t i = 0; i < n; ++i) x[i] = static_cast<double>(i) + (i < at ? 0 : gap - 1);
  return x;
}

TEST(APBNoise, TreatsThePartsBesideAGapEachForItself) {
  GappedSpectrum whole(1);
  const Samples noise = whole.Noise();
  const Samples left = DispersionNoise(Samples(whole.y.begin(), whole.y.begin() + 3000));
  const Samples right = DispersionNoise(Samples(whole.y.begin() + 3000, whole.y.end()));
  EXPECT_EQ(Samples(noise.begin(), noise.begin() + 3000), left);
  EXPECT_EQ(Samples(noise.begin() + 3000, noise.end()), right);
}

TEST(APBNoise, TakesAStepOfThreeForNoGap) {
  GappedSpectrum whole(0.15);
  EXPECT_EQ(whole.Noise(), DispersionNoise(whole.y));
}

TEST(APBNoise, FindsAGapWhereverItIs) {
  const Samples y = NormalNoise(61, 2);
  for (std::size_t at = 1; at < y.size(); ++at) {
    const auto cut = y.begin() + static_cast<std::ptrdiff_t>(at);
    Samples expected = DispersionNoise(Samples(y.begin(), cut));
    const Samples right = DispersionNoise(Samples(cut, y.end()));
    expected.insert(expected.end(), right.begin(), right.end());
    EXPECT_EQ(NoiseOn(AxisWithGap(y.size(), at, 4.5), y), expected) << at;
    EXPECT_EQ(NoiseOn(AxisWithGap(y.size(), at, 4), y), DispersionNoise(y)) << at;
  }
}

TEST(APBNoise, ReadsAFallingAxisAsARisingOne) {
  GappedSpectrum spectrum(1);
  const Samples rising = spectrum.Noise();
  for (double& v : spectrum.x) v = -v;
  EXPECT_EQ(spectrum.Noise(), rising);
}

TEST(APBNoise, TakesAnAxisWithoutSteps) {
  GappedSpectrum spectrum(1);
  std::fill(spectrum.x.begin(), spectrum.x.end(), 3.0);
  EXPECT_EQ(spectrum.Noise(), DispersionNoise(spectrum.y));
}

TEST(APBNoise, TakesAnAxisOfNoNumbers) {
  GappedSpectrum spectrum(1);
  std::fill(spectrum.x.begin(), spectrum.x.end(), kNaN);
  EXPECT_EQ(spectrum.Noise(), DispersionNoise(spectrum.y));
}

TEST(APBNoise, LeavesTheDataAlone) {
  GappedSpectrum spectrum(1);
  const GappedSpectrum before = spectrum;
  spectrum.Noise();
  EXPECT_EQ(spectrum.x, before.x);
  EXPECT_EQ(spectrum.y, before.y);
}

constexpr std::uint32_t kAnyParameter[] = {0, 1, 2, 3, 8, 250, 4000, kHuge - 1, kHuge};
constexpr std::size_t kAnyLength[] = {0, 1, 2, 3, 4, 5, 8, 9, 10, 16, 37, 600};

// With gaps all over the axis.
TEST(APBNoise, TakesAnyParameters) {
  for (std::size_t n : kAnyLength) {
    Samples x(n);
    for (std::size_t i = 0; i < n; ++i) x[i] = static_cast<double>(i + 40 * (i / 3));
    for (std::uint32_t segSize : kAnyParameter) {
      for (std::uint32_t median : kAnyParameter) {
        Samples y(UsualSpectrum().y.begin(), UsualSpectrum().y.begin() + static_cast<std::ptrdiff_t>(n));
        Samples out(n + 1, -1);
        APBNoise(x.data(), y.data(), Size(y), segSize, median, out.data());
        ASSERT_EQ(out.back(), -1) << n << " points: " << segSize << ", " << median;
        out.pop_back();
        ASSERT_TRUE(AllFinite(out)) << n << " points: " << segSize << ", " << median;
      }
    }
  }
}

// Exact arithmetic; `/usr/bin/python3 tests/oracles/baseline_noise.py`
TEST(StandardDeviation, KeepsItsDigitsOnALargeMean) {
  const OracleTable oracle("standard_deviation.csv");
  for (std::size_t row = 0; row < oracle["n"].size(); ++row) {
    const auto period = static_cast<std::size_t>(oracle["period"][row]);
    Samples y(static_cast<std::size_t>(oracle["n"][row]), oracle["offset"][row]);
    for (std::size_t i = 0; i < y.size(); i += period) y[i] += 1;
    const double expected = oracle["sd"][row];
    EXPECT_LE(std::abs(StandardDeviation(y.data(), Size(y)) / expected - 1), 1e-11)
        << y[1] << ", " << y.size() << " points, " << period;
  }
}

TEST(StandardDeviation, OfAConstantIsZero) {
  const Samples y(1001, 0.1);
  EXPECT_EQ(StandardDeviation(y.data(), Size(y)), 0);
}

TEST(StandardDeviation, OfLessThanTwoPointsIsZero) {
  const double y = 3;
  EXPECT_EQ(StandardDeviation(&y, 1), 0);
  EXPECT_EQ(StandardDeviation(&y, 0), 0);
}

TEST(StandardDeviation, OfDataThatAreNotFiniteIsNoNumber) {
  for (double bad : {kNaN, std::numeric_limits<double>::infinity()}) {
    const Samples y{1, 2, bad, 4, 5, 6, 7, 8, 9};
    EXPECT_TRUE(std::isnan(StandardDeviation(y.data(), Size(y)))) << bad;
  }
}

}  // namespace
