// tslbl tune: a tune is made, looked at, checked, changed and converted.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/Numbers.h>
#include <tool/Output.h>
#include <tool/commands/Commands.h>
#include <tool/io/InputError.h>
#include <tool/tune/TuneDiff.h>
#include <tool/tune/TuneEdit.h>
#include <tool/tune/TuneFaults.h>
#include <tool/tune/TuneFields.h>
#include <tool/tune/TuneFile.h>
#include <tool/tune/TunePlot.h>
#include <tool/tune/TuneSheet.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <filesystem>
#include <iostream>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Tune;

void Tell(const std::string& text) {
  Output output("");
  output.Write(text);
  output.Commit();
}

void Warn(const std::string& text) { fmt::print(stderr, "tslbl: {}\n", text); }

void Save(const Tune& tune, TuneForm form, const std::string& file) {
  Output output(file);
  output.Write(TuneBytes(tune, form));
  output.Commit();
  for (const std::string& line : TuneDiff(tune, ThroughForm(tune, form)))
    Warn(fmt::format("{}: this form does not keep all of it: {}", file, line));
}

TuneForm FormFor(const std::string& to, const std::string& file) {
  return to.empty() ? FormOfName(file) : to == "xml" ? TuneForm::Xml : TuneForm::Binary;
}

void Require(const std::string& value, const std::string& name) {
  if (value.empty()) throw UsageError(name + " is missing");
}

const std::vector<std::string> kForms = {"xml", "binary"};
constexpr const char* kFormHelp =
    "Form of FILE; without this a document if its name ends in .xml, else binary";

void DeclareForm(Options& options, std::string& to) { options.Value("--to xml|binary", to, kFormHelp); }

void RequireForm(const std::string& to) {
  if (!to.empty() && std::ranges::find(kForms, to) == kForms.end())
    throw UsageError("--to: \"" + to + "\" is not one of xml, binary");
}

// ---- new -------------------------------------------------------------------------------

struct NewArguments {
  std::string probe = "esi";
  std::string output;
  std::string to;
};

int RunNew(const NewArguments& arguments) {
  Require(arguments.output, "--output");
  RequireForm(arguments.to);
  if (std::filesystem::exists(arguments.output))
    throw std::runtime_error(arguments.output + ": is there already, and may be somebody's tune");
  const DevTuneRules rules(arguments.probe == "apci" ? TslBL::Probes::APCI : TslBL::Probes::ESI);
  Save(rules, FormFor(arguments.to, arguments.output), arguments.output);
  return kDone;
}

