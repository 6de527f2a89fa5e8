// Tests: DevTuneRules.cpp.

#include <limits>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

// A value of its own in every field, so that no query can take the neighbour's.
Tune Distinct() {
  Tune tune = SampleTune();
  tune.ControlData.MZHi = 0.8;
  return tune;
}

TEST(Queries, OfTheRecord) {
  const DevTuneRules rules(Distinct());
  EXPECT_EQ(rules.QName(), L"Sp\u00E4t");
  EXPECT_EQ(rules.QComment(), L"After venting");
  EXPECT_EQ(rules.QLastSaved(), 1234567890123);
}

TEST(Queries, OfTheSource) {
  const DevTuneRules rules(Distinct());
  EXPECT_EQ(rules.QIonSourceType(), Probes::LowFlowESI);
  EXPECT_EQ(rules.QCylinder(), -4000);
  EXPECT_EQ(rules.QEndPlate(), -3500);
  EXPECT_EQ(rules.QCapEnter(), -4500);
  EXPECT_EQ(rules.QEndPlateTemp(), IonSource::Medium);
  EXPECT_EQ(rules.QDryGasTemp(), 300u);
  EXPECT_EQ(rules.QApciVapTemp(), 325u);
  EXPECT_EQ(rules.QDryGasFlow(), 10.5);
  EXPECT_EQ(rules.QNeb1GasPres(), 60u);
  EXPECT_EQ(rules.QCoronaCurrent(), 4.25);
}

TEST(Queries, OfSwitches) {
  bool IonSource::*const fields[] = {&IonSource::Neb2GasOn,    &IonSource::CalValve2On,
                                     &IonSource::CalSample1On, &IonSource::CalSample2On,
                                     &IonSource::CalValveOn,   &IonSource::ControlByCurrent};
  bool (DevTuneRules::*const queries[])()
      const = {&DevTuneRules::QNeb2GasOn,    &DevTuneRules::QCalValve2On, &DevTuneRules::QCalSample1On,
               &DevTuneRules::QCalSample2On, &DevTuneRules::QCalValveOn,  &DevTuneRules::QControlByCurrent};
  for (std::size_t on = 0; on < std::size(fields); ++on) {
    Tune tune;
    for (const auto field : fields) tune.Source.*field = false;
    tune.Source.*fields[on] = true;
    const DevTuneRules rules(tune);
    for (std::size_t i = 0; i < std::size(queries); ++i) EXPECT_EQ((rules.*queries[i])(), i == on) << on;
    EXPECT_FALSE(rules.QQ1PolePolarity());
  }
}

// Under APCI two names are one field.
TEST(Queries, OfApciNamesReadTheSharedFields) {
  for (const Probes::ProbeTypes probe : kProbes) {
    const DevTuneRules rules(SampleTune(probe));
    EXPECT_EQ(rules.QCoronaVoltage(), -4000);
    EXPECT_EQ(rules.QApciAuxGas(), 60u);
    EXPECT_TRUE(rules.QApciNebGas());
  }
  Tune off = SampleTune(Probes::APCI);
  off.Source.CalValveOn = false;
  EXPECT_FALSE(DevTuneRules(off).QApciNebGas());
}

TEST(Queries, OfTheAcquisition) {
  const DevTuneRules rules(Distinct());
  EXPECT_EQ(rules.QControlType(), Control::Sim);
  EXPECT_EQ(rules.QMZLow(), 500.5);
  EXPECT_EQ(rules.QMZStepSize(), 0.1);
  EXPECT_EQ(rules.QPolarityType(), PolarityNegative);
  EXPECT_EQ(rules.QInitSettleDelay(), 650u);
  EXPECT_EQ(rules.QStepSettleDelay(), 20u);
  EXPECT_EQ(rules.QPulseCountDelay(), 1000u);
  EXPECT_EQ(rules.QScansPerSpec(), 3u);
}

