#include <tool/commands/simulate/MeasureMethod.h>

#include <fmt/format.h>

#include <tool/commands/method/MethodStore.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Warning.h>
#include <tool/simulate/Acquisition.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MassRange.h>
#include <algorithm>
#include <memory>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::MethodRules;

// What the tunes of a method scan between them.
Instrument RangeOf(const TslBL::Method& method, double width) {
  Instrument instrument{1e9, 0.0, 0.0, width};
  for (const auto& [id, tune] : method.Tunes) {
    const auto [low, high] = TslBL::QMassRange(tune);
    instrument.mzLow = std::min(instrument.mzLow, low);
    instrument.mzHigh = std::max(instrument.mzHigh, high);
  }
  return instrument;
}

void RequireMeasurable(const std::string& file, const MethodRules& rules) {
  if (!rules.Validate()) throw InputError(file, "", TslCommon::ToUtf8(rules.QLastError()));
  for (const auto& [id, tune] : rules.Tunes)
    if (tune.ControlData.Q1MZType == TslBL::Control::RF_Only)
      throw InputError(file, fmt::format("tune {}", id),
                       "Q1 lets all masses through, which is not simulated");
}

void WarnOfRest(const std::string& file, const MethodRules& rules, const MethodProgram& program) {
  for (std::size_t i = 0; i < program.Spectra().size(); ++i)
    if (program.Spectra()[i] == 0)
      Warn(fmt::format("{}: time period {} is over before its first spectrum is complete", file, i));
  if (std::ranges::any_of(rules.TuneRuns,
                          [](const auto& run) { return run.second.Info.Type != TslBL::DDInfo::None; }))
    Warn(file + ": what tune runs would do on a trigger is not simulated");
}

std::string Amount(const MethodProgram& program) {
  std::string text =
      fmt::format("{} spectra in {} time period{}, {:.6g} s", program.Count(), program.Spectra().size(),
                  program.Spectra().size() == 1 ? "" : "s", program.Seconds());
  if (program.Saved() < program.Count()) text += fmt::format("; {} of them are kept", program.Saved());
  return text;
}

std::shared_ptr<Acquisition> Acquire(const MethodArguments& arguments, const MethodRules& rules,
                                     const Sample& sample) {
  try {
    return std::make_shared<Acquisition>(rules, sample, arguments.width, arguments.seed);
  } catch (const std::runtime_error& error) {
    throw InputError(arguments.file, "", error.what());
  }
}

}  // namespace

Measurement MeasureMethod(const MethodArguments& arguments, const SampleOptions& sample) {
  const MethodRules rules(arguments.switchTime, LoadMethodWithWarning(arguments.file).method);
  RequireMeasurable(arguments.file, rules);
  const TslBL::Method method = rules.operator TslBL::Method();
  const auto acquisition = Acquire(arguments, rules, sample.Get(RangeOf(method, arguments.width)));
  Tell(arguments.file + ": " + Amount(acquisition->Program()));
  WarnOfRest(arguments.file, rules, acquisition->Program());
  return {acquisition->Program().Saved(),
          [method](RunWriter& run) {
            run.AddMethod(method);
            for (const auto& [id, tune] : method.Tunes) run.AddTune(id, tune);
          },
          [acquisition](TslBL::RawSpectrum& raw, std::vector<TrueLine>& truth) {
            return acquisition->Next(raw, truth);
          }};
}

}  // namespace TslTool
