// tslbl method set: a method is changed.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/method/MethodCommands.h>
#include <tool/commands/method/MethodDifferences.h>
#include <tool/commands/method/MethodEdit.h>
#include <tool/commands/method/MethodFaults.h>
#include <tool/commands/method/MethodStore.h>
#include <tool/commands/method/SwitchTime.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/FileLock.h>
#include <memory>

namespace TslTool {
namespace {

using TslBL::Method;
using TslBL::MethodRules;

struct SetArguments {
  std::vector<std::string> words;
  SwitchTime switchTime;
};

void EditAll(const std::string& file, const std::vector<std::string>& edits, MethodRules& rules) {
  for (const std::string& text : edits) {
    const EditResult result = EditMethod(rules, text);
    if (result.refused) throw std::runtime_error(fmt::format("{}: {}: {}", file, text, result.text));
    if (!result.text.empty()) Warn(fmt::format("{}: {}: {}", file, text, result.text));
  }
}

int RunSet(const SetArguments& arguments) {
  if (arguments.words.empty()) throw UsageError("FILE is missing");
  const std::string& file = arguments.words.front();
  const std::vector<std::string> edits(arguments.words.begin() + 1, arguments.words.end());
  if (edits.empty()) throw UsageError("FIELD=VALUE is missing");
  const double switchTime = arguments.switchTime.Get();
  RequireNoRun(file);
  const FileLock lock(file);
  const MethodFile loaded = LoadMethodWithWarning(file);
  MethodRules rules(switchTime, loaded.method);
  const std::vector<std::string> faults = MethodFaults(rules);
  EditAll(file, edits, rules);
  const Method edited = rules.operator Method();
  const std::vector<std::string> changes = MethodDifferences(loaded.method, edited);
  if (changes.empty()) {
    Warn(file + ": no change");
    return kDone;
  }
  SaveMethod(edited, loaded.form, file);
  if (!faults.empty())
    Warn(fmt::format("{}: the rules did not accept it before: {}", file, fmt::join(faults, "; ")));
  WarnOfMethodFaults(file, MethodRules(switchTime, edited), faults);
  Print(fmt::format("{}\n", fmt::join(changes, "\n")));
  return kDone;
}

}  // namespace

Command MethodSetCommand() {
  auto arguments = std::make_shared<SetArguments>();
  return {
      .name = "set",
      .summary = "Changes a method",
      .examples =
          "The changes are made in their order. One that is refused is shown with the reason, the exit\n"
          "status is 1 and the file stays as it was. What has changed is shown. Loops and delays follow\n"
          "from the rest, and are worked out anew. A document is rewritten without its comments.\n\n"
          "Changes:\n" +
          MethodEditForms() +
          "\nTIME is a number with ms, s, min or h, or of seconds. P0/0.Type is that of the first run of "
          "the\n"
          "item, P0/0/1.Type that of the second. START-END, ExcludeDuration and the time of an EndTrigger\n"
          "are whole numbers as the control of the instrument counts them, and are kept as they are.\n\n"
          "Examples:\n"
          "  tslbl method set survey.xml P0.Timeout=20min P0/0.MZRange=100-800\n"
          "  tslbl method set survey.xml P0.Item=negative.xml Period=esi Valve@0=waste Valve@2min=source\n"
          "  tslbl method set survey.xml P0/0.Type=TuneChange P0/0/1.Tune=fragments.xml\n",
      .declare =
          [arguments](Options& options) {
            options.Values("FILE FIELD=VALUE", arguments->words, "The method, and what to change");
            arguments->switchTime.Declare(options);
          },
      .run = [arguments](const Options&) { return RunSet(*arguments); }};
}

}  // namespace TslTool
