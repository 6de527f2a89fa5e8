// tslbl chrom: chromatograms and their peaks.

#include <fmt/format.h>

#include <tool/chain/Threads.h>
#include <tool/commands/Commands.h>
#include <tool/commands/chrom/ChromArguments.h>
#include <tool/commands/chrom/ChromPlot.h>
#include <tool/commands/chrom/ChromWriter.h>
#include <tool/commands/chrom/CurveRemarks.h>
#include <tool/commands/chrom/CurvesFile.h>
#include <tool/commands/chrom/EvaluateCurve.h>
#include <tool/commands/chrom/PointsText.h>
#include <tool/commands/chrom/ReadCurves.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/frame/DistinctFiles.h>
#include <tool/frame/Output.h>
#include <tool/frame/Warning.h>
#include <tool/io/InputPath.h>
#include <tool/plot/PictureName.h>
#include <memory>

namespace TslTool {
namespace {

void RequireSafeFiles(const ChromArguments& arguments) {
  RequireDistinct("--output", arguments.output, arguments.input, "the input");
  RequireDistinct("--points", arguments.points, arguments.input, "the input");
  RequireDistinct("--points", arguments.points, arguments.output, "the --output as well");
  RequireDistinct("--plot", arguments.plot, arguments.input, "the input");
  RequireDistinct("--plot", arguments.plot, arguments.output, "the --output as well");
  RequireDistinct("--plot", arguments.plot, arguments.points, "the --points as well");
  RequirePictureName("--plot", arguments.plot);
  for (const auto& [option, file] : {std::pair{"--points", arguments.points}, {"--plot", arguments.plot}})
    if (file == "-" && IsStandardOutput(arguments.output))
      throw UsageError(fmt::format("{}: standard output has the table; give that an --output FILE", option));
}

// The definitions of a document stand where the user's own would.
void TakeCurvesFile(ChromArguments& arguments) {
  const std::string& file = arguments.curvesFrom;
  if (file.empty()) return;
  if (!arguments.ranges.empty() || !arguments.definitions.empty())
    throw UsageError("--curves-from excludes --range and --curve");
  RequireDistinct("--output", arguments.output, file, "the --curves-from as well");
  RequireDistinct("--points", arguments.points, file, "the --curves-from as well");
  RequireDistinct("--plot", arguments.plot, file, "the --curves-from as well");
  CurveDefinitions read = LoadCurvesFile(file);
  arguments.ranges = std::move(read.ranges);
  arguments.definitions = std::move(read.definitions);
  arguments.isMean |= read.areMeans;
}

void WriteTo(const std::string& file, const std::string& text, std::vector<std::unique_ptr<Output>>& open) {
  open.push_back(std::make_unique<Output>(file));
  open.back()->Write(text);
}

void Evaluate(const ChromArguments& arguments, const Options& options) {
  const std::string name = InputName(arguments.input);
  CurveEvaluation how{name, arguments.chain, options, std::nullopt};
  if (!arguments.integrate.empty()) how.integrate = ParseRealRange("--integrate", arguments.integrate);
  MeasuredCurves read = ReadCurves(arguments);
  std::vector<EvaluatedCurve> curves;
  for (Chromatogram& measured : read.curves) curves.push_back(EvaluateCurve(std::move(measured), how));

  // All is written before any of it takes its name.
  std::vector<std::unique_ptr<Output>> files;
  if (!arguments.points.empty()) WriteTo(arguments.points, PointsText(curves), files);
  if (!arguments.plot.empty()) WriteTo(arguments.plot, ChromPlot(curves, name), files);
  WriteTo(arguments.output, PeaksText(arguments.format, curves), files);
  for (const auto& file : files) file->Commit();

  if (!arguments.quiet) {
    Tell(name, read.notes);
    for (const EvaluatedCurve& curve : curves)
      if (!curve.derived.empty()) Tell(fmt::format("{}: {}: {}", name, curve.measured.name, curve.derived));
    if (const std::string note = LeftOutNote(curves); !note.empty()) Tell(fmt::format("{}: {}", name, note));
  }
  Warn(name, read.warnings);
  Warn(name, CurveWarnings(curves));
}

int RunChrom(ChromArguments arguments, const Options& options) {
  if (arguments.threads) UseThreads(*arguments.threads);
  arguments.input = PeaksInputPath(arguments.input, "tslbl chrom");
  RequireSafeFiles(arguments);
  TakeCurvesFile(arguments);
  NamingStandardInput([&] { Evaluate(arguments, options); });
  return kDone;
}

constexpr const char* kExamples =
    "INPUT is a run of raw counts, an mzML file with profiles or centroid spectra, or the text\n"
    "of a detector with columns of time and signal; - is standard input, from which no run can\n"
    "be read. Without it the built-in demonstration run is taken.\n\n"
    "Of scans the curves are TIC, the sum of all points of a scan, BPC, the largest, and the\n"
    "ranges or the definitions. A range gives the sum of its points. Scans of the first MS\n"
    "level are taken; each polarity and each tune has curves of its own.\n\n"
    "Examples:\n"
    "  tslbl chrom sample.run                        total ion current and base peak\n"
    "  tslbl chrom sample.mzML --range A=500-501     and an extracted ion chromatogram\n"
    "  tslbl chrom sample.mzML --range A=500-501 --range B=502-503 --curve A-B\n"
    "  tslbl chrom sample.run --curves-from results.xml   the curves of a document of results\n"
    "  tslbl chrom sample.mzML --range A=508.2+-0.05 --rt 3400-3600 --plot peak.svg\n"
    "  tslbl chrom sample.mzML --range A=508.2+-0.05 --integrate 3487-3551\n"
    "  tslbl chrom srm.mzML --stored --id \"SRM 500.1,300.2\" --format tsv\n"
    "  tslbl chrom uv.csv --time-unit min            the trace of a detector\n"
    "  tslbl chrom lims.csv --columns \"Time (min),UV 254\" --format tsv --output peaks.tsv\n"
    "  tslbl chrom sample.mzML --range A=500-501 --points curves.tsv\n\n"
    "Columns:\n"
    "  curve      TIC, BPC, the letter of a range, a definition, or the name of a signal\n"
    "  peak       number of the peak on its curve, from 1\n"
    "  rt_s       retention time of its top, seconds\n"
    "  height     above the baseline, with what the smoothing took\n"
    "  area       above the baseline from start to end, amplitude times seconds, as measured\n"
    "  area_se    standard error of the area, from the counts of a run, else from the noise\n"
    "  start_s    where it begins, seconds; end_s: where it ends\n"
    "  width_s    full width at half height above the baseline, seconds\n"
    "  sn         height above the baseline over the noise there, behind the smoothing\n";

}  // namespace

Command ChromCommand() {
  auto arguments = std::make_shared<ChromArguments>();
  return {
      .name = "chrom",
      .summary = "Extracts chromatograms and finds their peaks",
      .examples = kExamples,
      .declare =
          [arguments](Options& options) {
            options.Value("INPUT", arguments->input,
                          "Run, mzML file or text with columns of time and signal; - is standard input");
            options.Repeated("--range NAME=A-B", arguments->ranges,
                             "A range of m/z by a letter from A to J, both ends included; A=500.5+-0.5 does, "
                             "too. May be given ten times");
            options.Repeated("--curve DEFINITION", arguments->definitions,
                             "A curve made of the ranges, such as A-B or A+B-C, or of curves before it by "
                             "their number among those of --curve, from 1, such as 1-C [each range]. May be "
                             "given several times");
            options.Value("--curves-from FILE", arguments->curvesFrom,
                          "Take ranges, definitions and whether to take means from this document, as tslbl "
                          "results writes "
                          "it");
            options.Flag("--mean", arguments->isMean,
                         "Take the mean of the points in a range, not their sum");
            arguments->scans.DeclareFilter(options);
            options.Flag("--strict", arguments->scans.strict,
                         "Fail at a spectrum that cannot be read instead of skipping it");
            options.Flag("--stored", arguments->isStored,
                         "Take the chromatograms that an mzML file holds itself");
            options.Value("--id ID|N", arguments->only,
                          "Of these the one of this id, or of this number, counted from 0");
            options.Value("--columns TIME,SIGNAL", arguments->columns,
                          "Columns of a text file, by name or number: time,uv or 1,3 [all signals]");
            options.Choice("--time-unit UNIT", arguments->timeUnit, {"s", "min", "ms", "h"},
                           "Unit of the times of a text file, if its head does not tell");
            arguments->chain.Declare(options);
            options.Value("--integrate A-B", arguments->integrate,
                          "Integrate each curve from A to B seconds instead of searching for peaks");
            options.Choice("--format FORM", arguments->format, ChromFormats(), "Form of the result");
            options.Value("-o,--output FILE", arguments->output,
                          "Write the result to this file; - is standard output");
            options.Value("--points FILE", arguments->points,
                          "Write the measured curves to this file: rt_s and a column each");
            options.Value("--plot FILE", arguments->plot, "Draw the curves into this SVG file");
            options.Flag("-q,--quiet", arguments->quiet, "Do not tell what was taken from the data");
            options.Value("--threads N", arguments->threads,
                          "Number of threads [as many as the computer has]");
          },
      .run = [arguments](const Options& options) { return RunChrom(*arguments, options); },
  };
}

}  // namespace TslTool
