#include <tslbl/closed/math/smooth/Smoothing.h>

#include <algorithm>

#include <closed/math/smooth/FilterCheck.h>

using namespace tests;

namespace {

double PlainMean(const Samples& y, std::size_t i, std::size_t width) {
  const std::size_t half = std::min({width / 2, i, y.size() - 1 - i});
  const bool halfWeightEnds = width % 2 == 0 && half == width / 2;
  long double sum = 0;
  for (std::size_t k = i - half; k <= i + half; ++k) {
    const bool end = k == i - half || k == i + half;
    sum += (halfWeightEnds && end ? 0.5L : 1.0L) * y[k];
  }
  return static_cast<double>(sum / static_cast<long double>(halfWeightEnds ? 2 * half : 2 * half + 1));
}

TEST(SmoothMean, EqualsAPlainSumForEveryLengthAndWidth) {
  for (std::size_t n : Lengths{1, 2, 3, 5, 8, 37, 1500}) {
    for (std::uint32_t width : Numbers{1, 2, 3, 4, 5, 6, 7, 12, 16, 17, 18, 19, 20, 31, 64, 101, 2000}) {
      const Samples y = Noise(n);
      Samples expected(n);
      for (std::size_t i = 0; i < n; ++i) expected[i] = PlainMean(y, i, width);
      SCOPED_TRACE(width);
      ExpectNear(expected, Smooth(Mean(width), y), 1e-14);
    }
  }
}

TEST(SmoothMean, AgreesWithScipyWhereTheWindowIsWhole) {
  for (std::uint32_t width : Numbers{2, 5, 12, 17, 18, 19, 20, 101}) {
    ExpectOracle(Mean(width), "mean " + std::to_string(width), 1e-14);
  }
}

TEST(SmoothMean, KeepsConstantCountsToTheBit) {
  const Samples y(2000, 49.0);
  for (std::uint32_t width : Numbers{2, 3, 6, 7, 13, 49, 98, 501})
    EXPECT_EQ(y, Smooth(Mean(width), y)) << width;
}

TEST(SmoothMean, WeighsTheOuterPointsOfAnEvenWidthHalf) {
  const Samples weights = Weights(Mean(4), 21);
  EXPECT_EQ(Samples({0, 0.125, 0.25, 0.25, 0.25, 0.125, 0}),
            Samples(weights.begin() + 7, weights.begin() + 14));
}

TEST(SmoothMean, TakesAPlainMeanWhereAnEvenWindowIsCut) {
  EXPECT_EQ(Samples({3, 4, 6, 9, 3}), Smooth(Mean(6), {3, 0, 9, 15, 3}));
}

TEST(SmoothMean, LowersWhiteNoiseByTheRootOfAnOddWidth) {
  for (std::uint32_t width : Numbers{3, 5, 17, 19, 101})
    EXPECT_NEAR(1 / std::sqrt(width), NoiseGain(Mean(width)), 1e-14);
}

TEST(SmoothMean, LowersWhiteNoiseWithAnEvenWidth) {
  for (double width : {2.0, 6.0, 18.0, 20.0, 100.0}) {
    EXPECT_NEAR(std::sqrt(width - 0.5) / width, NoiseGain(Mean(static_cast<std::uint32_t>(width))), 1e-14);
  }
}

}  // namespace
