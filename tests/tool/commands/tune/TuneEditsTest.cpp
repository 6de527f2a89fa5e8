// Tests: RowEdit.cpp, TuneEdits.cpp.

#include <tool/commands/tune/TuneEdits.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <tool/frame/UsageError.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using TslBL::DevTuneRules;
using TslBL::Probes;
using Texts = std::vector<std::string>;

// The warnings.
Texts Make(DevTuneRules& rules, const Texts& edits) { return TslTool::MakeTuneEdits(rules, edits); }
Texts Warnings(const Texts& edits) {
  DevTuneRules rules(Probes::ESI);
  return Make(rules, edits);
}

std::string RefusalOf(const Texts& edits) {
  try {
    Warnings(edits);
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

TEST(TuneEdits, AreMadeInTheirOrder) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_THAT(Make(rules, {"ControlType=SIM", "MZ=500", "SimWithSpan=0.4"}), IsEmpty());
  EXPECT_EQ(rules.QMZLow(), 500.0);
  EXPECT_EQ(rules.ControlData.MZHi, 0.4);
}

TEST(TuneEdits, TheSettlingDelayIsWorkedOutLast) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_THAT(Make(rules, {"InitSettleDelay=auto", "MZRange=100-200"}), IsEmpty());
  EXPECT_EQ(rules.QInitSettleDelay(), 650u);
  EXPECT_THAT(Make(rules, {"InitSettleDelay=auto", "InitSettleDelay=7"}),
              ElementsAre("InitSettleDelay=7: a later change made it 650"));
}

TEST(TuneEdits, CalibrantsOfOneLensDoNotUndoEachOther) {
  EXPECT_THAT(Warnings({"CapExit=calibrated", "CapExit@118=95", "CapExit@322=99"}), IsEmpty());
}

TEST(TuneEdits, WhatALaterOneTurnsBackIsTold) {
  EXPECT_THAT(Warnings({"CapExit=calibrated", "CapExit@118=95", "CapExit@118=96"}),
              ElementsAre("CapExit@118=95: a later change made it 96"));
  EXPECT_THAT(Warnings({"CapExit=calibrated", "CapExit@118=95", "PolarityType=negative"}),
              ElementsAre("CapExit@118=95: a later change made it -95"));
  EXPECT_THAT(Warnings({"CapExit=calibrated", "CapExit@118=95", "Calibrant@118=none"}),
              ElementsAre("CapExit@118=95: a later change made it none"));
  EXPECT_THAT(Warnings({"Calibrant@118=none", "Calibrant@118=A"}),
              ElementsAre("Calibrant@118=none: a later change made it A"));
  EXPECT_THAT(Warnings({"MZCal@118=2360", "MZCal@118=2361"}),
              ElementsAre("MZCal@118=2360: a later change made it 2361"));
}

TEST(TuneEdits, OfASingleLensToo) {
  EXPECT_THAT(
      Warnings({"CapExit@118=95", "CapExit@118=none"}),
      UnorderedElementsAre("CapExit@118=95: a later change made it none",
                           "CapExit@118=95: CapExit stands at 160 for every m/z; CapExit=calibrated lets it "
                           "follow the calibrants"));
}

TEST(TuneEdits, ALensThatFollowsInTheEndIsNotIdle) {
  EXPECT_THAT(Warnings({"CapExit@118=95", "CapExit=calibrated"}), IsEmpty());
}

TEST(TuneEdits, StayWithTheRowThatIsMoved) {
  EXPECT_THAT(Warnings({"CapExit=calibrated", "CapExit@118=95", "Calibrant@118=A", "Calibrant@118=@120"}),
              IsEmpty());
  EXPECT_THAT(Warnings({"MZCal@118=2360", "MZCal@118=@120", "MZCalName@120=A"}), IsEmpty());
  EXPECT_THAT(Warnings({"Calibrant@118=@120", "Calibrant@120=@121"}),
              ElementsAre("Calibrant@118=@120: a later change made it m/z 121"));
  EXPECT_THAT(Warnings({"MZCal@5=@6", "MZCal@6=@7"}),
              ElementsAre("MZCal@5=@6: a later change made it m/z 7"));
}

TEST(TuneEdits, ARowOfOneTableDoesNotFollowThoseOfTheOther) {
  EXPECT_THAT(Warnings({"MZCal@118=2360", "Calibrant@118=@120"}), IsEmpty());
}

TEST(TuneEdits, ACalibrationIsCheckedWhenItIsWhole) {
  DevTuneRules rules(Probes::ESI);
  EXPECT_THAT(Make(rules, {"MZCal@5=none", "MZCal@3000=none", "MZCal@118=2360", "MZCal@2721=54420"}),
              IsEmpty());
  EXPECT_EQ(rules.QMZCalPts().size(), 2u);
  EXPECT_EQ(
      RefusalOf({"MZCal@118=100", "Name=A"}),
      "MZCal: m/z calibration point 1 is invalid.  m/z and mass DAC values must be greater than previous "
      "m/z calibration point. By m/z, counted from 0, there are m/z 5 DAC 100, m/z 118 DAC 100, m/z 3000 "
      "DAC 60000");
  EXPECT_EQ(
      RefusalOf({"MZCal@5=none", "MZCal@3000=none"}),
      "MZCal: There must be at least two m/z calibration points. By m/z, counted from 0, there are none");
}

TEST(TuneEdits, ACalibrationThatIsNotChangedMayBeBad) {
  DevTuneRules rules(Probes::ESI);
  rules.MZCalPts.clear();
  EXPECT_THAT(Make(rules, {"Name=A"}), IsEmpty());
}

TEST(TuneEdits, ARefusalNamesTheChange) {
  EXPECT_EQ(RefusalOf({"Name=A", "MZLow=1"}),
            "MZLow=1: Low m/z is out of range.  Valid values are 5.00 to 3000.00.");
}

TEST(TuneEdits, WhatIsNoChangeIsWrongUsage) { EXPECT_THROW(Warnings({"Foo=1"}), TslTool::UsageError); }

}  // namespace
}  // namespace tests
