#include <tslbl/curve/FilterGain.h>

#include <tslbl/curve/FilterWeights.h>
#include <tslbl/curve/SmoothParams.h>

#include <OracleTable.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace TslBL;

namespace {

std::vector<double> Weights(SmoothParams::Algs alg, std::uint32_t window, std::uint32_t order = 2,
                            std::uint32_t passes = 1) {
  SmoothParams p;
  p.Alg = alg;
  p.Order = order;
  p.Passes = passes;
  p.Steps = {{0.0, window}};
  return QFilterWeights(p);
}

std::vector<double> SavitzkyGolay(std::uint32_t window) {
  return Weights(SmoothParams::SavitzkyGolay, window);
}

}  // namespace

// tests/oracles/filter_gain.py: SciPy's filters over Gaussian peaks.
TEST(FilterGain, IsWhatIsLeftOfAGaussian) {
  const tests::OracleTable peaks("filter_gain.csv");
  for (std::size_t i = 0; i < peaks["width"].size(); ++i) {
    const auto whole = [&](const char* name) { return static_cast<std::uint32_t>(peaks[name][i]); };
    const auto alg = static_cast<SmoothParams::Algs>(whole("alg"));
    const FilterGain gain(Weights(alg, whole("window"), whole("order"), whole("passes")));
    EXPECT_NEAR(gain.Of(peaks["seen"][i]), peaks["height"][i], 1e-3)
        << "algorithm " << alg << ", window " << whole("window") << ", " << peaks["width"][i] << " points";
  }
}

TEST(FilterGain, TellsTheWidthBefore) {
  const tests::OracleTable peaks("filter_gain.csv");
  for (std::size_t i = 0; i < peaks["width"].size(); ++i) {
    const auto whole = [&](const char* name) { return static_cast<std::uint32_t>(peaks[name][i]); };
    const auto alg = static_cast<SmoothParams::Algs>(whole("alg"));
    const FilterGain gain(Weights(alg, whole("window"), whole("order"), whole("passes")));
    const double width = peaks["width"][i];
    EXPECT_NEAR(gain.WidthBefore(peaks["seen"][i]), width, 0.01 * width)
        << "algorithm " << alg << ", window " << whole("window") << ", " << width << " points";
  }
}

TEST(FilterGain, TheWidthBeforeRisesWithThatBehindAndIsNoLarger) {
  for (const auto alg : {SmoothParams::Mean, SmoothParams::SavitzkyGolay, SmoothParams::Gaussian})
    for (const std::uint32_t window : {3U, 4U, 11U, 40U}) {
      const FilterGain gain(Weights(alg, window));
      double before = 0.0;
      for (double width = 0.5; width < 2000.0; width *= 1.01) {
        EXPECT_GE(gain.WidthBefore(width), before) << alg << ", window " << window << ", " << width;
        EXPECT_LE(gain.WidthBefore(width), width * (1.0 + 1e-6))
            << alg << ", window " << window << ", " << width;
        before = gain.WidthBefore(width);
      }
    }
}

TEST(FilterGain, RisesWithTheWidth) {
  for (const auto alg : {SmoothParams::Mean, SmoothParams::SavitzkyGolay, SmoothParams::Gaussian})
    for (const std::uint32_t window : {3U, 4U, 11U, 40U}) {
      const FilterGain gain(Weights(alg, window));
      double before = 0.0;
      for (double width = 0.5; width < 2000.0; width *= 1.01) {
        EXPECT_GE(gain.Of(width), before) << alg << ", window " << window << ", " << width << " points";
        before = gain.Of(width);
      }
    }
}

TEST(FilterGain, WantsAnOddNumberOfWeights) {
  EXPECT_THROW(FilterGain({}), std::invalid_argument);
  EXPECT_THROW(FilterGain(std::vector{0.5, 0.5}), std::invalid_argument);
}

TEST(FilterGain, OfVeryWidePeaksIsOne) {
  const FilterGain gain(SavitzkyGolay(13));
  EXPECT_NEAR(gain.Of(300.0), 1.0, 1e-6);
  EXPECT_EQ(gain.Of(1e9), 1.0);
  EXPECT_EQ(gain.WidthBefore(1e9), 1e9);
}

TEST(FilterGain, WithoutAFilterIsOne) {
  const FilterGain gain(std::vector<double>{1.0});
  for (const double width : {0.0, 0.5, 3.0, 1000.0}) EXPECT_NEAR(gain.Of(width), 1.0, 1e-12);
  for (const double width : {0.0, 0.5, 3.0, 1000.0})
    EXPECT_NEAR(gain.WidthBefore(width), width, 1e-6 * width);
}

TEST(FilterGain, OfWhatIsNoWidthIsThatOfTheNarrowest) {
  const FilterGain gain(SavitzkyGolay(13));
  EXPECT_EQ(gain.Of(std::nan("")), gain.Of(0.0));
  EXPECT_LT(gain.Of(0.0), 0.9);
}
