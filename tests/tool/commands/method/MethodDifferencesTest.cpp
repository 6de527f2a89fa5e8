#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <method/Samples.h>
#include <tool/commands/method/MethodDifferences.h>

namespace tests {
namespace {

using TslBL::Method;
using TslTool::MethodDifferences;

Method OneRun() {
  Method method;
  method.Tunes = {{1, Tune()}};
  method.TuneRuns = {{1, TuneRun(1, 1)}};
  method.TimePeriods.resize(1);
  method.TimePeriods[0].Sequence = {{1}};
  return method;
}

TEST(MethodDifferences, AreNoneOfOneMethod) { EXPECT_TRUE(MethodDifferences(OneRun(), OneRun()).empty()); }

TEST(MethodDifferences, AreNotInIds) {
  Method other = OneRun();
  other.Tunes = {{5, Tune()}};
  other.TuneRuns = {{9, TuneRun(5, 1)}};
  other.TimePeriods[0].Sequence = {{9}};
  EXPECT_TRUE(MethodDifferences(OneRun(), other).empty());
}

TEST(MethodDifferences, AreToldAtTheirPlaces) {
  Method other = OneRun();
  other.Desc = L"b\nc";
  other.TimePeriods[0].Timeout = 0xFFFFFFFF;
  other.TuneRuns.at(1).Info.Type = TslBL::DDInfo::PeakPark;
  other.Tunes.at(1).ControlData.MZLow = 7;
  EXPECT_EQ(MethodDifferences(OneRun(), other),
            (std::vector<std::string>{"Desc:  -> b?c", "P0.Timeout: 0ms -> free",
                                      "P0/0.Type: None -> PeakPark", "P0/0.MZLow: 0 -> 7"}));
}

TEST(MethodDifferences, AreOneLineForAPlaceThatOnlyOneHas) {
  Method other = OneRun();
  other.TimePeriods.resize(2);
  other.TimePeriods[1].Sequence = {{1}, {1}};
  EXPECT_EQ(MethodDifferences(OneRun(), other), std::vector<std::string>{"P1: - -> a time period"});
  EXPECT_EQ(MethodDifferences(other, OneRun()), std::vector<std::string>{"P1: a time period -> -"});
}

TEST(MethodDifferences, NameWhatIsNotThere) {
  Method other = OneRun();
  other.TuneRuns.at(1).TuneId = 8;
  EXPECT_THAT(MethodDifferences(OneRun(), other),
              testing::Contains("P0/0.Tune: - -> tune 8, which there is not"));
  other.TimePeriods[0].Sequence = {{4}};
  EXPECT_THAT(MethodDifferences(OneRun(), other),
              testing::Contains("P0/0: a run -> run 4, which there is not"));
  other.TimePeriods[0].Sequence = {{}};
  EXPECT_THAT(MethodDifferences(OneRun(), other), testing::Contains("P0/0: a run -> an item without a run"));
}

TEST(MethodDifferences, OfAWholeMethodHaveALineForEachThing) {
  EXPECT_GE(MethodDifferences(Method(), SampleMethod()).size(), 8u);
}

}  // namespace
}  // namespace tests