TEST(Queries, OfTheIonPath) {
  const DevTuneRules rules(Distinct());
  EXPECT_EQ(rules.QCapExit(), SampleIOPoint());
  EXPECT_EQ(rules.QSkimmer(), SingleLens(18));
  EXPECT_EQ(rules.QQ0RFAmpl(), SingleLens(600));
  EXPECT_EQ(rules.QQ0Offset(), SingleLens(-8));
  EXPECT_EQ(rules.QQ0Exit1(), SingleLens(-0.4));
  EXPECT_EQ(rules.QQ0Exit2(), SingleLens(-90));
  EXPECT_EQ(rules.QHEDynode(), -7000);
  EXPECT_EQ(rules.QDetectorGain(), -1400);
  EXPECT_EQ(rules.QSignalThreshold(), 12u);
  EXPECT_EQ(rules.QQ1MZType(), Control::RF_Only);
  EXPECT_EQ(rules.QQ1Resolution(), SingleLens(0.5));
  EXPECT_EQ(rules.QQ1CoarseResolution(), SingleLens(0.75));
  EXPECT_EQ(rules.QQ1Offset(), SingleLens(-1));
  EXPECT_EQ(rules.QQ1Enter(), SingleLens(10));
  EXPECT_EQ(rules.QQ1IonGuide(), SingleLens(-12.6));
  EXPECT_TRUE(rules.QQ1PolePolarity());
}

TEST(Queries, OfTheSyringeAndTheCalibration) {
  const DevTuneRules rules(Distinct());
  EXPECT_EQ(rules.QSyringeManufacturer(), L"Hamilton");
  EXPECT_EQ(rules.QSyringeModel(), L"1725");
  EXPECT_EQ(rules.QSyringeDiameter(), 2.3);
  EXPECT_EQ(rules.QSyringeFlow(), 180u);
  EXPECT_EQ(rules.QMZCalPts(), Distinct().MZCalPts);
}

TEST(Queries, OfTheCustomSyringe) {
  EXPECT_EQ(DevTuneRules::QCustomSyringeManufacturer(), L"CUSTOM - User Entered");
}

Tune WithRange(Control::Types type, double high) {
  Tune tune;
  tune.ControlData.Type = type;
  tune.ControlData.MZHi = high;
  return tune;
}

TEST(QMZHi, OfAScanIsItsHighEnd) {
  EXPECT_EQ(DevTuneRules(WithRange(Control::Scan, 1234.5)).QMZHi(), 1234.5);
  EXPECT_EQ(DevTuneRules(WithRange(Control::Scan, 9999)).QMZHi(), 9999.0);
}

TEST(QMZHi, OfASimIsTheHighestMzWhateverTheSpan) {
  for (const double span : {0.0, 0.2, 2.0, 500.0, 9999.0})
    for (const Probes::ProbeTypes probe : kProbes) {
      Tune tune = WithRange(Control::Sim, span);
      tune.Source.Type = probe;
      EXPECT_EQ(DevTuneRules(tune).QMZHi(), 3000.0) << span;
    }
}

TEST(QSimWithSpan, IsTheCodeOfTheSpan) {
  const double spans[] = {0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0};
  for (std::uint32_t i = 0; i < std::size(spans); ++i)
    EXPECT_EQ(DevTuneRules(WithRange(Control::Sim, spans[i])).QSimWithSpan(), i + 1);
}

