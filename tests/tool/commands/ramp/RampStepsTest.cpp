#include <tool/commands/ramp/RampSteps.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/ramp/RampError.h>
#include <tool/frame/UsageErrorOf.h>
#include <tool/simulate/TestMethods.h>

namespace tests {
namespace {

using testing::ElementsAre;
using TslBL::TuneField;
using TslTool::FindRampSteps;
using TslTool::RampSteps;
using TslTool::Tunes;

Tunes CapExits(const std::vector<double>& values) {
  return Ramp(ShortTune(), {TuneField::CapExit, values}).Tunes;
}

std::string RefusalOf(const Tunes& tunes, const std::vector<std::string>& names = {}) {
  try {
    FindRampSteps(tunes, names);
  } catch (const TslTool::RampError& error) {
    return error.what();
  }
  return "";
}

TEST(RampSteps, AreTheValuesInWhichTheTunesDiffer) {
  const RampSteps steps = FindRampSteps(CapExits({100, 120, 140}), {});
  EXPECT_THAT(steps.lenses, ElementsAre(TuneField::CapExit));
  EXPECT_THAT(steps.values, ElementsAre(ElementsAre(100), ElementsAre(120), ElementsAre(140)));
  EXPECT_EQ(steps.ofTune, (std::map<std::uint32_t, std::size_t>{{1, 0}, {2, 1}, {3, 2}}));
}

TEST(RampSteps, TunesOfEqualValuesAreOneStep) {
  const RampSteps steps = FindRampSteps(CapExits({380, 400, 400}), {});
  EXPECT_THAT(steps.values, ElementsAre(ElementsAre(380), ElementsAre(400)));
  EXPECT_EQ(steps.ofTune.at(3), 1U);
}

TEST(RampSteps, TheEndsAreTheLowestAndTheHighestValue) {
  const RampSteps steps = FindRampSteps(CapExits({140, 120, 100}), {});
  EXPECT_TRUE(steps.IsAtEnd(0, 0));
  EXPECT_FALSE(steps.IsAtEnd(1, 0));
  EXPECT_TRUE(steps.IsAtEnd(2, 0));
}

TEST(RampSteps, OfALensThatIsNamedLeaveOthersBeside) {
  const Tunes tunes =
      Ramp(ShortTune(), {TuneField::CapExit, {100, 120}}, 1, WalkedLens{TuneField::Skimmer, {10, 20, 30}})
          .Tunes;
  EXPECT_EQ(FindRampSteps(tunes, {}).values.size(), 6U);
  const RampSteps steps = FindRampSteps(tunes, {"skimmer"});
  EXPECT_THAT(steps.values, ElementsAre(ElementsAre(10), ElementsAre(20), ElementsAre(30)));
  EXPECT_THAT(steps.beside, ElementsAre("CapExit"));
}

TEST(RampSteps, AreRefusedWhereTheTunesMakeNoRamp) {
  Tunes three = CapExits({100, 120});
  three.at(1).ControlData.Skimmer.Single = 5;
  three.at(1).ControlData.DetectorGain = -1000;
  Tunes calibrated = CapExits({100, 120});
  calibrated.at(2).ControlData.CapExit.Type = TslBL::IOPoint::CalibratedType;
  Tunes other = CapExits({100, 100});
  other.at(2).ControlData.MZLow = 200;
  const struct {
    Tunes tunes;
    std::vector<std::string> names;
    const char* error;
  } kCases[] = {
      {{}, {}, "the run has no tune"},
      {CapExits({100}), {}, "the run has one tune, and a ramp has one for each value"},
      {other, {}, "the tunes of the run differ in no lens that a ramp walks"},
      {three,
       {},
       "the tunes of the run differ in CapExit, Skimmer, DetectorGain; --lens names one or two of them"},
      {three, {"Q1Offset"}, "Q1Offset is -1 in all tunes of the run, which makes no ramp of it"},
      {calibrated, {}, "tune 2: CapExit follows m/z, and a ramp has single values"},
  };
  for (const auto& [tunes, names, error] : kCases) EXPECT_EQ(RefusalOf(tunes, names), error);
}

TEST(RampSteps, NamesThatAreNoLensesAreWrongUsage) {
  const Tunes tunes = CapExits({100, 120});
  const auto error = [&](const std::vector<std::string>& names) {
    return UsageErrorOf([&] { FindRampSteps(tunes, names); });
  };
  EXPECT_EQ(error({"CapExit", "CapExit"}), "--lens: CapExit is given twice");
  EXPECT_EQ(error({"CapExit", "Skimmer", "Q0Offset"}), "--lens: a ramp walks one lens or two");
  EXPECT_EQ(error({"MZLow"}), "--lens: no ramp can walk MZLow");
}

}  // namespace
}  // namespace tests
