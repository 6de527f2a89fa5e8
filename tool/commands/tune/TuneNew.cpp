// tslbl tune new: the default tune of a probe.

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/FormOption.h>
#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/FileLock.h>
#include <tool/frame/UsageError.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Probes;

// The probes that SourceType takes, each as one word: "low-flow-esi".
std::vector<std::string> ProbeWords() {
  std::vector<std::string> words;
  for (std::string name : NamesOf<Probes::ProbeTypes>()) {
    std::ranges::transform(name, name.begin(),
                           [](unsigned char c) { return c == ' ' ? '-' : std::tolower(c); });
    words.push_back(name);
  }
  return words;
}

Probes::ProbeTypes ProbeOf(const std::string& word) {
  const std::vector<std::string> words = ProbeWords();
  return static_cast<Probes::ProbeTypes>(std::ranges::find(words, word) - words.begin());
}

struct NewArguments {
  std::string probe = ProbeWords().front();
  std::string output;
  std::string to;
};

int RunNew(const NewArguments& arguments) {
  if (arguments.output.empty()) throw UsageError("--output is missing");
  const DevTuneRules rules(ProbeOf(arguments.probe));
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
            options.Choice("--probe", arguments->probe, ProbeWords(), "The probe of the ion source");
            options.Value("-o,--output FILE", arguments->output, "The tune to write; it must not exist");
            DeclareForm(options, arguments->to);
          },
      .run = [arguments](const Options&) { return RunNew(*arguments); }};
}

}  // namespace TslTool
