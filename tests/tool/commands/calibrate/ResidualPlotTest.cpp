#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <tool/commands/calibrate/ResidualPlot.h>
#include <tool/plot/SvgReading.h>

namespace tests {
namespace {

using testing::HasSubstr;

std::size_t CountOf(const std::string& text, const std::string& what) {
  std::size_t count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

TEST(ResidualPlot, HasADotForEachPeakBeforeAndAfter) {
  const std::string svg = TslTool::ResidualPlot(
      {{"A", 100, 100.1, 100, 2}, {"B<", 200, 200.1, 200, 2}, {"C", 300, std::nullopt, std::nullopt, 1}},
      "in.run");
  ShowPicture("residuals", svg);
  EXPECT_EQ(CountOf(svg, "<circle"), 4U);
  for (const char* text : {"in.run", "before", "after", "deviation, ppm", ">A<", ">B&lt;<"})
    EXPECT_THAT(svg, HasSubstr(text));
}

TEST(ResidualPlot, WithoutAnyPeakIsAPictureToo) {
  EXPECT_THAT(TslTool::ResidualPlot({{"C", 300, std::nullopt, std::nullopt, 1}}, ""), HasSubstr("</svg>"));
  EXPECT_THAT(TslTool::ResidualPlot({}, ""), HasSubstr("</svg>"));
}

}  // namespace
}  // namespace tests
