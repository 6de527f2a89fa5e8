// tslbl method new: a method of one tune.

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/method/SwitchTime.h>
#include <tool/commands/tune/FormOption.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/TimeText.h>
#include <tool/frame/UsageError.h>
#include <memory>
#include <optional>

namespace TslTool {
namespace {

using TslBL::MethodRules;

struct NewArguments {
  std::string tune;
  std::string time;
  std::string output;
  std::string to;
  SwitchTime switchTime;
};

MethodRules NewMethod(const NewArguments& arguments) {
  const double switchTime = arguments.switchTime.Get();
  MethodRules rules =
      arguments.tune.empty() ? MethodRules(switchTime) : MethodRules(switchTime, Load(arguments.tune), 1);
  const bool isFree = arguments.time == "free";
  rules.WTPTimeout(0, isFree ? MethodRules::FreeRun : ParseMilliseconds("--time", arguments.time));
  if (isFree) rules.WTPNumLoops(0, 1);
  return rules;
}

int RunNew(const NewArguments& arguments) {
  if (arguments.output.empty()) throw UsageError("--output is missing");
  SaveNewMethod(NewMethod(arguments), FormFor(arguments.to, arguments.output), arguments.output);
  return kDone;
}

}  // namespace

Command MethodNewCommand() {
  auto arguments = std::make_shared<NewArguments>();
  arguments->time = "1min";
  return {.name = "new",
          .summary = "Makes a method of one tune and one time period",
          .examples =
              "Examples:\n"
              "  tslbl method new --output survey.xml\n"
              "  tslbl method new --tune esi.xml --time 30min --output survey.xml\n",
          .declare =
              [arguments](Options& options) {
                options.Value("--tune FILE", arguments->tune,
                              "Its tune; without this the default tune of an ESI probe");
                options.Value("--time TIME", arguments->time,
                              "How long it takes, as 90s or 1.5min; free: without end [1min]");
                options.Value("-o,--output FILE", arguments->output,
                              "The method to write; it must not exist");
                arguments->switchTime.Declare(options);
                DeclareForm(options, arguments->to);
              },
          .run = [arguments](const Options&) { return RunNew(*arguments); }};
}

}  // namespace TslTool
