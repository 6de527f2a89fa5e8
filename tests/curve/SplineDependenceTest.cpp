#include <tslbl/curve/SplineDependence.h>

#include <tslbl/closed/math/peak/SplinePeak.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

using namespace TslBL;

namespace {

std::vector<double> Cubic() {
  std::vector<double> y;
  for (int i = 0; i < 40; ++i) y.push_back(1.0 + 0.3 * i - 0.02 * i * i + 0.001 * i * i * i);
  return y;
}

double CubicAt(double t) { return 1.0 + 0.3 * t - 0.02 * t * t + 0.001 * t * t * t; }

}  // namespace

TEST(SplineDependence, GivesACubicBack) {
  for (const double at : {15.0, 17.25, 20.5, 22.99}) {
    EXPECT_NEAR(Applied(ValueDependence(at), Cubic()), CubicAt(at), 5e-3) << at;
    EXPECT_NEAR(Applied(SlopeDependence(at), Cubic()), 0.3 - 0.04 * at + 0.003 * at * at, 5e-3) << at;
  }
}

// A spline through one point that stands out is that point's weight.
TEST(SplineDependence, IsThatOfTheSplineThroughAPeak) {
  for (const std::size_t point : {18U, 19U, 20U, 21U, 22U, 24U}) {
    std::vector<double> y(41, 0.0);
    y[point] = 1.0;
    const double first = 0.0;
    const TslMath::SplinePeak spline(&first, y.data(), 41);
    double at = 0.0;
    double value = 0.0;
    double unused = 0.0;
    double start = 0.0;
    double end = 0.0;
    spline.PeakCentroid(0.6, at, value, start, end);
    EXPECT_NEAR(Applied(ValueDependence(start), y), 0.6, 5e-3);
    EXPECT_NEAR(Applied(ValueDependence(end), y), 0.6, 5e-3);
    spline.PeakMax(at, unused);
    EXPECT_NEAR(Applied(SlopeDependence(at), y), 0.0, 5e-3);
  }
}

TEST(SplineDependence, HasASumOfOneAndOfNone) {
  for (const double at : {3.0, 3.4, 3.999}) {
    const auto value = ValueDependence(at).weights;
    const auto slope = SlopeDependence(at).weights;
    EXPECT_NEAR(std::reduce(value.begin(), value.end()), 1.0, 1e-12);
    EXPECT_NEAR(std::reduce(slope.begin(), slope.end()), 0.0, 1e-12);
  }
}

TEST(SplineDependence, OnAPointIsThePoint) {
  const auto on = ValueDependence(10.0);
  for (std::size_t k = 0; k < on.weights.size(); ++k)
    EXPECT_NEAR(on.weights[k], on.first + static_cast<std::ptrdiff_t>(k) == 10 ? 1.0 : 0.0, 1e-12);
}

TEST(SplineDependence, BeyondTheCurveCountsItsEnd) {
  const std::vector<double> level(5, 7.0);
  for (const double at : {0.0, 0.5, 4.0}) EXPECT_NEAR(Applied(ValueDependence(at), level), 7.0, 1e-12);
}
