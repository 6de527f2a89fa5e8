#include <tool/commands/method/MethodTimes.h>

#include <tool/commands/method/MethodPlace.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Method;
using TslBL::MethodRules;

constexpr double kMicro = 1e-6;

ItemTimes TimesOf(const Method& method, std::size_t tp, std::size_t si) {
  const auto& item = method.TimePeriods[tp].Sequence[si];
  if (item.empty()) throw std::runtime_error(PlaceName(tp, si) + " holds no run");
  const auto run = method.TuneRuns.find(item.front());
  if (run == method.TuneRuns.end())
    throw std::runtime_error(PlaceName(tp, si) + ": its run is not in the method");
  const auto tune = method.Tunes.find(run->second.TuneId);
  if (tune == method.Tunes.end())
    throw std::runtime_error(PlaceName(tp, si) + ": its tune is not in the method");
  const TslBL::Control& control = tune->second.ControlData;
  const double pulses = DevTuneRules::QNumPulses(tune->second);
  const double scans = static_cast<double>(run->second.Records) * control.ScansPerSpec;
  return {.period = tp,
          .item = si,
          .spectra = run->second.Records,
          .polaritySwitch = run->second.SettleDelay * kMicro,
          .initSettling = scans * control.InitSettleDelay * kMicro,
          .stepSettling = scans * (pulses - 1.0) * control.StepSettleDelay * kMicro,
          .counting = scans * pulses * control.PulseCountDelay * kMicro};
}

PeriodTimes TimesOf(const Method& method, std::size_t tp) {
  const TslBL::TimePeriod& period = method.TimePeriods[tp];
  PeriodTimes times{.isFree = period.Timeout == MethodRules::FreeRun,
                    .polaritySwitch = period.SettleDelay * kMicro,
                    .length = period.Timeout / 1000.0,
                    .loops = period.Loops,
                    .loop = 0.0,
                    .items = {}};
  times.items.reserve(period.Sequence.size());
  for (std::size_t si = 0; si < period.Sequence.size(); ++si) {
    times.items.push_back(TimesOf(method, tp, si));
    times.loop += times.items.back().Total();
  }
  if (times.isFree) times.length = times.loop * times.loops;
  return times;
}

}  // namespace

std::vector<PeriodTimes> TimesOf(const MethodRules& rules) {
  const Method method = rules.operator Method();
  std::vector<PeriodTimes> times;
  times.reserve(method.TimePeriods.size());
  for (std::size_t tp = 0; tp < method.TimePeriods.size(); ++tp) times.push_back(TimesOf(method, tp));
  return times;
}

}  // namespace TslTool
