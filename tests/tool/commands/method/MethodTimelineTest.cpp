// Tests: MethodPlace.cpp, MethodPlot.cpp, MethodSheet.cpp, MethodTimeline.cpp, MethodTimes.cpp,
// ValveSpans.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <method/TestMethod.h>
#include <tool/commands/method/MethodPlace.h>
#include <tool/commands/method/MethodPlot.h>
#include <tool/commands/method/MethodSheet.h>
#include <tool/commands/method/MethodTimeline.h>
#include <tool/commands/method/ValveSpans.h>

namespace tests {
namespace {

using namespace TslTool;
using testing::HasSubstr;
using TslBL::DiverterValveMethod;
using TslCommon::DiverterValve;
using TslCommon::timebase::MSEC;

DiverterValveMethod Valve(std::initializer_list<std::int32_t> starts) {
  DiverterValveMethod program;
  std::uint32_t state = DiverterValve::kToWaste;
  for (const std::int32_t start : starts) {
    program.AddState(MSEC(start), DiverterValve(state));
    state = 1 - state;
  }
  return program;
}

TEST(ValveSpans, ReachToTheNextStateAndToTheEnd) {
  const std::vector<ValveSpan> spans = ValveSpans(Valve({0, 1500}), 4.0);
  ASSERT_EQ(spans.size(), 2u);
  EXPECT_EQ(spans[0].from, 0.0);
  EXPECT_EQ(spans[0].to, 1.5);
  EXPECT_EQ(spans[1].to, 4.0);
  EXPECT_EQ(spans[1].state, DiverterValve(DiverterValve::kToSource));
}

TEST(ValveSpans, EndWithTheMethod) {
  EXPECT_EQ(ValveSpans(Valve({0, 5000}), 4.0).size(), 1u);
  EXPECT_EQ(ValveSpans(Valve({0, 5000}), 4.0)[0].to, 4.0);
  EXPECT_TRUE(ValveSpans({}, 4.0).empty());
}

// A scan of 100 m/z in steps of 0.1 takes 1001 pulses of 1 ms.
TEST(MethodTimes, AreThoseOfEachSpectrumOfARun) {
  TslBL::MethodRules rules = RulesOf("+100-200 -100-200");
  rules.WTRNumRecs(0, 0, 0, 3);
  const std::vector<PeriodTimes> times = TimesOf(rules);
  ASSERT_EQ(times.size(), 1u);
  ASSERT_EQ(times[0].items.size(), 2u);
  const ItemTimes& item = times[0].items[0];
  EXPECT_EQ(item.spectra, 3u);
  EXPECT_DOUBLE_EQ(item.polaritySwitch, 0.5);
  EXPECT_DOUBLE_EQ(item.counting, 3 * 1.001);
  EXPECT_DOUBLE_EQ(item.stepSettling, 0.0);
  EXPECT_DOUBLE_EQ(item.initSettling, 3e-6 * rules.QTRTune(0, 0, 0).ControlData.InitSettleDelay);
  EXPECT_DOUBLE_EQ(item.Total(), rules.QSIDuration(0, 0));
  EXPECT_DOUBLE_EQ(times[0].loop, rules.QSIDuration(0, 0) + rules.QSIDuration(0, 1));
  EXPECT_EQ(times[0].length, 60.0);
}

TEST(MethodTimes, OfAPeriodWithoutEndAreThoseOfItsLoops) {
  TslBL::MethodRules rules = RulesOf("+100-200");
  rules.WTPTimeout(0, TslBL::MethodRules::FreeRun);
  rules.WTPNumLoops(0, 4);
  const PeriodTimes times = TimesOf(rules).at(0);
  EXPECT_TRUE(times.isFree);
  EXPECT_DOUBLE_EQ(times.length, 4.0 * times.loop);
}

TEST(MethodTimes, NameThePlaceOfWhatIsMissing) {
  TslBL::Method method = MethodOf("+100-200");
  method.TimePeriods[0].Sequence = {{}};
  EXPECT_THROW(TimesOf(TslBL::MethodRules(0.5, method)), std::runtime_error);
  method.TimePeriods[0].Sequence = {{9}};
  EXPECT_THROW(TimesOf(TslBL::MethodRules(0.5, method)), std::runtime_error);
}

TEST(MethodTimeline, HasALaneForEachThing) {
  TslBL::MethodRules rules = RulesOf("+100-200 | -100-200 | +100-200 -100-200");
  rules.WValveMethod(Valve({0, 90000}));
  const std::string timeline = MethodTimeline(rules, TimesOf(rules));
  EXPECT_THAT(timeline, HasSubstr("  minutes   0"));
  EXPECT_THAT(timeline, HasSubstr("  periods   P0======================P1======================P2======"));
  EXPECT_THAT(timeline, HasSubstr("++++------------------------mmmmmmmm"));
  EXPECT_THAT(timeline, HasSubstr("WWWWSSSS"));
}

TEST(MethodTimeline, ShowsWhatIsShorterThanALetter) {
  TslBL::MethodRules rules = RulesOf("+100-200 | -100-200");
  rules.WTPTimeout(0, 3600000);
  rules.WTPTimeout(1, 1);
  EXPECT_THAT(MethodTimeline(rules, TimesOf(rules)), HasSubstr("+-\n"));
}

TEST(MethodTimeline, IsEmptyOfAMethodThatTakesNoTime) {
  EXPECT_EQ(MethodTimeline(TslBL::MethodRules(0.5, TslBL::Method()), {}), "");
}

TEST(MethodSheet, ShowsAMethodThatTheRulesRefuse) {
  TslBL::Method method = MethodOf("+100-200");
  method.TimePeriods.resize(2);
  method.TimePeriods[1].Sequence = {{}, {77}};
  const std::string sheet = MethodSheet(TslBL::MethodRules(0.5, method));
  EXPECT_THAT(sheet, HasSubstr("Program\n  unknown: P1/0 holds no run\n"));
  EXPECT_THAT(sheet, HasSubstr("  P1/0      no run\n"));
  EXPECT_THAT(sheet, HasSubstr("  P1/1      run 77, which the method has not\n"));
  EXPECT_THAT(sheet, HasSubstr("The rules do not accept it:\n"));
}

TEST(MethodPlot, DrawsEveryScan) {
  TslBL::MethodRules rules = RulesOf("+100-200 -50-60 | +300-400");
  rules.WValveMethod(Valve({0, 1000}));
  const std::string picture = MethodPlot(rules);
  EXPECT_THAT(picture, HasSubstr("P1: "));
  EXPECT_THAT(picture, HasSubstr(">Source<"));
  EXPECT_THAT(picture, HasSubstr(">negative ions<"));
}

TEST(MethodPlace, IsNamedAsItIsTyped) {
  const TslBL::Method method = MethodOf("+100-200 -50-60 | +300-400");
  for (const char* text : {"P0", "P1", "P0/1"}) {
    const MethodPlace place = ParseMethodPlace(method, text);
    EXPECT_EQ(place.item ? PlaceName(place.period, *place.item) : PlaceName(place.period), text);
  }
  EXPECT_EQ(PlaceName(1, 2, 0), "P1/2");
  EXPECT_EQ(PlaceName(1, 2, 3), "P1/2/3");
}

}  // namespace
}  // namespace tests
