#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/chain/ChainDefaults.h>
#include <tuple>

namespace tests {
namespace {

using TslTool::DefaultsFor;
using TslTool::Preview;

// In a spectrum of 20 000 points.
Preview Peaks(double width, std::optional<double> evenStep = 0.05) {
  return {width, 3, 20000.0, evenStep, true};
}

TEST(ChainDefaults, SmoothOverOneAndATenthWidthsOfAPeak) {
  const std::pair<double, const char*> expected[] = {{2.0, "off"},
                                                     {3.9, "off"},
                                                     {4.0, "savgol:5:2"},
                                                     {5.0, "savgol:5:2"},
                                                     {8.0, "savgol:9:2"},
                                                     {12.0, "savgol:13:2"},
                                                     {30.0, "savgol:33:2"},
                                                     {100.0, "savgol:111:2"},
                                                     {5000.0, "savgol:1001:2"}};
  for (const auto& [points, smooth] : expected)
    EXPECT_EQ(DefaultsFor(Peaks(points), {}).smooth, smooth) << points;
}

TEST(ChainDefaults, SegmentsAreFortyWidthsWithinLimits) {
  EXPECT_EQ(DefaultsFor(Peaks(3.0), {}).segment, 250U);
  EXPECT_EQ(DefaultsFor(Peaks(12.0), {}).segment, 480U);
  EXPECT_EQ(DefaultsFor(Peaks(200.0), {}).segment, 4000U);
}

TEST(ChainDefaults, AskMoreOfPeaksThatHaveManyChances) {
  const std::tuple<double, double, unsigned> expected[] = {
      {12.0, 20000.0, 5}, {12.0, 26000.0, 5}, {12.0, 27000.0, 6}, {5.0, 20000.0, 6}, {4.0, 100.0, 5}};
  for (const auto& [width, points, sn] : expected)
    EXPECT_EQ(DefaultsFor({width, 3, points, {}, true}, {}).sn, sn) << width << " in " << points;
}

TEST(ChainDefaults, AskMoreWhereBumpsOfNoiseAreAsWideAsPeaks) {
  for (const double width : {3.0, 12.0, 40.0}) {
    Preview preview = Peaks(width);
    preview.isNoiseCorrelated = true;
    const auto defaults = DefaultsFor(preview, {});
    EXPECT_EQ(defaults.sn, 8U);
    EXPECT_EQ(defaults.segment, std::max(1000U, DefaultsFor(Peaks(width), {}).segment));
    EXPECT_THAT(defaults.reason, testing::EndsWith("points wide, noise runs over neighbouring points"));
  }
}

TEST(ChainDefaults, AskMostOfPeaksThatAreNotSmoothed) { EXPECT_EQ(DefaultsFor(Peaks(3.9), {}).sn, 7U); }

TEST(ChainDefaults, ALeastWidthNeedsEvenPointsAndFiveOfThem) {
  EXPECT_DOUBLE_EQ(DefaultsFor(Peaks(12.0, 0.05), {}).minWidth.value(), 0.33);
  EXPECT_EQ(DefaultsFor(Peaks(12.0, std::nullopt), {}).minWidth, std::nullopt);
  EXPECT_EQ(DefaultsFor(Peaks(4.9, 0.05), {}).minWidth, std::nullopt);
}

TEST(ChainDefaults, WithoutAPeakTheLinesOfTheInstrumentCount) {
  const auto defaults = DefaultsFor(Preview(), 0.05);
  EXPECT_EQ(defaults.smooth, "savgol:13:2");
  EXPECT_EQ(defaults.segment, 480U);
  EXPECT_DOUBLE_EQ(defaults.minWidth.value(), 0.33);
}

TEST(ChainDefaults, WithoutPeakAndInstrumentNothingIsSmoothed) {
  const auto defaults = DefaultsFor(Preview(), std::nullopt);
  EXPECT_EQ(defaults.smooth, "off");
  EXPECT_EQ(defaults.segment, 250U);
  EXPECT_EQ(defaults.sn, 7U);
  EXPECT_EQ(defaults.minWidth, std::nullopt);
}

TEST(ChainDefaults, TellWhy) {
  EXPECT_EQ(DefaultsFor(Peaks(12.34), {}).reason, "peaks are 12.3 points wide");
  EXPECT_EQ(DefaultsFor(Preview(), 0.05).reason,
            "lines of 0.6 m/z; no peak stands out enough to tell its width");
  EXPECT_EQ(DefaultsFor(Preview(), std::nullopt).reason, "no peak stands out enough to tell its width");
  Preview few;
  few.points = 30.0;
  EXPECT_EQ(DefaultsFor(few, std::nullopt).reason, "30 points are too few to tell how wide a peak is");
}

}  // namespace
}  // namespace tests
