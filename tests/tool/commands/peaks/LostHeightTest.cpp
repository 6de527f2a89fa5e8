#include <gtest/gtest.h>

#include <tool/commands/peaks/LostHeight.h>
#include <tslbl/curve/CurveEval.h>
#include <cmath>
#include <initializer_list>
#include <memory>
#include <random>
#include <vector>

namespace tests {
namespace {

using TslTool::LoadedSpectrum;
using TslTool::MostLostHeight;

struct Line {
  double centre;
  double height;
  double width;
};

// Lines over 5 counts, as they were measured, as they are after a window that takes `part` of the peak with
// this index, and with peaks at their places.
LoadedSpectrum Smoothed(std::initializer_list<Line> lines, std::size_t which, double part) {
  std::mt19937_64 random(1);
  LoadedSpectrum loaded;
  loaded.spectrum = std::make_unique<TslBL::Spectrum>();
  TslBL::Spectrum& spectrum = *loaded.spectrum;
  std::size_t index = 0;
  spectrum.yAxis.assign(1000, 5.0);
  loaded.measured = spectrum.yAxis;
  for (const Line& line : lines) {
    for (std::size_t i = 0; i < 1000; ++i) {
      const double u = (static_cast<double>(i) - line.centre) / line.width;
      const double above = line.height * std::exp(-4.0 * std::log(2.0) * u * u);
      loaded.measured[i] += above;
      spectrum.yAxis[i] += (index == which ? 1.0 - part : 0.99) * above;
    }
    TslBL::PeakInfo peak;
    peak.apexIdx = static_cast<std::uint32_t>(line.centre);
    peak.baselineAmpl = 5.0;
    spectrum.peaks.push_back(peak);
    ++index;
  }
  for (std::size_t i = 0; i < 1000; ++i) {
    spectrum.xAxis.push_back(100.0 + 0.1 * static_cast<double>(i));
    loaded.measured[i] = std::poisson_distribution<int>(loaded.measured[i])(random);
  }
  spectrum.AddStatus(TslBL::Curve::STATUS_SMOOTHED);
  return loaded;
}

TEST(LostHeight, IsThatOfThePeakThatLosesMost) {
  const auto lost = MostLostHeight(Smoothed({{200, 9000, 10}, {500, 9000, 10}, {800, 9000, 10}}, 1, 0.4));
  ASSERT_TRUE(lost);
  EXPECT_DOUBLE_EQ(lost->mz, 150.0);
  EXPECT_NEAR(lost->Part(), 0.4, 0.02);
}

TEST(LostHeight, BelowAFifthIsNone) {
  EXPECT_FALSE(MostLostHeight(Smoothed({{200, 9000, 10}, {500, 9000, 10}}, 1, 0.17)));
  EXPECT_TRUE(MostLostHeight(Smoothed({{200, 9000, 10}, {500, 9000, 10}}, 1, 0.23)));
}

TEST(LostHeight, MayBeAGain) {
  const auto lost = MostLostHeight(Smoothed({{200, 9000, 10}, {500, 9000, 10}}, 1, -0.08));
  ASSERT_TRUE(lost);
  EXPECT_NEAR(lost->Part(), -0.08, 0.02);
  EXPECT_FALSE(MostLostHeight(Smoothed({{200, 9000, 10}, {500, 9000, 10}}, 1, -0.03)));
}

TEST(LostHeight, ThatNoiseMayHaveMadeIsNone) {
  EXPECT_FALSE(MostLostHeight(Smoothed({{200, 9000, 10}, {500, 40, 10}}, 1, 0.6)));
}

TEST(LostHeight, OfASpectrumThatWasNotSmoothedIsNone) {
  LoadedSpectrum loaded = Smoothed({{200, 9000, 10}, {500, 9000, 10}}, 1, 0.4);
  loaded.spectrum->status = {};
  EXPECT_FALSE(MostLostHeight(loaded));
}

TEST(LostHeight, AtTheEndOfASpectrumIsToldAsWell) {
  EXPECT_TRUE(MostLostHeight(Smoothed({{0, 9000, 10}, {999, 9000, 10}}, 1, 0.4)));
  EXPECT_TRUE(MostLostHeight(Smoothed({{0, 9000, 10}, {999, 9000, 10}}, 0, 0.4)));
}

}  // namespace
}  // namespace tests
