#include <tool/commands/overlap/WidthCheck.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>

namespace tests {
namespace {

// Of 20 fitted peaks so many points wide behind a window.
std::string WarningOf(double width, std::uint32_t window, double height = 100.0) {
  TslBL::Spectrum spectrum;
  TslBL::SmoothParams smooth = TslBL::SmoothParams::DefaultMS();
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.Steps = {{0.0, window}};
  spectrum.smoothParams = smooth;
  spectrum.evals.emplace_back(smooth);
  TslBL::OverlapPeakInfo peak;
  peak.Height = height;
  peak.FWHM = width;
  spectrum.overlapPeaks.assign(20, peak);
  TslTool::WidthCheck check;
  check.Add(spectrum);
  return check.Warning();
}

TEST(WidthCheck, HasNothingToSayOfTheUsualWindow) {
  EXPECT_EQ(WarningOf(10.0, 11), "");
  EXPECT_EQ(WarningOf(10.0, 15), "");
  EXPECT_EQ(WarningOf(3.0, 5), "");
}

TEST(WidthCheck, TellsTheWindowThatSuitsNarrowerPeaks) {
  EXPECT_EQ(WarningOf(10.0, 25),
            "fitted peaks are 10.0 points wide in the mean, and smoothing over 25 points looks for wider "
            "ones; --smooth savgol:11:2 suits them");
  EXPECT_THAT(WarningOf(4.0, 11), testing::HasSubstr("--smooth savgol:5:2 suits them"));
}

TEST(WidthCheck, LeavesOutPeaksWithoutHeight) { EXPECT_EQ(WarningOf(10.0, 25, 0.0), ""); }

TEST(WidthCheck, NeedsTenPeaks) {
  TslTool::WidthCheck check;
  check.Add(*Deconvolved().spectrum);
  EXPECT_EQ(check.Warning(), "");
}

}  // namespace
}  // namespace tests
