#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/plot/Labels.h>
#include <tool/plot/SvgReading.h>

using namespace tests;
using TslTool::Label;
using TslTool::Svg;

namespace {

std::string Written(const std::vector<Label>& labels) {
  Svg svg(200, 200);
  DrawLabels(svg, {0, 0, 200, 100}, labels);
  pugi::xml_document document;
  document.load_string(svg.Document().c_str());
  std::string texts;
  for (const auto& text : document.select_nodes("//text"))
    texts += (texts.empty() ? "" : " ") + std::string(text.node().child_value());
  return texts;
}

TEST(Labels, StandAboveTheirPoints) {
  Svg svg(200, 200);
  DrawLabels(svg, {0, 0, 200, 100}, std::vector<Label>{{{50, 80}, "118.1"}});
  EXPECT_EQ(AttributesOf(svg.Document(), "text", "x").front(), "50");
  EXPECT_LT(std::stod(AttributesOf(svg.Document(), "text", "y").front()), 80);
}

TEST(Labels, OneThatWouldCoverAnEarlierOneIsLeftOut) {
  EXPECT_EQ(Written({{{50, 50}, "first"}, {{60, 55}, "second"}, {{120, 50}, "third"}, {{60, 90}, "below"}}),
            "first third below");
}

TEST(Labels, OneThatWouldLeaveTheBoxIsLeftOut) {
  EXPECT_EQ(Written({{{2, 50}, "left"},
                     {{199, 50}, "right"},
                     {{50, 5}, "top"},
                     {{50, 150}, "below"},
                     {{100, 50}, "inside"}}),
            "inside");
}

TEST(Labels, WithoutAPlaceAreLeftOut) { EXPECT_EQ(Written({{TslTool::kGap, "nowhere"}}), ""); }

}  // namespace
