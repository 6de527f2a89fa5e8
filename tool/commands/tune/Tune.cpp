// tslbl tune: a tune is made, looked at, checked, changed and converted.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/Commands.h>
#include <tool/commands/tune/TuneDiff.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneFile.h>
#include <tool/commands/tune/TunePlot.h>
#include <tool/commands/tune/TuneSheet.h>
#include <tool/commands/tune/TuneStore.h>
#include <tool/frame/FileLock.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Output.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <filesystem>
#include <iostream>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Tune;

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
    const Tune tune = Load(file);
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
      for (const std::string& fault : TuneFaults(Load(file))) {
        Tell(fmt::format("{}: {}\n", file, fault));
        status = kFailed;
      }
    } catch (const InputError& e) {
      std::cerr << "tslbl: " << e.what() << std::endl;
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

// ---- diff ------------------------------------------------------------------------------

int RunDiff(const std::vector<std::string>& files) {
  if (files.size() != 2) throw UsageError("FILE: two tunes are compared");
  const std::vector<std::string> lines = TuneDiff(Load(files[0]), Load(files[1]));
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
  Save(Load(arguments.input), FormFor(arguments.to, arguments.output), arguments.output);
  return kDone;
}

Command ConvertCommand() {
  auto arguments = std::make_shared<ConvertArguments>();
  return {.name = "convert",
          .summary = "Turns a tune into a document or a binary file",
          .examples =
              "Older binary tunes are made current. What a form does not keep is told: a document\n"
              "holds six digits of a number. A file that is there already is replaced.\n\n"
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
  return {.name = "tune",
          .summary = "Makes, shows, checks, changes, compares and converts tunes",
          .examples =
              "A tune is a document (XML) or a binary file; which one is seen from its content.\n"
              "'tslbl tune COMMAND --help' tells all about a command.",
          .declare = {},
          .run = {},
          .family = {NewCommand(), ShowCommand(), CheckCommand(), TuneSetCommand(), DiffCommand(),
                     ConvertCommand()}};
}

}  // namespace TslTool
