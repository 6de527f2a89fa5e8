// How long a tune takes.

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/Settling.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr double kSmallestStep = 0.05;  // m/z

// Wide, so that differences hold.
std::int64_t Hundredths(double mz) { return Truncate<std::int32_t>(mz * 100 + 0.5); }

// What the instrument can do of the step that is set.
double StepOf(const Tune& tune) { return std::max(tune.ControlData.MZStepSize, kSmallestStep); }

std::uint32_t WholeDAC(const MZConvert& convert, double mz) {
  return static_cast<std::uint32_t>(Truncate<std::int32_t>(convert.MZToDAC(mz)));
}

// Counted in `Count`, as far as it goes.
template <class Count>
Count Duration(const Tune& tune) {
  const Control& control = tune.ControlData;
  const Count pulses = DevTuneRules::QNumPulses(tune);
  return ((pulses - 1) * control.StepSettleDelay + pulses * control.PulseCountDelay +
          control.InitSettleDelay) *
         control.ScansPerSpec;
}

}  // namespace

std::uint32_t DevTuneRules::QNumPulses(const Tune& tune) {
  const auto [low, high] = QMassRange(tune);
  if (Hundredths(high) - Hundredths(low) < Hundredths(StepOf(tune))) return 1;

  const MZConvert convert(tune.MZCalPts);
  const std::uint32_t lowDAC = WholeDAC(convert, low);
  const std::uint32_t highDAC = WholeDAC(convert, high);
  return (highDAC - lowDAC) / QStepDAC(tune) + 1;
}

std::uint32_t DevTuneRules::QStepDAC(const Tune& tune) {
  const double unit = FieldLimits().QLimits(tune.Source.Type, TuneField::MZStepSize).Step;
  const double units = StepOf(tune) / unit + 0.5;
  const auto stepMDAC = std::isfinite(units) ? Truncate<std::int32_t>(units) : 0;
  if (stepMDAC < 1) throw std::runtime_error("Invalid stepMDAC in DevTuneRules.cpp NumPulses");
  return static_cast<std::uint32_t>(stepMDAC);
}

double DevTuneRules::QDuration(const Tune& tune) { return Duration<std::uint32_t>(tune); }
double DevTuneRules::QExactDuration(const Tune& tune) { return Duration<double>(tune); }

bool DevTuneRules::CalculateInitialSettlingDelay() {
  const std::uint32_t delay = SettlingDelay(*this);
  if (delay == ControlData.InitSettleDelay) return false;
  WInitSettleDelay(delay);
  return true;
}

}  // namespace TslBL
