// tslbl tune new: the default tune of a probe.

#include <tool/commands/tune/FormOption.h>
#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/FileLock.h>
#include <tool/frame/UsageError.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <filesystem>
#include <memory>
#include <system_error>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;

struct NewArguments {
  std::string probe = "esi";
  std::string output;
  std::string to;
};

int RunNew(const NewArguments& arguments) {
  if (arguments.output.empty()) throw UsageError("--output is missing");
  const DevTuneRules rules(arguments.probe == "apci" ? TslBL::Probes::APCI : TslBL::Probes::ESI);
  CreateExclusive(arguments.output);
  try {
    Save(rules, FormFor(arguments.to, arguments.output), arguments.output);
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(arguments.output, ignored);
    throw;
  }
  WarnOfFaults(arguments.output, {}, rules);
  return kDone;
}

}  // namespace

Command TuneNewCommand() {
  auto arguments = std::make_shared<NewArguments>();
  return {
      .name = "new",
      .summary = "Makes the default tune of a probe",
      .examples =
          "Examples:\n  tslbl tune new --output esi.xml\n  tslbl tune new --probe apci --output apci.tune\n",
      .declare =
          [arguments](Options& options) {
            options.Choice("--probe", arguments->probe, {"esi", "apci"}, "The probe of the ion source");
            options.Value("-o,--output FILE", arguments->output, "The tune to write; it must not exist");
            DeclareForm(options, arguments->to);
          },
      .run = [arguments](const Options&) { return RunNew(*arguments); }};
}

}  // namespace TslTool
