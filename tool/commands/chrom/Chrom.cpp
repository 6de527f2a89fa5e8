// tslbl chrom: chromatograms and their peaks.

#include <fmt/format.h>

#include <tool/commands/Commands.h>
#include <tool/commands/chrom/ChromArguments.h>
#include <tool/commands/chrom/ChromPlot.h>
#include <tool/commands/chrom/ChromWriter.h>
#include <tool/commands/chrom/EvaluateCurve.h>
#include <tool/commands/chrom/PointsText.h>
#include <tool/commands/chrom/ReadCurves.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/frame/Output.h>
#include <tool/frame/Warning.h>
#include <tool/io/InputPath.h>
#include <tslbl/detect/ThreadingParams.h>
#include <memory>

namespace TslTool {
namespace {

void UseThreads(std::uint32_t threads) {
  if (threads == 0) throw UsageError("--threads: there must be at least one");
  TslBL::AppThreadingParams params = TslBL::GetMultiThreadingParams();
  params.Auto = false;
  params.ThreadPoolSize = threads;
  TslBL::SetMultiThreadingParams(params);
}

void RequireDistinct(const std::string& option, const std::string& file, const std::string& other,
                     const std::string& what) {
  if (file.empty() || other.empty()) return;
  if (!IsStandardOutput(file) && SameFile(file, other))
    throw UsageError(option + ": " + file + " is " + what);
}

void RequireSafeFiles(const ChromArguments& arguments) {
  RequireDistinct("--output", arguments.output, arguments.input, "the input");
  RequireDistinct("--points", arguments.points, arguments.input, "the input");
  RequireDistinct("--points", arguments.points, arguments.output, "the --output as well");
  RequireDistinct("--plot", arguments.plot, arguments.input, "the input");
  RequireDistinct("--plot", arguments.plot, arguments.output, "the --output as well");
  RequireDistinct("--plot", arguments.plot, arguments.points, "the --points as well");
  for (const auto& [option, file] : {std::pair{"--points", arguments.points}, {"--plot", arguments.plot}})
    if (file == "-" && IsStandardOutput(arguments.output))
      throw UsageError(fmt::format("{}: standard output has the table; give that an --output FILE", option));
}

void WriteTo(const std::string& file, const std::string& text, std::vector<std::unique_ptr<Output>>& open) {
  open.push_back(std::make_unique<Output>(file));
  open.back()->Write(text);
}

void Evaluate(const ChromArguments& arguments, const Options& options) {
  const std::string name = InputName(arguments.input);
  MeasuredCurves read = ReadCurves(arguments);
  std::vector<EvaluatedCurve> curves;
  for (Chromatogram& measured : read.curves)
    curves.push_back(EvaluateCurve(name, std::move(measured), arguments.chain, options));

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
  }
  Warn(name, read.warnings);
}

int RunChrom(ChromArguments arguments, const Options& options) {
  if (arguments.threads) UseThreads(*arguments.threads);
  arguments.input = PeaksInputPath(arguments.input);
  RequireSafeFiles(arguments);
  NamingStandardInput([&] { Evaluate(arguments, options); });
  return kDone;
}

constexpr const char* kExamples =
    "Examples:\n"
    "  tslbl chrom sample.run --range A=500-501\n";

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
                             "their number, such as 1-C [each range]. May be given several times");
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
