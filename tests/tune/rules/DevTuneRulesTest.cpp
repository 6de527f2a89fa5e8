#include <tslbl/tune/rules/DevTuneRules.h>

#include <gtest/gtest.h>

#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/MassRange.h>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>

#include "tune/BesideLibrary.h"

namespace {

using namespace TslBL;

Tune Scan(double low, double high, double step) {
  Tune tune;
  tune.ControlData.MZLow = low;
  tune.ControlData.MZHi = high;
  tune.ControlData.MZStepSize = step;
  tune.ControlData.PulseCountDelay = 1000;
  tune.ControlData.InitSettleDelay = 650;
  tune.ControlData.ScansPerSpec = 1;
  tune.MZCalPts = {{L"Default Low", 5, 100}, {L"Default High", 3000, 60000}};
  return tune;
}

Tune Sim(double centre, double span, double step) {
  Tune tune = Scan(centre, span, step);
  tune.ControlData.Type = Control::Sim;
  return tune;
}

constexpr const char* kInvalidStep = "Invalid stepMDAC in DevTuneRules.cpp NumPulses";

std::string PulsesOrMessage(const Tune& tune) {
  try {
    return std::to_string(DevTuneRules::QNumPulses(tune));
  } catch (const std::runtime_error& e) {
    return e.what();
  }
}

TEST(NumPulses, CountsTheStepsOfTheMassDAC) {
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 200, 0.1)), 1001u);
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(5, 3000, 0.05)), 59901u);
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 200, 0.15)), 667u);   // 2000 / 3 + 1
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 200, 0.12)), 1001u);  // 2.4 counts are 2
}

TEST(NumPulses, TruncatesTheMassDAC) {
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100.04, 200.04, 0.05)), 2001u);  // 2000.8 to 4000.8
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100.04, 200.06, 0.05)), 2002u);  // 2000.8 to 4001.2
}

TEST(NumPulses, OfASmallStepAreThoseOfTheSmallest) {
  for (const double step : {0.01, 0.0, -1.0})
    EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 200, step)), 2001u) << step;
}

TEST(NumPulses, OfARangeNarrowerThanTheStepAreOne) {
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 100.4, 0.5)), 1u);
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(200, 100, 0.1)), 1u);
  Tune uncalibrated = Scan(100, 100.4, 0.5);
  uncalibrated.MZCalPts = {{L"", 7, 1}, {L"", 7, 2}};
  EXPECT_EQ(DevTuneRules::QNumPulses(uncalibrated), 1u) << "the mass DAC is not asked";
}

TEST(NumPulses, WidthIsComparedInHundredths) {
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 100.5, 0.5)), 2u);
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 100.496, 0.5)), 1u + 9 / 10) << "0.50 wide when rounded";
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(100, 100.494, 0.5)), 1u);
}

TEST(NumPulses, OfASimAreOne) { EXPECT_EQ(DevTuneRules::QNumPulses(Sim(500, 0, 0.1)), 1u); }

TEST(NumPulses, OfASimWithSpanAreThoseOfItsSpan) {
  EXPECT_EQ(DevTuneRules::QNumPulses(Sim(500, 1, 0.1)), 11u);
  EXPECT_EQ(DevTuneRules::QNumPulses(Sim(500, 0.4, 0.1)), 5u);
}

TEST(NumPulses, WithoutACalibrationAreOne) {
  Tune tune = Scan(100, 200, 0.1);
  tune.MZCalPts.clear();
  EXPECT_EQ(DevTuneRules::QNumPulses(tune), 1u);
}

TEST(NumPulses, OfANegativeMassDACCountAcrossNull) {
  Tune tune = Scan(0, 10, 0.05);
  tune.MZCalPts = {{L"", 5, 0}, {L"", 10, 100}};
  EXPECT_EQ(DevTuneRules::QNumPulses(tune), 201u);
}

TEST(NumPulses, OfAMassDACThatFallsWrapAround) {
  Tune tune = Scan(100, 200, 0.1);
  tune.MZCalPts = {{L"", 100, 2000}, {L"", 200, 1000}};
  EXPECT_EQ(DevTuneRules::QNumPulses(tune), (4294967295u - 999u) / 2 + 1);
}

