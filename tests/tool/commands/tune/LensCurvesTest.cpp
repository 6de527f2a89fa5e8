#include <tool/commands/tune/LensCurves.h>

#include <gtest/gtest.h>

#include <tslbl/tune/rules/DevTuneRules.h>
#include <string>
#include <utility>
#include <vector>

namespace tests {
namespace {

using TslBL::DevTuneRules;
using TslBL::IOPoint;
using TslBL::Probes;
using TslBL::Tune;
using TslBL::TuneField;
using Points = std::vector<std::pair<double, double>>;

Tune WithSkimmer(const Points& points) {
  Tune tune = DevTuneRules(Probes::ESI);
  tune.ControlData.Skimmer.Type = IOPoint::CalibratedType;
  tune.Q1CalPts.clear();
  for (const auto& [mz, volts] : points)
    tune.Q1CalPts.emplace_back(mz, L"").Fields[TuneField::Skimmer] = volts;
  return tune;
}

const TslTool::LensField& Skimmer() { return TslTool::LensFields()[1]; }

TEST(LensFields, AreThoseThatMayFollowMz) {
  std::vector<std::string> lenses;
  for (const TslTool::LensField& field : TslTool::LensFields())
    lenses.push_back(field.name + " " + field.unit);
  EXPECT_EQ(lenses,
            (std::vector<std::string>{"CapExit V", "Skimmer V", "Q0RFAmpl V", "Q0Offset V", "Q0Exit1 V",
                                      "Q0Exit2 V", "Q1Resolution %", "Q1Offset V", "Q1IonGuide V"}));
}

TEST(LensPoints, AscendInMzAndThenInValue) {
  const Points ascending = {{100, 5}, {200, -3}, {200, 7}, {200, 9}, {300, 1}};
  for (Points points = ascending; std::ranges::next_permutation(points).found;)
    ASSERT_EQ(TslTool::LensPoints(WithSkimmer(points), Skimmer()), ascending);
}

TEST(LensPoints, OfASingleValueAreNone) {
  EXPECT_TRUE(TslTool::LensPoints(DevTuneRules(Probes::ESI), Skimmer()).empty());
}

TEST(LensCurve, HasNoValueWhereItIsOpen) {
  const auto curve = TslTool::LensCurve(WithSkimmer({{100, 5}, {200, 7}, {200, 9}, {300, 1}}), Skimmer());
  EXPECT_EQ(curve(150), 6.0);
  EXPECT_EQ(curve(250), 5.0);
  const auto open = TslTool::LensCurve(WithSkimmer({{200, 7}, {200, 9}}), Skimmer());
  EXPECT_EQ(open(200), std::nullopt);
  EXPECT_EQ(TslTool::LensCurve(WithSkimmer({}), Skimmer())(200), std::nullopt);
}

TEST(SettlingCurve, BeginsAtTheLowEndOfTheRange) {
  DevTuneRules rules(Probes::ESI);
  rules.WMZRange(100, 200);
  const auto settling = TslTool::SettlingCurve(rules);
  EXPECT_EQ(settling(100), 0.0);
  EXPECT_EQ(settling(200), 650.0);
}

}  // namespace
}  // namespace tests
