// tslbl tune set: fields of a tune are changed.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneDifferences.h>
#include <tool/commands/tune/TuneEdit.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/commands/tune/UserFields.h>
#include <tool/frame/FileLock.h>
#include <memory>
#include <utility>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;

// The fields of names, with them.
std::string NamedValues() {
  std::string text;
  for (const FieldGroup& group : UserFieldGroups())
    for (const UserField& field : group.fields)
      if (const std::string names = field.valueNames(); !names.empty() && names != "on, off")
        text += fmt::format("  {:<16} {}\n", field.name, names);
  return text;
}

std::string SettableFields() {
  std::string text;
  for (const FieldGroup& group : UserFieldGroups()) {
    std::vector<std::string> names;
    for (const UserField& field : group.fields)
      if (field.set != nullptr && (names.empty() || names.back() != field.name))
        names.emplace_back(field.name);
    text += fmt::format("  {}:\n", group.title);
    std::string line;
    for (const std::string& name : names) {
      if (line.size() + name.size() > 76) text += "   " + std::exchange(line, "") + '\n';
      line += ' ' + name;
    }
    text += "   " + line + '\n';
  }
  return text;
}

// A change, and how its field stood after it.
struct Done {
  TuneEdit edit;
  std::string shown;
};

// What a later change of the same command turned back.
void WarnOfUndone(const std::string& file, const std::vector<Done>& done, const DevTuneRules& rules) {
  for (const auto& [edit, shown] : done)
    if (const std::string now = edit.Shown(rules); now != shown)
      Warn(fmt::format("{}: {}: a later change made it {}", file, edit.Text(), now));
}

void EditAll(const std::string& file, const std::vector<std::string>& edits, DevTuneRules& rules) {
  std::vector<Done> done;
  for (const std::string& text : edits) {
    const TuneEdit edit(rules, text);
    const EditResult result = edit.Apply(rules);
    if (result.refused) throw std::runtime_error(fmt::format("{}: {}: {}", file, text, result.text));
    if (!result.text.empty()) Warn(fmt::format("{}: {}: {}", file, text, result.text));
    done.push_back({edit, edit.Shown(rules)});
  }
  WarnOfUndone(file, done, rules);
}

int RunSet(const std::string& file, const std::vector<std::string>& edits) {
  if (file.empty()) throw UsageError("FILE is missing");
  if (edits.empty()) throw UsageError("FIELD=VALUE is missing");
  const FileLock lock(file);
  const TuneFile loaded = LoadWithWarning(file);
  DevTuneRules rules(loaded.tune);
  EditAll(file, edits, rules);
  const std::vector<std::string> changes = TuneDifferences(loaded.tune, rules);
  if (changes.empty()) {
    Warn(file + ": no change");
    return kDone;
  }
  rules.WLastSavedNow();
  Save(rules, loaded.form, file);
  WarnOfFaults(file, TuneFaults(loaded.tune), rules);
  Print(fmt::format("{}\n", fmt::join(changes, "\n")));
  return kDone;
}

}  // namespace

Command TuneSetCommand() {
  auto words = std::make_shared<std::vector<std::string>>();
  return {.name = "set",
          .summary = "Changes fields of a tune, as far as the rules allow",
          .examples =
              "The changes are made in their order, each under the rules as the ones before left the\n"
              "tune. A value that a rule refuses is shown with the rule's message, the exit status is 1\n"
              "and the file stays as it was. What has changed is shown, as by diff: some fields change\n"
              "others too, such as SourceType, PolarityType and the gases of APCI. To move both ends\n"
              "of a range use MZRange. A document is rewritten without its comments.\n\n"
              "Fields:\n" +
              SettableFields() +
              "  m/z range and step:\n"
              "    " +
              CombinedForms() +
              "\n"
              "  A lens at the calibrant of an m/z:\n"
              "    " +
              kCalibrantForms +
              "\n\n"
              "Values:\n" +
              NamedValues() +
              "  switches         on, off\n"
              "  lenses           a number, or calibrated to follow m/z by the Q1 step calibration\n"
              "  InitSettleDelay  a number, or auto for what the m/z range and the capillary exit need\n"
              "  Model            MAKE/MODEL of the catalogue of syringes; Diameter sets any other\n\n"
              "Examples:\n"
              "  tslbl tune set esi.xml MZRange=100-1000 InitSettleDelay=auto\n"
              "  tslbl tune set esi.xml CapExit=calibrated CapExit@118=95 'Comment=after venting'\n",
          .declare =
              [words](Options& options) {
                options.Values("FILE FIELD=VALUE", *words, "The tune, and what to change");
              },
          .run =
              [words](const Options&) {
                if (words->empty()) throw UsageError("FILE is missing");
                return RunSet(words->front(), {words->begin() + 1, words->end()});
              }};
}

}  // namespace TslTool