TEST(NumPulses, OfAStepThatIsNoNumberThrow) {
  EXPECT_EQ(PulsesOrMessage(Scan(100, 200, std::numeric_limits<double>::quiet_NaN())), kInvalidStep);
}

// Some site's instrument has steps of 0.2 only: a tune with a smaller one cannot be run there.
TEST(NumPulses, OfAStepFarBelowThatOfTheFieldThrow) {
  const tests::BesideLibrary site("overrides.txt", "13 0.05 2995 0.2");
  EXPECT_BESIDE_LIBRARY(site, PulsesOrMessage(Scan(100, 200, 0.05)) == kInvalidStep, "");
  EXPECT_BESIDE_LIBRARY(site, PulsesOrMessage(Scan(100, 200, 0.1)) == "2001", "");
}

// A site may say that the steps are of no size, which divides no range.
TEST(NumPulses, OfAFieldWithoutAStepThrow) {
  const tests::BesideLibrary site("overrides.txt", "13 0.05 2995 0");
  EXPECT_BESIDE_LIBRARY(site, PulsesOrMessage(Scan(100, 200, 0.1)) == kInvalidStep, "");
  EXPECT_BESIDE_LIBRARY(site, PulsesOrMessage(Scan(100, 100, 0.1)) == "1", "");
}

TEST(NumPulses, OfNumbersOutOfRangeDoNoHarm) {
  constexpr double kMax = std::numeric_limits<double>::max();
  // Ends and step are the nearest integers.
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(-kMax, kMax, kMax / 100)), 3u);
  EXPECT_EQ(DevTuneRules::QNumPulses(Scan(kMax, -kMax, 1)), 1u);
}

TEST(NumPulses, OfAStepBeyondAllCountsThrow) {
  constexpr double kMax = std::numeric_limits<double>::max();
  EXPECT_EQ(PulsesOrMessage(Scan(-kMax, kMax, kMax)), kInvalidStep);
  EXPECT_EQ(PulsesOrMessage(Scan(-kMax, kMax, std::numeric_limits<double>::infinity())), kInvalidStep);
}

TEST(NumPulses, AreAtLeastOneForATuneWithinTheLimits) {
  constexpr unsigned kSeed = 271828;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> mz(5, 3000);
  std::uniform_real_distribution<double> step(0.05, 100);
  for (int round = 0; round < 2000; ++round) {
    double low = mz(random);
    double high = mz(random);
    if (low > high) std::swap(low, high);
    const Tune tune = Scan(low, high, step(random));
    const double pulses = DevTuneRules::QNumPulses(tune);
    EXPECT_GE(pulses, 1.0);
    // The step is rounded to a count of the DAC, 20 to the m/z.
    EXPECT_NEAR(pulses, (high - low) / tune.ControlData.MZStepSize + 1,
                2 + 0.5 * (high - low) / tune.ControlData.MZStepSize);
  }
}

TEST(Duration, OfAScan) {
  EXPECT_EQ(DevTuneRules::QDuration(Scan(100, 200, 0.1)), 1001650.0);
  Tune tune = Scan(100, 200, 0.1);
  tune.ControlData.StepSettleDelay = 10;
  tune.ControlData.ScansPerSpec = 3;
  EXPECT_EQ(DevTuneRules::QDuration(tune), (1000 * 10 + 1001 * 1000 + 650) * 3);
}

TEST(Duration, OfASimIsOneDwell) {
  Tune tune = Sim(500, 0, 0.1);
  tune.ControlData.StepSettleDelay = 4095;
  tune.ControlData.ScansPerSpec = 4;
  EXPECT_EQ(DevTuneRules::QDuration(tune), (1000 + 650) * 4);
}

TEST(Duration, WrapsAroundIn32Bits) {
  Tune tune = Sim(500, 0, 0.1);
  tune.ControlData.PulseCountDelay = 2000000;
  tune.ControlData.InitSettleDelay = 0;
  tune.ControlData.ScansPerSpec = 65535;
  EXPECT_EQ(DevTuneRules::QDuration(tune), 131070000000.0 - 30 * 4294967296.0);
  tune.ControlData.ScansPerSpec = 2000;
  EXPECT_EQ(DevTuneRules::QDuration(tune), 4000000000.0) << "unsigned, not negative";
}

