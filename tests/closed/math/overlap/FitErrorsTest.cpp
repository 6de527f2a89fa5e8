#include <tslbl/closed/math/overlap/FitErrors.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

using namespace TslMath;

namespace {

PeakSum OnePeak(double height) {
  PeakSum sum;
  sum.heights = {height};
  sum.tops = {100};
  sum.widths = {8};
  return sum;
}

struct Errors : testing::Test {
  // Points of one weight.
  std::vector<FitError> Of(const PeakSum& sum, const FreeTerms& free, double noise) {
    std::vector<double> x, y;
    for (int i = 0; i <= 200; ++i) {
      x.push_back(i);
      y.push_back(sum.At(i) + 1);
    }
    GroupSamples samples(x, y);
    samples.WeighBy(std::vector<double>(x.size(), 1.0));
    EquationBuilder builder(samples, sum.Count());
    const TermOrder order(sum.Count(), free);
    FitEquations equations;
    builder.Build(sum, order, equations);
    return ErrorsOf(sum, order, equations, noise);
  }
};

// Of a Gaussian in noise of one size, fitted on a fine grid: s sqrt(2 w / (sqrt(pi) h^2)) for the place, D.
// Lenz, T. Ayres, 1992.
TEST_F(Errors, OfASinglePeakAreThoseOfTheFormula) {
  const double noise = 0.01;
  const double place = std::sqrt(noise * 2 * 8 / std::sqrt(std::numbers::pi)) / 3;
  const FreeTerms noBaseline{true, FreeTerms::Widths::Shared, false, false};
  const FitError error = Of(OnePeak(3), noBaseline, noise)[0];
  EXPECT_NEAR(error.centroid, place, 1e-9);
  // Of the area: s sqrt(3 w sqrt(pi)).
  EXPECT_NEAR(error.area, std::sqrt(noise * 3 * 8 * std::sqrt(std::numbers::pi)), 1e-9);
}

TEST_F(Errors, OfACentroidGrowWithTheSkew) {
  const FreeTerms skewed{true, FreeTerms::Widths::Shared, true, true};
  EXPECT_GT(Of(OnePeak(3), skewed, 0.01)[0].centroid, 1.2 * Of(OnePeak(3), {}, 0.01)[0].centroid);
}

TEST_F(Errors, OfAPeakWithoutHeightLeaveTheOthersAlone) {
  PeakSum sum = OnePeak(3);
  const FitError alone = Of(sum, {}, 0.01)[0];
  sum.heights.push_back(0);
  sum.tops.push_back(150);
  sum.widths.push_back(8);
  EXPECT_NEAR(Of(sum, {}, 0.01)[0].centroid, alone.centroid, 1e-9);
}

TEST_F(Errors, AreNotToldWherePeaksCannotBeToldApart) {
  PeakSum sum = OnePeak(3);
  sum.heights.push_back(3);
  sum.tops.push_back(100);
  sum.widths.push_back(8);
  EXPECT_TRUE(Of(sum, {}, 0.01).empty());
}

TEST(CorrelationFactor, OfIndependentResidualsIsOne) {
  EXPECT_EQ(CorrelationFactor(std::vector<double>{1, -1, 2, 0, -2, 1, 1, -3, 2, 0}), 1);
  EXPECT_EQ(CorrelationFactor(std::vector<double>(10, 0.0)), 1);
  EXPECT_EQ(CorrelationFactor({}), 1);
}

// Groups of four that are alike: 1 + 2 (3/4 + 2/4 + 1/4).
TEST(CorrelationFactor, IsTheVarianceThatNeighboursAdd) {
  std::mt19937_64 random(1);
  std::vector<double> residuals;
  for (int k = 0; k < 1000; ++k) residuals.insert(residuals.end(), 4, random() % 2 ? 1.0 : -1.0);
  EXPECT_NEAR(CorrelationFactor(residuals), 4, 0.5);
}

}  // namespace