TEST(QSimWithSpan, OfAnyOtherNumberIsNoSpan) {
  for (const double span :
       {0.0, 0.1, 0.3, 0.2000000001, 2.2, -0.2, 3000.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(DevTuneRules(WithRange(Control::Sim, span)).QSimWithSpan(), Control::NoSpan) << span;
}

TEST(QSimWithSpan, ComparesExactly) {
  EXPECT_EQ(DevTuneRules(WithRange(Control::Sim, std::nextafter(0.6, 1.0))).QSimWithSpan(), Control::NoSpan);
  EXPECT_EQ(DevTuneRules(WithRange(Control::Sim, 3 * 0.2)).QSimWithSpan(),
            3 * 0.2 == 0.6 ? Control::Span0_6 : Control::NoSpan);
}

TEST(QSimWithSpan, HasTheseNumbers) {
  const Control::SimWithSpanTypes codes[] = {Control::NoSpan,  Control::Span0_2, Control::Span0_4,
                                             Control::Span0_6, Control::Span0_8, Control::Span1_0,
                                             Control::Span1_2, Control::Span1_4, Control::Span1_6,
                                             Control::Span1_8, Control::Span2_0};
  for (std::uint32_t i = 0; i < std::size(codes); ++i) EXPECT_EQ(codes[i], i);
}

double SamplesOf(double step) {
  Tune tune;
  tune.ControlData.MZStepSize = step;
  return DevTuneRules(tune).QSamplesPerMass();
}

TEST(QSamplesPerMass, AreWholeStepsInOneMz) {
  const std::pair<double, double> rows[] = {{0.05, 20}, {0.1, 10}, {0.15, 6}, {0.2, 5},  {0.25, 4},
                                            {0.3, 3},   {0.4, 2},  {1.0, 1},  {1.01, 0}, {2995, 0}};
  for (const auto& [step, samples] : rows) EXPECT_EQ(SamplesOf(step), samples) << step;
}

TEST(QSamplesPerMass, OfStepsOutOfRangeDoNoHarm) {
  EXPECT_EQ(SamplesOf(-0.1), -10.0);
  for (const double step : {0.0, -0.0, 1e-300, std::numeric_limits<double>::quiet_NaN()}) {
    const double samples = SamplesOf(step);
    EXPECT_EQ(samples, samples) << step;
  }
}

TEST(QSamplesPerMass, AreThoseThatWereWritten) {
  for (const double samples : {20.0, 10.0, 6.0, 5.0, 4.0}) {
    DevTuneRules rules = Unmarked();
    rules.WSamplesPerMass(samples);
    EXPECT_EQ(rules.QSamplesPerMass(), samples);
  }
}

TEST(LimitsNow, AreThoseOfTheProbe) {
  EXPECT_EQ(Unmarked(Probes::ESI).QLimitsNow(TuneField::Cylinder), (Limits{-6000, 6000, 1}));
  EXPECT_EQ(Unmarked(Probes::ESI).QLimitsNow(TuneField::EndPlate), (Limits{-6000, 6000, 1}));
  EXPECT_EQ(Unmarked(Probes::APCI).QLimitsNow(TuneField::Cylinder), Limits());
  EXPECT_EQ(Unmarked(Probes::APCI).QLimitsNow(TuneField::CapExit), (Limits{-400, 400, 1}));
  EXPECT_EQ(Unmarked().QLimitsNow(TuneField::kFieldCount), Limits());
}

TEST(LimitsNow, OfApciVoltagesAreTheSideThatTheIonsLeave) {
  DevTuneRules rules = Unmarked(Probes::APCI);
  EXPECT_EQ(rules.QLimitsNow(TuneField::EndPlate), (Limits{-5000, 0, 1}));
  EXPECT_EQ(rules.QLimitsNow(TuneField::CapEnter), (Limits{-5000, 0, 1}));
  EXPECT_EQ(rules.QLimitsNow(TuneField::CoronaVoltage), (Limits{0, 6000, 1}));
  rules.WPolarityType(PolarityNegative);
  EXPECT_EQ(rules.QLimitsNow(TuneField::EndPlate), (Limits{0, 5000, 1}));
  EXPECT_EQ(rules.QLimitsNow(TuneField::CapEnter), (Limits{0, 5000, 1}));
  EXPECT_EQ(rules.QLimitsNow(TuneField::CoronaVoltage), (Limits{-6000, 0, 1}));
}

TEST(LimitsNow, OfASyringeHaveNoStep) {
  EXPECT_EQ(Unmarked().QLimitsNow(TuneField::Diameter), (Limits{0.46, 10.3, 0}));
  EXPECT_EQ(Unmarked().QLimitsNow(TuneField::FlowRate), (Limits{0, 999, 0}));
}

TEST(Samplings, AreTakenAsTheyAre) {
  const auto samplings = DevTuneRules::QSamplings();
  EXPECT_EQ(std::vector<std::int32_t>(samplings.begin(), samplings.end()),
            (std::vector<std::int32_t>{20, 10, 6, 5, 4}));
  const double steps[] = {0.05, 0.1, 0.15, 0.2, 0.25};
  for (std::size_t i = 0; i < samplings.size(); ++i) {
    DevTuneRules rules = Unmarked();
    EXPECT_EQ(rules.WSamplesPerMass(samplings[i]), kNoError);
    EXPECT_DOUBLE_EQ(rules.QMZStepSize(), steps[i]);
  }
}

TEST(SimSpans, StandAtTheirCodes) {
  const auto spans = DevTuneRules::QSimSpans();
  ASSERT_EQ(spans.size(), Control::Span2_0 + 1u);
  EXPECT_EQ(spans[Control::NoSpan], 0.0);
  for (std::uint32_t code = Control::Span0_2; code <= Control::Span2_0; ++code) {
    Tune tune;
    tune.ControlData.MZHi = spans[code];
    EXPECT_EQ(DevTuneRules(tune).QSimWithSpan(), code);
    EXPECT_DOUBLE_EQ(spans[code], code * 0.2);
  }
}

}  // namespace
