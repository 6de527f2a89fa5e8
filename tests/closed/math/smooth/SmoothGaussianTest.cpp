#include <tslbl/closed/math/smooth/Smoothing.h>

#include <tslbl/closed/math/peak/SplinePeak.h>
#include <algorithm>
#include <numeric>

#include <closed/math/smooth/FilterCheck.h>

using namespace tests;

namespace {

constexpr double kFwhmPerSigma = 2.3548200450309493;

double PlainGaussian(const Samples& y, std::size_t i, double width) {
  const double sigma = width / kFwhmPerSigma;
  const auto reach = static_cast<std::size_t>(std::ceil(4.5 * sigma));
  const std::size_t half = std::min({reach, i, y.size() - 1 - i});
  long double sum = 0;
  long double area = 0;
  for (std::size_t k = i - half; k <= i + half; ++k) {
    const long double u = (static_cast<long double>(k) - static_cast<long double>(i)) / sigma;
    sum += std::exp(-0.5L * u * u) * y[k];
    area += std::exp(-0.5L * u * u);
  }
  return static_cast<double>(sum / area);
}

Samples GaussianPeak(double fwhm, std::size_t n) {
  const double centre = static_cast<double>(n) / 2 + 0.3;
  return Tabulate(n, [=](double i) {
    const double u = (i - centre) / (fwhm / kFwhmPerSigma);
    return 1000 * std::exp(-0.5 * u * u);
  });
}

double HalfHeightWidth(const Samples& y) {
  const Samples x = Tabulate(y.size(), [](double i) { return i; });
  double left = 0;
  double right = 0;
  TslMath::SplinePeak(x.data(), y.data(), Size(y)).HalfHeightPeakWidth(0, left, right);
  return right - left;
}

TEST(SmoothGaussian, EqualsAPlainSumForEveryLengthAndWidth) {
  for (std::size_t n : Lengths{1, 2, 3, 5, 8, 37, 700}) {
    for (std::uint32_t width : Numbers{2, 3, 4, 5, 6, 7, 12, 31, 64, 101, 2000}) {
      const Samples y = Noise(n);
      Samples expected(n);
      for (std::size_t i = 0; i < n; ++i) expected[i] = PlainGaussian(y, i, width);
      SCOPED_TRACE(width);
      ExpectNear(expected, Smooth(Gaussian(width), y), 1e-13);
    }
  }
}

TEST(SmoothGaussian, AgreesWithScipyWhereTheWindowIsWhole) {
  for (std::uint32_t width : Numbers{3, 5, 7, 12, 30}) {
    ExpectOracle(Gaussian(width), "gaussian " + std::to_string(width), 1e-13);
  }
}

TEST(SmoothGaussian, AddsItsWidthToThatOfAPeakInSquares) {
  for (std::uint32_t width : Numbers{3, 5, 7, 9, 12, 15, 20, 30, 60}) {
    const double expected = std::sqrt(144.0 + width * width);
    EXPECT_NEAR(expected, HalfHeightWidth(Smooth(Gaussian(width), GaussianPeak(12, 601))), 0.002 * expected)
        << width;
  }
}

TEST(SmoothGaussian, KeepsTheAreaOfAPeak) {
  const Samples y = GaussianPeak(12, 601);
  const Samples smoothed = Smooth(Gaussian(7), y);
  const double area = std::accumulate(y.begin(), y.end(), 0.0);
  EXPECT_NEAR(area, std::accumulate(smoothed.begin(), smoothed.end(), 0.0), 1e-12 * area);
}

TEST(SmoothGaussian, LowersWhiteNoiseByTheKernelsFormula) {
  EXPECT_NEAR(0.3645, NoiseGain(Gaussian(5)), 5e-5);
  EXPECT_NEAR(0.3081, NoiseGain(Gaussian(7)), 5e-5);
  EXPECT_NEAR(1 / std::sqrt(2 * std::sqrt(M_PI) * 60 / kFwhmPerSigma), NoiseGain(Gaussian(60)), 1e-4);
}

}  // namespace
