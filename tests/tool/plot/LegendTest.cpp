#include <tool/plot/Legend.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tests {
namespace {

using TslTool::NamedStroke;
using TslTool::Stroke;

// The left ends of the strokes in a header.
std::vector<double> LeftEnds(const std::vector<NamedStroke>& strokes) {
  TslTool::Svg svg(1200.0, 60.0);
  DrawHeader(svg, "title", strokes);
  const std::string document = svg.Document();
  std::vector<double> ends;
  for (std::size_t at = document.find("x1=\""); at != std::string::npos; at = document.find("x1=\"", at + 1))
    ends.push_back(std::stod(document.substr(at + 4)));
  return ends;
}

TEST(Legend, StandsInEvenColumns) {
  const Stroke stroke = {"#000000", 1.0};
  const std::vector<double> ends = LeftEnds({{stroke, "a"}, {stroke, "curve"}, {stroke, "noise"}});
  ASSERT_EQ(ends.size(), 3U);
  EXPECT_EQ(ends[1] - ends[0], ends[2] - ends[1]);
}

TEST(Legend, MakesRoomForALongName) {
  const Stroke stroke = {"#000000", 1.0};
  const std::vector<double> wide = LeftEnds({{stroke, "UB 148056.20 Da"}, {stroke, "a"}});
  const std::vector<double> usual = LeftEnds({{stroke, "a"}, {stroke, "a"}});
  ASSERT_EQ(wide.size(), 2U);
  EXPECT_GT(wide[1] - wide[0], usual[1] - usual[0] + 5.0);
}

}  // namespace
}  // namespace tests
