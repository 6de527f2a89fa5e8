#include <gtest/gtest.h>

#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <stdexcept>

using namespace TslBL;

namespace {

// 500 microseconds in each of 4 scans: a point counts for 2 ms.
Tune ScanTune() {
  Tune tune;
  tune.MZCalPts = {{L"Default Low", 5.0, 100.0}, {L"Default High", 3000.0, 60000.0}};
  tune.ControlData.MZLow = 100.0;
  tune.ControlData.MZHi = 200.0;
  tune.ControlData.MZStepSize = 0.05;
  tune.ControlData.PulseCountDelay = 500;
  tune.ControlData.ScansPerSpec = 4;
  return tune;
}

// The same on m/z 99.9 to 100.1, which is DAC 1998 to 2002: five mass steps.
Tune SpanTune() {
  Tune tune = ScanTune();
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZHi = 0.2;
  return tune;
}

Tune WithDwell(std::uint32_t delay, std::uint32_t scans) {
  Tune tune = ScanTune();
  tune.ControlData.PulseCountDelay = delay;
  tune.ControlData.ScansPerSpec = scans;
  return tune;
}

RawSpectrumInfo WithTIC(double tic) {
  RawSpectrumInfo info;
  info.Id = 1;
  info.TimeStamp = 2;
  info.TuneId = 3;
  info.TIC = tic;
  return info;
}

std::vector<double> Rates(const Tune& tune, std::vector<double> counts) {
  AssignCountRateAmpl(counts, tune, nullptr);
  return counts;
}

}  // namespace

TEST(UseRawAmplitudeCounts, IsOff) { EXPECT_FALSE(UseRawAmplitudeCounts()); }

TEST(AssignCountRateAmpl, DividesByTheSecondsOfAPoint) {
  EXPECT_EQ(Rates(ScanTune(), {0.0, 1.0, 10.0}), (std::vector<double>{0.0, 500.0, 5000.0}));
}

TEST(AssignCountRateAmpl, AddsTheMassStepsOfASimWithSpan) {
  EXPECT_DOUBLE_EQ(Rates(SpanTune(), {10.0})[0], 1000.0);
}

TEST(AssignCountRateAmpl, SimWithoutSpanHasOneMassStep) {
  Tune tune = SpanTune();
  for (const double span : {0.0, 0.3}) {  // an odd number of tenths is no span
    tune.ControlData.MZHi = span;
    EXPECT_EQ(Rates(tune, {10.0})[0], 5000.0) << span;
  }
}

TEST(AssignCountRateAmpl, ReportsTheSumOfTheRatesInTheirOrder) {
  std::vector<double> amplitudes = {1e13, 0.003, 0.003, -1e13};
  double tic = -1.0;
  AssignCountRateAmpl(amplitudes, ScanTune(), &tic);
  EXPECT_EQ(tic, ((amplitudes[0] + amplitudes[1]) + amplitudes[2]) + amplitudes[3]);
  EXPECT_EQ(tic, 4.0) << "a sum that knows no order shows nothing";
}

TEST(AssignCountRateAmpl, NullTicIsLegal) {
  std::vector<double> amplitudes = {2.0};
  AssignCountRateAmpl(amplitudes, ScanTune(), nullptr);
  AssignCountRateAmpl(amplitudes, WithDwell(0, 4), nullptr);
  EXPECT_EQ(amplitudes[0], 1000.0);
}

TEST(AssignCountRateAmpl, WithoutDwellLeavesCountsAndReportsNoTic) {
  for (const Tune& tune : {WithDwell(0, 4), WithDwell(500, 0), WithDwell(0, 0)}) {
    std::vector<double> amplitudes = {1.0, 2.0};
    double tic = -1.0;
    AssignCountRateAmpl(amplitudes, tune, &tic);
    EXPECT_EQ(amplitudes, (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(tic, 0.0);
  }
}

TEST(AssignCountRateAmpl, OfNoPointsReportsZero) {
  std::vector<double> none;
  double tic = -1.0;
  AssignCountRateAmpl(none, ScanTune(), &tic);
  EXPECT_EQ(tic, 0.0);
}

TEST(AssignCountRateAmpl, TakesItsIntegersUnsigned) {
  EXPECT_EQ(Rates(WithDwell(4000000000, 1), {4000.0})[0], 1.0);
  EXPECT_EQ(Rates(WithDwell(1000000, 4000000000), {4000000000.0})[0], 1.0);
}

TEST(ScaleRawTICs, DividesEveryHeaderByTheSecondsOfAPoint) {
  RawSpectrumInfo a = WithTIC(10.0);
  RawSpectrumInfo b = WithTIC(-4.0);
  std::vector<RawSpectrumInfo*> infos = {&a, &b};
  ScaleRawTICs(ScanTune(), infos);
  EXPECT_EQ(a, WithTIC(5000.0));
  EXPECT_EQ(b, WithTIC(-2000.0));
}

TEST(ScaleRawTICs, AddsTheMassStepsOfASimWithSpan) {
  RawSpectrumInfo a = WithTIC(10.0);
  std::vector<RawSpectrumInfo*> infos = {&a};
  ScaleRawTICs(SpanTune(), infos);
  EXPECT_DOUBLE_EQ(a.TIC, 1000.0);
}

TEST(ScaleRawTICs, WithoutDwellMakesEveryTicZero) {
  for (const Tune& tune : {WithDwell(0, 4), WithDwell(500, 0)}) {
    RawSpectrumInfo a = WithTIC(10.0);
    RawSpectrumInfo b = WithTIC(20.0);
    std::vector<RawSpectrumInfo*> infos = {&a, &b};
    ScaleRawTICs(tune, infos);
    EXPECT_EQ(a, WithTIC(0.0));
    EXPECT_EQ(b, WithTIC(0.0));
  }
}

TEST(CountRate, ChangesNothingIfTheMassStepsCannotBeCounted) {
  Tune tune = SpanTune();
  const double low = tune.ControlData.MZLow - tune.ControlData.MZHi * 0.5;
  tune.MZCalPts = {{L"A", low, 1998.0}, {L"B", low, 2002.0}};
  std::vector<double> amplitudes = {10.0};
  double tic = -1.0;
  EXPECT_THROW(AssignCountRateAmpl(amplitudes, tune, &tic), std::runtime_error);
  EXPECT_EQ(amplitudes[0], 10.0);
  EXPECT_EQ(tic, -1.0);
  RawSpectrumInfo info = WithTIC(10.0);
  std::vector<RawSpectrumInfo*> infos = {&info};
  EXPECT_THROW(ScaleRawTICs(tune, infos), std::runtime_error);
  EXPECT_EQ(info, WithTIC(10.0));
}
