#include <limits>
#include <stdexcept>
#include <vector>

#include <tslbl/tune/Settling.h>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

Tune Range(double low, double high, std::uint32_t delay) {
  Tune tune = Unmarked();
  tune.Info = SampleTuneInfo();
  tune.ControlData.MZLow = low;
  tune.ControlData.MZHi = high;
  tune.ControlData.InitSettleDelay = delay;
  return tune;
}

Tune WithCurve(Tune tune, const std::vector<std::pair<double, double>>& curve) {
  tune.ControlData.CapExit = LensOf(IOPoint::CalibratedType, 1e9);
  tune.Q1CalPts.clear();
  for (const auto& [mz, volts] : curve) tune.Q1CalPts.push_back(Calibrant(mz, {{TuneField::CapExit, volts}}));
  return tune;
}

void ExpectDelay(const Tune& tune, std::uint32_t delay) {
  DevTuneRules rules(tune);
  Tune after = tune;
  after.ControlData.InitSettleDelay = delay;
  const bool another = delay != tune.ControlData.InitSettleDelay;
  EXPECT_EQ(rules.CalculateInitialSettlingDelay(), another);
  EXPECT_EQ(TuneBytes(rules), TuneBytes(after));
  EXPECT_EQ(rules.IsModified(), another);
  EXPECT_EQ(LastErrorOf(rules), L"");
  EXPECT_FALSE(rules.CalculateInitialSettlingDelay()) << "once is enough";
}

TEST(InitialSettlingDelay, OfAScanIsThatOfItsRange) {
  ExpectDelay(Range(5, 3000, 0), 3795);
  ExpectDelay(Range(100, 200, 1), 650);
  ExpectDelay(Range(100, 110, 7), 515);
  ExpectDelay(Range(100, 100, 7), 0);
}

TEST(InitialSettlingDelay, ThatIsRightStays) {
  ExpectDelay(Range(5, 3000, 3795), 3795);
  ExpectDelay(Range(100, 200, 650), 650);
}

TEST(InitialSettlingDelay, OfASimIsThatOfItsSpan) {
  Tune tune = Range(500, 0, 9);
  tune.ControlData.Type = Control::Sim;
  ExpectDelay(tune, 0);
  tune.ControlData.MZHi = 2.0;
  ExpectDelay(tune, 503);  // 2 + 501
}

TEST(InitialSettlingDelay, OfACapillaryExitThatFollowsMz) {
  ExpectDelay(WithCurve(Range(5, 3000, 0), {{5, 100}, {3000, 170}}), 3795);
  ExpectDelay(WithCurve(Range(5, 3000, 0), {{5, 100}, {3000, 200}}), 5000);
  ExpectDelay(WithCurve(Range(5, 3000, 0), {{5, 200}, {3000, 100}}), 5000);
  ExpectDelay(WithCurve(Range(100, 200, 0), {{100, 100}, {200, 160}}), 2500);
}

TEST(InitialSettlingDelay, TakesTheCurveAtTheEndsOfTheRange) {
  ExpectDelay(WithCurve(Range(100, 200, 0), {{5, 0}, {100, 100}, {200, 160}, {3000, 400}}), 2500);
}

TEST(InitialSettlingDelay, CutsTheCurveToTheLimits) {
  // -1000 to -350 counts as -400 to -350.
  ExpectDelay(WithCurve(Range(100, 200, 0), {{100, -1000}, {200, -350}}), 1250);
}

TEST(InitialSettlingDelay, OfACurveWithoutPointsIsThatOfTheRange) {
  ExpectDelay(WithCurve(Range(100, 200, 0), {}), 650);
}

TEST(InitialSettlingDelay, OfASingleValueDoesNotAskTheCurve) {
  Tune tune = WithCurve(Range(100, 200, 0), {{100, 0}, {200, 400}});
  tune.ControlData.CapExit = SingleLens(160);
  ExpectDelay(tune, 650);
}

TEST(InitialSettlingDelay, BeyondTheLimitIsNotWritten) {
  DevTuneRules rules(Range(5, 1e7, 77));
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(rules.CalculateInitialSettlingDelay());
    EXPECT_EQ(rules.QInitSettleDelay(), 77u);
    EXPECT_EQ(LastErrorOf(rules),
              L"Initial Settling Delay is out of range.  Valid values are 0.00 to 5000000.00.");
    EXPECT_FALSE(rules.IsModified());
  }
}

TEST(InitialSettlingDelay, OfACurveWithTwoValuesThrows) {
  DevTuneRules rules(WithCurve(Range(100, 200, 7), {{100, 1}, {100, 2}}));
  EXPECT_THROW(rules.CalculateInitialSettlingDelay(), std::runtime_error);
  EXPECT_EQ(rules.QInitSettleDelay(), 7u);
}

TEST(Duration, OfASpectrumOfALongScanWrapsAround) {
  Tune tune = Unmarked();  // 29951 pulses
  EXPECT_EQ(DevTuneRules::QDuration(tune), 29954795.0);
  tune.ControlData.ScansPerSpec = 143;
  EXPECT_EQ(DevTuneRules::QDuration(tune), 29954795.0 * 143);
  tune.ControlData.ScansPerSpec = 144;
  EXPECT_EQ(DevTuneRules::QDuration(tune), 29954795.0 * 144 - 4294967296.0);
}

