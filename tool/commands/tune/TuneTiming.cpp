#include <tool/commands/tune/TuneTiming.h>

#include <fmt/format.h>

#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/Settling.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <cmath>
#include <functional>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Tune;

std::string Row(const char* label, const std::function<std::string()>& value) {
  std::string shown;
  try {
    shown = value();
  } catch (const std::runtime_error& e) {
    shown = fmt::format("unknown: {}", e.what());
  }
  return fmt::format("  {:<19} {}\n", label, shown);
}

// The m/z of a step as the mass DAC takes it, on the average over the range.
double StepOnDAC(const Tune& tune) {
  const auto [low, high] = TslBL::QMassRange(tune);
  const TslBL::MZConvert convert(tune.MZCalPts);
  return DevTuneRules::QStepDAC(tune) * (high - low) / (convert.MZToDAC(high) - convert.MZToDAC(low));
}

std::string Steps(const Tune& tune) {
  const std::uint32_t steps = DevTuneRules::QNumPulses(tune);
  return steps == 1 ? "1" : fmt::format("{} of {:.6g} m/z", steps, StepOnDAC(tune));
}

// The instrument counts microseconds in 32 bits.
std::string Duration(const Tune& tune) {
  const TslBL::Control& control = tune.ControlData;
  const std::uint32_t steps = DevTuneRules::QNumPulses(tune);
  const double exact = DevTuneRules::QExactDuration(tune);
  const double counted = DevTuneRules::QDuration(tune);
  std::string text = fmt::format("{} ms", exact / 1000.0);
  if (exact != counted) text += fmt::format(", which the instrument counts as {} ms", counted / 1000.0);
  return text + fmt::format(": {} x ({} us + {} x {} us dwell + {} x {} us settling)", control.ScansPerSpec,
                            control.InitSettleDelay, steps, control.PulseCountDelay, steps - 1,
                            control.StepSettleDelay);
}

// Why the speed of the steps is not the one that the step and the delays of the tune promise.
std::string WhyAnotherSpeed(const Tune& tune, double step) {
  const double set = tune.ControlData.MZStepSize;
  return std::abs(step - set) <= 0.005 * set
             ? "rounded down"
             : fmt::format("which counts with a step of {} m/z; on the mass DAC it is {:.6g}", set, step);
}

std::string ScanSpeed(const Tune& tune) {
  const double speed = tune.QScanSpeed();
  if (DevTuneRules::QNumPulses(tune) == 1) return "none: there is one step";
  std::string text = fmt::format("{} m/z per s", speed);
  const TslBL::Control& control = tune.ControlData;
  const double delays = static_cast<double>(control.StepSettleDelay) + control.PulseCountDelay;
  const double step = StepOnDAC(tune);
  const double ofSteps = step / delays * 1e6;
  if (std::abs(ofSteps - speed) <= 0.005 * ofSteps) return text;
  return fmt::format("{:.6g} m/z per s by its steps; nominally {}, {}", ofSteps, text,
                     WhyAnotherSpeed(tune, step));
}

std::string Settling(const Tune& tune) {
  const std::uint32_t needed = TslBL::SettlingDelay(tune);
  const std::uint32_t set = tune.ControlData.InitSettleDelay;
  return fmt::format("{} us{}", needed, needed > set ? fmt::format("; {} are set", set) : "");
}

}  // namespace

std::string TuneTiming(const Tune& tune) {
  return "Timing\n" + Row("steps of a scan", [&] { return Steps(tune); }) +
         Row("a spectrum", [&] { return Duration(tune); }) +
         Row("scan speed", [&] { return ScanSpeed(tune); }) +
         Row("settling needed", [&] { return Settling(tune); });
}

}  // namespace TslTool
