// tslbl method ramp: a lens ramp as a method.

#include <fmt/format.h>

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/method/SwitchTime.h>
#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/FindUserField.h>
#include <tool/commands/tune/FormOption.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/UsageError.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/ramp/RampStep.h>
#include <cmath>
#include <memory>
#include <optional>

namespace TslTool {
namespace {

using TslBL::MethodRules;
using TslBL::RampLens;
using TslBL::RampStep;
using TslBL::TuneField;

// The instrument's program of a ramp has one time period for each value.
constexpr double kMostSteps = 10'000;

struct RampArguments {
  std::string tune;
  std::vector<std::string> lenses;
  std::optional<std::uint32_t> records;
  std::string output;
  std::string to;
  SwitchTime switchTime;
};

[[noreturn]] void Refuse(const std::string& text, const std::string& reason) {
  throw UsageError(fmt::format("--lens: \"{}\" {}", text, reason));
}

void RequireWithin(const std::string& text, double value, const TslBL::Limits& limits) {
  if (value < limits.Min || value > limits.Max)
    Refuse(text, fmt::format("is out of range: {} is not from {} to {}", value, limits.Min, limits.Max));
}

// "FIELD=START:END:STEP"
RampLens ParseLens(const TslBL::Tune& tune, const std::string& text) {
  const std::size_t equals = text.find('=');
  const std::vector<std::string> parts = SplitColons(
      equals == std::string::npos ? std::string_view() : std::string_view(text).substr(equals + 1));
  if (parts.size() != 3) Refuse(text, "is not LENS=START:END:STEP");
  const UserField& field = FindUserField(tune, text.substr(0, equals));
  if (!TuneField::IsFieldRampable(field.id)) Refuse(text, "is of a field that no ramp can walk");
  RampLens lens;
  lens.Field = field.id;
  lens.Start = ParseReal("--lens", parts[0]);
  lens.End = ParseReal("--lens", parts[1]);
  lens.Step = ParseReal("--lens", parts[2]);
  if (!(lens.Step > 0.0)) Refuse(text, "has a step that is not above 0");
  if (std::abs(lens.End - lens.Start) / lens.Step > kMostSteps)
    Refuse(text, fmt::format("has more than {} steps", kMostSteps));
  const TslBL::Limits limits = TslBL::DevTuneRules(tune).QLimitsNow(field.id);
  RequireWithin(text, lens.Start, limits);
  RequireWithin(text, lens.End, limits);
  return lens;
}

RampStep StepOf(const TslBL::Tune& tune, const RampArguments& arguments) {
  if (arguments.lenses.empty()) throw UsageError("--lens is missing");
  if (arguments.lenses.size() > 2) throw UsageError("--lens: a ramp walks one lens or two");
  RampStep step;
  step.Records = arguments.records.value_or(1);
  if (step.Records == 0) throw UsageError("--records: there must be at least one");
  for (const std::string& text : arguments.lenses) step.Lenses.push_back(ParseLens(tune, text));
  if (step.Lenses.front().Field == step.Lenses.back().Field && step.Lenses.size() > 1)
    throw UsageError("--lens: both are of one lens");
  return step;
}

int RunRamp(const RampArguments& arguments) {
  if (arguments.tune.empty()) throw UsageError("TUNE is missing");
  if (arguments.output.empty()) throw UsageError("--output is missing");
  const double switchTime = arguments.switchTime.Get();
  const TslBL::Tune tune = Load(arguments.tune);
  MethodRules rules(switchTime);
  if (!rules.Create(tune, StepOf(tune, arguments)))
    throw UsageError("--lens: " + TslCommon::ToUtf8(rules.QLastError()));
  SaveNewMethod(rules, FormFor(arguments.to, arguments.output), arguments.output);
  return kDone;
}

}  // namespace

Command MethodRampCommand() {
  auto arguments = std::make_shared<RampArguments>();
  return {.name = "ramp",
          .summary = "Makes a method that walks a lens, or two, through their values",
          .examples =
              "Each value of the first lens has a time period of its own; with two lenses its sequence holds "
              "the\n"
              "values of the second. The end of a ramp whose steps do not meet it is passed by one step.\n"
              "'tslbl ramp best' tells from the run which value is best.\n\n"
              "Examples:\n"
              "  tslbl method ramp esi.xml --lens CapExit=100:200:5 --output ramp.xml\n"
              "  tslbl method ramp esi.xml --lens Skimmer=10:40:5 --lens Q0Offset=-20:-5:1 --records 3 "
              "--output ramp.xml\n",
          .declare =
              [arguments](Options& options) {
                options.Value("TUNE", arguments->tune, "The tune that is ramped");
                options.Repeated("--lens LENS=START:END:STEP", arguments->lenses,
                                 "A lens and its values; give it twice for two lenses");
                options.Value("--records N", arguments->records, "Spectra at each value [1]");
                options.Value("-o,--output FILE", arguments->output,
                              "The method to write; it must not exist");
                arguments->switchTime.Declare(options);
                DeclareForm(options, arguments->to);
              },
          .run = [arguments](const Options&) { return RunRamp(*arguments); }};
}

}  // namespace TslTool
