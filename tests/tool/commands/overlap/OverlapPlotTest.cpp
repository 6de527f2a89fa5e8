#include <tool/commands/overlap/OverlapPlot.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>
#include <tool/plot/SvgReading.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;
using TslTool::OverlapPlot;

TEST(OverlapPlot, ShowsDataPeaksSumAndWhatIsLeft) {
  const std::string plot = OverlapPlot(Deconvolved(), "doublet", {});
  ShowPicture("overlap", plot);
  EXPECT_TRUE(IsDocument(plot));
  for (const char* text : {"doublet", "measured", "evaluated", "fitted peaks", "their sum", "measured - sum",
                           "m/z", ">503.0", ">503.7"})
    EXPECT_THAT(plot, HasSubstr(text));
  // The two fitted peaks and the legend.
  EXPECT_EQ(CountOf(plot, "stroke-dasharray=\"5 2\""), 3U);
}

TEST(OverlapPlot, ShowsTheGroupsAndABitAround) {
  EXPECT_THAT(OverlapPlot(Deconvolved(), "doublet", {}), Not(HasSubstr(">510<")));
  EXPECT_THAT(OverlapPlot(WithPeaks(), "doublet", {}), HasSubstr(">510<"));
}

TEST(OverlapPlot, ShowsItsView) {
  const std::string plot = OverlapPlot(Deconvolved(), "doublet", TslTool::RealRange{505.0, 511.0});
  EXPECT_THAT(plot, HasSubstr(">510.0<"));
  EXPECT_THAT(plot, Not(HasSubstr(">503.0")));
}

TEST(OverlapPlot, HasABandAsWideAsTheCountsScatter) {
  const auto band = [](const TslTool::LoadedSpectrum& loaded) {
    const std::string plot = OverlapPlot(loaded, "doublet", {});
    const std::size_t end = plot.find("fill=\"#f3dcc8\"");
    const std::size_t begin = plot.rfind("d=\"", end);
    return plot.substr(begin, end - begin);
  };
  const TslTool::LoadedSpectrum counted = Deconvolved();
  TslTool::LoadedSpectrum unknown = Deconvolved();
  unknown.measured.clear();  // the evaluated curve is no counts
  EXPECT_GT(band(counted).size(), 100U);
  EXPECT_GT(band(unknown).size(), 100U);
  EXPECT_NE(band(counted), band(unknown));
}

TEST(OverlapPlot, OfABareSpectrumIsADocument) {
  TslTool::LoadedSpectrum bare;
  bare.spectrum = std::make_unique<TslBL::Spectrum>();
  EXPECT_TRUE(IsDocument(OverlapPlot(bare, "bare", {})));
}

}  // namespace
}  // namespace tests
