// Tests: PolynomialBasis.cpp, SymmetricFilter.cpp.
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <closed/math/smooth/FilterCheck.h>

using namespace tests;

namespace {

// A polynomial of exactly this degree that stays within -1 .. 1 on the curve.
Samples Chebyshev(std::size_t n, int degree) {
  const double last = static_cast<double>(n - 1);
  return Tabulate(
      n, [=](double i) { return std::cos(degree * std::acos(std::clamp(2 * i / last - 1, -1.0, 1.0))); });
}

TEST(SmoothSavitzkyGolay, AgreesWithScipyEndsIncluded) {
  ExpectOracle(SavitzkyGolay(5, 2), "savgol 5 2", 1e-11);
  ExpectOracle(SavitzkyGolay(7, 3), "savgol 7 3", 1e-11);
  ExpectOracle(SavitzkyGolay(25, 4), "savgol 25 4", 1e-11);
  ExpectOracle(SavitzkyGolay(239, 2), "savgol 239 2", 1e-11);
  ExpectOracle(SavitzkyGolay(11, 0), "savgol 11 0", 1e-11);
  ExpectOracle(SavitzkyGolay(9, 7), "savgol 9 7", 1e-11);
}

TEST(SmoothSavitzkyGolay, AgreesWithExactFractionsAtHighOrders) {
  ExpectOracle(SavitzkyGolay(101, 6), "exact savgol 101 6", 1e-11);
  ExpectOracle(SavitzkyGolay(51, 12), "exact savgol 51 12", 1e-11);
  ExpectOracle(SavitzkyGolay(31, 20), "exact savgol 31 20", 1e-11);
}

// 1/35 (-3 12 17 12 -3): A. Savitzky and M. Golay, 1964, table I.
TEST(SmoothSavitzkyGolay, HasThePublishedWeightsForFivePoints) {
  const Samples weights = Weights(SavitzkyGolay(5, 2), 21);
  const Samples published = {0, -3 / 35., 12 / 35., 17 / 35., 12 / 35., -3 / 35., 0};
  ExpectNear(published, Samples(weights.begin() + 7, weights.begin() + 14), 1e-15);
}

TEST(SmoothSavitzkyGolay, KeepsPolynomialsUpToItsOrder) {
  for (std::uint32_t width : Numbers{5, 7, 25, 101, 501}) {
    for (std::uint32_t order : Numbers{0, 1, 2, 3, 4, 6, 8, 12}) {
      for (std::uint32_t degree = 0; degree <= order; ++degree) {
        const Samples y = Chebyshev(700, static_cast<int>(degree));
        SCOPED_TRACE(testing::Message() << "width " << width << ", order " << order << ", degree " << degree);
        ExpectNear(y, Smooth(SavitzkyGolay(width, order), y), 1e-10);
      }
    }
  }
}

TEST(SmoothSavitzkyGolay, KeepsPolynomialsAtOrdersFarBeyondUse) {
  for (std::uint32_t order : Numbers{20, 40, 60, 98, 99}) {
    const Samples y = Chebyshev(400, static_cast<int>(order));
    SCOPED_TRACE(order);
    ExpectNear(y, Smooth(SavitzkyGolay(101, order), y), 1e-10);
  }
}

TEST(SmoothSavitzkyGolay, KeepsPolynomialsOnTheWholeCurve) {
  for (int degree : {0, 1, 2, 3, 4}) {
    const Samples y = Chebyshev(1001, degree);
    ExpectNear(y, Smooth(SavitzkyGolay(5000, 4), y), 1e-10);
  }
}

TEST(SmoothSavitzkyGolay, RoundsAnEvenWidthUp) {
  const Samples y = Noise(300);
  EXPECT_EQ(Smooth(SavitzkyGolay(25, 4), y), Smooth(SavitzkyGolay(24, 4), y));
}

TEST(SmoothSavitzkyGolay, TakesTheLargestOddWidthThatFits) {
  const Samples y = Noise(20);
  EXPECT_EQ(Smooth(SavitzkyGolay(19, 4), y), Smooth(SavitzkyGolay(20, 4), y));
  EXPECT_EQ(Smooth(SavitzkyGolay(19, 4), y), Smooth(SavitzkyGolay(1000, 4), y));
}

TEST(SmoothSavitzkyGolay, CopiesIfTheOrderPassesThroughEveryPoint) {
  const Samples y = Noise(300);
  for (std::uint32_t order : Numbers{6, 7, 4000000000}) EXPECT_EQ(y, Smooth(SavitzkyGolay(7, order), y));
  EXPECT_EQ(y, Smooth(SavitzkyGolay(299, 298), y));
  EXPECT_NE(y, Smooth(SavitzkyGolay(7, 5), y));
}

TEST(SmoothSavitzkyGolay, CopiesCurvesTooShortForItsOrder) {
  for (std::size_t n : Lengths{1, 2, 3, 4}) EXPECT_EQ(Noise(n), Smooth(SavitzkyGolay(25, 2), Noise(n)));
}

TEST(SmoothSavitzkyGolay, IsTheMeanInsideForOrdersZeroAndOne) {
  const Samples y = Noise(200);
  const Samples mean = Smooth(Mean(9), y);
  for (std::uint32_t order : Numbers{0, 1}) {
    const Samples smoothed = Smooth(SavitzkyGolay(9, order), y);
    for (std::size_t i = 4; i < 196; ++i) ASSERT_NEAR(mean[i], smoothed[i], 1e-12 * 1000);
  }
}

TEST(SmoothSavitzkyGolay, LowersWhiteNoiseByTheQuadraticsFormula) {
  for (double h : {2.0, 3.0, 12.0, 50.0}) {
    const double gain = std::sqrt(3 * (3 * h * h + 3 * h - 1) / ((2 * h - 1) * (2 * h + 1) * (2 * h + 3)));
    const auto width = static_cast<std::uint32_t>(2 * h + 1);
    EXPECT_NEAR(gain, NoiseGain(SavitzkyGolay(width, 2)), 1e-13);
    EXPECT_NEAR(gain, NoiseGain(SavitzkyGolay(width, 3)), 1e-13);
  }
}

TEST(SmoothSavitzkyGolay, LowersAnOrderThatWouldHaltTheInstrument) {
  const Samples y = Noise(10001);
  EXPECT_EQ(Smooth(SavitzkyGolay(10001, 99), y), Smooth(SavitzkyGolay(10001, 9000), y));
  EXPECT_NE(Smooth(SavitzkyGolay(10001, 97), y), Smooth(SavitzkyGolay(10001, 99), y));
}

}  // namespace
