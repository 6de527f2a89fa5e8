// tslbl ramp best: the best value of a lens, from the run of a ramp.

#include <fmt/format.h>

#include <tool/commands/ramp/EvaluateRamp.h>
#include <tool/commands/ramp/RampCommands.h>
#include <tool/commands/ramp/RampError.h>
#include <tool/commands/ramp/RampPlot.h>
#include <tool/commands/ramp/RampTable.h>
#include <tool/commands/ramp/WriteRampResults.h>
#include <tool/commands/tune/TuneFile.h>
#include <tool/frame/DistinctFiles.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Output.h>
#include <tool/frame/Warning.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <tool/plot/PictureName.h>
#include <algorithm>
#include <memory>
#include <optional>

namespace TslTool {
namespace {

using Params = TslBL::RampAlgorithmParams;

struct Choice {
  const char* name;
  Params::Types type;
};
constexpr Choice kChoices[] = {{"amplitude", Params::Amplitude},
                               {"resolution", Params::Resolution},
                               {"amplitude-at-resolution", Params::AmplitudeAtResolution},
                               {"resolution-at-amplitude", Params::ResolutionAtAmplitude}};

struct Format {
  const char* name;
  std::string (*make)(const RampReport& report);
};
constexpr Format kFormats[] = {{"table", RampTable}, {"tsv", RampTsv}, {"json", RampJson}};

template <class Row, std::size_t n>
std::vector<std::string> NamesOf(const Row (&rows)[n]) {
  std::vector<std::string> names;
  for (const Row& row : rows) names.emplace_back(row.name);
  return names;
}

template <class Row, std::size_t n>
const Row& Find(const Row (&rows)[n], const std::string& name) {
  return *std::ranges::find(rows, name, &Row::name);
}

struct BestArguments {
  RampEvaluation evaluation;
  std::string mz;
  std::optional<double> window;
  std::vector<std::string> lenses;
  std::string by = "resolution-at-amplitude";
  std::optional<std::uint32_t> percent;
  std::string format = "table";
  std::string output;
  std::string plot;
  std::string write;
};

std::vector<double> ParseMasses(const std::string& text) {
  std::vector<double> masses;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t comma = std::min(text.find(',', begin), text.size());
    const double mz = ParseReal("--mz", std::string_view(text).substr(begin, comma - begin));
    if (!(mz > 0.0)) throw UsageError(fmt::format("--mz: {} is not above 0", mz));
    if (std::ranges::count(masses, mz) > 0) throw UsageError(fmt::format("--mz: {} is given twice", mz));
    masses.push_back(mz);
    begin = comma + 1;
  }
  std::ranges::sort(masses);
  return masses;
}

Params ParamsOf(const BestArguments& arguments) {
  Params params;
  params.Type = Find(kChoices, arguments.by).type;
  params.Percent = arguments.percent.value_or(params.Percent);
  if (params.Percent > 100)
    throw UsageError(fmt::format("--percent: {} is not from 0 to 100", params.Percent));
  return params;
}

void RequireSensible(const BestArguments& arguments) {
  if (arguments.evaluation.run.empty()) throw UsageError("RUN is required");
  if (arguments.mz.empty()) throw UsageError("--mz is required");
  if (arguments.window && !(*arguments.window > 0.0)) throw UsageError("--window: it must be above 0");
  const std::string& run = arguments.evaluation.run;
  RequireDistinct("--output", arguments.output, run, "the run");
  RequireDistinct("--output", arguments.output, arguments.write, "the tune of --write");
  RequireDistinct("--plot", arguments.plot, run, "the run");
  RequireDistinct("--plot", arguments.plot, arguments.write, "the tune of --write");
  RequireDistinct("--plot", arguments.plot, arguments.output, "the --output as well");
  RequireDistinct("--write", arguments.write, run, "the run");
  RequirePictureName("--plot", arguments.plot);
}

Tunes TunesOf(const std::string& run) {
  if (!IsDatabase(run)) throw InputError(run, "", "is no run, and a ramp is told by the tunes of a run");
  return RunReader(run).Tunes();
}

void WriteText(const std::string& file, const std::string& text) {
  Output output(file);
  output.Write(text);
  output.Commit();
}

void Report(const BestArguments& arguments, const RampResponse& response, const Tunes& tunes) {
  // The curves are those of the tune that they go to.
  const TslBL::Tune& ramped = tunes.begin()->second;
  const TslBL::Tune changed = arguments.write.empty() ? ramped : LoadTune(arguments.write).tune;
  const std::vector<LensResult> lenses = LensResults(response, changed.Q1CalPts);
  WriteText(arguments.output,
            Find(kFormats, arguments.format).make({response, lenses, ramped, arguments.by}));
  if (!arguments.plot.empty())
    WriteText(arguments.plot, RampPlot(response, ramped, arguments.evaluation.run));
  Warn(arguments.evaluation.run, RampRemarks(response, ramped));
  if (!arguments.write.empty()) WriteRampResults(arguments.write, response, ramped);
}

int RunBest(BestArguments arguments, const Options& options) {
  RequireSensible(arguments);
  const Params params = ParamsOf(arguments);
  RampEvaluation& evaluation = arguments.evaluation;
  evaluation.mz = ParseMasses(arguments.mz);
  evaluation.window = arguments.window.value_or(evaluation.window);
  const Tunes tunes = TunesOf(evaluation.run);
  try {
    const RampSteps steps = FindRampSteps(tunes, arguments.lenses);
    const RampSpectra spectra = EvaluateRamp(evaluation, options, steps);
    Report(arguments, MakeRampResponse(steps, evaluation.mz, spectra, params), tunes);
  } catch (const RampError& error) {
    throw InputError(evaluation.run, "", error.what());
  }
  return kDone;
}

constexpr const char* kExamples =
    "Evaluates each spectrum as 'tslbl peaks' does, takes the base peak around each m/z, and\n"
    "averages the spectra of a step. The steps are told by the tunes of the run: the lenses in\n"
    "which these differ are those of the ramp. The best step of each m/z makes the curve of the\n"
    "lens over m/z, the best of all together its one value; --write puts both into a tune.\n\n"
    "Examples:\n"
    "  tslbl ramp best ramp.run --mz 118,322,622\n"
    "  tslbl ramp best ramp.run --mz 118,322,622 --by amplitude --plot ramp.svg\n"
    "  tslbl ramp best ramp.run --mz 118,322,622 --write esi.xml\n";

}  // namespace