TEST(TuneLimits, AreThoseOfTheTables) {
  for (const auto probe : {Probes::ESI, Probes::APCI, Probes::LowFlowESI}) {
    for (std::uint32_t id = 0; id <= TuneField::kFieldCount; ++id) {
      Limits limits{-1, -1, -1};
      DevTuneRules::QLimits(static_cast<TuneField::Id>(id), limits.Min, limits.Max, limits.Step, probe);
      EXPECT_EQ(limits, FieldLimits().QLimits(probe, static_cast<int>(id))) << id;
    }
  }
}

TEST(TuneLimits, OfMz) {
  EXPECT_EQ(DevTuneRules::QMinMz(), 5.0);
  EXPECT_EQ(DevTuneRules::QMaxMz(), 3000.0);
}

TEST(TuneLimits, OfTheSpanOfASim) {
  double min = -1.0;
  double max = -1.0;
  double step = -1.0;
  DevTuneRules::QLimitsSimWithSpan(min, max, step);
  EXPECT_EQ(min, 0.2);
  EXPECT_EQ(max, 1.0);
  EXPECT_EQ(step, 0.2);
  EXPECT_EQ(DevTuneRules::QSimWithSpanStepSize(), 0.1);
}

TEST(TranslateField, RoundsToUnitsOfTheField) {
  struct Row {
    TuneField::Id field;
    double value;
    std::int32_t units;
  };
  const Row rows[] = {
      {TuneField::CapExit, 160, 160},       {TuneField::CapExit, 160.5, 161},
      {TuneField::CapExit, 160.49, 160},    {TuneField::CapExit, -160.5, -161},
      {TuneField::CapExit, -160.49, -160},  {TuneField::CapExit, 0, 0},
      {TuneField::CapExit, -0.5, -1},       {TuneField::CapExit, 0.5, 1},
      {TuneField::CapExit, -0.4, 0},        {TuneField::Skimmer, 18, 180},
      {TuneField::Q0Offset, -8, -160},      {TuneField::HEDynode, -7000, -700},
      {TuneField::Q1Resolution, 99, 99000}, {TuneField::MZStepSize, 0.1, 2},
      {TuneField::Cylinder, -6000, -6000},  {TuneField::Neb1GasPres, 60, 12},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(DevTuneRules::TranslateField(row.field, row.value), row.units) << row.field << " " << row.value;
    EXPECT_EQ(DevTuneRules::TranslateField(Probes::ESI, row.field, row.value), row.units) << row.field;
  }
}

TEST(TranslateField, TakesTheStepOfTheProbe) {
  EXPECT_EQ(DevTuneRules::TranslateField(Probes::APCI, TuneField::CoronaCurrent, 4.25), 425);
  EXPECT_EQ(DevTuneRules::TranslateField(Probes::APCI, TuneField::ApciAuxGas, 60), 12);
  EXPECT_EQ(DevTuneRules::TranslateField(Probes::LowFlowESI, TuneField::Neb1GasPres, 60), 12);
}

TEST(TranslateField, OfAFieldWithoutLimitsIsTheNearestEnd) {
  EXPECT_EQ(DevTuneRules::TranslateField(TuneField::Comment, 1), 2147483647);
  EXPECT_EQ(DevTuneRules::TranslateField(TuneField::Comment, -1), -2147483647 - 1);
  EXPECT_EQ(DevTuneRules::TranslateField(TuneField::Comment, 0), 0);
}

TEST(TranslateField, OfAValueOutOfRangeIsTheNearestEnd) {
  EXPECT_EQ(DevTuneRules::TranslateField(TuneField::Q1Resolution, 1e9), 2147483647);
  EXPECT_EQ(DevTuneRules::TranslateField(TuneField::CapExit, std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(ErrTypes, HaveTheirNumbers) {
  EXPECT_EQ(DevTuneRules::NoError, 0u);
  EXPECT_EQ(DevTuneRules::Warning, 1u);
  EXPECT_EQ(DevTuneRules::Error, 2u);
}

}  // namespace
