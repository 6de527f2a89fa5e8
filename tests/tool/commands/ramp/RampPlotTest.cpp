#include <tool/commands/ramp/RampPlot.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/plot/SvgReading.h>
#include <tool/simulate/TestMethods.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslTool::RampResponse;

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

RampResponse Response(std::vector<TslBL::TuneField::Id> lenses, std::vector<std::vector<double>> values) {
  RampResponse response;
  response.steps.lenses = std::move(lenses);
  response.steps.values = std::move(values);
  response.mz = {118, 322};
  for (const double top : {1.0, 2.0}) {
    auto& peaks = response.peaks.emplace_back();
    for (std::size_t i = 0; i < response.steps.values.size(); ++i) {
      TslBL::WMZPeakField(peaks.emplace_back().Peak, TslBL::MZPeakField::Ampl,
                          10 - std::abs(static_cast<double>(i) - top));
      TslBL::WMZPeakField(peaks.back().Peak, TslBL::MZPeakField::Res, 500);
    }
  }
  response.best = {1, 2};
  response.overall = 1;
  return response;
}

TEST(RampPlot, HasACurveAndAMarkForEachMzInTwoPanels) {
  const std::string svg =
      RampPlot(Response({TslBL::TuneField::CapExit}, {{100}, {110}, {120}, {130}}), ShortTune(), "ramp.run");
  ShowPicture("ramp", svg);
  EXPECT_EQ(CountOf(svg, "<circle"), 2 * 2U);
  for (const char* text : {">ramp.run<", ">m/z 118<", ">m/z 322<", ">overall<", ">CapExit, V<",
                           ">amplitude, %<", ">resolution, %<"})
    EXPECT_THAT(svg, HasSubstr(text));
}

TEST(RampPlot, OfTwoLensesHasThePanelsOfBoth) {
  const std::string svg = RampPlot(Response({TslBL::TuneField::CapExit, TslBL::TuneField::Skimmer},
                                            {{100, 1}, {100, 2}, {120, 1}, {120, 2}}),
                                   ShortTune(), "ramp.run");
  EXPECT_EQ(CountOf(svg, "<circle"), 2 * 4U);
  EXPECT_THAT(svg, HasSubstr(">Skimmer, V<"));
}

}  // namespace
}  // namespace tests