Command NewCommand() {
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

// ---- show ------------------------------------------------------------------------------

struct ShowArguments {
  std::vector<std::string> files;
  std::string plot;
};

int RunShow(const ShowArguments& arguments) {
  if (arguments.files.empty()) throw UsageError("FILE is missing");
  if (arguments.files.size() > 2) throw UsageError("FILE: one tune or two can be shown");
  std::vector<PlottedTune> tunes;
  for (const std::string& file : arguments.files) {
    if (!arguments.plot.empty() && SameFile(file, arguments.plot))
      throw UsageError("--plot: " + arguments.plot + " is a tune to be shown");
    const Tune tune = LoadTune(file).tune;
    tunes.push_back({tune, fmt::format("{} ({})", TslCommon::ToUtf8(tune.Info.Name), file)});
  }
  if (!arguments.plot.empty()) {
    Output output(arguments.plot);
    output.Write(TunePlot(tunes));
    output.Commit();
    return kDone;
  }
  for (std::size_t i = 0; i < tunes.size(); ++i) {
    const std::string heading = tunes.size() > 1 ? arguments.files[i] + "\n\n" : "";
    Tell((i > 0 ? "\n" : "") + heading + TuneSheet(tunes[i].tune));
  }
  return kDone;
}

Command ShowCommand() {
  auto arguments = std::make_shared<ShowArguments>();
  return {.name = "show",
          .summary = "Shows a tune as a sheet, or one or two as a picture",
          .examples =
              "The sheet has the fields with their units and limits, the calibrations, what each lens\n"
              "does over m/z, and the timing. The picture, an SVG file, has the lens curves and the\n"
              "settling over m/z, of two tunes in two colours.\n\n"
              "Examples:\n"
              "  tslbl tune show esi.xml\n"
              "  tslbl tune show before.xml after.xml --plot lenses.svg\n",
          .declare =
              [arguments](Options& options) {
                options.Values("FILE", arguments->files, "A tune, or two");
                options.Value("--plot FILE", arguments->plot,
                              "Write a picture to this file instead of the sheet");
              },
          .run = [arguments](const Options&) { return RunShow(*arguments); }};
}

// ---- check -----------------------------------------------------------------------------

// A file that cannot be read does not keep the others from being checked.
int RunCheck(const std::vector<std::string>& files) {
  if (files.empty()) throw UsageError("FILE is missing");
  int status = kDone;
  for (const std::string& file : files) {
    try {
      for (const std::string& fault : TuneFaults(LoadTune(file).tune)) {
        Tell(fmt::format("{}: {}\n", file, fault));
        status = kFailed;
      }
    } catch (const InputError& e) {
      Warn(e.what());
      status = kFailed;
    }
  }
  return status;
}

Command CheckCommand() {
  auto files = std::make_shared<std::vector<std::string>>();
  return {.name = "check",
          .summary = "Tells every problem that the rules find in tunes",
          .examples =
              "A line \"FILE: FIELD: PROBLEM\" each. The exit status is 1 if there is any.\n\n"
              "Example:\n  tslbl tune check *.xml\n",
          .declare = [files](Options& options) { options.Values("FILE", *files, "Tunes"); },
          .run = [files](const Options&) { return RunCheck(*files); }};
}

// ---- set -------------------------------------------------------------------------------

std::string SettableFields() {
  std::string text;
  for (const FieldGroup& group : TuneFieldGroups()) {
    std::vector<std::string> names;
    for (const TuneField& field : group.fields)
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

int RunSet(const std::string& file, const std::vector<std::string>& edits) {
  if (file.empty()) throw UsageError("FILE is missing");
  if (edits.empty()) throw UsageError("FIELD=VALUE is missing");
  const TuneFile loaded = LoadTune(file);
  DevTuneRules rules(loaded.tune);
  for (const std::string& edit : edits) {
    const EditResult result = Edit(rules, edit);
    if (result.refused) throw std::runtime_error(fmt::format("{}: {}: {}", file, edit, result.text));
    if (!result.text.empty()) Warn(fmt::format("{}: {}: {}", file, edit, result.text));
  }
  if (rules == loaded.tune) {
    Warn(file + ": the values are those that it has; it stays as it is");
    return kDone;
  }
  rules.WLastSavedNow();
  Save(rules, loaded.form, file);
  return kDone;
}

Command SetCommand() {
  auto words = std::make_shared<std::vector<std::string>>();
  return {.name = "set",
          .summary = "Changes fields of a tune, as far as the rules allow",
          .examples =
              "The changes are made in their order, each under the rules as the ones before left the\n"
              "tune. A value that a rule refuses is told with the rule's message, the exit status is 1\n"
              "and the file stays as it was.\n\n"
              "Fields:\n" +
              SettableFields() +
              "A lens takes a number, or \"calibrated\" to follow m/z by the Q1 step calibration;\n"
              "LENS@MZ is its value at the calibrant of that m/z, none if the value is \"none\".\n"
              "Switches take on and off. InitSettleDelay=auto sets what the m/z range and the\n"
              "capillary exit need. MZRange=LOW-HIGH sets both ends. SamplesPerMass sets the step.\n"
              "Model takes MAKE/MODEL of the catalogue of syringes, Diameter any other syringe.\n\n"
              "Examples:\n"
              "  tslbl tune set esi.xml MZLow=100 MZHi=1000 InitSettleDelay=auto\n"
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

// ---- diff ------------------------------------------------------------------------------

int RunDiff(const std::vector<std::string>& files) {
  if (files.size() != 2) throw UsageError("FILE: two tunes are compared");
  const std::vector<std::string> lines = TuneDiff(LoadTune(files[0]).tune, LoadTune(files[1]).tune);
  for (const std::string& line : lines) Tell(line + '\n');
  return lines.empty() ? kDone : kFailed;
}

Command DiffCommand() {
  auto files = std::make_shared<std::vector<std::string>>();
  return {.name = "diff",
          .summary = "Tells in what two tunes differ",
          .examples =
              "A line \"FIELD: A -> B\" each. The exit status is 0 if they are the same and 1 if not.\n\n"
              "Example:\n  tslbl tune diff before.xml after.xml\n",
          .declare = [files](Options& options) { options.Values("FILE", *files, "Two tunes, A and B"); },
          .run = [files](const Options&) { return RunDiff(*files); }};
}

// ---- convert ---------------------------------------------------------------------------

struct ConvertArguments {
  std::string input;
  std::string output;
  std::string to;
};

int RunConvert(const ConvertArguments& arguments) {
  Require(arguments.input, "FILE");
  Require(arguments.output, "--output");
  RequireForm(arguments.to);
  if (SameFile(arguments.input, arguments.output))
    throw UsageError("--output: " + arguments.output + " is the tune to be converted");
  Save(LoadTune(arguments.input).tune, FormFor(arguments.to, arguments.output), arguments.output);
  return kDone;
}

Command ConvertCommand() {
  auto arguments = std::make_shared<ConvertArguments>();
  return {.name = "convert",
          .summary = "Turns a tune into a document or a binary file",
          .examples =
              "Older binary tunes are made current. What a form does not keep is told: a document\n"
              "holds six digits of a number.\n\n"
              "Examples:\n"
              "  tslbl tune convert old.tune --output tune.xml\n"
              "  tslbl tune convert tune.xml --output tune.bin --to binary\n",
          .declare =
              [arguments](Options& options) {
                options.Value("FILE", arguments->input, "The tune to convert");
                options.Value("-o,--output FILE", arguments->output, "Where it goes");
                DeclareForm(options, arguments->to);
              },
          .run = [arguments](const Options&) { return RunConvert(*arguments); }};
}

}  // namespace

Command TuneCommand() {
  return {
      .name = "tune",
      .summary = "Makes, shows, checks, changes, compares and converts tunes",
      .examples =
          "A tune is a document (XML) or a binary file; which one is seen from its content.\n"
          "'tslbl tune COMMAND --help' tells all about a command.",
      .declare = {},
      .run = {},
      .family = {NewCommand(), ShowCommand(), CheckCommand(), SetCommand(), DiffCommand(), ConvertCommand()}};
}

}  // namespace TslTool
