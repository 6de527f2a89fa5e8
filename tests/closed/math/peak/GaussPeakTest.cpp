#include <tslbl/closed/math/peak/GaussPeak.h>

#include <gtest/gtest.h>

#include <cmath>

using TslMath::GaussPeak;

namespace {

const double kFwhmPerSigma = 2 * std::sqrt(2 * std::log(2));

double Height(double height, double centre, double sigma, double x) {
  return height * std::exp(-(x - centre) * (x - centre) / (2 * sigma * sigma));
}

// The trapezoidal rule converges faster than any power of the step on a Gaussian.
double SummedArea(double height, double sigma) {
  const double step = sigma / 8;
  double sum = 0;
  for (int k = -400; k <= 400; ++k) sum += Height(height, 0, sigma, k * step);
  return sum * step;
}

TEST(GaussPeak, TurnsFwhmIntoA3AndBack) {
  for (double fwhm : {1e-9, 0.6, 0.7, 12.0, 1e9}) {
    EXPECT_NEAR(fwhm, GaussPeak::A3_to_FWHM(GaussPeak::FWHM_to_A3(fwhm)), 1e-14 * fwhm);
    EXPECT_NEAR(fwhm / kFwhmPerSigma, GaussPeak::FWHM_to_A3(fwhm), 1e-14 * fwhm);
  }
  EXPECT_EQ(0, GaussPeak::FWHM_to_A3(0));
}

TEST(GaussPeak, HasTheAreaAboveItsOffset) {
  for (double sigma : {0.01, 0.3, 25.0}) {
    const double expected = SummedArea(1000, sigma);
    EXPECT_NEAR(expected, GaussPeak(1000, 500, sigma, 0).QArea(), 1e-14 * expected);
    EXPECT_NEAR(expected, GaussPeak(1000, 500, sigma, 77).QArea(), 1e-14 * expected);
  }
}

TEST(GaussPeak, IsHalfAsHighAtItsHalfHeightPoints) {
  const GaussPeak peak(80, 500, 0.3, 5);
  EXPECT_NEAR(40, Height(80, 500, 0.3, peak.QHalfHeightLeftX()), 1e-10);
  EXPECT_NEAR(40, Height(80, 500, 0.3, peak.QHalfHeightRightX()), 1e-10);
  EXPECT_LT(peak.QHalfHeightLeftX(), peak.QHalfHeightRightX());
}

TEST(GaussPeak, IsAsWideAtHalfHeightAsItsFwhm) {
  const GaussPeak peak(80, 0, GaussPeak::FWHM_to_A3(0.6), 5);
  EXPECT_NEAR(0.6, peak.QHalfHeightRightX() - peak.QHalfHeightLeftX(), 1e-14);
}

TEST(GaussPeak, ReachesThreeA3ToEachSide) {
  const GaussPeak peak(80, 500, 0.25, 5);
  EXPECT_EQ(499.25, peak.QPeakStart());
  EXPECT_EQ(500.75, peak.QPeakEnd());
}

TEST(GaussPeak, HoldsNearlyAllItsAreaBetweenStartAndEnd) {
  EXPECT_NEAR(0.9973, std::erf((GaussPeak(1, 0, 1, 0).QPeakEnd()) / std::sqrt(2)), 5e-5);
}

TEST(GaussPeak, KeepsItsOffset) { EXPECT_EQ(5.5, GaussPeak(80, 500, 0.3, 5.5).Qd()); }

TEST(GaussPeak, TakesTheSizeOfANegativeA3) {
  const GaussPeak negative(80, 500, -0.3, 5);
  const GaussPeak positive(80, 500, 0.3, 5);
  EXPECT_EQ(positive.QArea(), negative.QArea());
  EXPECT_EQ(positive.QPeakStart(), negative.QPeakStart());
  EXPECT_EQ(positive.QHalfHeightLeftX(), negative.QHalfHeightLeftX());
}

TEST(GaussPeak, IsALineForAZeroA3) {
  const GaussPeak line(80, 500, 0, 5);
  EXPECT_EQ(0, line.QArea());
  for (double x : {line.QHalfHeightLeftX(), line.QHalfHeightRightX(), line.QPeakStart(), line.QPeakEnd()}) {
    EXPECT_EQ(500, x);
  }
}

}  // namespace
