// tslbl decon: charge states of molecules, and their masses.

#include <tool/chain/Threads.h>
#include <tool/commands/Commands.h>
#include <tool/commands/decon/ChargeStates.h>
#include <tool/commands/decon/DeconOptions.h>
#include <tool/commands/decon/DeconPlot.h>
#include <tool/commands/decon/DeconWriter.h>
#include <tool/commands/decon/MassCurveWriter.h>
#include <tool/commands/peaks/EvaluateInput.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/commands/peaks/SharedOptions.h>
#include <tool/frame/Warning.h>
#include <algorithm>
#include <iterator>
#include <memory>

namespace TslTool {
namespace {

struct DeconArguments {
  // What no other peak agrees with makes no series.
  DeconArguments() { peaks.barsBumps = false; }

  PeaksArguments peaks;  // what the commands share
  DeconOptions decon;
  std::string input;
  std::string edits;
  std::vector<std::string> removedSeries;
  std::vector<std::string> removedPeaks;
  std::vector<std::string> addedPeaks;
  std::vector<std::string> addedSeries;
};

// What is removed goes first: what is added may take its place.
std::vector<SeriesEdit> EditsOfOne(const DeconArguments& arguments) {
  std::vector<SeriesEdit> edits;
  const auto add = [&](const char* option, SeriesEdit::Kind kind, const std::vector<std::string>& texts) {
    std::ranges::transform(texts, std::back_inserter(edits),
                           [&](const std::string& text) { return ParseSeriesEdit(option, kind, text); });
  };
  add("--remove-series", SeriesEdit::RemoveSeries, arguments.removedSeries);
  add("--remove-peaks", SeriesEdit::RemovePeaks, arguments.removedPeaks);
  add("--add-peaks", SeriesEdit::AddPeaks, arguments.addedPeaks);
  add("--add-series", SeriesEdit::AddSeries, arguments.addedSeries);
  if (!edits.empty() && !arguments.edits.empty())
    throw UsageError("--edits excludes --add-series and the like; add a line to its file");
  return edits;
}

void Evaluate(const DeconArguments& arguments, const Options& options) {
  const std::string name = InputName(arguments.peaks.input);
  ScanEdits<SeriesEdit> edits(
      name, arguments.edits.empty() ? SeriesEditsByScan() : ReadSeriesEdits(arguments.edits),
      EditsOfOne(arguments), "--add-series and the like", arguments.peaks.resume);
  ChargeStates states(name, arguments.decon.Wishes(options, arguments.peaks.chain.ChargeStates()), edits);
  EvaluateInput(arguments.peaks, options,
                {.makeWriter = MakeDeconWriter,
                 .plot = DeconPlot,
                 .finish = [&](LoadedSpectrum& loaded) { states.Run(loaded); },
                 .takesPeakLists = true,
                 .curveHead = MassCurveHead,
                 .curvePart = MassCurvePart});
  if (!arguments.peaks.quiet) Tell(name + ": " + states.Note());
  Warn(name, states.Warnings());
  Warn(name, edits.Unused());
}

int RunDecon(DeconArguments arguments, const Options& options) {
  RequireSoundValues(arguments.peaks);
  arguments.decon.Wishes(options, {});  // refuses what is wrong before anything is read
  if (arguments.peaks.threads) UseThreads(*arguments.peaks.threads);
  arguments.peaks.input = PeaksInputPath(arguments.input, "tslbl decon");
  RequireSafeFiles(arguments.peaks);
  RequireResumable(arguments.peaks);
  RequireSafeEdits(arguments.peaks, arguments.edits);
  NamingStandardInput([&] { Evaluate(arguments, options); });
  return kDone;
}

constexpr const char* kExamples =
    "INPUT is a run of raw counts, an mzML file or text with columns of m/z and amplitude; - is\n"
    "standard input, from which no run can be read. Without it the built-in demonstration run\n"
    "is taken. Peaks of profiles are found as by the command peaks; centroid data are taken as\n"
    "the peaks themselves.\n\n"
    "Two kinds of molecules are found. Resolved: the isotopes of each charge are peaks of their\n"
    "own. Unresolved: each charge is one peak, as of a protein on a quadrupole.\n\n"
    "Examples:\n"
    "  tslbl decon protein.mzML                      masses of all spectra as tables\n"
    "  tslbl decon complex.txt --mass 100000-900000  only masses in this range\n"
    "  tslbl decon protein.mzML --scan 12 --plot scan12.svg   the charges, and the curve over mass\n"
    "  tslbl decon protein.run --format tsv --output masses.tsv\n"
    "  tslbl decon protein.run --scan 12 --curve mass.tsv   the curve over mass\n"
    "  tslbl decon peaks.csv --columns mz,area       a list of peaks\n"
    "  tslbl decon protein.run --scan 12 --remove-peaks UA:848.1 --remove-series UB\n"
    "  tslbl decon protein.run --edits edits.tsv     lines such as: 12 remove-series UB\n\n"
    "Edits: --remove-series UB; --remove-peaks UA:MZ,MZ; --add-peaks UA:MZ; --add-series KIND:MZ,MZ\n"
    "with the kind resolved or unresolved. Peaks are named by their m/z. They are made in this\n"
    "order; a file of --edits is followed line by line, with blanks in the place of colon and\n"
    "commas: 12 add-series unresolved 893.2 942.8\n\n"
    "A file of --chain may end with the command Charge State Deconvolution. Its parameters hold as\n"
    "they stand then, and the switches of charge states are refused.\n\n"
    "Columns:\n"
    "  series     label: R or U for resolved and unresolved, and a letter in the order of evidence\n"
    "  mass       neutral, Da; of a resolved molecule monoisotopic, of an unresolved one average\n"
    "  mass_se    standard error of the mass, as its peaks tell; an error of the m/z axis is not in it. "
    "With\n"
    "             the chance that isotopes of a large molecule were counted wrongly\n"
    "  deviation  standard deviation of the masses by the single charges\n"
    "  charge_low, charge_high   the charges that were found\n"
    "  peaks      how many peaks the series has\n"
    "  intensity  sum of their areas above the baseline, amplitude times m/z, or of their heights\n"
    "             with --intensity amplitude; of a list of peaks as it stands there. Peaks that several\n"
    "             unresolved series have are divided between them\n";

void DeclareEdits(Options& options, DeconArguments& arguments) {
  options.Repeated("--remove-series SERIES", arguments.removedSeries, "Remove a series, by its label");
  options.Repeated("--remove-peaks SERIES:MZ,...", arguments.removedPeaks,
                   "Remove the peaks at these m/z from a series, and work it out anew; for one spectrum");
  options.Repeated("--add-peaks SERIES:MZ,...", arguments.addedPeaks,
                   "Add the peaks at these m/z to a series, and work it out anew");
  options.Repeated("--add-series KIND:MZ,...", arguments.addedSeries,
                   "Add the series that the peaks at these m/z belong to; KIND is resolved or unresolved");
  options.Value("--edits FILE", arguments.edits,
                "Make the edits of this file: lines SCAN EDIT SERIES MZ ...");
}

void DeclareDecon(Options& options, DeconArguments& arguments) {
  PeaksArguments& peaks = arguments.peaks;
  options.Value("INPUT", arguments.input, "Run, mzML file or text with columns; - is standard input");
  peaks.scans.Declare(options);
  peaks.chain.Declare(options);
  peaks.chain.TakeChargeStates();
  DeclareEvaluation(options, peaks);
  arguments.decon.Declare(options);
  DeclareEdits(options, arguments);
  options.Choice("--format FORM", peaks.format, DeconFormats(), "Form of the result");
  DeclareOutput(options, peaks);
  DeclareBeside(options, peaks, "Write the curves over mass, point by point, to this file");
}

}  // namespace

Command DeconCommand() {
  auto arguments = std::make_shared<DeconArguments>();
  return {
      .name = "decon",
      .summary = "Finds the masses of molecules by their charge states",
      .examples = kExamples,
      .declare = [arguments](Options& options) { DeclareDecon(options, *arguments); },
      .run = [arguments](const Options& options) { return RunDecon(*arguments, options); },
  };
}

}  // namespace TslTool
