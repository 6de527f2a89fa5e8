// tslbl peaks: spectra in, peak tables out.

#include <tool/chain/Threads.h>
#include <tool/commands/Commands.h>
#include <tool/commands/peaks/EvaluateInput.h>
#include <tool/commands/peaks/EvaluateSeveral.h>
#include <tool/commands/peaks/PeakWriter.h>
#include <tool/commands/peaks/PeaksArguments.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/commands/peaks/SharedOptions.h>
#include <memory>

namespace TslTool {
namespace {

int RunPeaks(PeaksArguments arguments, const Options& options) {
  RequireSoundValues(arguments);
  if (arguments.threads) UseThreads(*arguments.threads);
  if (AsksForSeveral(arguments)) return EvaluateSeveral(arguments, options);
  arguments.input = PeaksInputPath(arguments.inputs.empty() ? "" : arguments.inputs.front());
  RequireSafeFiles(arguments);
  RequireResumable(arguments);
  NamingStandardInput(
      [&] { arguments.showChain ? ShowChain(arguments, options) : EvaluateInput(arguments, options); });
  return kDone;
}

constexpr const char* kExamples =
    "INPUT is a run of raw counts, an mzML file (.mzML, .mzML.gz) or text with columns\n"
    "of m/z and amplitude; - is standard input, from which no run can be read. Without\n"
    "it the built-in demonstration run is evaluated.\n\n"
    "Examples:\n"
    "  tslbl peaks                                   the demonstration run\n"
    "  tslbl peaks sample.run --scan 12              one scan as a table\n"
    "  tslbl peaks sample.run --rt 60-90 --format tsv --output peaks.tsv\n"
    "  tslbl peaks sample.run --format tsv --output peaks.tsv --resume\n"
    "  tslbl peaks sample.mzML --smooth savgol:11:2 --sn 10\n"
    "  tslbl peaks table.csv --columns mass,intensity\n"
    "  zcat sample.mzML.gz | tslbl peaks - --format json --output -\n"
    "  tslbl peaks *.mzML --format tsv --output-dir tables   a table each, tables/NAME.tsv\n"
    "  tslbl peaks sample.mzML --format mzml --output peaks.mzML   centroid spectra for other programs\n"
    "  find data -name '*.mzML' | tslbl peaks --list - --output-dir tables\n"
    "  tslbl peaks sample.txt --show-chain > chain.xml   the chain in effect, to be edited\n"
    "  tslbl peaks sample.txt --chain chain.xml\n"
    "  tslbl peaks sample.run --scan 3 --curve curve.tsv   with smoothed amplitudes, baseline, "
    "noise\n"
    "  tslbl peaks sample.run --scan 3 --plot scan3.svg --view 190-200   a picture\n"
    "  tslbl peaks *.mzML --output-dir tables --plot-dir pictures   one of each spectrum\n\n"
    "Columns:\n"
    "  amplitude   of the evaluated curve at the peak's place, the baseline included\n"
    "  area        of the whole peak above the baseline, as measured; Area: of the part that --position "
    "uses\n"
    "  width       at half height above the baseline, m/z, without what the smoothing added; resolution:\n"
    "              m/z over width\n"
    "  sn          amplitude above the baseline over the noise there\n"
    "  height      above the baseline, with what the smoothing took from it\n"
    "  mz_se, amplitude_se, area_se   standard errors of a peak that stands alone\n"
    "  counted     whether these come from counts; else from what points scatter by, as far as it shows\n"
    "In mzML the intensity is the amplitude, and area, width, height, sn and the standard errors\n"
    "stand in arrays of their own. It is written when the last spectrum is done.\n";

}  // namespace

Command PeaksCommand() {
  auto arguments = std::make_shared<PeaksArguments>();
  return {
      .name = "peaks",
      .summary = "Finds the peaks of spectra",
      .examples = kExamples,
      .declare =
          [arguments](Options& options) {
            options.Values("INPUT", arguments->inputs,
                           "Run, mzML file or text with columns; - is standard input");
            arguments->scans.Declare(options);
            arguments->chain.Declare(options);
            DeclareEvaluation(options, *arguments);
            options.Flag("--show-chain", arguments->showChain, "Print the effective chain as XML and exit");
            options.Choice("--format FORM", arguments->format, PeakFormats(), "Form of the result");
            DeclareOutput(options, *arguments);
            options.Value("--output-dir DIR", arguments->outputDir,
                          "Write a table for each INPUT to this folder, named after it");
            options.Value("--list FILE", arguments->list,
                          "Evaluate the inputs that this file names too, one a line; - is standard input");
            DeclareBeside(options, *arguments);
          },
      .run = [arguments](const Options& options) { return RunPeaks(*arguments, options); },
  };
}

}  // namespace TslTool
