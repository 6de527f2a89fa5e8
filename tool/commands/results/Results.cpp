// tslbl results: an evaluated run as one document.

#include <fmt/format.h>

#include <tool/chain/EvaluateInOrder.h>
#include <tool/chain/Threads.h>
#include <tool/commands/Commands.h>
#include <tool/commands/chrom/ReadCurves.h>
#include <tool/commands/peaks/EvaluateInput.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/commands/peaks/RefuseNothing.h>
#include <tool/commands/peaks/SharedOptions.h>
#include <tool/commands/results/ResultWriter.h>
#include <tool/commands/results/RunGrowth.h>
#include <tool/commands/results/RunSections.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Progress.h>
#include <tool/frame/Warning.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <array>
#include <memory>

namespace TslTool {
namespace {

constexpr const char* kFormat = "xml";

// --range is one of a chromatogram here, as of the command chrom.
ChainPresets PresetsWithoutSearch() {
  ChainPresets presets = PresetsForSpectra();
  presets.hasSearch = false;
  return presets;
}

struct ResultArguments {
  ResultArguments() { peaks.chain = ChainOptions(PresetsWithoutSearch()); }

  PeaksArguments peaks;
  std::string input;
  std::vector<std::string> ranges;
  std::vector<std::string> definitions;
  bool isMean = false;
  bool hasProfile = false;
  bool isHeaderOnly = false;
};

ResultContent ContentOf(const ResultArguments& arguments) {
  if (arguments.isHeaderOnly) return ResultContent::Header;
  return arguments.hasProfile ? ResultContent::PeaksAndProfile : ResultContent::Peaks;
}

// What does nothing to a header must not seem to.
void RequireNoEvaluation(const Options& options) {
  constexpr std::array<std::string_view, 12> kOfHeaders = {
      "RUN",     "--scan",  "--rt",   "--ms-level",    "--polarity", "--function",
      "--range", "--curve", "--mean", "--header-only", "--output",   "--quiet"};
  for (const Option& option : options.List()) {
    const std::string& name = option.names.back();
    if (option.given && name != "--threads" && name != "--strict" &&
        std::ranges::find(kOfHeaders, name) == kOfHeaders.end())
      throw UsageError(fmt::format("{}: --header-only evaluates nothing", name));
  }
}

double AsWritten(double value) {
  TslCommon::FromText(TslCommon::ToText(value), value);
  return value;
}

// A document has six significant digits, and its curves are those of the ranges that it tells.
std::vector<std::string> RangesOfDocument(const CurveChoice& choice, std::vector<std::string>& notes) {
  std::vector<std::string> texts;
  for (const ExtractedRange& range : choice.Ranges()) {
    const ExtractedRange written{range.letter, AsWritten(range.from), AsWritten(range.to)};
    if (written.from == written.to && range.from != range.to)
      throw UsageError(
          fmt::format("--range: {} is narrower than the six digits of a document tell", range.Text()));
    if (written.from != range.from || written.to != range.to)
      notes.push_back(fmt::format("range {} is taken as {} to {}, as a document has six digits", range.Text(),
                                  written.from, written.to));
    texts.push_back(fmt::format("{}={}-{}", written.letter, written.from, written.to));
  }
  return texts;
}

// What stands before the spectra, and what is to be said of it.
struct RunPart {
  std::string sections;
  RunGrowth growth;
  std::vector<std::string> notes;
  std::vector<std::string> warnings;
};

// One scan has headers and peaks, but makes no chromatogram: that is an error only for who asked for one.
MeasuredCurves CurvesOf(const ChromArguments& arguments) {
  try {
    return ReadCurves(arguments);
  } catch (const InputError& error) {
    if (!arguments.ranges.empty()) throw;
    MeasuredCurves none;
    none.warnings.push_back("no chromatograms: " + (error.Place().empty() ? "" : error.Place() + ": ") +
                            error.Reason());
    return none;
  }
}

RunPart DescribeRun(const ResultArguments& arguments) {
  const std::string& input = arguments.peaks.input;
  RunPart part{RunSection(input), RunGrowth(input), {}, {}};
  ChromArguments curves;
  curves.input = input;
  curves.ranges = RangesOfDocument({arguments.ranges, arguments.definitions}, part.notes);
  curves.definitions = arguments.definitions;
  curves.isMean = arguments.isMean;
  curves.scans = arguments.peaks.scans;
  const CurveChoice choice(curves.ranges, curves.definitions);
  part.sections += DefinitionSections(choice);
  const MeasuredCurves read = CurvesOf(curves);
  if (!read.curves.empty()) part.sections += ChromatogramSection(choice, read.curves, arguments.isMean);
  part.notes.insert(part.notes.end(), read.notes.begin(), read.notes.end());
  part.warnings = read.warnings;
  return part;
}

void WriteHeaders(const PeaksArguments& arguments, std::unique_ptr<SpectrumWriter> writer) {
  PeakFile file(std::move(writer), kFormat, arguments.output);
  const SpectrumChoice wanted = arguments.scans.Choice();
  const auto source = OpenSpectra(arguments.input, wanted);
  Progress progress(source->Count(), "scans");
  const std::uint64_t spectra = EvaluateInOrder(
      *source,
      [&](LoadedSpectrum& loaded) {
        return SpectrumTexts{file.Part(loaded), ""};
      },
      [&](const SpectrumTexts& texts) {
        file.Write(texts.peaks);
        progress.Step();
      });
  if (spectra == 0) RefuseNothing(arguments.input, wanted, *source);
  file.Commit();
  const std::string name = InputName(arguments.input);
  if (const std::string skipped = source->Skipped(); !skipped.empty()) Warn(name + ": " + skipped);
  Warn(name, source->Warnings());
}

void WriteResults(const ResultArguments& arguments, const Options& options) {
  const std::string name = InputName(arguments.peaks.input);
  const RunPart run = DescribeRun(arguments);
  const auto makeWriter = [&](const std::string&) -> std::unique_ptr<SpectrumWriter> {
    return std::make_unique<ResultWriter>(run.sections, ContentOf(arguments));
  };
  if (arguments.isHeaderOnly) {
    WriteHeaders(arguments.peaks, makeWriter(kFormat));
  } else {
    SpectrumProduct product = PeakTables();
    product.makeWriter = makeWriter;
    EvaluateInput(arguments.peaks, options, product);
  }
  if (!arguments.peaks.quiet) Tell(name, run.notes);
  Warn(name, run.warnings);
  Warn(name, run.growth.Warnings());
}

int RunResults(ResultArguments arguments, const Options& options) {
  RequireSoundValues(arguments.peaks);
  if (arguments.hasProfile && arguments.isHeaderOnly)
    throw UsageError("--profile and --header-only exclude each other");
  if (arguments.isHeaderOnly) RequireNoEvaluation(options);
  if (arguments.input == "-") throw UsageError("RUN: a run is read from its file, not from standard input");
  if (arguments.peaks.threads) UseThreads(*arguments.peaks.threads);
  arguments.peaks.format = kFormat;
  arguments.peaks.input = PeaksInputPath(arguments.input, "tslbl results");
  RequireSafeFiles(arguments.peaks);
  NamingStandardInput([&] { WriteResults(arguments, options); });
  return kDone;
}

constexpr const char* kExamples =
    "RUN is a run of raw counts; without it the built-in demonstration run is taken. The\n"
    "document has the tunes, the ranges and definitions of curves, the chromatograms with\n"
    "their points, the chain, and for each spectrum its header and its peaks as the command\n"
    "peaks finds them. docs/formats.md tells each element.\n\n"
    "Examples:\n"
    "  tslbl results sample.run --output results.xml\n"
    "  tslbl results sample.run --range A=500-501 --range B=502-503 --curve A-B --output results.xml\n"
    "  tslbl results sample.run --rt 60-90 --profile --output part.xml   with the measured points\n"
    "  tslbl results sample.run --header-only        times, currents and tunes of the spectra\n"
    "  tslbl chrom other.run --curves-from results.xml   the same curves of another run\n";

void DeclareResults(Options& options, ResultArguments& arguments) {
  PeaksArguments& peaks = arguments.peaks;
  options.Value("RUN", arguments.input, "The run [demonstration run]");
  peaks.scans.DeclareFilter(options);
  options.Flag("--strict", peaks.scans.strict,
               "Fail at a spectrum that cannot be evaluated instead of skipping it");
  options.Repeated("--range NAME=A-B", arguments.ranges,
                   "A range of m/z by a letter from A to J, both ends included; A=500.5+-0.5 does, too. May "
                   "be given ten times");
  options.Repeated("--curve DEFINITION", arguments.definitions,
                   "A chromatogram made of the ranges, such as A-B, or of curves before it by their number "
                   "[each range]. May be given several times");
  options.Flag("--mean", arguments.isMean, "Take the mean of the points in a range, not their sum");
  options.Flag("--profile", arguments.hasProfile, "Write the measured points of each spectrum, too");
  options.Flag("--header-only", arguments.isHeaderOnly, "Write no peaks, and evaluate nothing");
  peaks.chain.Declare(options);
  DeclareEvaluation(options, peaks);
  DeclareOutput(options, peaks);
  options.Flag("-q,--quiet", peaks.quiet, "Do not tell what was taken from the data");
  options.Value("--threads N", peaks.threads, "Number of threads [as many as the computer has]");
}

}  // namespace

Command ResultsCommand() {
  auto arguments = std::make_shared<ResultArguments>();
  return {
      .name = "results",
      .summary = "Writes an evaluated run as one document",
      .examples = kExamples,
      .declare = [arguments](Options& options) { DeclareResults(options, *arguments); },
      .run = [arguments](const Options& options) { return RunResults(*arguments, options); },
  };
}

}  // namespace TslTool
