#include <tslbl/tune/DevTuneRules.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/MassRange.h>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr double kSmallestStep = 0.05;  // m/z

// Wide, so that differences hold.
std::int64_t Hundredths(double mz) { return Truncate<std::int32_t>(mz * 100 + 0.5); }

std::uint32_t WholeDAC(const MZConvert& convert, double mz) {
  return static_cast<std::uint32_t>(Truncate<std::int32_t>(convert.MZToDAC(mz)));
}

Limits LimitsOf(Probes::ProbeTypes probe, TuneField::Id field) {
  return FieldLimits().QLimits(probe, static_cast<int>(field));
}

}  // namespace

void DevTuneRules::QLimits(TuneField::Id field, double& min, double& max, double& step,
                           Probes::ProbeTypes probe) {
  const Limits limits = LimitsOf(probe, field);
  min = limits.Min;
  max = limits.Max;
  step = limits.Step;
}

double DevTuneRules::QMinMz() { return FieldLimits().QLimits(TuneField::MZ).Min; }
double DevTuneRules::QMaxMz() { return FieldLimits().QLimits(TuneField::MZ).Max; }

void DevTuneRules::QLimitsSimWithSpan(double& min, double& max, double& step) {
  min = 0.2;
  max = 1.0;
  step = 0.2;
}

double DevTuneRules::QSimWithSpanStepSize() { return 0.1; }

std::int32_t DevTuneRules::TranslateField(TuneField::Id field, double value) {
  return TranslateField(Probes::ESI, field, value);
}

std::int32_t DevTuneRules::TranslateField(Probes::ProbeTypes probe, TuneField::Id field, double value) {
  const double units = value / LimitsOf(probe, field).Step;
  return Truncate<std::int32_t>(units + (value < 0.0 ? -0.5 : 0.5));
}

std::uint32_t DevTuneRules::QNumPulses(const Tune& tune) {
  const auto [low, high] = QMassRange(tune);
  const double wanted = tune.ControlData.MZStepSize;
  const double step = wanted < kSmallestStep ? kSmallestStep : wanted;
  if (Hundredths(high) - Hundredths(low) < Hundredths(step)) return 1;

  const MZConvert convert(tune.MZCalPts);
  const std::uint32_t lowDAC = WholeDAC(convert, low);
  const std::uint32_t highDAC = WholeDAC(convert, high);
  const double unit = LimitsOf(tune.Source.Type, TuneField::MZStepSize).Step;
  const auto stepMDAC = Truncate<std::int32_t>(step / unit + 0.5);
  if (stepMDAC < 1) throw std::runtime_error("Invalid stepMDAC in DevTuneRules.cpp NumPulses");
  return (highDAC - lowDAC) / static_cast<std::uint32_t>(stepMDAC) + 1;
}

double DevTuneRules::QDuration(const Tune& tune) {
  const Control& control = tune.ControlData;
  const std::uint32_t pulses = QNumPulses(tune);
  return ((pulses - 1) * control.StepSettleDelay + pulses * control.PulseCountDelay +
          control.InitSettleDelay) *
         control.ScansPerSpec;
}

}  // namespace TslBL
