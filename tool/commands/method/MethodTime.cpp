// tslbl method time: where the time of a method goes.

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/method/SwitchTime.h>
#include <tool/commands/method/TimeTable.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/InputError.h>
#include <tool/frame/UsageError.h>
#include <memory>
#include <stdexcept>

namespace TslTool {
namespace {

struct TimeArguments {
  std::string file;
  std::string format = "table";
  SwitchTime switchTime;
};

std::string Table(const TimeArguments& arguments) {
  const TslBL::MethodRules rules(arguments.switchTime.Get(), LoadMethodWithWarning(arguments.file).method);
  try {
    const std::vector<PeriodTimes> times = TimesOf(rules);
    return arguments.format == "tsv" ? TimeTsv(times) : TimeTable(times);
  } catch (const std::runtime_error& e) {
    throw InputError(arguments.file, "", e.what());
  }
}

int RunTime(const TimeArguments& arguments) {
  if (arguments.file.empty()) throw UsageError("FILE is missing");
  Print(Table(arguments));
  return kDone;
}

}  // namespace

Command MethodTimeCommand() {
  auto arguments = std::make_shared<TimeArguments>();
  return {
      .name = "time",
      .summary = "Shows where the time of a method goes",
      .examples =
          "A row for each item of each time period: how many spectra it takes in a loop, and the seconds\n"
          "that go into a change of polarity before it, settling before the first step and between steps,\n"
          "and counting. Then the loop, and the time period as a whole.\n\n"
          "Examples:\n"
          "  tslbl method time survey.xml\n"
          "  tslbl method time survey.xml --format tsv --switch-time 0.3\n",
      .declare =
          [arguments](Options& options) {
            options.Value("FILE", arguments->file, "The method");
            options.Choice("--format", arguments->format, {"table", "tsv"}, "Form of the result");
            arguments->switchTime.Declare(options);
          },
      .run = [arguments](const Options&) { return RunTime(*arguments); }};
}

}  // namespace TslTool
