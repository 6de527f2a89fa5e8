#include <tool/commands/tune/TunePlot.h>

#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>

#include <tool/plot/SvgReading.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <cmath>

namespace tests {
namespace {

using TslBL::Control;
using TslBL::DevTuneRules;
using TslBL::IOPoint;
using TslBL::Probes;
using TslBL::Tune;
using TslTool::TunePlot;

Tune Calibrated() {
  DevTuneRules rules(Probes::ESI);
  rules.ControlData.CapExit.Type = IOPoint::CalibratedType;
  return rules;
}

TEST(TunePlot, IsADocumentWithAPanelForEachLensAndTheSettling) {
  const std::string svg = TunePlot({{DevTuneRules(Probes::ESI), "a"}});
  EXPECT_TRUE(IsDocument(svg));
  EXPECT_EQ(CountOf(svg, "<path "), 10u);
  for (const char* title : {">CapExit, V<", ">Skimmer, V<", ">Q0RFAmpl, V<", ">Q0Offset, V<", ">Q0Exit1, V<",
                            ">Q0Exit2, V<", ">Q1Resolution, %<", ">Q1Offset, V<", ">Q1IonGuide, V<",
                            ">settling after a move from the low end, us<"})
    EXPECT_EQ(CountOf(svg, title), 1u) << title;
}

TEST(TunePlot, TwoTunesHaveCurvesAndLegendsEach) {
  const std::string svg = TunePlot({{DevTuneRules(Probes::ESI), "before"}, {Calibrated(), "after"}});
  EXPECT_TRUE(IsDocument(svg));
  EXPECT_EQ(CountOf(svg, "<path "), 20u);
  EXPECT_EQ(CountOf(svg, ">before<"), 1u);
  EXPECT_EQ(CountOf(svg, ">after<"), 1u);
}

TEST(TunePlot, EachOfTwoTunesHasALookOfItsOwnThatTheLegendShows) {
  const std::string svg = TunePlot({{DevTuneRules(Probes::ESI), "before"}, {Calibrated(), "after"}});
  const std::vector<std::string> legend = AttributesOf(svg, "line[@stroke-width='2.5']", "stroke");
  ASSERT_EQ(legend.size(), 2U);
  EXPECT_NE(legend[0], legend[1]);
  const std::vector<std::string> colours = AttributesOf(svg, "path", "stroke");
  const std::vector<std::string> dashes = AttributesOf(svg, "path", "stroke-dasharray");
  for (std::size_t i = 0; i < colours.size(); ++i) {
    EXPECT_EQ(colours[i], legend[i % 2]) << "line " << i;
    EXPECT_EQ(dashes[i].empty(), i % 2 == 0) << "line " << i;
  }
  for (const std::string& mark : AttributesOf(svg, "circle", "fill")) EXPECT_EQ(mark, legend[1]);
}

TEST(TunePlot, ACurveGoesThroughItsCalibrants) {
  const std::string svg = TunePlot({{Calibrated(), "a"}});
  EXPECT_EQ(CountOf(svg, "<circle "), 5u);
  pugi::xml_document document;
  document.load_string(svg.c_str());
  const std::string path = document.child("svg").child("path").attribute("d").value();
  for (const pugi::xml_node mark : document.child("svg").children("circle")) {
    const std::string at =
        std::string(mark.attribute("cx").value()) + " " + std::string(mark.attribute("cy").value());
    EXPECT_NE(path.find(at), std::string::npos) << at;
  }
}

TEST(TunePlot, CalibrantsBeyondTheRangeAreNotDrawn) {
  Tune tune = Calibrated();
  tune.ControlData.MZLow = 100;
  tune.ControlData.MZHi = 400;
  EXPECT_EQ(CountOf(TunePlot({{tune, "a"}}), "<circle "), 2u);
}

TEST(TunePlot, ALensWithoutPointsSaysSo) {
  Tune tune = Calibrated();
  tune.Q1CalPts.clear();
  EXPECT_EQ(CountOf(TunePlot({{tune, "a"}}), ">CapExit, V: no points<"), 1u);
}

TEST(TunePlot, ASimWithoutSpanHasRoomAroundIt) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZLow = 500;
  tune.ControlData.MZHi = 0;
  const std::string svg = TunePlot({{tune, "a"}});
  EXPECT_TRUE(IsDocument(svg));
  EXPECT_EQ(CountOf(svg, "nan"), 0u);
  EXPECT_EQ(CountOf(svg, ">499.5<"), 10u) << "a tick in each panel";
}

TEST(TunePlot, ALabelMayHoldAnyCharacter) {
  const std::string svg = TunePlot({{DevTuneRules(Probes::ESI), "<a> & \x01\"b\""}});
  EXPECT_TRUE(IsDocument(svg));
  EXPECT_NE(svg.find("&lt;a> &amp;  \"b\""), std::string::npos);
}

TEST(TunePlot, ASimWithoutSpanIsADot) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZLow = 500;
  tune.ControlData.MZHi = 0;
  EXPECT_EQ(CountOf(TunePlot({{tune, "a"}}), "<circle "), 10u);
}

TEST(TunePlot, ANarrowRangeBesideAWideOneIsADot) {
  Tune narrow = DevTuneRules(Probes::ESI);
  narrow.ControlData.MZLow = 500;
  narrow.ControlData.MZHi = 501;
  EXPECT_EQ(CountOf(TunePlot({{DevTuneRules(Probes::ESI), "wide"}, {narrow, "narrow"}}), "<circle "), 10u);
}

TEST(TunePlot, OfTwoTunesTheOneWithoutPointsIsNamed) {
  Tune open = Calibrated();
  open.Q1CalPts.clear();
  EXPECT_EQ(CountOf(TunePlot({{Calibrated(), "good"}, {open, "open"}}), ">CapExit, V; no points: open<"), 1u);
}

TEST(TunePlot, ALongLabelIsCut) {
  const std::string svg = TunePlot({{DevTuneRules(Probes::ESI), std::string(1000, 'x')}});
  EXPECT_EQ(CountOf(svg, ">" + std::string(44, 'x') + "...<"), 1u);
}

TEST(TunePlot, AnAxisHasTicksWhateverItsEnds) {
  for (const double high : {1e-300, 1e-9, 100.0, 9007199254740992.0, 1e17}) {
    Tune tune = Calibrated();
    tune.ControlData.MZLow = high;
    tune.ControlData.MZHi = high;
    tune.ControlData.Skimmer.Single = high;
    const std::string svg = TunePlot({{tune, "a"}});
    EXPECT_GE(CountOf(svg, "text-anchor=\"middle\""), 20u) << high;
    EXPECT_LE(CountOf(svg, "text-anchor=\"middle\""), 80u) << high;
  }
}

// What a damaged file may hold.
TEST(TunePlot, RangesThatAreNoneEnd) {
  for (const double bad : {HUGE_VAL, -HUGE_VAL, std::nan(""), 1e308}) {
    Tune tune = Calibrated();
    tune.ControlData.MZHi = bad;
    tune.ControlData.Skimmer.Single = bad;
    EXPECT_TRUE(IsDocument(TunePlot({{tune, "a"}}))) << bad;
  }
}

}  // namespace
}  // namespace tests