TEST(ExactDuration, DoesNotWrapAround) {
  Tune tune = Unmarked();
  EXPECT_EQ(DevTuneRules::QExactDuration(tune), 29954795.0);
  tune.ControlData.ScansPerSpec = 144;
  EXPECT_EQ(DevTuneRules::QExactDuration(tune), 29954795.0 * 144);
  tune.ControlData.PulseCountDelay = 4000000000u;
  tune.ControlData.StepSettleDelay = 5;
  tune.ControlData.ScansPerSpec = 1;
  EXPECT_EQ(DevTuneRules::QExactDuration(tune), 29951 * 4e9 + 29950 * 5 + 3795);
}

TEST(Duration, IsOfTheStepsBetweenThePulses) {
  Tune tune = Unmarked();
  tune.ControlData.MZHi = 5.25;  // three pulses
  tune.ControlData.InitSettleDelay = 0;
  tune.ControlData.PulseCountDelay = 100;
  tune.ControlData.StepSettleDelay = 7;
  EXPECT_EQ(DevTuneRules::QDuration(tune), 2 * 7 + 3 * 100.0);
}

TEST(Duration, OfAnInvalidStepThrows) {
  Tune tune = Unmarked();
  tune.ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW(DevTuneRules::QDuration(tune), std::runtime_error);
}

// More than 20 counts to the m/z, so that a width just below the step holds a step of counts.
Tune Steep(double low, double high, double step) {
  Tune tune = Range(low, high, 0);
  tune.ControlData.MZStepSize = step;
  tune.MZCalPts = {{L"", 5, 100}, {L"", 3000, 65535}};
  return tune;
}

TEST(NumPulses, RoundEndsAndStepToHundredths) {
  EXPECT_EQ(DevTuneRules::QNumPulses(Steep(100.004, 100.496, 0.5)), 2u) << "0.50 wide when rounded";
  EXPECT_EQ(DevTuneRules::QNumPulses(Steep(100, 100.49497, 0.5)), 1u) << "0.49 wide when rounded";
}

TEST(NumPulses, RoundTheStepToCounts) {
  Tune tune = Range(100, 200, 0);
  tune.ControlData.MZStepSize = 0.124725;  // 2.4945 counts
  EXPECT_EQ(DevTuneRules::QNumPulses(tune), 1001u);
  tune.ControlData.MZStepSize = 0.12525;  // 2.505
  EXPECT_EQ(DevTuneRules::QNumPulses(tune), 667u);
}

TEST(StepDAC, IsTheStepInCountsOfTheInstrument) {
  Tune tune = Range(100, 200, 0);
  for (const auto& [step, counts] :
       {std::pair(0.01, 1u), std::pair(0.05, 1u), std::pair(0.1, 2u), std::pair(0.124725, 2u),
        std::pair(0.12525, 3u), std::pair(2995.0, 59900u)}) {
    tune.ControlData.MZStepSize = step;
    EXPECT_EQ(DevTuneRules::QStepDAC(tune), counts) << step;
  }
  tune.ControlData.MZStepSize = std::numeric_limits<double>::infinity();
  EXPECT_THROW(DevTuneRules::QStepDAC(tune), std::runtime_error);
}

TEST(TranslateField, RoundsJustBelowHalfAUnitDown) {
  EXPECT_EQ(DevTuneRules::TranslateField(TuneField::CapExit, 160.495), 160);
  EXPECT_EQ(DevTuneRules::TranslateField(TuneField::CapExit, -160.495), -160);
}

TEST(SettlingDelay, OfATuneIsThatOfItsWayBack) {
  EXPECT_EQ(SettlingDelay(Range(100, 200, 7)), 650u);
  EXPECT_EQ(SettlingDelay(WithCurve(Range(5, 3000, 0), {{5, 100}, {3000, 200}})), 5000u);
  EXPECT_EQ(SettlingDelay(Range(5, 1e7, 77)), 10000795u) << "beyond what the field may hold";
  EXPECT_THROW(SettlingDelay(WithCurve(Range(100, 200, 7), {{100, 1}, {100, 2}})), std::runtime_error);
}

TEST(SettlingDelay, BeginsAndEndsAtItsEdges) {
  struct Row {
    double span, change;
    std::uint32_t microseconds;
  };
  const Row rows[] = {
      {0.00099, 0, 0},   {0.5, 0, 500},    // 0.5 + 500.25
      {1, 0, 501},                         // 1 + 500.5
      {599.99, 0, 1399},                   // 599.99 + 799.995
      {600.5, 0, 1400},                    // 600.5 + 800
      {0, 40.0079, 0},   {0, 40.0081, 1},  // 125 microseconds to the volt
      {0, 79.999, 4999}, {0, 80.0001, 5000}, {0, -79.5, 4937}, {0, -80.0001, 5000},
  };
  for (const Row& row : rows)
    EXPECT_EQ(SettlingDelay(row.span, 0, row.change), row.microseconds) << row.span << " " << row.change;
}

}  // namespace
