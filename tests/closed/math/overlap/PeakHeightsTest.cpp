#include <tslbl/closed/math/overlap/PeakHeights.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace TslMath;

namespace {

constexpr std::size_t kPoints = 60;

struct Heights : testing::Test {
  // The curve that the sum makes, and the sum without its heights.
  double FitTo(const PeakSum& truth, PeakSum& sum) {
    std::vector<double> x, y;
    for (std::size_t i = 0; i < kPoints; ++i) {
      x.push_back(static_cast<double>(i));
      y.push_back(truth.At(x.back()));
    }
    GroupSamples samples(x, y);
    samples.WeighBy(std::vector<double>(kPoints, 1.0));
    scale = samples.Scale();
    EquationBuilder builder(samples, sum.Count());
    return heights.Fit(builder, true, sum);
  }

  static PeakSum Peaks(std::vector<double> tops, std::vector<double> tall, double baseline) {
    PeakSum sum;
    sum.widths.assign(tops.size(), 4);
    sum.tops = std::move(tops);
    sum.heights = std::move(tall);
    sum.baseline = baseline;
    return sum;
  }

  PeakHeights heights;
  double scale = 1;
};

TEST_F(Heights, AreThoseOfTheCurve) {
  PeakSum sum = Peaks({20, 30}, {0, 0}, 0);
  EXPECT_NEAR(FitTo(Peaks({20, 30}, {100, 60}, 7), sum), 0, 1e-12);
  EXPECT_NEAR(sum.heights[0] * scale, 100, 1e-9);
  EXPECT_NEAR(sum.heights[1] * scale, 60, 1e-9);
  EXPECT_NEAR(sum.baseline * scale, 7, 1e-9);
}

TEST_F(Heights, AreNeverBelowZero) {
  PeakSum sum = Peaks({20, 30}, {0, 0}, 0);
  FitTo(Peaks({20, 30}, {100, -20}, 7), sum);
  EXPECT_EQ(sum.heights[1], 0);
  EXPECT_GT(sum.heights[0], 0);
}

TEST_F(Heights, OfTwoPeaksInOnePlaceOneGetsAll) {
  PeakSum sum = Peaks({20, 20}, {0, 0}, 0);
  EXPECT_NEAR(FitTo(Peaks({20}, {100}, 7), sum), 0, 1e-12);
  EXPECT_NEAR(sum.heights[0] * scale, 100, 1e-9);
  EXPECT_EQ(sum.heights[1], 0);
}

TEST_F(Heights, OfAPeakFarFromAllPointsIsZero) {
  PeakSum sum = Peaks({20, 1000}, {0, 0}, 0);
  EXPECT_NEAR(FitTo(Peaks({20}, {100}, 7), sum), 0, 1e-12);
  EXPECT_EQ(sum.heights[1], 0);
}

}  // namespace