Command RampBestCommand() {
  auto arguments = std::make_shared<BestArguments>();
  return {
      .name = "best",
      .summary = "Finds the best value of a lens in the run of a ramp",
      .examples = kExamples,
      .declare =
          [arguments](Options& options) {
            options.Value("RUN", arguments->evaluation.run, "The run of the ramp");
            options.Value("--mz LIST", arguments->mz, "The m/z of the ions, as in 118,322,622");
            options.Value(
                "--window X", arguments->window,
                fmt::format("How far from its m/z a peak may be [{}]", arguments->evaluation.window));
            options.Repeated(
                "--lens NAME", arguments->lenses,
                "A lens of the ramp, where the tunes differ in others, too; twice for two lenses");
            options.Choice(
                "--by WHAT", arguments->by, NamesOf(kChoices),
                "What makes a step the best; of A at B the highest A where B is close to its best");
            options.Value("--percent N", arguments->percent,
                          fmt::format("How far below the best is close to it [{}; overall as near as a step "
                                      "comes to the best at all m/z, if that is farther]",
                                      Params().Percent));
            arguments->evaluation.scans.DeclareFilter(options);
            arguments->evaluation.chain.Declare(options);
            options.Choice("--format FORM", arguments->format, NamesOf(kFormats), "Form of the result");
            options.Value("-o,--output FILE", arguments->output, "Write the result to this file");
            options.Value("--plot FILE", arguments->plot,
                          "Draw the response over the lens into this SVG file");
            options.Value("--write FILE", arguments->write, "Store the best values in this tune");
            options.Flag("-q,--quiet", arguments->evaluation.quiet,
                         "Do not tell what was taken from the data");
          },
      .run = [arguments](const Options& options) { return RunBest(*arguments, options); },
  };
}

}  // namespace TslTool
