// tslbl overlap: overlapping peaks of spectra, taken apart.

#include <tool/chain/Threads.h>
#include <tool/commands/Commands.h>
#include <tool/commands/overlap/Deconvolution.h>
#include <tool/commands/overlap/OverlapPlot.h>
#include <tool/commands/overlap/OverlapWriter.h>
#include <tool/commands/peaks/EvaluateInput.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/commands/peaks/SharedOptions.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Warning.h>
#include <memory>

namespace TslTool {
namespace {

struct OverlapArguments {
  // The lower one of two that overlap may rise but little.
  OverlapArguments() { peaks.usualRise = 0.0; }

  PeaksArguments peaks;  // what the two commands share
  OverlapOptions overlap;
  std::string input;
  std::string edits;
  std::vector<std::string> added;
  std::vector<std::string> removed;
};

void AddEdits(const std::string& option, GroupEdit::Kind kind, const std::vector<std::string>& texts,
              std::vector<GroupEdit>& edits) {
  for (const std::string& text : texts) {
    const double mz = ParseReal(option, text);
    if (!(mz > 0.0)) throw UsageError(option + ": the m/z must be above 0");
    edits.push_back({kind, mz});
  }
}

// Removed first: what is added may take the place of it.
std::vector<GroupEdit> EditsOfOne(const OverlapArguments& arguments) {
  std::vector<GroupEdit> edits;
  AddEdits("--refit-remove", GroupEdit::Remove, arguments.removed, edits);
  AddEdits("--refit-add", GroupEdit::Add, arguments.added, edits);
  if (!edits.empty() && !arguments.edits.empty())
    throw UsageError("--edits excludes --refit-add and --refit-remove; add a line to its file");
  return edits;
}

void Evaluate(const OverlapArguments& arguments, const Options& options) {
  const std::string name = InputName(arguments.peaks.input);
  Deconvolution deconvolution(name, arguments.overlap,
                              arguments.edits.empty() ? EditsByScan() : ReadEdits(arguments.edits),
                              EditsOfOne(arguments), arguments.peaks.resume);
  EvaluateInput(arguments.peaks, options,
                {.makeWriter = MakeOverlapWriter, .plot = OverlapPlot, .finish = [&](LoadedSpectrum& loaded) {
                   deconvolution.Run(loaded);
                 }});
  if (!arguments.peaks.quiet) Tell(name + ": " + deconvolution.Note());
  Warn(name, deconvolution.Warnings());
}

int RunOverlap(OverlapArguments arguments, const Options& options) {
  RequireSoundValues(arguments.peaks);
  arguments.overlap.Params(true);  // refuses what is wrong before anything is read
  if (arguments.peaks.threads) UseThreads(*arguments.peaks.threads);
  arguments.peaks.input = PeaksInputPath(arguments.input, "tslbl overlap");
  RequireSafeFiles(arguments.peaks);
  RequireResumable(arguments.peaks);
  RequireSafeEdits(arguments.peaks, arguments.edits);
  NamingStandardInput([&] { Evaluate(arguments, options); });
  return kDone;
}

constexpr const char* kExamples =
    "INPUT is a run of raw counts, an mzML file or text with columns of m/z and amplitude; - is\n"
    "standard input, from which no run can be read. Without it the built-in demonstration run\n"
    "is taken.\n\n"
    "Peaks are found as by the command peaks. Those that may be merges of several ions, or that\n"
    "run into a neighbour, are gathered in groups, and a sum of Gaussian peaks is fitted to each:\n"
    "to the points as measured, if the chain does nothing to amplitudes but smooth them.\n\n"
    "Examples:\n"
    "  tslbl overlap sample.run --scan 12            one scan as a table\n"
    "  tslbl overlap sample.mzML --scan 12 --plot scan12.svg   to see whether to believe it\n"
    "  tslbl overlap sample.run --format tsv --output overlap.tsv\n"
    "  tslbl overlap sample.run --format tsv --output overlap.tsv --resume\n"
    "  tslbl overlap sample.mzML --overlap-range 500-510 --group-peaks 4\n"
    "  tslbl overlap sample.run --scan 12 --refit-add 508.2 --refit-remove 509.1\n"
    "  tslbl overlap sample.run --edits edits.tsv    lines such as: 12 add 508.2\n\n"
    "An added peak is the data peak at that m/z, which joins a group at most 0.25 m/z away or\n"
    "becomes a new one; a removed one is the fitted peak there. The group is fitted anew from\n"
    "what it has then. Removals come first; a file of --edits is followed line by line.\n\n"
    "Columns:\n"
    "  group      number of the group in its spectrum; empty for a peak that stands alone\n"
    "  peak       number of the peak: data peaks first, then fitted ones. In a table for\n"
    "             reading - marks data peaks of a group and + the fitted peaks that stand for them\n"
    "  amplitude  at the peak's top, the baseline included\n"
    "  area       above the baseline, amplitude times m/z; of a fitted peak all of its Gaussian\n"
    "  width      at half height above the baseline, m/z\n"
    "  mz_se, area_se   standard errors of fitted peaks and of peaks that stand alone\n"
    "  chi2       of the group's fit, about 1 where it leaves noise alone; empty for a data peak\n";

void DeclareOverlap(Options& options, OverlapArguments& arguments) {
  PeaksArguments& peaks = arguments.peaks;
  options.Value("INPUT", arguments.input, "Run, mzML file or text with columns; - is standard input");
  peaks.scans.Declare(options);
  peaks.chain.Declare(options);
  DeclareEvaluation(options, peaks);
  arguments.overlap.Declare(options);
  options.Repeated("--refit-add MZ", arguments.added,
                   "Add the peak at this m/z to its group, or a new one, and fit it anew; for one spectrum");
  options.Repeated("--refit-remove MZ", arguments.removed,
                   "Remove the fitted peak at this m/z from its group, and fit the rest anew");
  options.Value("--edits FILE", arguments.edits, "Make the edits of this file: lines SCAN add|remove MZ");
  options.Choice("--format FORM", peaks.format, OverlapFormats(), "Form of the result");
  DeclareOutput(options, peaks);
  DeclareBeside(options, peaks);
}

}  // namespace

Command OverlapCommand() {
  auto arguments = std::make_shared<OverlapArguments>();
  return {
      .name = "overlap",
      .summary = "Takes overlapping peaks of spectra apart",
      .examples = kExamples,
      .declare = [arguments](Options& options) { DeclareOverlap(options, *arguments); },
      .run = [arguments](const Options& options) { return RunOverlap(*arguments, options); },
  };
}

}  // namespace TslTool
