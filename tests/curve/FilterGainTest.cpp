#include <tslbl/curve/FilterGain.h>

#include <tslbl/curve/FilterWeights.h>
#include <tslbl/curve/SmoothParams.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace TslBL;

namespace {

std::vector<double> SavitzkyGolay(std::uint32_t width) {
  SmoothParams p;
  p.Alg = SmoothParams::SavitzkyGolay;
  p.Steps = {{0.0, width}};
  return QFilterWeights(p);
}

struct Seen {
  double width;
  double height;
};

// A Gaussian of height 1, drawn finely, behind the filter.
Seen Through(const std::vector<double>& weights, double width) {
  const auto at = [&](double place) {
    double sum = 0.0;
    for (std::size_t k = 0; k < weights.size(); ++k) {
      const double u = (place - static_cast<double>(k) + static_cast<double>(weights.size() / 2)) / width;
      sum += weights[k] * std::exp(-4.0 * std::log(2.0) * u * u);
    }
    return sum;
  };
  double half = 0.0;
  while (at(half) > 0.5 * at(0.0)) half += 1e-4;
  return {2.0 * half, at(0.0)};
}

}  // namespace

TEST(FilterGain, IsWhatIsLeftOfAGaussian) {
  for (const std::uint32_t window : {5U, 13U, 33U}) {
    const auto weights = SavitzkyGolay(window);
    const FilterGain gain(weights);
    for (const double share : {0.5, 0.7, 0.9, 1.3, 2.0, 5.0}) {
      const Seen seen = Through(weights, share * window);
      EXPECT_NEAR(gain.Of(seen.width), seen.height, 1e-3) << window << " points, " << share;
    }
  }
}

TEST(FilterGain, OfVeryWidePeaksIsOne) {
  const FilterGain gain(SavitzkyGolay(13));
  EXPECT_NEAR(gain.Of(300.0), 1.0, 1e-6);
  EXPECT_EQ(gain.Of(1e9), 1.0);
}

TEST(FilterGain, WithoutAFilterIsOne) {
  const FilterGain gain(std::vector<double>{1.0});
  for (const double width : {0.0, 0.5, 3.0, 1000.0}) EXPECT_NEAR(gain.Of(width), 1.0, 1e-12);
}

TEST(FilterGain, OfWhatIsNoWidthIsThatOfTheNarrowest) {
  const FilterGain gain(SavitzkyGolay(13));
  EXPECT_EQ(gain.Of(std::nan("")), gain.Of(0.0));
  EXPECT_LT(gain.Of(0.0), 0.9);
}
