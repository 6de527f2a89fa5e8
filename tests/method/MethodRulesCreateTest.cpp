#include <tslbl/method/MethodRules.h>

#include <RecordCheck.h>
#include <tslbl/records/VexException.h>
#include <tslbl/tune/ramp/RampStep.h>
#include <functional>
#include <limits>

#include <method/TestMethod.h>
#include <tune/Samples.h>

namespace {

using namespace tests;

using F = TuneField;
using R = MethodRules;

RampLens Lens(F::Id field, double start, double end, double step) {
  RampLens lens;
  lens.Field = field;
  lens.Start = start;
  lens.End = end;
  lens.Step = step;
  return lens;
}

RampStep Ramp(std::initializer_list<RampLens> lenses, std::uint32_t records = 1) {
  RampStep step;
  step.Lenses = lenses;
  step.Records = records;
  return step;
}

Method Created(const RampStep& step, const Tune& tune = TuneOf("+100-200")) {
  R rules(kSwitchTime);
  EXPECT_TRUE(rules.Create(tune, step));
  EXPECT_EQ(rules.QLastError(), L"");
  return rules;
}

// "10 13 16": a value of each tune.
std::string ValuesOf(const Method& method, const std::function<double(const Tune&)>& value) {
  std::ostringstream text;
  for (const auto& [id, tune] : method.Tunes) text << (id > 1 ? " " : "") << value(tune);
  return text.str();
}
std::string SkimmersOf(const Method& method) {
  return ValuesOf(method, [](const Tune& tune) { return tune.ControlData.Skimmer.Single; });
}

TEST(MethodOfARamp, HasATimePeriodForEachValue) {
  const Method method = Created(Ramp({Lens(F::Skimmer, 10, 20, 3)}, 4));
  EXPECT_EQ(SequencesOf(method), "1 | 2 | 3 | 4 | 5");
  EXPECT_EQ(TuneIdsOf(method), "1 2 3 4 5");
  EXPECT_EQ(SkimmersOf(method), "10 13 16 19 22");
  for (const auto& [id, run] : method.TuneRuns) EXPECT_EQ(run, TuneRun(id, 4));
  for (const TimePeriod& period : method.TimePeriods) {
    EXPECT_TRUE(period.Save);
    EXPECT_EQ(period.Loops, 1u);
    EXPECT_EQ(period.Timeout, 0xFFFFFFFFu);
    EXPECT_EQ(period.SettleDelay, 0u);
  }
}

TEST(MethodOfARamp, IsDescribed) {
  EXPECT_EQ(Created(Ramp({Lens(F::Skimmer, 10, 20, 3)})).Desc,
            L"Ramping:\r\nSkimmer from 10 to 20 step 3\r\n");
  EXPECT_EQ(
      Created(Ramp({Lens(F::Q0Offset, -1.25, 0.5, 0.0625), Lens(F::CapExit, 100, 90, 5)})).Desc,
      L"Ramping:\r\nQ0 Offset from -1.25 to 0.5 step 0.0625\r\nCapillary Exit from 100 to 90 step 5\r\n");
  EXPECT_EQ(Created(Ramp({Lens(F::HEDynode, 0, 1234567, 1234567)})).Desc,
            L"Ramping:\r\nHigh Energy Dynode from 0 to 1.23457e+06 step 1.23457e+06\r\n");
}

TEST(MethodOfARamp, HasNothingElse) {
  R rules = RulesOf("+100-200 -5-50 | +300-400");
  rules.WInclusionList({{1, 2, 3, 4}});
  rules.WValveMethod(R(0.5).QValveMethod());
  ASSERT_TRUE(rules.Create(TuneOf("+100-200"), Ramp({Lens(F::Skimmer, 10, 10, 3)})));
  Method expected = MethodOf("+100-200");
  expected.Desc = L"Ramping:\r\nSkimmer from 10 to 10 step 3\r\n";
  expected.Tunes.at(1).ControlData.Skimmer.Single = 10;
  expected.Tunes.at(1).ControlData.InitSettleDelay = 2000;
  expected.TimePeriods[0].Timeout = R::FreeRun;
  EXPECT_EQ(static_cast<const Method&>(rules), expected);
}

TEST(MethodOfARamp, CountsItsSteps) {
  struct Row {
    double start, end, step;
    const char* values;
  };
  const Row rows[] = {
      {10, 20, 5, "10 15 20"},
      {10, 20, 10, "10 20"},
      {10, 20, 15, "10 25"},
      {10, 20, 20, "10 30"},
      {10, 10, 1, "10"},
      {20, 10, 3, "20 17 14 11 8"},
      {20, 10, 5, "20 15 10"},
      {20, 10, 15, "20 5"},
      {-5, 5, 5, "-5 0 5"},
      {0, 0.3, 0.1, "0 0.1 0.2 0.3"},
      // Held at the limits of the field, -100 to 100.
      {95, 100, 3, "95 98 100"},
      {95, 110, 5, "95 100 100 100"},
      {-95, -100, 3, "-95 -98 -100"},
      {-95, -110, 5, "-95 -100 -100 -100"},
      {110, 111, 1, "100 100"},
      {-111, -112, 1, "-100 -100"},
      // On the way in there is none.
      {-110, -90, 10, "-110 -100 -90"},
      {110, 90, 10, "110 100 90"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(SkimmersOf(Created(Ramp({Lens(F::Skimmer, row.start, row.end, row.step)}))), row.values)
        << row.start << " " << row.end;
}

TEST(MethodOfARamp, OfTwoLensesHasAnItemForEachValueOfTheSecond) {
  const Method method = Created(Ramp({Lens(F::Skimmer, 10, 12, 1), Lens(F::Q0Offset, 5, 4, 1)}, 2));
  EXPECT_EQ(SequencesOf(method), "1 2 | 3 4 | 5 6");
  EXPECT_EQ(TuneIdsOf(method), "1 2 3 4 5 6");
  EXPECT_EQ(SkimmersOf(method), "10 10 11 11 12 12");
  EXPECT_EQ(ValuesOf(method, [](const Tune& tune) { return tune.ControlData.Q0Offset.Single; }),
            "5 4 5 4 5 4");
  for (const auto& [id, run] : method.TuneRuns) EXPECT_EQ(run, TuneRun(id, 2));
}

TEST(MethodOfARamp, HasTwoLensesAtMost) {
  const Method method =
      Created(Ramp({Lens(F::Skimmer, 10, 11, 1), Lens(F::Q0Offset, 5, 6, 1), Lens(F::CapExit, 1, 9, 1)}));
  EXPECT_EQ(SequencesOf(method), "1 2 | 3 4");
  EXPECT_EQ(method.Desc, L"Ramping:\r\nSkimmer from 10 to 11 step 1\r\nQ0 Offset from 5 to 6 step 1\r\n");
  EXPECT_EQ(method.Tunes.at(1).ControlData.CapExit.Single, 160);
}

TEST(MethodOfARamp, TakesAllElseFromTheTune) {
  const Tune tune = SampleTune();
  const Method method = Created(Ramp({Lens(F::Skimmer, 10, 12, 1)}), tune);
  for (const auto& [id, step] : method.Tunes) {
    Tune expected = tune;
    expected.ControlData.InitSettleDelay = 2000;
    expected.ControlData.Skimmer.Single = 9.0 + id;
    EXPECT_EQ(step, expected);
  }
}

// Every field that a ramp can walk through, in its place; a whole number is cut off.
TEST(MethodOfARamp, WritesEachField) {
  struct Row {
    F::Id field;
    Probes::ProbeTypes probe;
    std::function<void(Tune&)> set;
  };
  const auto lens = [](IOPoint Control::*member) {
    return [=](Tune& t) {
      (t.ControlData.*member).Type = IOPoint::SingleType, (t.ControlData.*member).Single = 25.75;
    };
  };
  const std::vector<Row> rows = {
      {F::Cylinder, Probes::ESI, [](Tune& t) { t.Source.Cylinder = 25; }},
      {F::EndPlate, Probes::ESI, [](Tune& t) { t.Source.EndPlate = 25; }},
      {F::CapEnter, Probes::APCI, [](Tune& t) { t.Source.CapEnter = 25; }},
      {F::DryGasTemp, Probes::ESI, [](Tune& t) { t.Source.DryGasTemp = 25; }},
      {F::ApciVapTemp, Probes::APCI, [](Tune& t) { t.Source.ApciVapTemp = 25; }},
      {F::DryGasFlow, Probes::ESI, [](Tune& t) { t.Source.DryGasFlow = 15; }},  // the limit
      {F::Neb1GasPres, Probes::ESI, [](Tune& t) { t.Source.Neb1GasPres = 25; }},
      {F::CapExit, Probes::ESI, lens(&Control::CapExit)},
      {F::Skimmer, Probes::ESI, lens(&Control::Skimmer)},
      {F::Q0RFAmpl, Probes::ESI, lens(&Control::Q0RFAmpl)},
      {F::Q0Offset, Probes::ESI, lens(&Control::Q0Offset)},
      {F::Q0Exit1, Probes::ESI, lens(&Control::Q0Exit1)},
      {F::Q0Exit2, Probes::ESI, lens(&Control::Q0Exit2)},
      {F::HEDynode, Probes::ESI, [](Tune& t) { t.ControlData.HEDynode = 25; }},
      {F::DetectorGain, Probes::ESI, [](Tune& t) { t.ControlData.DetectorGain = 0; }},  // the limit
      {F::SignalThreshold, Probes::ESI, [](Tune& t) { t.ControlData.SignalThreshold = 25; }},
      {F::Q1Resolution, Probes::ESI, lens(&Control::Q1Resolution)},
      {F::Q1CoarseResolution, Probes::ESI, lens(&Control::Q1CoarseResolution)},
      {F::Q1Offset, Probes::ESI, lens(&Control::Q1Offset)},
      {F::Q1IonGuide, Probes::ESI, lens(&Control::Q1IonGuide)},
  };
  int rampable = 0;
  for (std::uint32_t field = 0; field < F::kFieldCount; ++field)
    rampable += F::IsFieldRampable(static_cast<F::Id>(field)) ? 1 : 0;
  EXPECT_EQ(rows.size(), static_cast<std::size_t>(rampable));
  for (const Row& row : rows) {
    Tune tune = SampleTune();
    tune.Source = SampleIonSource(row.probe);
    for (IOPoint Control::*member : {&Control::CapExit, &Control::Skimmer})
      (tune.ControlData.*member) = SampleIOPoint();
    const Method method = Created(Ramp({Lens(row.field, 25.75, 25.75, 1)}), tune);
    row.set(tune);
    tune.ControlData.InitSettleDelay = 2000;
    EXPECT_EQ(ToBytes(method.Tunes.at(1)), ToBytes(tune)) << row.field;
  }
}

TEST(MethodOfARamp, CutsWholeNumbersTowardsZero) {
  const Method method = Created(Ramp({Lens(F::HEDynode, -2.5, 2.5, 1.25)}));
  EXPECT_EQ(ValuesOf(method, [](const Tune& tune) { return tune.ControlData.HEDynode; }), "-2 -1 0 1 2");
  const Method below = Created(Ramp({Lens(F::SignalThreshold, -2.5, 2.5, 2.5)}));
  EXPECT_EQ(ValuesOf(below, [](const Tune& tune) { return tune.ControlData.SignalThreshold; }),
            "4.29497e+09 0 2")
      << "what is below 0 must not turn into a number that the limits take";
}

// The limits are those of the source: an APCI probe has no cylinder, and the end plate goes to 5000.
TEST(MethodOfARamp, IsHeldAtTheLimitsOfItsProbe) {
  Tune tune = TuneOf("+100-200");
  const RampStep endPlate = Ramp({Lens(F::EndPlate, 4990, 6010, 510)});
  const auto volts = [](const Tune& t) { return t.Source.EndPlate; };
  EXPECT_EQ(ValuesOf(Created(endPlate, tune), volts), "4990 5500 6000");
  tune.Source.Type = Probes::APCI;
  EXPECT_EQ(ValuesOf(Created(endPlate, tune), volts), "4990 5000 5000");
  const Method cylinder = Created(Ramp({Lens(F::Cylinder, -10, 20, 10)}), tune);
  EXPECT_EQ(ValuesOf(cylinder, [](const Tune& t) { return t.Source.Cylinder; }), "-10 0 0 0");
}

TEST(MethodOfARamp, WithoutLensesIsThatOfTheTune) {
  Tune tune = TuneOf("+100-200");
  const Method method = Created(Ramp({}, 3), tune);
  EXPECT_EQ(method.Desc, L"Ramping:\r\nNothing");
  EXPECT_EQ(SequencesOf(method), "1");
  EXPECT_EQ(method.Tunes.at(1), tune) << "it settles as it did";
  EXPECT_EQ(method.TuneRuns.at(1), TuneRun(1, 3));
  // 3 times 1001 pulses of 1 ms and the 3795 microseconds of a new tune: 3014.385 ms.
  EXPECT_EQ(method.TimePeriods[0].Timeout, 3015u);
  EXPECT_EQ(method.TimePeriods[0].Loops, 1u);
  EXPECT_FALSE(DiverterValveMethod(method.ValveMethod).IsEmpty());
  EXPECT_EQ(Created(Ramp({}, R::FreeRun), tune).TimePeriods[0].Timeout, R::FreeRun);
}

TEST(MethodOfARamp, LeavesTheMark) {
  R rules = RulesOf("+100-200");
  EXPECT_TRUE(rules.Create(TuneOf("+5-50"), Ramp({Lens(F::Skimmer, 10, 20, 3)})));
  EXPECT_FALSE(rules.IsModified());
  EXPECT_TRUE(rules.Create(TuneOf("+5-50"), Ramp({})));
  EXPECT_FALSE(rules.IsModified());
  rules.WDescription(L"x");
  EXPECT_TRUE(rules.Create(TuneOf("+5-50"), Ramp({Lens(F::Skimmer, 10, 20, 3)})));
  EXPECT_TRUE(rules.IsModified());
  EXPECT_EQ(rules.QPolSwitchTime(), kSwitchTime);
}

TEST(MethodOfARamp, LeavesAnErrorThatWasNotAskedFor) {
  R rules = RulesOf("+100-200");
  rules.WTPNumLoops(0, 0);
  EXPECT_FALSE(rules.Validate());
  EXPECT_TRUE(rules.Create(TuneOf("+5-50"), Ramp({Lens(F::Skimmer, 10, 20, 3)})));
  EXPECT_EQ(rules.QLastError(), L"Time period 0 is invalid.  There are no loops.");
}

TEST(MethodOfARamp, IsAccepted) {
  const Tune tune = DevTuneRules(Probes::ESI);
  const R rules(kSwitchTime,
                Created(Ramp({Lens(F::Skimmer, 10, 20, 3), Lens(F::CapExit, 100, 200, 20)}), tune));
  EXPECT_TRUE(rules.Validate());
  EXPECT_EQ(rules.QLastError(), L"");
}

// ---- Refusals --------------------------------------------------------------------------------

void ExpectRefused(const RampStep& step, const std::wstring& text) {
  R rules = RulesOf("+100-200 -5-50");
  const Method before = rules;
  EXPECT_FALSE(rules.Create(TuneOf("+5-50"), step));
  EXPECT_EQ(rules.QLastError(), text);
  EXPECT_EQ(static_cast<const Method&>(rules), before);
  EXPECT_FALSE(rules.IsModified());
}

TEST(Ramp, OfLensesOfBothKindsIsRefused) {
  const std::wstring text = L"You cannot mix steppable and non-steppable lenses.";
  ExpectRefused(Ramp({Lens(F::Skimmer, 1, 2, 1), Lens(F::Cylinder, 1, 2, 1)}), text);
  ExpectRefused(Ramp({Lens(F::Cylinder, 1, 2, 1), Lens(F::Skimmer, 1, 2, 1)}), text);
  ExpectRefused(Ramp({Lens(F::Skimmer, 1, 2, 1), Lens(F::PolarityType, 1, 2, 1)}), text);
  ExpectRefused(Ramp({Lens(F::Skimmer, 1, 2, 1), Lens(F::CapExit, 1, 2, 1), Lens(F::Cylinder, 1, 2, 1)}),
                text);
}

TEST(Ramp, OfAFieldThatNoRampWalksThroughIsRefused) {
  ExpectRefused(Ramp({RampLens()}), L"Invalid ramp field. - Ion Polarity");
  ExpectRefused(Ramp({Lens(F::MZLow, 1, 2, 1)}), L"Invalid ramp field. - Low m/z");
  ExpectRefused(Ramp({Lens(F::HEDynode, 1, 2, 1), Lens(F::EndPlateTemp, 1, 2, 1)}),
                L"Invalid ramp field. - Endplate Temperature");
  ExpectRefused(Ramp({Lens(F::Q1Enter, 1, 2, 1), Lens(F::MZLow, 1, 2, 1)}),
                L"Invalid ramp field. - Q1 Entrance Lens Voltage");
}

TEST(Ramp, WhoseStepLeadsNowhereIsRefused) {
  const std::wstring text =
      L" - The step of a ramp must be greater than 0, and a ramp can have at most 200000 values.";
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const RampLens lenses[] = {
      Lens(F::Skimmer, 1, 2, 0),         Lens(F::Skimmer, 2, 1, 0),        Lens(F::Skimmer, 1, 1, 0),
      Lens(F::Skimmer, 1, 2, -1),        Lens(F::Skimmer, 1, 2, -100),     Lens(F::Skimmer, 1, 2, kNaN),
      Lens(F::Skimmer, kNaN, 2, 1),      Lens(F::Skimmer, 1, kNaN, 1),     Lens(F::Skimmer, 1, kInfinity, 1),
      Lens(F::Skimmer, 1, 2, 1e-9),      Lens(F::Skimmer, 0, 2000000, 10), Lens(F::Skimmer, 2, 1, 1e-300),
      Lens(F::Skimmer, 1, 2, kInfinity), Lens(F::Skimmer, 1, 1, -1),       Lens(F::Skimmer, 1, 2, -1e17),
  };
  for (const RampLens& lens : lenses) {
    ExpectRefused(Ramp({lens}), L"Skimmer" + text);
    ExpectRefused(Ramp({Lens(F::CapExit, 1, 2, 1), lens}), L"Skimmer" + text);
  }
  ExpectRefused(Ramp({Lens(F::CapExit, 0, 499, 1), Lens(F::Skimmer, 0, 400, 1)}), L"Skimmer" + text);
}

TEST(Ramp, OfAsManyValuesAsThereMayBeIsMade) {
  Tune tune = TuneOf("+100-200");
  tune.Q1CalPts.clear();
  EXPECT_EQ(
      Created(Ramp({Lens(F::CapExit, 0, 499, 1), Lens(F::Skimmer, 0, 39, 0.1)}), tune).TimePeriods.size(),
      500u);
}

TEST(MethodOfARamp, HasMoreValuesThan65536) {
  EXPECT_EQ(Created(Ramp({Lens(F::Skimmer, 0, 70, 0.001)}), Tune()).TimePeriods.size(), 70001u);
}

TEST(Ramp, OfANumberThatNamesNoFieldThrows) {
  R rules = RulesOf("+100-200");
  const Method before = rules;
  EXPECT_THROW(rules.Create(TuneOf("+5-50"), Ramp({Lens(static_cast<F::Id>(57), 1, 2, 1)})), VexException);
  EXPECT_EQ(static_cast<const Method&>(rules), before);
  EXPECT_EQ(rules.QLastError(), L"");
}

TEST(Ramp, WithoutLensesThrowsAsTheDurationOfItsTune) {
  R rules = RulesOf("+100-200");
  const Method before = rules;
  Tune tune = TuneOf("+100-200");
  tune.ControlData.MZStepSize = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW(rules.Create(tune, Ramp({})), std::runtime_error);
  EXPECT_EQ(static_cast<const Method&>(rules), before);
}

}  // namespace
