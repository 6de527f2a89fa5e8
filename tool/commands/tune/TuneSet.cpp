// tslbl tune set: fields of a tune are changed.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/CalibrantEdit.h>
#include <tool/commands/tune/FieldEdit.h>
#include <tool/commands/tune/MZCalEdit.h>
#include <tool/commands/tune/TuneCommands.h>
#include <tool/commands/tune/TuneDifferences.h>
#include <tool/commands/tune/TuneEdits.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/commands/tune/UserFields.h>
#include <tool/frame/FileLock.h>
#include <memory>
#include <stdexcept>
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

void EditAll(const std::string& file, const std::vector<std::string>& edits, DevTuneRules& rules) {
  try {
    for (const std::string& warning : MakeTuneEdits(rules, edits)) Warn(fmt::format("{}: {}", file, warning));
  } catch (const UsageError&) {
    throw;
  } catch (const std::runtime_error& e) {
    throw std::runtime_error(fmt::format("{}: {}", file, e.what()));
  }
}

int RunSet(const std::string& file, const std::vector<std::string>& edits) {
  if (file.empty()) throw UsageError("FILE is missing");
  if (edits.empty()) throw UsageError("FIELD=VALUE is missing");
  const FileLock lock(file);
  const TuneFile loaded = LoadWithWarning(file);
  DevTuneRules rules(loaded.tune);
  EditAll(file, edits, rules);
  const std::vector<std::string> changes = TuneDifferences(loaded.tune, rules);
  const std::vector<std::string> faults = TuneFaults(loaded.tune);
  if (changes.empty()) {
    Warn(file + ": no change");
    WarnOfFaults(file, faults, rules);
    return kDone;
  }
  rules.WLastSavedNow();
  Save(rules, loaded.form, file);
  WarnOfFaults(file, faults, rules);
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
              "of a range use MZRange. The points of the m/z calibration are checked together, after the\n"
              "last change. Problems that the tune has, before or after, are shown as by check; they do\n"
              "not keep it from being changed. A document is rewritten without its comments.\n\n"
              "Fields:\n" +
              SettableFields() +
              "  m/z range and step:\n"
              "    " +
              CombinedForms() +
              "\n"
              "  A lens at the calibrant of an m/z, or not there:\n"
              "    " +
              kLensForms +
              "\n"
              "  The calibrant of an m/z, added or renamed, moved to another m/z, deleted:\n"
              "    " +
              kCalibrantForms +
              "\n"
              "  A point of the m/z calibration, added or set to a mass DAC value, moved, deleted, renamed:\n"
              "    " +
              kMZCalForms +
              "\n\n"
              "Values:\n" +
              NamedValues() +
              "  switches         on, off\n"
              "  lenses           a number, or calibrated to follow m/z by the Q1 step calibration\n"
              "  InitSettleDelay  a number, or auto for what the m/z range and the capillary exit need\n"
              "                   after all other changes\n"
              "  Model            MAKE/MODEL as 'tslbl tune syringes' lists them; Diameter sets any other\n\n"
              "Examples:\n"
              "  tslbl tune set esi.xml MZRange=100-1000 InitSettleDelay=auto\n"
              "  tslbl tune set esi.xml CapExit=calibrated CapExit@118=95 'Comment=after venting'\n"
              "  tslbl tune set esi.xml 'Calibrant@622=Agilent 3' Skimmer@622=31 Calibrant@39=none\n"
              "  tslbl tune set esi.xml MZCal@118=2361 MZCalName@118=low MZCal@5=none MZCal@3000=@2721\n",
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
