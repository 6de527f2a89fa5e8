#include <tool/commands/decon/DeconPlot.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/decon/Proteins.h>
#include <tool/plot/SvgReading.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;
using TslTool::DeconPlot;

TEST(DeconPlot, ShowsLaddersAndMasses) {
  const std::string plot = DeconPlot(WithSeries(), "two proteins", {});
  ShowPicture("decon", plot);
  EXPECT_TRUE(IsDocument(plot));
  for (const char* text :
       {"two proteins", ">UA 16951.", ">UB 12359.", ">UA 17+<", ">UA 16+<", "m/z", "mass, Da", "deconvolved"})
    EXPECT_THAT(plot, HasSubstr(text));
}

TEST(DeconPlot, HasTheColoursOfTheLibrary) {
  const std::string plot = DeconPlot(WithSeries(), "two proteins", {});
  const auto colour = TslBL::DeconSpectrum::GetSeriesColor(0);
  char text[8];
  std::snprintf(text, sizeof text, "#%06x", colour);
  EXPECT_THAT(plot, HasSubstr(text));
}

TEST(DeconPlot, ShowsItsView) {
  const std::string plot = DeconPlot(WithSeries(), "two proteins", TslTool::RealRange{990.0, 1010.0});
  EXPECT_THAT(plot, HasSubstr(">UA 17+<"));
  EXPECT_THAT(plot, Not(HasSubstr(">UA 16+<")));
}

TEST(DeconPlot, BreaksTheLineWhereAMassHasNoPeak) {
  const auto complete = CountOf(DeconPlot(WithSeries(), "", {}), "stroke-dasharray=\"3 3\"");
  const auto lacking = WithSeries(WithProteinPeaks(), DefaultWishes(),
                                  {{TslTool::SeriesEdit::RemovePeaks, "UA", {kLarge.Mz(17)}}});
  EXPECT_EQ(CountOf(DeconPlot(lacking, "", {}), "stroke-dasharray=\"3 3\""), complete + 1);
}

TEST(DeconPlot, HasNoRoomForATraceFarAway) {
  const std::string alone = DeconPlot(WithSeries(PeptideList()), "", {});
  const std::string withTrace = DeconPlot(WithSeries(PeptideList({{700.4, 1, 5.0}, kPeptide})), "", {});
  EXPECT_THAT(withTrace, HasSubstr(">RB 700.40"));
  for (const char* tick : {">1490<", ">1500<", ">1510<"}) {
    EXPECT_THAT(alone, HasSubstr(tick));
    EXPECT_THAT(withTrace, HasSubstr(tick));
  }
}

// Two masses 40 Da apart, in lines that make the curve 12 Da wide at half height.
TEST(DeconPlot, HasRoomForAllOfThePeaksOfTheMassCurve) {
  const Protein heavier = {kLarge.mass + 40.0, 12, 22, 5000.0};
  const std::string plot =
      DeconPlot(WithSeries(WithProteinPeaks(CountedProteins({kLarge, heavier}))), "", {});
  for (const char* tick : {">16940<", ">16960<", ">16980<", ">17000<"}) EXPECT_THAT(plot, HasSubstr(tick));
}

TEST(DeconPlot, SaysThatThereIsNothing) {
  auto loaded = PeptideList();
  loaded.spectrum = TslTool::PeakListSpectrum({}, {});
  EXPECT_THAT(DeconPlot(WithSeries(std::move(loaded)), "", {}), HasSubstr("no series found"));
}

TEST(DeconPlot, HasTheSignOfTheIons) {
  auto loaded = PeptideList();
  loaded.polarity = -1;
  EXPECT_THAT(DeconPlot(WithSeries(std::move(loaded)), "", {}), HasSubstr(">RA 2-<"));
}

}  // namespace
}  // namespace tests
