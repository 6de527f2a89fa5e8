#include <tool/commands/ramp/WriteRampResults.h>

#include <fmt/format.h>

#include <tool/commands/ramp/StepCurve.h>
#include <tool/commands/tune/TuneDifferences.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/FileLock.h>
#include <tool/frame/InputError.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;

void RequireAlike(const std::string& file, const TslBL::Tune& tune, const TslBL::Tune& ramped) {
  if (tune.ControlData.PolarityType != ramped.ControlData.PolarityType)
    throw InputError(file, "", "the tune and the run are of opposite polarity");
  if (tune.Source.Type != ramped.Source.Type)
    throw InputError(file, "", "the tune and the run are of different probes");
}

void Store(const std::string& file, const LensResult& lens, DevTuneRules& rules) {
  const auto written = rules.WRampResults(lens.field, lens.value, lens.curve);
  if (written == DevTuneRules::NoError) return;
  const std::string text =
      fmt::format("{}: {}: {}", file, LensName(rules, lens.field), TslCommon::ToUtf8(rules.QLastError()));
  if (written == DevTuneRules::Error) throw std::runtime_error(text);
  Warn(text);
}

}  // namespace

void WriteRampResults(const std::string& file, const RampResponse& response, const TslBL::Tune& ramped) {
  const FileLock lock(file);
  const TuneFile loaded = LoadWithWarning(file);
  RequireAlike(file, loaded.tune, ramped);
  DevTuneRules rules(loaded.tune);
  for (const LensResult& lens : LensResults(response, loaded.tune.Q1CalPts)) Store(file, lens, rules);
  const std::vector<std::string> changes = TuneDifferences(loaded.tune, rules);
  if (changes.empty()) {
    Warn(file + ": no change");
    return;
  }
  rules.WLastSavedNow();
  Save(rules, loaded.form, file);
  WarnOfFaults(file, TuneFaults(loaded.tune), rules);
  Tell(file, changes);
}

}  // namespace TslTool
