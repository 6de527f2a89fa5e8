#include <gtest/gtest.h>

#include <tool/chain/ChainPresets.h>

namespace tests {
namespace {

TEST(ChainPresets, AreTheLibrarysForChromatograms) {
  const TslTool::ChainPresets presets = TslTool::PresetsForChromatograms();
  EXPECT_EQ(presets.smooth, TslBL::SmoothParams::DefaultIC());
  EXPECT_EQ(presets.baseline, TslBL::BaselineParams::DefaultIC());
  EXPECT_EQ(presets.noise, TslBL::NoiseParams::DefaultIC());
  EXPECT_EQ(presets.peaks, TslBL::PeakDetectParams::DefaultIC());
}

TEST(ChainPresets, SmoothTheWholeAxisOfASpectrum) {
  EXPECT_EQ(TslTool::PresetsForSpectra().smooth.Steps.front().Value, 0.0);
}

}  // namespace
}  // namespace tests
