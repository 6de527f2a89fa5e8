// tslbl calibrate: the m/z axis through known ions.

#include <fmt/format.h>

#include <tool/chain/ChainOptions.h>
#include <tool/commands/Commands.h>
#include <tool/commands/average/AverageOf.h>
#include <tool/commands/calibrate/ApplyToInput.h>
#include <tool/commands/calibrate/CalibrantFile.h>
#include <tool/commands/calibrate/CalibrateSpectrum.h>
#include <tool/commands/calibrate/CalibrationPoints.h>
#include <tool/commands/calibrate/CalibrationTable.h>
#include <tool/commands/calibrate/OneSpectrum.h>
#include <tool/commands/calibrate/ResidualPlot.h>
#include <tool/frame/DistinctFiles.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Output.h>
#include <tool/frame/Warning.h>
#include <tool/io/InputPath.h>
#include <tool/io/Preview.h>
#include <tool/io/ScanOptions.h>
#include <tool/plot/PictureName.h>
#include <algorithm>
#include <memory>
#include <string_view>

namespace TslTool {
namespace {

struct CalibrateArguments {
  std::string input;
  std::string calibrants;
  std::string apply;
  std::optional<double> tolerance;
  std::vector<std::string> moves;
  std::vector<std::string> off;
  ScanOptions scans;
  ChainOptions chain;
  std::string format = "table";
  std::string output;
  std::string plot;
  bool quiet = false;
};

CalibrantMove ParseMove(const std::string& text) {
  const std::size_t sign = text.rfind('=');
  if (sign == std::string::npos || sign == 0)
    throw UsageError(fmt::format("--move: \"{}\" is not NAME=MZ", text));
  return {text.substr(0, sign), ParseReal("--move", std::string_view(text).substr(sign + 1))};
}

Corrections CorrectionsOf(const CalibrateArguments& arguments) {
  Corrections corrections;
  for (const std::string& move : arguments.moves) corrections.moves.push_back(ParseMove(move));
  corrections.off = arguments.off;
  return corrections;
}

TslBL::CalibrateParams ParamsOf(const CalibrateArguments& arguments) {
  TslBL::CalibrateParams params = ReadCalibrants(arguments.calibrants);
  if (arguments.tolerance) params.tolerance = *arguments.tolerance;
  return params;
}

struct EffectiveChain {
  std::vector<TslBL::CurveEval> evals;
  std::string derived;
};

EffectiveChain ChainFor(const CalibrateArguments& arguments, const Options& options,
                        const LoadedSpectrum& loaded) {
  const auto source = SourceOf(loaded);
  const Preview preview = arguments.chain.NeedsDefaults() ? LookThrough(*source) : Preview();
  const ChainDefaults defaults = DefaultsFor(preview, std::nullopt);
  return {arguments.chain.Chain(options, defaults), arguments.chain.Derived(defaults)};
}

void Print(const CalibrateArguments& arguments, const CalibrationResult& result) {
  Output output("");
  output.Write(arguments.format == "tsv" ? CalibrationTsv(result.points) : CalibrationTable(result.points));
  output.Commit();
}

void Plot(const CalibrateArguments& arguments, const CalibrationResult& result) {
  if (arguments.plot.empty()) return;
  Output picture(arguments.plot);
  picture.Write(ResidualPlot(result.points, InputName(arguments.input)));
  picture.Commit();
}

void TellOf(const CalibrateArguments& arguments, const Averaged& averaged, const EffectiveChain& chain) {
  const std::string name = InputName(arguments.input);
  if (!arguments.quiet) {
    if (averaged.spectra > 1) Tell(fmt::format("{}: average of {} spectra", name, averaged.spectra));
    Tell(name, averaged.notes);
    if (!chain.derived.empty()) Tell(fmt::format("{}: {}", name, chain.derived));
  }
  Warn(name, averaged.warnings);
}

// The table comes first: it tells what is missing for an axis.
void MakeCalibration(const CalibrateArguments& arguments, const Options& options) {
  const TslBL::CalibrateParams params = ParamsOf(arguments);
  const Corrections corrections = CorrectionsOf(arguments);
  Averaged averaged = AverageOf(arguments.input, arguments.scans.Choice());
  const EffectiveChain chain = ChainFor(arguments, options, averaged.loaded);
  const MassScale scale(arguments.input, averaged);
  const CalibrationResult result =
      CalibrateSpectrum(arguments.input, *averaged.loaded.spectrum, scale, params, chain.evals, corrections);
  Print(arguments, result);
  if (!result.error.empty()) throw InputError(InputName(arguments.input), "", result.error);
  if (!arguments.output.empty()) WriteCalibration(arguments.output, result.table);
  Plot(arguments, result);
  TellOf(arguments, averaged, chain);
}

// Whatever would choose or evaluate goes unheard there.
void RequireForApplying(const CalibrateArguments& arguments, const Options& options) {
  constexpr std::string_view kHeard[] = {"INPUT", "--apply", "--output", "--quiet"};
  if (arguments.output.empty()) throw UsageError("--apply: --output FILE is required");
  for (const Option& option : options.List())
    if (option.given && std::ranges::find(kHeard, option.names.back()) == std::end(kHeard))
      throw UsageError(fmt::format("{} and --apply exclude each other", option.names.back()));
}

void RequireSensible(const CalibrateArguments& arguments, const Options& options) {
  if (arguments.input.empty()) throw UsageError("INPUT is required");
  if (!arguments.calibrants.empty() && !arguments.apply.empty())
    throw UsageError("--calibrants and --apply exclude each other");
  if (arguments.calibrants.empty() && arguments.apply.empty())
    throw UsageError("one of --calibrants FILE and --apply FILE is required");
  if (arguments.tolerance && !(*arguments.tolerance > 0.0))
    throw UsageError("--tolerance: it must be above 0");
  if (arguments.output == "-") throw UsageError("--output: a file is needed; standard output has the table");
  if (arguments.plot == "-") throw UsageError("--plot: a file is needed; standard output has the table");
  if (!arguments.apply.empty()) RequireForApplying(arguments, options);
  RequireDistinct("--output", arguments.output, arguments.input, "the input");
  RequireDistinct("--output", arguments.output, arguments.calibrants, "the file of --calibrants");
  RequireDistinct("--output", arguments.output, arguments.apply, "the file of --apply");
  RequireDistinct("--plot", arguments.plot, arguments.input, "the input");
  RequireDistinct("--plot", arguments.plot, arguments.calibrants, "the file of --calibrants");
  RequireDistinct("--plot", arguments.plot, arguments.output, "the --output as well");
  RequirePictureName("--plot", arguments.plot);
}

int RunCalibrate(CalibrateArguments arguments, const Options& options) {
  RequireSensible(arguments, options);
  arguments.input = InputPath(arguments.input);
  NamingStandardInput([&] {
    if (arguments.apply.empty()) {
      MakeCalibration(arguments, options);
    } else {
      ApplyToInput(arguments.input, ReadCalibration(arguments.apply), arguments.apply, arguments.output);
    }
  });
  return kDone;
}

constexpr const char* kExamples =
    "Finds the peaks of known ions, assigns to each calibrant the tallest one within the\n"
    "tolerance, and lays the m/z axis through them. The table has a row for each calibrant,\n"
    "before and after; the calibration goes to --output. With --apply a calibration is put\n"
    "on all scans of an INPUT: a run stays a run, mzML mzML and text text.\n\n"
    "The calibrants are text with a name and an m/z a line; # begins a comment.\n"
    "Several scans are averaged first: --scan and --rt choose.\n\n"
    "Examples:\n"
    "  tslbl calibrate tuning.run --calibrants pfk.txt                      the table alone\n"
    "  tslbl calibrate tuning.run --calibrants pfk.txt --rt 60-90 --output pfk.cal\n"
    "  tslbl calibrate tuning.run --calibrants pfk.txt --off C5F9 --move C3F5=131.2\n"
    "  tslbl calibrate tuning.mzML --calibrants ions.txt --tolerance 0.02 --plot residuals.svg\n"
    "  tslbl calibrate sample.run --apply pfk.cal --output calibrated.run\n";

}  // namespace

Command CalibrateCommand() {
  auto arguments = std::make_shared<CalibrateArguments>();
  return {
      .name = "calibrate",
      .summary = "Calibrates the m/z axis by known ions",
      .examples = kExamples,
      .declare =
          [arguments](Options& options) {
            options.Value("INPUT", arguments->input,
                          "Run, mzML file or text with columns; - is standard input");
            options.Value("--calibrants FILE", arguments->calibrants,
                          "The known ions: a name and an m/z a line");
            options.Value("--tolerance X", arguments->tolerance,
                          "How far from its m/z the peak of a calibrant may be [1]");
            options.Repeated("--move NAME=MZ", arguments->moves,
                             "Take the peak at this m/z, as it is before, for the calibrant NAME; likewise");
            options.Repeated("--off NAME", arguments->off,
                             "Leave this calibrant out of the axis; may be given several times");
            options.Value("--apply FILE", arguments->apply, "Put this calibration on all scans of INPUT");
            arguments->scans.Declare(options);
            arguments->chain.Declare(options);
            options.Choice("--format FORM", arguments->format, {"table", "tsv"}, "Form of the table");
            options.Value("-o,--output FILE", arguments->output,
                          "Write the calibration, or with --apply the scans, to this file");
            options.Value("--plot FILE", arguments->plot, "Draw the deviations into this SVG file");
            options.Flag("-q,--quiet", arguments->quiet, "Do not tell what was taken from the data");
          },
      .run = [arguments](const Options& options) { return RunCalibrate(*arguments, options); },
  };
}

}  // namespace TslTool
